#include "toolkit/FlexGrid.h"

#include <QtTest>

#include "Rows.h"
#include "RowsOf.h"
#include "db/FakeDriver.h"
#include "toolkit/Theme.h"
#include "toolkit/Twips.h"

using namespace toolkit;

namespace {

const QStringList kFields{u"trans. no"_s, u"Exam"_s};
const QString kThree = u"101|CHEST|12.5;102||12.5;103|SKULL|12.5"_s;

std::shared_ptr<db::RowStore> ExamsOf(const QString& lines) {
    return RowsOf({{u"TRANS. NO"_s, ColumnKind::Text},
                   {u"EXAM"_s, ColumnKind::Text},
                   {u"Amount"_s, ColumnKind::Double}},
                  lines);
}

/// The header and the rows of a column.
QString Texts(const FlexGrid& grid, int col) {
    QStringList texts;
    for (int row = 0; row < grid.Rows(); ++row)
        texts.append(grid.TextMatrix(row, col));
    return texts.join(u'|');
}

/// A result list on the screen.
struct Shown {
    FlexGrid Grid;

    Shown() {
        Grid.SetFormatString(u" |<Trans. No |<Exam. Name               "_s);
        Grid.FillFrom(ExamsOf(kThree), kFields);
        Grid.resize(500, 300);
        Grid.show();
        Grid.setFocus();
    }
    QPoint PlaceOf(int row) { return Grid.CellRect(row, 1).center(); }
    void Click(int row) { QTest::mouseClick(Grid.viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
};

}  // namespace

class tst_FlexGrid final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { ApplyTheme(*qApp); }

    void Fill_showsEveryRecord_data() {
        Columns<QString, QString>();
        Row("none", "", "|");
        Row("one", "1|a", "|a");
        Row("first number empty", "|a;2|b;3|c", "|a|b|c");
        Row("later number empty", "1|a;|b;3|c", "|a|b|c");
        Row("all numbers empty", "|a;|b", "|a|b");
        Row("an empty text", "1|a;2|;3|c", "|a||c");
    }

    void Fill_showsEveryRecord() {
        auto [lines, shown] = Fetch<QString, QString>();
        FlexGrid grid;
        grid.SetCols(4);
        grid.FillFrom(ExamsOf(lines), {kFields[0], kFields[1], {}});
        QCOMPARE(Texts(grid, 2), shown);
        QCOMPARE(Texts(grid, 3), QString(shown.count(u'|'), u'|'));
    }

    void Fill_appendsUntilCleared() {
        FlexGrid grid;
        grid.SetCols(3);
        grid.FillFrom(ExamsOf(u"|CHEST;102|SKULL"_s), kFields);
        grid.FillFrom(ExamsOf(u"201|ARM"_s), kFields);
        QCOMPARE(Texts(grid, 2), u"|CHEST|SKULL|ARM"_s);
        grid.Clear();
        QCOMPARE(Texts(grid, 2), u"|||"_s);
        grid.SetRows(2);
        grid.FillFrom(ExamsOf(u"201|ARM"_s), kFields);
        QCOMPARE(Texts(grid, 2), u"|ARM"_s);
    }

    void Fill_refusesAnUnknownField() {
        FlexGrid grid;
        const auto error = ErrorOf([&] { grid.FillFrom(ExamsOf(kThree), {u"Doctor"_s}); });
        QCOMPARE(error.Number(), 3265);
        QVERIFY(error.Description().contains(u"Doctor"));
        QCOMPARE(grid.Rows(), 2);
    }

    void Layout_namesAlignsAndSizes() {
        FlexGrid grid;
        grid.SetFormatString(u" |<A |>Much longer header   |^C|"_s);
        QCOMPARE(grid.Cols(), 5);
        QCOMPARE(grid.TextMatrix(0, 2), u"Much longer header   "_s);
        QCOMPARE(grid.TextMatrix(0, 4), QString());
        QVERIFY(grid.ColWidth(2) > 3 * grid.ColWidth(1));
        QCOMPARE(grid.columnWidth(0), 1);
        const Qt::AlignmentFlag sides[] = {Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter};
        for (int col = 1; col <= 3; ++col)
            QCOMPARE(grid.model()->index(0, col).data(Qt::TextAlignmentRole).toInt(),
                     int(sides[col - 1] | Qt::AlignVCenter));
        grid.SetFormatString(u" |<B"_s);
        QCOMPARE(grid.Cols(), 5);
        grid.SetCols(2);
        grid.SetCols(3);
        QCOMPARE(grid.TextMatrix(0, 1), u"B"_s);
        QCOMPARE(grid.TextMatrix(0, 2), QString());
    }

