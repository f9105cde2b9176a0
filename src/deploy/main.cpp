#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>
#include <cstdio>

#include "base/Errors.h"
#include "base/ProgramOptions.h"
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

const QString kDemo = QStringLiteral("demo");
const QString kDryRun = QStringLiteral("dry-run");

void Describe(QCommandLineParser& parser) {
    parser.setApplicationDescription(
        QStringLiteral("Makes the databases of a hospital, or brings them up to this version."));
    parser.addOption({kDemo, QStringLiteral("Fill empty databases with the demo hospital.")});
    parser.addOption({kDryRun, QStringLiteral("Print the steps and change nothing.")});
    parser.addPositionalArgument(
        QStringLiteral("connection"),
        QStringLiteral("\"DSN=hospital;UID=admin\" or \"Driver=Embedded;File=PATH\"."));
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
    QCommandLineParser parser;
    Describe(parser);
    if (const auto status = base::ReadOptions(parser, 1))
        return *status;
    if (parser.positionalArguments().isEmpty()) {
        std::fputs("capd-deploy: A connection string is missing. See --help.\n", stderr);
        return 2;
    }
    Wishes wishes;
    wishes.Target = parser.positionalArguments().constFirst();
    wishes.DryRun = parser.isSet(kDryRun);
    if (parser.isSet(kDemo))
        wishes.Contents = deploy::Contents::Demo;
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
