#include "RandomWalk.h"
#include "WardWindow.h"
#include "wardrequests/WardVariant.h"

namespace {

const QStringList kTexts{u"1001"_s,  u"1002"_s, u"1024"_s, u"201"_s,  u"205"_s, u"212"_s,
                         u"sevel"_s, u"zz"_s,   u"00"_s,   u"bid"_s,  u"od"_s,  u"o'"_s,
                         u"2"_s,     u"1/2"_s,  u"0"_s,    u"9e999"_s};

/// What a nurse would type there.
QString Fitting(int col, int number) {
    if (col == WardColumn::Code)
        return QString::number((number % 2 ? 1003 : 201) + number);
    return col == WardColumn::Frequency ? u"tid"_s : QString::number(number);
}

/// Where the cursor must not be; empty when it may be there.
template <class Form>
QString Fault(const WardWindow<Form>& window) {
    const int row = window.Grid.Row(), col = window.Grid.Col();
    const bool freeLine = window.Cell(row, WardColumn::Code) == u"00";
    const bool skipped = col < 1 || col > 6 || (col == WardColumn::Amount && !freeLine);
    if (row < 1 || skipped)
        return u"the cursor is at %1, %2"_s.arg(row).arg(col);
    if (window.Box.isHidden())
        return u"there is no entry box"_s;
    for (int line = 1; line < window.Grid.Rows(); ++line)
        if (!window.Cell(line, 0).endsWith(QString::number(line)))
            return u"line %1 has the number %2"_s.arg(line).arg(window.Cell(line, 0));
    return {};
}

}  // namespace

// Keys at random in both request windows, with a server that comes and goes.
class tst_WardWalk final : public QObject {
    Q_OBJECT
private slots:
    void RandomKeys_keepToTheirColumns() {
        Walk<frmPHEntry>();
        if (!QTest::currentTestFailed())
            Walk<frmCSREntry>();
    }

private:
    template <class Form>
    void Walk() {
        const Session session;
        ScreenPatient patient;
        auto window = std::make_unique<WardWindow<Form>>(patient);
        RandomWalk walk;
        int lines = 0;
        const auto step = [&] {
            if (walk.Chance(3))
                QTest::keyClicks(&window->Box, walk.OneOf(kTexts));
            else if (walk.Chance(2))
                window->Enter(Fitting(window->Grid.Col(), walk.Below(9)));
            else if (walk.Chance(200))
                window->Press("cmdMedOption2");
            else
                walk.Press(&window->Box);
            walk.Chance(300) ? PluggedDriver::GoesAfter(0) : PluggedDriver::Returns();
            if (!window->Window.isVisible())
                window = std::make_unique<WardWindow<Form>>(patient);
            lines = qMax(lines, window->Grid.Rows() - 1);
        };
        walk.Run(4'000, step, [&] { return Fault(*window); });
        QVERIFY2(walk.Lists > 0 && lines > 2,
                 qPrintable(u"%1 boxes and lists, %2 lines"_s.arg(walk.Lists).arg(lines)));
    }
};

QTEST_MAIN(tst_WardWalk)
#include "tst_WardWalk.moc"
