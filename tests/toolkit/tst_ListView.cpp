#include "toolkit/ListView.h"

#include <QtTest>

#include "Rows.h"
#include "RowsOf.h"
#include "db/FakeDriver.h"
#include "toolkit/Twips.h"

using namespace toolkit;

namespace {

const std::vector<ListColumn> kColumns{
    {u" No."_s, 1000, u"Number"_s}, {u" Name"_s, 1500, u"Name"_s}, {u" Seen"_s, 1900, u"Seen"_s}};

const QString kFour =
    u"Pérez|9|2026-02-01 00:00:00.000;perez|10.5|2025-11-22 08:30:00.000;||;"
    "Perla|-2|2026-01-31 23:59:59.000"_s;

std::shared_ptr<db::RowStore> VisitsOf(const QString& lines) {
    return RowsOf({{u"Name"_s, ColumnKind::Text},
                   {u"NUMBER"_s, ColumnKind::Double},
                   {u"Seen"_s, ColumnKind::DateTime}},
                  lines);
}

QString Texts(const RowListModel& model, int column) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.TextAt(row, column));
    return texts.join(u'|');
}

/// A list of four rows on the screen.
struct Shown {
    RowListModel Model{kColumns};
    ListView List;
    QSignalSpy Chosen{&List, &ListView::RowChosen};
    QSignalSpy Opened{&List, &ListView::RowOpened};

    Shown() {
        List.SetListModel(&Model, kColumns);
        Model.SetRows(VisitsOf(kFour));
        List.resize(600, 300);
        List.show();
    }
    void Click(int row) { QTest::mouseClick(List.viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
    QPoint PlaceOf(int row) { return List.visualRect(Model.index(row, 1)).center(); }
    QString Marks() const {
        return List.HeaderMark(0) + u' ' + List.HeaderMark(1) + u' ' + List.HeaderMark(2);
    }
};

}  // namespace

class tst_ListView final : public QObject {
    Q_OBJECT
private slots:
    void Sort_comparesByKind_data() {
        Columns<int, QString, QString>();
        Row("numbers", 0, "|-2|9|10.5", "10.5|9|-2|");
        Row("texts", 1, "|perez|Pérez|Perla", "Perla|Pérez|perez|");
        Row("moments", 2, "|11/22/2025 8:30:00 AM|1/31/2026 11:59:59 PM|2/1/2026",
            "2/1/2026|1/31/2026 11:59:59 PM|11/22/2025 8:30:00 AM|");
    }

    void Sort_comparesByKind() {
        auto [column, ascending, descending] = Fetch<int, QString, QString>();
        RowListModel model(kColumns);
        model.SetRows(VisitsOf(kFour));
        model.sort(column, Qt::AscendingOrder);
        QCOMPARE(Texts(model, column), ascending);
        model.sort(column, Qt::DescendingOrder);
        QCOMPARE(Texts(model, column), descending);
    }

    void Sort_keepsEqualRowsInTheirOrder() {
        RowListModel model(kColumns);
        model.SetRows(VisitsOf(u"cruz |0|;CRUZ|1|;cruz |2|;CRUZ|3|;cruz |4|;CRUZ|5|"_s));
        for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            model.sort(1, order);
            QCOMPARE(Texts(model, 0), u"0|1|2|3|4|5"_s);
        }
    }

