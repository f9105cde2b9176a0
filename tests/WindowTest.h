#pragma once

#include <QtTest>
#include <QtWidgets>

#include "CommandLog.h"
#include "Rows.h"
#include "Session.h"
#include "components/PickListKeys.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/MsgBox.h"

using toolkit::BoxAnswer;
using toolkit::BoxIcon;

/// The control of that name. A window without it ends the program: nothing can be tested there.
template <class Control>
Control& Find(const QWidget& window, const char* name) {
    auto* found = window.findChild<Control*>(QLatin1String(name));
    if (!found)
        qFatal("there is no %s", name);
    return *found;
}
template <class Control>
Control& Find(const QWidget& window) {
    return *window.findChild<Control*>();
}
/// What stands in a box or on a label.
inline QString TextOf(const QWidget& window, const char* name) {
    return Find<QWidget>(window, name).property("text").toString();
}
inline void Click(const QWidget& window, const char* button) {
    Find<QAbstractButton>(window, button).click();
}
inline void BringUp(QWidget& window) {
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not come to the front");
}

/// Who has the keyboard. A list that was just closed gives it back to nobody where there is no
/// window manager.
inline QWidget* Focused() {
    const auto isSomebody = [] {
        const QWidget* focused = QApplication::focusWidget();
        return focused && focused->isVisible();
    };
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (!isSomebody() && !QApplication::activeModalWidget() && window->isVisible())
            window->activateWindow();
    }
    if (!QTest::qWaitFor(isSomebody))
        qFatal("nobody has the keyboard");
    return QApplication::focusWidget();
}
inline void PressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(Focused(), key, modifiers);
}
/// Each key to whoever has the keyboard then: the first one opens a cell's editor.
inline void TypeText(const QString& text) {
    for (const QChar letter : text)
        QTest::keyClick(Focused(), letter.toLatin1());
}
/// Types and confirms.
inline void EnterText(const QString& text) {
    TypeText(text);
    PressKey(Qt::Key_Return);
}

/// The texts of a grid's row.
template <class Grid>
QString LineOf(const Grid& grid, int row, int from = 0) {
    QStringList cells;
    for (int col = from; col < grid.Cols(); ++col)
        cells << grid.TextMatrix(row, col);
    return cells.join(u'|');
}
template <class Grid>
QPoint CellOf(const Grid& grid) {
    return {grid.Row(), grid.Col()};
}

/// What every test of a window begins and ends with: a session on a demo hospital, boxes answered
/// from a queue, and a watch over windows that nobody expected.
class WindowTest : public QObject {
protected:
    void SetUp() {
        m_session = std::make_unique<Session>();
        m_boxes = std::make_unique<toolkit::BoxScript>();
        // One that no test waits for is closed late, and fails the test, instead of hanging it.
        connect(&m_watch, &QTimer::timeout, &m_watch, [this] {
            auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (window && window == m_seen) {
                window->reject();
                QTest::qFail(qPrintable(u"nobody expected "_s + window->windowTitle()), __FILE__,
                             __LINE__);
            }
            m_seen = window;
        });
        m_watch.start(m_session->IsOnServer() ? 20'000 : 3000);
    }
    void TearDown() {
        m_watch.disconnect();
        const QStringList leftovers = m_boxes->Leftovers();
        m_boxes.reset();
        m_session.reset();
        QCOMPARE(leftovers.join(u';'), QString());
    }

    /// To the next boxes.
    void Answer(BoxAnswer answer, int times = 1) {
        for (int box = 0; box < times; ++box)
            m_boxes->Answer(answer);
    }
    /// The last box.
    toolkit::ShownBox Said() const {
        return m_boxes->Shown().empty() ? toolkit::ShownBox() : m_boxes->Shown().back();
    }

    std::unique_ptr<Session> m_session;
    std::unique_ptr<toolkit::BoxScript> m_boxes;

private:
    QTimer m_watch;
    QPointer<QDialog> m_seen;
};
