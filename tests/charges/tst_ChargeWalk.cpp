#include <QDialog>
#include <QRandomGenerator>
#include <QTimer>

#include "ChargeSession.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using toolkit::BoxAnswer;
using toolkit::BoxScript;

namespace {

const QStringList kTexts{u"CA"_s,  u"CY"_s,  u"MD"_s,    u"C"_s,    u"101"_s, u"105"_s,
                         u"501"_s, u"510"_s, u"802"_s,   u"2"_s,    u"2.5"_s, u"0"_s,
                         u"450"_s, u"99"_s,  u"40000"_s, u"drain"_s};
const QList<Qt::Key> kKeys{Qt::Key_Return,  Qt::Key_Return, Qt::Key_Return, Qt::Key_Tab,
                           Qt::Key_Backtab, Qt::Key_Left,   Qt::Key_Right,  Qt::Key_Up,
                           Qt::Key_Down,    Qt::Key_Home,   Qt::Key_Escape, Qt::Key_Delete,
                           Qt::Key_F1,      Qt::Key_F2,     Qt::Key_F4,     Qt::Key_Backspace};

/// Picks from every other list that is shown and cancels the rest.
class ListAnswers final {
public:
    explicit ListAnswers(QRandomGenerator& random) {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [&] {
            auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!list)
                return;
            ++Shown;
            try {
                if (random.bounded(2) == 0 && list->focusWidget())
                    QTest::keyClick(list->focusWidget(), Qt::Key_Return);
            } catch (const base::RuntimeError&) {
            }
            if (list->isVisible())
                list->reject();
        });
        m_timer.start(0);
    }
    int Shown = 0;

private:
    QTimer m_timer;
};

void PressOne(ChargeWindow& window, QRandomGenerator& random) {
    const auto below = [&](qsizetype bound) { return int(random.bounded(int(bound))); };
    QWidget* focused = ChargeWindow::Focused();
    if (QWidget* popUp = QApplication::activePopupWidget())
        QTest::keyClick(popUp, below(2) ? Qt::Key_Return : Qt::Key_Down);
    else if (focused != &window.Grid && !window.Grid.isAncestorOf(focused))
        window.Grid.setFocus();
    else if (below(4) == 0)
        ChargeWindow::Type(kTexts[below(kTexts.size())]);
    else
        QTest::keyClick(focused, kKeys[below(kKeys.size())],
                        below(12) == 0 ? Qt::ControlModifier : Qt::NoModifier);
    if (below(400) == 0)
        PluggedDriver::Gone = !PluggedDriver::Gone;
}

}  // namespace

// Keys at random in the charge window, with a server that comes and goes.
class tst_ChargeWalk final : public QObject {
    Q_OBJECT
private slots:
    void RandomKeys_keepTheSums() {
        const int count = qEnvironmentVariableIsSet("CAPD_STRESS") ? 100'000 : 5'000;
        const ChargeSession session;
        ChargeWindow window(session.Visit(u"SM"_s));
        QRandomGenerator random(20'261'122);
        int commits = 0, failures = 0;
        connect(&window.Grid, &toolkit::EntryGrid::CellCommitted, &window.Window,
                [&] { ++commits; });
        ListAnswers lists(random);
        BoxScript anyBox;
        size_t answered = 0;
        for (int i = 0; i < count; ++i) {
            for (; answered <= anyBox.Shown().size() + 2; ++answered)
                anyBox.Answer(BoxAnswer::Ok);
            try {
                PressOne(window, random);
            } catch (const base::RuntimeError&) {
                ++failures;
            }
            const QString fault = window.Fault();
            QVERIFY2(fault.isEmpty(), qPrintable(u"key %1: %2"_s.arg(i).arg(fault)));
            QVERIFY(window.Window.isVisible());
            if (window.Grid.Rows() > 12)
                window.Grid.RemoveLine();
        }
        const QString went =
            u"%1 commits, %2 failures, %3 lists"_s.arg(commits).arg(failures).arg(lists.Shown);
        QVERIFY2(commits > count / 50 && failures > 0 && lists.Shown > 0, qPrintable(went));
    }
};

QTEST_MAIN(tst_ChargeWalk)
#include "tst_ChargeWalk.moc"