    void Header_clickSortsAndMarks() {
        Shown shown;
        shown.List.setCurrentIndex(shown.Model.index(1, 0));
        const auto click = [&](int column) {
            QHeaderView* header = shown.List.header();
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              QPoint(header->sectionViewportPosition(column) + 30, 5));
        };
        QCOMPARE(shown.Marks(), u"Blank Blank Blank"_s);
        click(1);
        QCOMPARE(shown.Marks(), u"Blank ArrowUp Blank"_s);
        QCOMPARE(shown.Model.TextAt(3, 1), u"Perla"_s);
        click(1);
        QCOMPARE(shown.Marks(), u"Blank ArrowDown Blank"_s);
        QCOMPARE(shown.Model.TextAt(0, 1), u"Perla"_s);
        // The order turns with each click, on another column too; the current row stays current.
        click(0);
        QCOMPARE(shown.Marks(), u"ArrowUp Blank Blank"_s);
        QCOMPARE(shown.Model.SourceRow(3), 1);
        QVERIFY(shown.List.selectionModel()->isRowSelected(3));
        // It holds for rows that come later.
        shown.Model.SetRows(VisitsOf(kFour));
        QCOMPARE(Texts(shown.Model, 0), u"|-2|9|10.5"_s);
    }

    void Rows_withoutAColumnAreRefused() {
        RowListModel model(kColumns);
        model.SetRows(VisitsOf(kFour));
        const auto error = ErrorOf([&] {
            model.SetRows(RowsOf({{u"Number"_s, ColumnKind::Integer}}, {}));
        });
        QCOMPARE(error.Number(), 3265);
        QVERIFY(error.Description().contains(u"Name"_s));
        QCOMPARE(model.rowCount(), 4);
    }

    void Row_starStandsBeforeTheFirstColumn() {
        Shown shown;
        shown.Model.SetImages([&shown](int row) {
            return shown.Model.TextAt(row, 1).startsWith(u'P') ? Image::Star : Image::Blank;
        });
        const auto starred = [&](int column) {
            QList<int> rows;
            for (int row = 0; row < 4; ++row) {
                const auto icon = shown.Model.index(row, column).data(Qt::DecorationRole);
                const QImage image = icon.value<QIcon>().pixmap(16, 16).toImage();
                if (!image.isNull() && image.pixelColor(8, 8).alpha() > 0)
                    rows << row;
            }
            return rows;
        };
        QCOMPARE(starred(0), (QList<int>{0, 3}));
        QCOMPARE(starred(1), QList<int>());
        shown.List.SortBy(1);
        QCOMPARE(starred(0), (QList<int>{2, 3}));
    }

    void Row_isChosenAndOpenedByMouse() {
        Shown shown;
        QTest::mouseClick(shown.List.viewport(), Qt::LeftButton, {}, QPoint(50, 250));
        shown.Click(2);
        QCOMPARE(shown.Chosen, (QList<QVariantList>{{2}}));
        shown.Click(2);
        QCOMPARE(shown.Chosen, (QList<QVariantList>{{2}, {2}}));
        QVERIFY(shown.Opened.isEmpty());
        QTest::mouseDClick(shown.List.viewport(), Qt::LeftButton, {}, shown.PlaceOf(2));
        QTest::mouseDClick(shown.List.viewport(), Qt::LeftButton, {}, QPoint(50, 250));
        QCOMPARE(shown.Opened, (QList<QVariantList>{{2}}));
    }

    void Row_isChosenOpenedAndCopiedByKey() {
        Shown shown;
        QTest::keyClick(&shown.List, Qt::Key_Return);
        QVERIFY(QTest::qWaitForWindowActive(&shown.List));
        shown.List.clearFocus();
        shown.List.setFocus(Qt::TabFocusReason);
        QVERIFY(shown.List.selectionModel()->isRowSelected(0));
        QTest::keyClick(&shown.List, Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8("9\tPérez\t2/1/2026"));
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Return, Qt::Key_Enter})
            QTest::keyClick(&shown.List, key);
        QCOMPARE(shown.Chosen, (QList<QVariantList>{{0}, {1}, {3}}));
        QCOMPARE(shown.Opened, (QList<QVariantList>{{3}, {3}}));
    }

    void Columns_areAtLeastAsWideAsStated() {
        Shown shown;
        for (int column = 0; column < 3; ++column)
            QVERIFY(shown.List.columnWidth(column) >=
                    Twips(kColumns[column].WidthTwips, &shown.List));
        QVERIFY(shown.List.columnWidth(2) >=
                shown.List.fontMetrics().horizontalAdvance(u"11/22/2025 8:30:00 AM"_s));
        // Nor wider with each search.
        const auto rows = VisitsOf(QString(500, u'x') + u"|1|"_s);
        shown.Model.SetRows(rows);
        const int width = shown.List.columnWidth(1);
        shown.Model.SetRows(rows);
        QCOMPARE(shown.List.columnWidth(1), width);
        QCOMPARE(Twips(1440, &shown.List), shown.List.logicalDpiX());
        QCOMPARE(Twips(1, &shown.List), 1);
    }
};

QTEST_MAIN(tst_ListView)
#include "tst_ListView.moc"
