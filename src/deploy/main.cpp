#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

#include "base/Errors.h"
#include "db/ConnectionText.h"
#include "deploy/HospitalFile.h"

/// Brings the hospital's databases, or a hospital file, to the state of this version's scripts.
namespace {

struct Wishes {
    QString Target;
    deploy::Contents Contents = deploy::Contents::Empty;
    bool DryRun = false;
};

void Say(const QString& line) {
    QTextStream(stdout) << line << '\n';
}

bool Understand(const QStringList& arguments, Wishes& wishes) {
    for (const QString& argument : arguments) {
        if (argument == u"--demo")
            wishes.Contents = deploy::Contents::Demo;
        else if (argument == u"--dry-run")
            wishes.DryRun = true;
        else if (argument.startsWith(u"--") || !wishes.Target.isEmpty())
            return false;
        else
            wishes.Target = argument;
    }
    return !wishes.Target.isEmpty();
}

/// A password on the command line can be read by everyone on the machine: without one it is asked.
QString WithPassword(const QString& target) {
    db::LogOn logOn = db::LogOnOf(target);
    if (logOn.User.isEmpty() || !logOn.Password.isEmpty())
        return target;
    QTextStream(stderr) << QStringLiteral("Password of %1: ").arg(logOn.User) << Qt::flush;
    logOn.Password = QTextStream(stdin).readLine();
    return db::WithLogOn(db::WithoutLogOn(target), logOn);
}

/// A new file appears only when it is complete, so it is not made by opening it.
bool IsNewFile(const QString& target) {
    const QString driver = db::ConnectionValue(target, QStringLiteral("Driver"));
    return driver.compare(QStringLiteral("Embedded"), Qt::CaseInsensitive) == 0 &&
           !QFileInfo::exists(db::ConnectionValue(target, QStringLiteral("File")));
}

void DeployNewFile(const Wishes& wishes) {
    const QString file = db::ConnectionValue(wishes.Target, QStringLiteral("File"));
    const auto& scripts = deploy::ScriptSet::Own();
    const deploy::Plan plan = deploy::PlanFor(scripts, wishes.Contents, {});
    for (const auto* steps : {&plan.Tables, &plan.Rest})
        for (const deploy::Step& step : *steps)
            Say(step.Title());
    if (!wishes.DryRun)
        deploy::MakeHospital(file, wishes.Contents);
}

void Deploy(const Wishes& wishes) {
    if (IsNewFile(wishes.Target)) {
        DeployNewFile(wishes);
        return;
    }
    const auto driver = db::OpenDriver(WithPassword(wishes.Target));
    deploy::Deployment deployment(*driver, deploy::ScriptSet::Own(), wishes.Contents);
    for (const QString& title : deployment.Titles())
        Say(title);
    if (deployment.IsEmpty())
        Say(QStringLiteral("Up to date."));
    else if (!wishes.DryRun)
        deployment.Run();
}

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    Wishes wishes;
    if (!Understand(application.arguments().mid(1), wishes)) {
        std::fputs("usage: capd-deploy [--demo] [--dry-run] \"CONNECTION STRING\"\n", stderr);
        return 2;
    }
    try {
        Deploy(wishes);
    } catch (const base::RuntimeError& error) {
        QTextStream(stderr) << QStringLiteral("capd-deploy: %1 (%2)\n")
                                   .arg(error.Description())
                                   .arg(error.Number());
        return 1;
    }
    return 0;
}
