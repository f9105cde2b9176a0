#include "app/Application.h"

#include <iostream>

#include "toolkit/MsgBox.h"

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("capd"));
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const base::RuntimeError& error) {
        Report(error);
    } catch (const std::exception& error) {
        Report(base::RuntimeError(5, QString::fromUtf8(error.what())));
    }
    return true;
}

void Application::Report(const base::RuntimeError& error) {
    std::cerr << "capd: error " << error.Number() << ": " << error.what() << std::endl;
    if (const auto* database = dynamic_cast<const base::DatabaseError*>(&error))
        std::cerr << "capd: command: " << database->Command().toStdString() << std::endl;
    toolkit::MsgBox(QStringLiteral("%1\n\n%2").arg(error.Number()).arg(error.Description()),
                    toolkit::BoxIcon::Critical);
}
