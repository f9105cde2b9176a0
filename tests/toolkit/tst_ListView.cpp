#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include "Rows.h"
#include "base/Errors.h"
#include "toolkit/ListView.h"
#include "toolkit/Twips.h"

using namespace Qt::StringLiterals;
using namespace toolkit;
using embedded::ColumnKind;

namespace {

const std::vector<ListColumn> kColumns{
    {u" No."_s, 1000, u"Number"_s}, {u" Name"_s, 1500, u"Name"_s}, {u" Seen"_s, 1900, u"Seen"_s}};

std::shared_ptr<db::RowStore> EmptyRows() {
    auto rows = std::make_shared<db::RowStore>();
    rows->BeginResult({{u"Name"_s, ColumnKind::Text},
                       {u"NUMBER"_s, ColumnKind::Double},
                       {u"Seen"_s, ColumnKind::DateTime}});
    return rows;
}

void AddRow(db::RowStore& rows, const char* name, double number, const char* seen) {
    rows.Text(name);
    rows.Double(number);
    rows.DateTime(seen);
    rows.EndRow();
}

std::shared_ptr<db::RowStore> FourRows() {
    auto rows = EmptyRows();
    AddRow(*rows, "Pérez", 9, "2026-02-01 00:00:00.000");
    AddRow(*rows, "perez", 10.5, "2025-11-22 08:30:00.000");
    rows->Null();
    rows->Null();
    rows->Null();
    rows->EndRow();
    AddRow(*rows, "Perla", -2, "2026-01-31 23:59:59.000");
    return rows;
}

QStringList Texts(const RowListModel& model, int column) {
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts.append(model.TextAt(row, column));
    return texts;
}

/// A list of four rows on the screen.
struct Shown {
    RowListModel Model{kColumns};
    ListView List;

    explicit Shown(std::shared_ptr<const db::RowStore> rows = FourRows()) {
        List.SetListModel(&Model, kColumns);
        Model.SetRows(std::move(rows));
        List.resize(600, 300);
        List.show();
    }
    QPoint PlaceOf(int row) { return List.visualRect(Model.index(row, 1)).center(); }
    void ClickHeader(int column) {
        QHeaderView* header = List.header();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(column) + 30, 5));
    }
};

}  // namespace

class tst_ListView final : public QObject {
    Q_OBJECT
private slots:
    void Sort_comparesByKind_data() {
        Columns<int, QStringList>();
        const auto strings = [](std::initializer_list<const char*> texts) {
            QStringList list;
            for (const char* text : texts)
                list.append(QString::fromUtf8(text));
            return list;
        };
        QTest::newRow("numbers") << 0 << strings({"", "-2", "9", "10.5"});
        QTest::newRow("texts") << 1 << strings({"", "perez", "Pérez", "Perla"});
        QTest::newRow("moments") << 2
                                 << strings({"", "11/22/2025 8:30:00 AM", "1/31/2026 11:59:59 PM",
                                             "2/1/2026"});
    }

    void Sort_comparesByKind() {
        auto [column, ascending] = Fetch<int, QStringList>();
        RowListModel model(kColumns);
        model.SetRows(FourRows());
        model.sort(column, Qt::AscendingOrder);
        QCOMPARE(Texts(model, column), ascending);
        model.sort(column, Qt::DescendingOrder);
        QCOMPARE(Texts(model, column), QStringList(ascending.rbegin(), ascending.rend()));
    }

    void Sort_keepsEqualRowsInTheirOrder() {
        auto rows = EmptyRows();
        for (int number = 0; number < 6; ++number)
            AddRow(*rows, number % 2 ? "CRUZ" : "cruz ", number, "");
        RowListModel model(kColumns);
        model.SetRows(rows);
        const QStringList before = Texts(model, 0);
        for (const auto order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            model.sort(1, order);
            QCOMPARE(Texts(model, 0), before);
        }
    }

