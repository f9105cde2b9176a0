#include "print/ReportPages.h"

#include "print/ReportFiles.h"

using namespace Qt::StringLiterals;

namespace {

const QString kBody =
    u"<body><column heading=\"No.\" width=\"10\">row {{Line}}.</column>"
    "<column heading=\"Patient\" width=\"30\">{{Name}}</column>"
    "<column heading=\"Amount\" width=\"12\">{{Amount}}</column></body>"_s;
const QString kHeader = u"<header><h3>Head {{page}}</h3></header>"_s;
const QString kFooter = u"<footer><p>Page {{page}} of {{pages}}, {{count}} rows</p></footer>"_s;

QStringList LinesOf(const print::ReportPages& pages) {
    QString all;
    for (int page = 0; page < pages.Count(); ++page)
        all += pages.Text(page) + u'\n';
    return all.split(u'\n');
}

QStringList LinesOf(const print::ReportPages& pages, const QString& beginning) {
    QStringList lines = LinesOf(pages);
    lines.removeIf([&](const QString& line) { return !line.startsWith(beginning); });
    return lines;
}

double LowestBaseline(const print::ReportPages& pages, int page) {
    double lowest = 0;
    for (const auto& text : pages.Page(page).Texts)
        lowest = std::max(lowest, text.Baseline.y());
    return lowest;
}

}  // namespace

class tst_ReportPages : public QObject {
    Q_OBJECT
private slots:
    void init() {
        using embedded::ColumnKind;
        m_files = std::make_unique<ReportFiles>();
        m_files->Columns = {{u"Day"_s, ColumnKind::Integer},
                            {u"Line"_s, ColumnKind::Integer},
                            {u"Name"_s, ColumnKind::Text},
                            {u"Amount"_s, ColumnKind::Double}};
        m_daySize = 1000000;
        m_amount = [](int) { return 0.1; };
        m_name = u"Dela Cruz, Maria Concepcion"_s;
        m_files->Fill = [this](int row, embedded::RowSink& sink) {
            sink.Integer(row / m_daySize);
            sink.Integer(row);
            sink.Text(m_name.toStdString());
            sink.Double(m_amount(row));
        };
    }

    void Paging_printsEveryRowOnceBetweenHeaderAndFooter() {
        for (const int rows : {1, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 500}) {
            const auto pages = Pages(rows, kHeader + kBody + kFooter);
            QStringList expected;
            for (int row = 0; row < rows; ++row)
                expected += u"row %1."_s.arg(row);
            QCOMPARE(LinesOf(*pages, u"row"_s), expected);
            for (int page = 0; page < pages->Count(); ++page) {
                const QString text = pages->Text(page);
                QVERIFY(text.startsWith(u"Head %1\nNo.\nPatient\nAmount\nrow"_s.arg(page + 1)));
                QVERIFY(text.endsWith(
                    u"\nPage %1 of %2, %3 rows"_s.arg(page + 1).arg(pages->Count()).arg(rows)));
                QVERIFY(LowestBaseline(*pages, page) <
                        pages->SheetSize().height() - 12 / 25.4 * print::kUnitsPerInch);
                const auto& texts = pages->Page(page).Texts;
                const double lastRow = texts[texts.size() - 2].Baseline.y();
                QVERIFY(lastRow + 9 * print::kUnitsPerPoint < texts.back().Baseline.y());
            }
        }
    }

    void Paging_keepsTotalsOfGroupsAndReport() {
        m_daySize = 60;
        const auto pages =
            Pages(130, kBody +
                           u"<group by=\"Day\"><header><p>Day {{Day}}: {{count}}</p></header>"
                           "<footer totals=\"yes\"><cell span=\"2\">Sum of {{Day}}</cell>"
                           "<cell>of day {{sum.Amount}}</cell></footer></group>"
                           "<summary><p>All {{count}}: {{sum.Amount}}, {{sum.Line}}</p>"
                           "</summary>"_s);
        QCOMPARE(LinesOf(*pages, u"Day"_s).join(u'|'), u"Day 0: 60|Day 1: 60|Day 2: 10"_s);
        QCOMPARE(LinesOf(*pages, u"of day"_s).join(u'|'), u"of day 6.00|of day 6.00|of day 1.00"_s);
        QCOMPARE(LinesOf(*pages, u"All"_s).join(u'|'), u"All 130: 13.00, 8385"_s);
        QCOMPARE(LinesOf(*pages, u"row"_s).size(), 130);
    }

    void Paging_keepsHeadersAndTotalsWithTheirRows() {
        // Every size of the first group, so that the second begins at every height of the page.
        for (m_daySize = 20; m_daySize < 60; ++m_daySize) {
            const auto pages = Pages(
                m_daySize + 2, kBody +
                                   u"<group by=\"Day\"><header><p>Day {{Day}}</p></header></group>"
                                   "<summary totals=\"yes\"><cell>Total</cell></summary>"_s);
            QStringList lines;
            for (int page = 0; page < pages->Count(); ++page)
                lines += pages->Text(page).split(u'\n') + QStringList(u"end of page"_s);
            const QString last = u"row %1."_s.arg(m_daySize);
            QCOMPARE(lines.value(lines.indexOf(u"Day 1"_s) + 1), last);
            const QString end = pages->Text(pages->Count() - 1);
            QVERIFY2(end.contains(u"row %1."_s.arg(m_daySize + 1)), qPrintable(end));
            QVERIFY(end.endsWith(u"Total"));
        }
    }

