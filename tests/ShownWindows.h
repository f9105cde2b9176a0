#pragma once

#include <QtWidgets>

#include "print/ReportPages.h"
#include "session/modGlobals.h"

using namespace Qt::StringLiterals;

/// Closes every window that is shown over another one and keeps what it showed.
class ShownWindows final {
public:
    ShownWindows() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!window)
                return;
            Titles << window->windowTitle();
            if (modGlobals::gReport) {
                const auto pages = modGlobals::gReport->Pages();
                Pages.clear();
                for (int page = 0; page < pages->Count(); ++page)
                    Pages += pages->Text(page) + u'\n';
            }
            window->reject();
        });
        m_timer.start(0);
    }

    QStringList Titles;
    QString Pages;  ///< what the report last shown says

private:
    QTimer m_timer;
};
