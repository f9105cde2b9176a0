#pragma once

#include <QApplication>

#include "base/Errors.h"
#include "toolkit/KeyGuard.h"
#include "toolkit/ScreenFit.h"

/// The application, and the one place where an error that nobody answered ends: the action is
/// over, the program lives on.
class Application final : public QApplication {
public:
    Application(int& argc, char** argv);
    bool notify(QObject* receiver, QEvent* event) override;

    /// Writes the error to standard error and shows its number and description.
    static void Report(const base::RuntimeError& error);

private:
    toolkit::KeyGuard m_keyGuard;
    toolkit::ScreenFit m_screenFit;
};