    void Bind_showsColumnsAsTheyCome() {
        FlexGrid grid;
        grid.SetCols(3);
        grid.SetColWidth(0, 100);
        grid.SetColWidth(1, 2400);
        grid.SetColWidth(2, 0);
        grid.Bind(ExamsOf(u"|first|12.5;5|numbered|7"_s));
        QCOMPARE(grid.Cols(), 4);
        QCOMPARE(Texts(grid, 1), u"TRANS. NO||5"_s);
        QCOMPARE(Texts(grid, 2), u"EXAM|first|numbered"_s);
        QCOMPARE(Texts(grid, 3), u"Amount|12.5|7"_s);
        QCOMPARE(grid.columnWidth(0), Twips(100, &grid));
        QVERIFY(grid.isColumnHidden(2));
        grid.Bind(ExamsOf({}));
        QCOMPARE(Texts(grid, 2), u"EXAM|"_s);
        grid.Bind(nullptr);
        QCOMPARE(Texts(grid, 2), u"|"_s);
        QCOMPARE(grid.columnWidth(1), Twips(2400, &grid));
    }

    void Cells_areWrittenOverRecords() {
        Shown shown;
        shown.Grid.SetTextMatrix(2, 2, u"HAND"_s);
        QCOMPARE(Texts(shown.Grid, 2), u"Exam. Name               |CHEST|HAND|SKULL"_s);
        QCOMPARE(shown.Grid.TextMatrix(9, 9), QString());
        QVERIFY_EXCEPTION_THROWN(shown.Grid.SetTextMatrix(4, 1, {}), base::RuntimeError);
        // Rows that were taken away come back blank.
        shown.Grid.SetRows(2);
        shown.Grid.SetRows(4);
        QCOMPARE(Texts(shown.Grid, 2), u"Exam. Name               |CHEST||"_s);
    }

    void Row_isClickedAndOpened() {
        Shown shown;
        QSignalSpy clicked(&shown.Grid, &FlexGrid::RowClicked);
        QSignalSpy opened(&shown.Grid, &FlexGrid::RowOpened);
        QSignalSpy changed(&shown.Grid, &FlexGrid::CurrentRowChanged);
        for (const int row : {1, 3, 3})
            shown.Click(row);
        QTest::mouseDClick(shown.Grid.viewport(), Qt::LeftButton, {}, shown.PlaceOf(3));
        QTest::keyClick(&shown.Grid, Qt::Key_Return);
        QCOMPARE(clicked, (QList<QVariantList>{{1}, {3}, {3}}));
        QCOMPARE(opened, (QList<QVariantList>{{3}, {3}}));
        // A new filling is not the user's move.
        shown.Grid.Bind(ExamsOf(kThree));
        QCOMPARE(shown.Grid.Row(), 1);
        QCOMPARE(changed, (QList<QVariantList>{{3}}));
    }

    void Keys_moveAndCopy() {
        Shown shown;
        QSignalSpy changed(&shown.Grid, &FlexGrid::CurrentRowChanged);
        const std::pair<Qt::Key, int> keys[] = {{Qt::Key_Down, 2}, {Qt::Key_End, 3},
                                                {Qt::Key_Down, 3}, {Qt::Key_Home, 1},
                                                {Qt::Key_Left, 1}, {Qt::Key_Up, 1}};
        for (const auto& [key, row] : keys) {
            QTest::keyClick(&shown.Grid, key);
            QCOMPARE(shown.Grid.Row(), row);
        }
        QCOMPARE(changed, (QList<QVariantList>{{2}, {3}, {1}}));
        QTest::keyClick(&shown.Grid, Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"101\tCHEST"_s);
        shown.Grid.SetRowChosenByHand();
        QCOMPARE(shown.Grid.Row(), 0);
        QTest::keyClick(&shown.Grid, Qt::Key_Down);
        QCOMPARE(shown.Grid.Row(), 1);
    }
};

QTEST_MAIN(tst_FlexGrid)
#include "tst_FlexGrid.moc"
