#pragma once

#include <QDialog>
#include <QTimer>

#include "ChargeSession.h"
#include "components/PickListKeys.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

/// What every test of the charge window begins and ends with: a session on a demo hospital, boxes
/// answered from a queue, and a watch over lists and windows that nobody expected.
class ChargeTest : public QObject {
protected:
    void SetUp() {
        // A list that no test waits for is closed late, and fails the test, instead of hanging it.
        connect(&m_watch, &QTimer::timeout, &m_watch, [] {
            if (auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                list->reject();
                QTest::qFail("a list that nobody expected", __FILE__, __LINE__);
            }
        });
        m_session = std::make_unique<ChargeSession>();
        m_watch.start(m_session->Hospital().IsOnServer() ? 30'000 : 4000);
        m_boxes = std::make_unique<toolkit::BoxScript>();
    }

    void TearDown() {
        m_watch.disconnect();
        PluggedDriver::Gone = false;
        const QString fault =
            m_window && !QTest::currentTestFailed() ? m_window->Fault() : QString();
        m_window.reset();
        const QStringList leftovers = m_boxes->Leftovers();
        m_boxes.reset();
        QVERIFY2(fault.isEmpty(), qPrintable(fault));
        QCOMPARE(leftovers.join(u';'), QString());
    }

    ChargeWindow& Open(const QString& discountType = u"SM"_s, const QString& classification = {}) {
        m_window = std::make_unique<ChargeWindow>(m_session->Visit(discountType, classification));
        return *m_window;
    }

    void ExpectBox(const char* text, toolkit::BoxIcon icon, const char* title = "CAPD") const {
        QVERIFY(!m_boxes->Shown().empty());
        const toolkit::ShownBox& box = m_boxes->Shown().back();
        QCOMPARE(box.Text, QString::fromUtf8(text));
        QCOMPARE(box.Title, QString::fromUtf8(title));
        QVERIFY(box.Icon == icon);
    }

    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<ChargeWindow> m_window;
    std::unique_ptr<toolkit::BoxScript> m_boxes;
    QTimer m_watch;
};
