#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include "Rows.h"
#include "base/Errors.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/Theme.h"
#include "toolkit/Twips.h"

using namespace Qt::StringLiterals;
using namespace toolkit;
using embedded::ColumnKind;

namespace {

const QStringList kFields{u"trans. no"_s, u"Exam"_s};

std::shared_ptr<db::RowStore> EmptyRows() {
    auto rows = std::make_shared<db::RowStore>();
    rows->BeginResult({{u"TRANS. NO"_s, ColumnKind::Text},
                       {u"EXAM"_s, ColumnKind::Text},
                       {u"Amount"_s, ColumnKind::Double}});
    return rows;
}

/// A null for each empty text.
void AddRow(db::RowStore& rows, const char* number, const char* exam, double amount = 12.5) {
    for (const char* text : {number, exam}) {
        if (*text)
            rows.Text(text);
        else
            rows.Null();
    }
    rows.Double(amount);
    rows.EndRow();
}

std::shared_ptr<db::RowStore> ThreeRows() {
    auto rows = EmptyRows();
    AddRow(*rows, "101", "CHEST PA");
    AddRow(*rows, "102", "");
    AddRow(*rows, "103", "SKULL");
    return rows;
}

QStringList Texts(const FlexGrid& grid, int col) {
    QStringList texts;
    for (int row = 0; row < grid.Rows(); ++row)
        texts.append(grid.TextMatrix(row, col));
    return texts;
}

QStringList List(std::initializer_list<const char*> texts) {
    QStringList list;
    for (const char* text : texts)
        list.append(QString::fromUtf8(text));
    return list;
}

/// A result list on the screen.
struct Shown {
    FlexGrid Grid;

    explicit Shown(std::shared_ptr<const db::RowStore> rows = ThreeRows()) {
        Grid.SetCols(3);
        Grid.SetFormatString(u" |<Trans. No |<Exam. Name               "_s);
        Grid.SetColWidth(2, 3000);
        Grid.FillFrom(rows, kFields);
        Grid.resize(500, 300);
        Grid.show();
        Grid.setFocus();
    }
    void Click(int row) { QTest::mouseClick(Grid.viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
    QPoint PlaceOf(int row) { return Grid.visualRect(Grid.model()->index(row - 1, 1)).center(); }
};

}  // namespace

class tst_FlexGrid final : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { ApplyTheme(*qApp); }
    void Fill_goesToTheBlankRowAndAppends() {
        FlexGrid grid;
        QCOMPARE(grid.Rows(), 2);
        grid.SetCols(3);
        grid.FillFrom(ThreeRows(), kFields);
        QCOMPARE(Texts(grid, 1), List({"", "101", "102", "103"}));
        QCOMPARE(Texts(grid, 2), List({"", "CHEST PA", "", "SKULL"}));

        auto more = EmptyRows();
        AddRow(*more, "201", "ARM");
        grid.FillFrom(more, kFields);
        QCOMPARE(Texts(grid, 1), List({"", "101", "102", "103", "201"}));

        grid.Clear();
        QCOMPARE(Texts(grid, 1), List({"", "", "", "", ""}));
        grid.SetRows(2);
        grid.FillFrom(more, kFields);
        QCOMPARE(Texts(grid, 2), List({"", "ARM"}));
    }

    void Fill_showsEveryRecord_data() {
        Columns<QStringList, QStringList>();
        QTest::newRow("none") << QStringList() << List({"", ""});
        QTest::newRow("one") << List({"1"}) << List({"", "e0"});
        QTest::newRow("first empty") << List({"", "2", "3"}) << List({"", "e0", "e1", "e2"});
        QTest::newRow("later empty") << List({"1", "", "3"}) << List({"", "e0", "e1", "e2"});
        QTest::newRow("all empty") << List({"", ""}) << List({"", "e0", "e1"});
    }