    void Header_clickSortsAndMarks() {
        Shown shown;
        const auto marks = [&] {
            return QStringList{shown.List.HeaderMark(0), shown.List.HeaderMark(1),
                               shown.List.HeaderMark(2)};
        };
        const QString blank = u"Blank"_s;
        const QString up = u"ArrowUp"_s, down = u"ArrowDown"_s;
        QCOMPARE(marks(), (QStringList{blank, blank, blank}));
        shown.ClickHeader(1);
        QCOMPARE(marks(), (QStringList{blank, up, blank}));
        QCOMPARE(shown.Model.TextAt(3, 1), u"Perla"_s);
        shown.ClickHeader(1);
        QCOMPARE(marks(), (QStringList{blank, down, blank}));
        QCOMPARE(shown.Model.TextAt(0, 1), u"Perla"_s);
        // The order turns with each click, on another column too.
        shown.ClickHeader(0);
        QCOMPARE(marks(), (QStringList{up, blank, blank}));
    }

    void Header_sortHoldsForRowsThatComeLater() {
        Shown shown;
        shown.List.SortBy(0);
        shown.Model.SetRows(FourRows());
        QCOMPARE(shown.List.HeaderMark(0), u"ArrowUp"_s);
        QCOMPARE(Texts(shown.Model, 0).last(), u"10.5"_s);
    }

    void Sort_keepsTheCurrentRow() {
        Shown shown;
        shown.List.setCurrentIndex(shown.Model.index(1, 0));
        shown.List.SortBy(0);
        QCOMPARE(shown.List.currentIndex().row(), 3);
        QCOMPARE(shown.Model.SourceRow(3), 1);
        QVERIFY(shown.List.selectionModel()->isRowSelected(3));
    }

    void Rows_withoutAColumnAreRefused() {
        auto rows = std::make_shared<db::RowStore>();
        rows->BeginResult({{u"Number"_s, ColumnKind::Integer}});
        RowListModel model(kColumns);
        model.SetRows(FourRows());
        try {
            model.SetRows(rows);
            QFAIL("rows without a column were taken");
        } catch (const base::DatabaseError& error) {
            QCOMPARE(error.Number(), 3265);
            QVERIFY(error.Description().contains(u"Name"_s));
        }
        QCOMPARE(model.rowCount(), 4);
    }

    void Row_starStandsBeforeTheFirstColumn() {
        Shown shown;
        shown.Model.SetImages([&shown](int row) {
            return shown.Model.TextAt(row, 1).startsWith(u'P') ? toolkit::Image::Star
                                                               : toolkit::Image::Blank;
        });
        const auto isDrawn = [&](int row, int column) {
            const auto icon =
                shown.Model.index(row, column).data(Qt::DecorationRole).value<QIcon>();
            const QImage image = icon.pixmap(16, 16).toImage();
            return !image.isNull() && image.pixelColor(8, 8).alpha() > 0;
        };
        QVERIFY(isDrawn(0, 0));
        QVERIFY(!isDrawn(0, 1));
        QVERIFY(!isDrawn(1, 0));
        shown.List.SortBy(1);
        QVERIFY(!isDrawn(0, 0));
        QVERIFY(isDrawn(2, 0));
        QVERIFY(isDrawn(3, 0));
    }

    void Row_isChosenAndOpenedByMouse() {
        Shown shown;
        QSignalSpy chosen(&shown.List, &ListView::RowChosen),
            opened(&shown.List, &ListView::RowOpened);
        QTest::mouseClick(shown.List.viewport(), Qt::LeftButton, {}, shown.PlaceOf(2));
        QCOMPARE(chosen.takeFirst(), QVariantList{2});
        QVERIFY(chosen.isEmpty());
        QTest::mouseClick(shown.List.viewport(), Qt::LeftButton, {}, shown.PlaceOf(2));
        QCOMPARE(chosen.size(), 1);
        QVERIFY(opened.isEmpty());
        QTest::mouseDClick(shown.List.viewport(), Qt::LeftButton, {}, shown.PlaceOf(2));
        QCOMPARE(opened.takeFirst(), QVariantList{2});
        QTest::mouseDClick(shown.List.viewport(), Qt::LeftButton, {}, QPoint(50, 250));
        QVERIFY(opened.isEmpty());
    }

