#include "deploy/Plan.h"

#include <algorithm>

#include "base/Errors.h"

namespace deploy {

namespace {

using Deployed = QHash<QString, QString>;
using Kind = Step::Kind;

bool Holds(const std::vector<Script>& scripts, const QString& name) {
    return std::any_of(scripts.begin(), scripts.end(),
                       [&name](const Script& script) { return script.Name == name; });
}

Step Whole(Kind what, const Script& script) {
    return {what, script.Name, script.Text, script.Checksum()};
}

void Add(std::vector<Step>& steps, Kind what, const std::vector<Script>& scripts) {
    for (const Script& script : scripts)
        steps.push_back(Whole(what, script));
}

/// Migrations belong to tables that this program does not know when their names are not its own.
void RefuseNewer(const ScriptSet& scripts, const Deployed& deployed) {
    for (auto name = deployed.keyBegin(); name != deployed.keyEnd(); ++name) {
        if (name->startsWith(u"migrations/") && !Holds(scripts.Migrations(), *name))
            throw base::DatabaseError(
                kNotThisVersion,
                QStringLiteral("a newer version of the program has changed it (%1).").arg(*name));
    }
}

/// The beginning of a procedure's script, which drops what stood under its name.
QString DropOnly(const Script& script) {
    return script.Text.left(script.Text.indexOf(QStringLiteral("\nCREATE ")) + 1);
}

/// "procedures/BILLING/sp_Old.sql" has left only its name: functions are told by theirs.
Step DropGone(const QString& scriptName) {
    const QString database = scriptName.section(u'/', 1, 1);
    const QString name = scriptName.section(u'/', 2).section(u'.', 0, 0);
    const QString kind =
        name.startsWith(u"fn_") ? QStringLiteral("FUNCTION") : QStringLiteral("PROCEDURE");
    return {Kind::Drop,
            scriptName,
            QStringLiteral("USE %1\nGO\nDROP %2 IF EXISTS %3\nGO\n").arg(database, kind, name),
            {}};
}

/// All changed procedures are dropped before the first is made: one is checked against those it
/// calls, and must not meet their older form.
void AddProcedures(Plan& plan, const ScriptSet& scripts, const Deployed& deployed) {
    QStringList gone;
    for (auto name = deployed.keyBegin(); name != deployed.keyEnd(); ++name)
        if (name->startsWith(u"procedures/") && !Holds(scripts.Procedures(), *name))
            gone << *name;
    gone.sort();
    for (const QString& name : gone)
        plan.Rest.push_back(DropGone(name));
    std::vector<const Script*> changed;
    for (const Script& script : scripts.Procedures())
        if (deployed.value(script.Name) != script.Checksum())
            changed.push_back(&script);
    for (const Script* script : changed)
        plan.Rest.push_back({Kind::Drop, script->Name, DropOnly(*script), {}});
    for (const Script* script : changed)
        plan.Rest.push_back(Whole(Kind::Make, *script));
}

bool RolesChanged(const ScriptSet& scripts, const Deployed& deployed) {
    return std::any_of(scripts.Roles().begin(), scripts.Roles().end(), [&](const Script& script) {
        return deployed.value(script.Name) != script.Checksum();
    });
}

void RequireDemo(const ScriptSet& scripts, const Deployed& deployed) {
    const auto& demo = scripts.Demo();
    if (std::all_of(demo.begin(), demo.end(),
                    [&](const Script& script) { return deployed.contains(script.Name); }))
        return;
    throw base::DatabaseError(
        kNotThisVersion,
        QStringLiteral("it holds another hospital, which the demo's patients must not join."));
}

}  // namespace

QString Step::Title() const {
    static const char* const kVerbs[] = {"make", "migrate", "drop", "grant", "fill"};
    return QLatin1String(kVerbs[int(What)]).toString().leftJustified(9) + Name;
}

Plan PlanFor(const ScriptSet& scripts, Contents contents, const std::optional<Deployed>& deployed) {
    Plan plan;
    if (!deployed) {
        plan.Fresh = true;
        Add(plan.Tables, Kind::Make, scripts.Schema());
        Add(plan.Rest, Kind::Make, scripts.Procedures());
        Add(plan.Rest, Kind::Grant, scripts.Roles());
        if (contents == Contents::Demo)
            Add(plan.Rest, Kind::Fill, scripts.Demo());
        return plan;
    }
    RefuseNewer(scripts, *deployed);
    for (const Script& script : scripts.Migrations())
        if (!deployed->contains(script.Name))
            plan.Tables.push_back(Whole(Kind::Migrate, script));
    AddProcedures(plan, scripts, *deployed);
    // A procedure that was made anew has lost its rights.
    if (!plan.Rest.empty() || RolesChanged(scripts, *deployed))
        Add(plan.Rest, Kind::Grant, scripts.Roles());
    if (contents == Contents::Demo)
        RequireDemo(scripts, *deployed);
    return plan;
}

}  // namespace deploy
