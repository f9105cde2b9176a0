#pragma once

#include <QtTest>
#include <QtWidgets>

#include "base/Errors.h"

using namespace Qt::StringLiterals;

/// A typist who presses keys at random, the same ones in every run, takes from every other list or
/// box that comes up and closes the rest.
class RandomWalk final {
public:
    RandomWalk() {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            if (auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                AnswerOrClose(*window);
        });
        m_timer.start(0);
    }

    int Lists = 0;     ///< and boxes that came up
    int Failures = 0;  ///< that a step threw

    int Below(qsizetype bound) { return int(m_random.bounded(int(bound))); }
    bool Chance(int oneIn) { return Below(oneIn) == 0; }
    template <class Item>
    Item OneOf(const QList<Item>& items) {
        return items[Below(items.size())];
    }

    void Press(QWidget* widget) {
        static const QList<Qt::Key> keys{
            Qt::Key_Return,  Qt::Key_Return, Qt::Key_Return,   Qt::Key_Enter,  Qt::Key_Tab,
            Qt::Key_Backtab, Qt::Key_Left,   Qt::Key_Right,    Qt::Key_Up,     Qt::Key_Down,
            Qt::Key_Home,    Qt::Key_End,    Qt::Key_PageUp,   Qt::Key_Escape, Qt::Key_Delete,
            Qt::Key_F1,      Qt::Key_F2,     Qt::Key_F3,       Qt::Key_F4,     Qt::Key_C,
            Qt::Key_V,       Qt::Key_X,      Qt::Key_Backspace};
        QTest::keyClick(widget, OneOf(keys), Chance(12) ? Qt::ControlModifier : Qt::NoModifier);
    }

    /// So many steps, many more under CAPD_STRESS; after each, `fault` says nothing.
    void Run(int steps, const std::function<void()>& step, const std::function<QString()>& fault) {
        const int count = qEnvironmentVariableIsSet("CAPD_STRESS") ? 100'000 : steps;
        for (int i = 0; i < count; ++i) {
            try {
                step();
            } catch (const base::RuntimeError&) {
                ++Failures;
            }
            const QString found = fault();
            QVERIFY2(found.isEmpty(), qPrintable(u"step %1: %2"_s.arg(i).arg(found)));
        }
    }

private:
    void AnswerOrClose(QDialog& window) {
        ++Lists;
        try {
            if (Chance(2) && window.focusWidget())
                for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Return})
                    QTest::keyClick(window.focusWidget(), key);
        } catch (const base::RuntimeError&) {
            ++Failures;
        }
        if (window.isVisible())
            window.reject();
    }

    QRandomGenerator m_random{20'261'122};
    QTimer m_timer;
};