    void Fill_showsEveryRecord() {
        auto [numbers, shown] = Fetch<QStringList, QStringList>();
        auto rows = EmptyRows();
        for (int i = 0; i < numbers.size(); ++i)
            AddRow(*rows, numbers[i].toUtf8(), QByteArray("e").append(QByteArray::number(i)));
        FlexGrid grid;
        grid.SetCols(3);
        grid.FillFrom(rows, kFields);
        QCOMPARE(Texts(grid, 2), shown);
    }

    void Fill_refusesAnUnknownField() {
        FlexGrid grid;
        try {
            grid.FillFrom(ThreeRows(), {u"Doctor"_s});
            QFAIL("not refused");
        } catch (const base::DatabaseError& error) {
            QCOMPARE(error.Number(), 3265);
            QVERIFY(error.Description().contains(u"Doctor"));
        }
        QCOMPARE(grid.Rows(), 2);
    }

    void Fill_leavesAColumnWithoutField() {
        FlexGrid grid;
        grid.SetCols(4);
        grid.FillFrom(ThreeRows(), {kFields[0], QString(), u"Amount"_s});
        QCOMPARE(Texts(grid, 2), List({"", "", "", ""}));
        QCOMPARE(Texts(grid, 3), List({"", "12.5", "12.5", "12.5"}));
    }

    void Layout_namesAlignsAndSizes() {
        FlexGrid grid;
        grid.SetFormatString(u" |<A |>Much longer header   |^C|"_s);
        QCOMPARE(grid.Cols(), 5);
        QCOMPARE(grid.TextMatrix(0, 1), u"A "_s);
        QCOMPARE(grid.TextMatrix(0, 2), u"Much longer header   "_s);
        QCOMPARE(grid.TextMatrix(0, 4), QString());
        QVERIFY(grid.ColWidth(2) > 3 * grid.ColWidth(1));
        QCOMPARE(grid.ColWidth(0), 1);
        QCOMPARE(grid.columnWidth(0), 1);
        const auto alignment = [&](int col) {
            return grid.model()->index(0, col).data(Qt::TextAlignmentRole).toInt() &
                   Qt::AlignHorizontal_Mask;
        };
        QCOMPARE(alignment(1), int(Qt::AlignLeft));
        QCOMPARE(alignment(2), int(Qt::AlignRight));
        QCOMPARE(alignment(3), int(Qt::AlignHCenter));

        grid.SetColWidth(2, 3001);
        QCOMPARE(grid.ColWidth(2), 3001);
        QCOMPARE(grid.columnWidth(2), Twips(3001, &grid));
        grid.SetColWidth(2, 0);
        QVERIFY(grid.isColumnHidden(2));
    }

    void Layout_addsColumnsOnly() {
        FlexGrid grid;
        grid.SetCols(10);
        grid.SetFormatString(u" |<A|<B"_s);
        QCOMPARE(grid.Cols(), 10);
        grid.SetCols(2);
        QCOMPARE(grid.TextMatrix(0, 2), QString());
        grid.SetCols(3);
        QCOMPARE(grid.TextMatrix(0, 2), QString());
    }

    void Bind_showsColumnsAsTheyCome() {
        FlexGrid grid;
        grid.SetCols(3);
        grid.SetColWidth(0, 100);
        grid.SetColWidth(1, 2400);
        grid.SetColWidth(2, 0);
        auto rows = EmptyRows();
        AddRow(*rows, "", "no number");
        AddRow(*rows, "5", "numbered");
        grid.Bind(rows);
        QCOMPARE(grid.Cols(), 4);
        QCOMPARE(Texts(grid, 1), List({"TRANS. NO", "", "5"}));
        QCOMPARE(Texts(grid, 2), List({"EXAM", "no number", "numbered"}));
        QCOMPARE(grid.columnWidth(0), Twips(100, &grid));
        QCOMPARE(grid.columnWidth(1), Twips(2400, &grid));
        QVERIFY(grid.isColumnHidden(2));
        grid.Bind(EmptyRows());
        QCOMPARE(Texts(grid, 2), List({"EXAM", ""}));
        grid.Bind(nullptr);
        QCOMPARE(grid.Rows(), 2);
        QCOMPARE(grid.columnWidth(1), Twips(2400, &grid));
    }

