#include <QIcon>
#include <cstdio>
#include <cstdlib>

#include "app/Application.h"
#include "app/mdiCAPD.h"
#include "app/modMain.h"
#include "base/ProgramOptions.h"
#include "components/Registry.h"
#include "toolkit/Theme.h"

namespace {

std::optional<int> ReadOptions(int argc, char* argv[]) {
    if (argc < 2)
        return std::nullopt;
    const QCoreApplication withoutScreen(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("capd"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("The workstation program of a peritoneal-dialysis unit."));
    return base::ReadOptions(parser, 0);
}

// Where there is no display Qt warns at length and then aborts.
void EndWithoutDisplay(QtMsgType type, const QMessageLogContext&, const QString&) {
    if (type != QtFatalMsg)
        return;
    std::fputs("capd: no display can be reached (DISPLAY or WAYLAND_DISPLAY).\n", stderr);
    std::_Exit(1);
}

}  // namespace

int main(int argc, char* argv[]) {
    if (const auto status = ReadOptions(argc, argv))
        return *status;
    const auto handler = qInstallMessageHandler(EndWithoutDisplay);
    Application application(argc, argv);
    qInstallMessageHandler(handler);
    QIcon icon(QStringLiteral(":/packaging/capd-48.png"));
    icon.addFile(QStringLiteral(":/packaging/capd-256.png"));
    Application::setWindowIcon(icon);
    Application::setDesktopFileName(QStringLiteral("capd"));
    toolkit::ApplyTheme(application);
    components::RegisterBuiltIns();
    try {
        const std::unique_ptr<mdiCAPD> frame = modMain::Main();
        if (!frame)
            return 0;
        return frame->isVisible() ? application.exec() : 1;
    } catch (const base::RuntimeError& error) {
        Application::Report(error);
        return 1;
    }
}
