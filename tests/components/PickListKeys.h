#pragma once

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <functional>

#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

/// Drives the pick list that a component is about to show. A list that is not expected is closed
/// and counted, so that a test neither hangs nor passes by it.
class PickListKeys final {
public:
    explicit PickListKeys(std::function<void(QDialog&)> act = {}) : m_act(std::move(act)) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { Drive(); });
        m_timer.start(0);
    }

    /// How many lists were shown.
    int Shown = 0;

    static QLineEdit* Box(QDialog& list) { return list.findChild<QLineEdit*>(u"txtSearch"_s); }
    static toolkit::ListView* Rows(QDialog& list) {
        return list.findChild<toolkit::ListView*>(u"lvwRecords"_s);
    }
    static int Total(QDialog& list) {
        return list.findChild<QLabel*>(u"lblTotal"_s)->text().toInt();
    }
    static QString Cell(QDialog& list, int row, int column) {
        return Rows(list)->model()->index(row, column).data().toString();
    }

private:
    void Drive() {
        auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!list)
            return;
        // Waiting lets timers run: this one would meet the same list again.
        m_timer.stop();
        ++Shown;
        if (m_act && Shown == 1 && QTest::qWaitForWindowActive(list))
            m_act(*list);
        if (list->isVisible())
            list->reject();
        m_timer.start(0);
    }

    std::function<void(QDialog&)> m_act;
    QTimer m_timer;
};