    void Cells_areWrittenOverRecords() {
        Shown shown;
        shown.Grid.SetTextMatrix(2, 2, u"HAND"_s);
        QCOMPARE(shown.Grid.TextMatrix(2, 2), u"HAND"_s);
        QCOMPARE(shown.Grid.TextMatrix(9, 9), QString());
        QVERIFY_EXCEPTION_THROWN(shown.Grid.SetTextMatrix(4, 1, {}), base::RuntimeError);
    }

    void Rows_thatComeBackAreBlank() {
        Shown shown;
        shown.Grid.SetTextMatrix(3, 1, u"written"_s);
        shown.Grid.SetRows(2);
        shown.Grid.SetRows(4);
        QCOMPARE(Texts(shown.Grid, 1), List({"Trans. No ", "101", "", ""}));
    }

    void Row_isClickedAndOpened() {
        Shown shown;
        QSignalSpy clicked(&shown.Grid, &FlexGrid::RowClicked);
        QSignalSpy opened(&shown.Grid, &FlexGrid::RowOpened);
        QSignalSpy changed(&shown.Grid, &FlexGrid::CurrentRowChanged);
        QCOMPARE(shown.Grid.Row(), 1);
        shown.Click(1);
        shown.Click(3);
        shown.Click(3);
        QCOMPARE(clicked.size(), 3);
        QCOMPARE(clicked[0][0].toInt(), 1);
        QCOMPARE(clicked[2][0].toInt(), 3);
        QCOMPARE(changed.size(), 1);
        QCOMPARE(changed[0][0].toInt(), 3);
        QTest::mouseDClick(shown.Grid.viewport(), Qt::LeftButton, {}, shown.PlaceOf(3));
        QTest::keyClick(&shown.Grid, Qt::Key_Return);
        QCOMPARE(opened.size(), 2);
        QCOMPARE(opened[1][0].toInt(), 3);
        // A new filling is not the user's move.
        shown.Grid.Bind(ThreeRows());
        QCOMPARE(changed.size(), 1);
        QCOMPARE(shown.Grid.Row(), 1);
    }

    void Keys_moveAndCopy() {
        Shown shown;
        QSignalSpy changed(&shown.Grid, &FlexGrid::CurrentRowChanged);
        QTest::keyClick(&shown.Grid, Qt::Key_Down);
        QCOMPARE(shown.Grid.Row(), 2);
        QTest::keyClick(&shown.Grid, Qt::Key_End);
        QCOMPARE(shown.Grid.Row(), 3);
        QTest::keyClick(&shown.Grid, Qt::Key_Down);
        QCOMPARE(shown.Grid.Row(), 3);
        QTest::keyClick(&shown.Grid, Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"103\tSKULL"_s);
        QTest::keyClick(&shown.Grid, Qt::Key_Home);
        QTest::keyClick(&shown.Grid, Qt::Key_Left);
        QCOMPARE(shown.Grid.Row(), 1);
        QCOMPARE(changed.size(), 3);
    }

    void LongList_showsItsLastRow() {
        auto rows = EmptyRows();
        for (int i = 0; i < 10'000; ++i)
            AddRow(*rows, QByteArray::number(i + 1), "CHEST PA AND LATERAL", i / 4.0);
        Shown shown(EmptyRows());
        shown.Grid.FillFrom(rows, kFields);
        shown.Grid.grab();
        QCOMPARE(shown.Grid.Rows(), 10'001);
        QCOMPARE(shown.Grid.TextMatrix(10'000, 1), u"10000"_s);
        QTest::keyClick(&shown.Grid, Qt::Key_End);
        QCOMPARE(shown.Grid.Row(), 10'000);
    }
};

QTEST_MAIN(tst_FlexGrid)
#include "tst_FlexGrid.moc"