    void Paging_cutsNoRowInHalf() {
        m_name =
            u"A name so long that it needs quite a few lines of its narrow column, three at least"_s;
        const auto pages = Pages(90, kBody);
        QVERIFY(pages->Count() > 2);
        // The lines of a wrapped cell are joined again by reading: whole names only.
        QCOMPARE(LinesOf(*pages, u"A name"_s), QStringList(90, m_name));
    }

    void Paging_continuesARowLongerThanAPage() {
        QStringList words;
        for (int i = 0; i < 2000; ++i)
            words += u"word%1"_s.arg(i);
        m_name = words.join(u' ');
        const auto pages = Pages(2, kHeader + kBody + kFooter);
        QStringList printed = LinesOf(*pages).join(u' ').split(u' ');
        printed.removeIf([](const QString& word) { return !word.startsWith(u"word"); });
        QCOMPARE(printed, words + words);
        for (int page = 0; page < pages->Count(); ++page) {
            QVERIFY(LowestBaseline(*pages, page) < pages->SheetSize().height());
            for (const auto& text : pages->Page(page).Texts)
                QVERIFY(text.Baseline.y() > 0);
        }
    }

    void Paging_alignsMoneyAtOneEdge() {
        m_amount = [](int row) { return std::pow(100.0, row); };
        const auto pages = Pages(3, kBody);
        QList<int> edges;
        for (const auto& text : pages->Page(0).Texts) {
            if (text.Text.contains(u".00") || text.Text == u"Amount")
                edges += qRound(
                    text.Baseline.x() +
                    QFontMetricsF(pages->Style(text.Style).Font).horizontalAdvance(text.Text));
        }
        QCOMPARE(edges.size(), 4);
        QVERIFY(std::abs(*std::max_element(edges.begin(), edges.end()) -
                         *std::min_element(edges.begin(), edges.end())) <= print::kUnitsPerPoint);
    }

    void Paging_saysWhenThereIsNothing() {
        const auto pages = Pages(0, kBody +
                                        u"<norows><p>No patient.</p></norows>"
                                        "<summary><p>{{count}} in all</p></summary>"_s +
                                        kFooter);
        QCOMPARE(pages->Text(0),
                 u"No.\nPatient\nAmount\nNo patient.\n0 in all\n"
                 "Page 1 of 1, 0 rows"_s);
    }

    void Paging_isQuickWithTenThousandRows() {
        QElapsedTimer timer;
        timer.start();
        const auto pages = Pages(10000, kHeader + kBody + kFooter);
        QCOMPARE(LinesOf(*pages, u"row"_s).size(), 10000);
        // About a second on a desk computer; sanitizers and busy machines get room.
        QVERIFY2(timer.elapsed() < 8000, qPrintable(QString::number(timer.elapsed())));
    }

    void Find_seesWrappedAndStyledTexts() {
        m_name = u"Juan Carlos Fernandez de la Reguera y Águilera, son of Maria"_s;
        const auto pages =
            Pages(60, kBody + u"<footer><p>Name and <b>bold</b>er names</p></footer>"_s);
        QVERIFY(pages->Count() > 1);
        const auto names = pages->Find(u"reguera y aguilera, SON of"_s);
        QCOMPARE(names.size(), size_t(60));
        QVERIFY(names[0].Places.size() >= 2);
        QVERIFY(names[0].Places[0].top() < names[0].Places[1].top());
        const auto styled = pages->Find(u"bolder"_s);
        QCOMPARE(styled.size(), size_t(pages->Count()));
        QCOMPARE(styled[1].Page, 1);
        QCOMPARE(styled[0].Places.size(), size_t(2));
        QVERIFY(pages->Find({}).empty());
        QVERIFY(pages->Find(u"nobody"_s).empty());
    }

    void Html_keepsColumnsRulesAndColours() {
        const auto pages =
            Pages(0,
                  u"<header><table width=\"100%\"><tr><td width=\"50%\">left</td><td width=\"50%\" "
                  "align=\"right\">right</td></tr></table><hr/><p><span "
                  "style=\"color:#c00000;font-size:20pt\">"
                  "big</span></p></header>"_s);
        const auto& texts = pages->Page(0).Texts;
        QCOMPARE(texts.size(), size_t(3));
        QCOMPARE(texts[0].Baseline.y(), texts[1].Baseline.y());
        QVERIFY(texts[1].Baseline.x() > pages->SheetSize().width() / 2);
        QCOMPARE(pages->Style(texts[2].Style).Color, QColor(0xc0, 0, 0));
        // A painter fills in from its device what a font leaves open: the family must not be.
        QVERIFY(pages->Style(texts[2].Style).Font.resolveMask() & QFont::FamiliesResolved);
        QCOMPARE(pages->Style(texts[2].Style).Font.pixelSize(), 20 * print::kUnitsPerPoint);
        QCOMPARE(pages->Page(0).Rules.size(), size_t(1));
        QVERIFY(pages->Page(0).Rules[0].Line.length() > pages->SheetSize().width() / 2);
    }

private:
    /// Rows of a group number, a line number, a name and an amount of 0.10 each.
    std::shared_ptr<const print::ReportPages> Pages(int rows, const QString& parts) {
        m_files->RowCount = rows;
        return m_files->PagesOf(
            u"<report paper=\"A5\"><query>P</query><fields><field name=\"Day\" "
            "format=\"number\"/><field name=\"Line\" format=\"number\"/><field name=\"Name\"/>"
            "<field name=\"Amount\" format=\"money\"/></fields>%1</report>"_s.arg(parts));
    }

    std::unique_ptr<ReportFiles> m_files;
    int m_daySize = 0;
    std::function<double(int row)> m_amount;
    QString m_name;
};

QTEST_MAIN(tst_ReportPages)
#include "tst_ReportPages.moc"