    void Row_isChosenAndOpenedByKey() {
        Shown shown;
        QSignalSpy chosen(&shown.List, &ListView::RowChosen),
            opened(&shown.List, &ListView::RowOpened);
        QTest::keyClick(&shown.List, Qt::Key_Return);
        QVERIFY(opened.isEmpty());
        QVERIFY(QTest::qWaitForWindowActive(&shown.List));
        shown.List.clearFocus();
        shown.List.setFocus(Qt::TabFocusReason);
        QCOMPARE(chosen.takeFirst(), QVariantList{0});
        QVERIFY(shown.List.selectionModel()->isRowSelected(0));
        QTest::keyClick(&shown.List, Qt::Key_Down);
        QTest::keyClick(&shown.List, Qt::Key_End);
        QCOMPARE(chosen.size(), 2);
        QCOMPARE(chosen.last(), QVariantList{3});
        QTest::keyClick(&shown.List, Qt::Key_Return);
        QTest::keyClick(&shown.List, Qt::Key_Enter);
        QCOMPARE(opened.size(), 2);
        QCOMPARE(opened.last(), QVariantList{3});
    }

    void Row_isCopied() {
        Shown shown;
        shown.List.setCurrentIndex(shown.Model.index(0, 0));
        QTest::keyClick(&shown.List, Qt::Key_Insert, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), QString::fromUtf8("9\tPérez\t2/1/2026"));
    }

    void Columns_areAtLeastAsWideAsStated() {
        Shown shown;
        for (int column = 0; column < 3; ++column)
            QVERIFY(shown.List.columnWidth(column) >=
                    Twips(kColumns[column].WidthTwips, &shown.List));
        QVERIFY(shown.List.columnWidth(2) >=
                shown.List.fontMetrics().horizontalAdvance(u"11/22/2025 8:30:00 AM"_s));
        // Nor wider with each search.
        const auto rows = EmptyRows();
        AddRow(*rows, QByteArray(500, 'x').constData(), 1, "2026-01-31 23:59:59.000");
        shown.Model.SetRows(rows);
        const int width = shown.List.columnWidth(1);
        shown.Model.SetRows(rows);
        QCOMPARE(shown.List.columnWidth(1), width);
        QCOMPARE(Twips(1440, &shown.List), shown.List.logicalDpiX());
        QCOMPARE(Twips(1, &shown.List), 1);
        QCOMPARE(Twips(0, &shown.List), 0);
    }

    void LongList_appearsAndSortsAtOnce() {
        constexpr int kRows = 100000;
        // Far above what it takes here, far below what comparing shown texts or asking each row
        // for its size would take.
        auto rows = EmptyRows();
        quint32 seed = 1;
        for (int row = 0; row < kRows; ++row) {
            seed = seed * 1664525u + 1013904223u;
            const QByteArray name = "Peña-" + QByteArray::number(seed % 50000);
            const QByteArray seen =
                "2026-01-" + QByteArray::number(10 + seed / 7 % 20) + " 10:00:00.000";
            AddRow(*rows, name.constData(), seed % 1000, seen.constData());
        }
        Shown shown(EmptyRows());
        shown.Model.SetRows(rows);
        QCOMPARE(shown.List.grab().isNull(), false);
        shown.List.setCurrentIndex(shown.Model.index(kRows / 2, 0));
        for (int column = 0; column < 3; ++column)
            shown.List.SortBy(column);
        QCOMPARE(shown.Model.SourceRow(shown.List.currentIndex().row()), kRows / 2);
    }
};

QTEST_MAIN(tst_ListView)
#include "tst_ListView.moc"
