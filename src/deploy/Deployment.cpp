#include "deploy/Deployment.h"

#include <QRegularExpression>

#include "base/Errors.h"
#include "deploy/DeployedScripts.h"
#include "deploy/Rows.h"
#include "deploy/TableCheck.h"

namespace deploy {

namespace {

/// A transaction on the server that leaving early undoes.
class Undoing final {
public:
    explicit Undoing(db::Driver& driver) : m_driver(driver) { m_driver.BeginTrans(); }
    ~Undoing() {
        if (m_kept)
            return;
        try {
            m_driver.RollbackTrans();
        } catch (const base::DatabaseError& error) {
            // The error that brought us here is the one to report.
            qWarning("The scripts could not be undone: %s", error.what());
        }
    }
    Undoing(const Undoing&) = delete;
    Undoing& operator=(const Undoing&) = delete;
    void Keep() {
        m_driver.CommitTrans();
        m_kept = true;
    }

private:
    db::Driver& m_driver;
    bool m_kept = false;
};

QStringList DatabasesOf(const ScriptSet& scripts) {
    static const QRegularExpression use(
        QStringLiteral("^\\s*USE\\s+(\\w+)"),
        QRegularExpression::MultilineOption | QRegularExpression::CaseInsensitiveOption);
    QStringList databases;
    for (const Script& script : scripts.Schema())
        for (const auto& match : use.globalMatch(script.Text))
            databases << match.captured(1);
    databases.removeDuplicates();
    return databases;
}

/// Databases live on a server; a hospital file makes them with their first table.
QStringList MissingDatabases(db::Driver& driver, const ScriptSet& scripts) {
    QStringList missing;
    if (!driver.HasDatabases())
        return missing;
    for (const QString& database : DatabasesOf(scripts)) {
        const Rows found = Rows::Ask(driver, QStringLiteral("SELECT DB_ID('%1')").arg(database));
        if (found.Cells().empty() || found.Cells().front().front().isEmpty())
            missing << database;
    }
    return missing;
}

/// None where the record of scripts is not there.
std::optional<QHash<QString, QString>> Had(db::Driver& driver) {
    // Not every server that speaks T-SQL gives an unknown table its number.
    if (driver.HasDatabases() &&
        Rows::Ask(driver, QStringLiteral("SELECT OBJECT_ID('CLINICAL_AREA.dbo.tbDeployedScript')"))
            .Cells()
            .front()
            .front()
            .isEmpty())
        return {};
    try {
        return DeployedScripts(driver).All();
    } catch (const base::DatabaseError& error) {
        if (error.Number() != kUnknownTable)
            throw;
        return {};
    }
}

}  // namespace

Deployment::Deployment(db::Driver& driver, const ScriptSet& scripts, Contents contents)
    : m_driver(driver),
      m_scripts(scripts),
      m_contents(contents),
      m_newDatabases(MissingDatabases(driver, scripts)) {
    const auto had = m_newDatabases.isEmpty() ? Had(driver) : std::nullopt;
    m_upToDate = had && DeployedScripts(driver).SetChecksum() == scripts.Checksum();
    m_plan = PlanFor(scripts, contents, had);
}

QStringList Deployment::Titles() const {
    QStringList titles;
    for (const QString& database : m_newDatabases)
        titles << QStringLiteral("create   database ") + database;
    for (const auto* steps : {&m_plan.Tables, &m_plan.Rest})
        for (const Step& step : *steps)
            titles << step.Title();
    return titles;
}

void Deployment::Run(const Progress& progress) {
    CreateDatabases();
    try {
        Undoing transaction(m_driver);
        if (!m_plan.Fresh) {
            // Whoever waits here for another one's upgrade finds it done.
            DeployedScripts(m_driver).Lock();
            m_plan = PlanFor(m_scripts, m_contents, DeployedScripts(m_driver).All());
        }
        RunSteps(progress);
        Record();
        transaction.Keep();
    } catch (...) {
        DropDatabases();
        throw;
    }
}

// A server makes no database inside of a transaction.
void Deployment::CreateDatabases() {
    for (const QString& database : m_newDatabases)
        deploy::Run(m_driver, QStringLiteral("CREATE DATABASE ") + database);
}

void Deployment::DropDatabases() {
    try {
        if (!m_newDatabases.isEmpty())
            deploy::Run(m_driver, QStringLiteral("USE master"));
        for (const QString& database : m_newDatabases)
            deploy::Run(m_driver, QStringLiteral("DROP DATABASE ") + database);
    } catch (const base::DatabaseError& error) {
        qWarning("An empty database stays behind: %s", error.what());
    }
}

void Deployment::RunSteps(const Progress& progress) {
    const int all = int(m_plan.Tables.size() + m_plan.Rest.size());
    int done = 0;
    const auto run = [&](const std::vector<Step>& steps) {
        for (const Step& step : steps) {
            if (progress)
                progress(done, all);
            m_driver.RunScript(step.Name, step.Text);
            ++done;
        }
    };
    run(m_plan.Tables);
    if (!m_plan.Fresh) {
        const QStringList missing = MissingInTables(m_driver, m_scripts);
        if (!missing.isEmpty())
            throw base::DatabaseError(kNotThisVersion, missing.join(u' '));
    }
    run(m_plan.Rest);
    if (progress)
        progress(done, all);
}

void Deployment::Record() {
    DeployedScripts deployed(m_driver);
    for (const auto* steps : {&m_plan.Tables, &m_plan.Rest}) {
        for (const Step& step : *steps) {
            if (!step.Checksum.isEmpty())
                deployed.Record(step.Name, step.Checksum);
            else if (step.What == Step::Kind::Drop)
                deployed.Forget(step.Name);
        }
    }
    for (const Script& script : m_scripts.Schema())
        deployed.Record(script.Name, script.Checksum());
    if (m_plan.Fresh)
        for (const Script& script : m_scripts.Migrations())
            deployed.Record(script.Name, script.Checksum());
    deployed.RecordSet(m_scripts);
}

}  // namespace deploy
