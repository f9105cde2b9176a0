#include "ChargeWindow.h"
#include "RandomWalk.h"

namespace {

const QStringList kTexts{u"CA"_s,  u"CY"_s,  u"MD"_s,    u"C"_s,    u"101"_s, u"105"_s,
                         u"501"_s, u"510"_s, u"802"_s,   u"2"_s,    u"2.5"_s, u"0"_s,
                         u"450"_s, u"99"_s,  u"40000"_s, u"drain"_s};

}  // namespace

// Keys at random in the charge window, with a server that comes and goes.
class tst_ChargeWalk final : public QObject {
    Q_OBJECT
private slots:
    void RandomKeys_keepTheSums() {
        const Session session;
        ChargeWindow window(VisitOf(u"SM"_s));
        int commits = 0;
        connect(&window.Grid, &toolkit::EntryGrid::CellCommitted, this, [&] { ++commits; });
        RandomWalk walk;
        const auto step = [&] {
            if (walk.Chance(400))
                PluggedDriver::IsGone() ? PluggedDriver::Returns() : PluggedDriver::GoesAfter(0);
            if (window.Grid.Rows() > 12)
                window.Grid.RemoveLine();
            QWidget* focused = Focused();
            if (QWidget* popUp = QApplication::activePopupWidget())
                QTest::keyClick(popUp, walk.Chance(2) ? Qt::Key_Return : Qt::Key_Down);
            else if (focused != &window.Grid && !window.Grid.isAncestorOf(focused))
                window.Grid.setFocus();
            else if (walk.Chance(4))
                TypeText(walk.OneOf(kTexts));
            else
                walk.Press(focused);
        };
        walk.Run(5'000, step, [&] {
            return window.Window.isVisible() ? window.Fault() : u"the window is closed"_s;
        });
        const QString went =
            u"%1 commits, %2 failures, %3 lists"_s.arg(commits).arg(walk.Failures).arg(walk.Lists);
        QVERIFY2(commits > 100 && walk.Failures > 0 && walk.Lists > 0, qPrintable(went));
    }
};

QTEST_MAIN(tst_ChargeWalk)
#include "tst_ChargeWalk.moc"
