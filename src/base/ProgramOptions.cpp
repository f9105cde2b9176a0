#include "base/ProgramOptions.h"

#include <QCoreApplication>
#include <QTextStream>

namespace base {

namespace {

int Refuse(const QString& reason) {
    QTextStream(stderr) << QCoreApplication::applicationName() << ": " << reason
                        << " See --help.\n";
    return 2;
}

}  // namespace

std::optional<int> ReadOptions(QCommandLineParser& parser, int mostArguments) {
    QCoreApplication::setApplicationVersion(QStringLiteral(CAPD_VERSION));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QStringLiteral("Show this help."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version."));
    parser.addOptions({help, version});
    if (!parser.parse(QCoreApplication::arguments()))
        return Refuse(parser.errorText());
    if (parser.isSet(help)) {
        QTextStream(stdout) << parser.helpText();
        return 0;
    }
    if (parser.isSet(version)) {
        QTextStream(stdout) << QCoreApplication::applicationName() << ' '
                            << QCoreApplication::applicationVersion() << '\n';
        return 0;
    }
    const QStringList arguments = parser.positionalArguments();
    if (arguments.size() > mostArguments)
        return Refuse(
            QStringLiteral("Unexpected argument '%1'.").arg(arguments.value(mostArguments)));
    return std::nullopt;
}

}  // namespace base
