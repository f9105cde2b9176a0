#include "print/ReportPages.h"

#include <QElapsedTimer>
#include <QFontMetricsF>
#include <QtTest>

#include "print/ReportFiles.h"
#include "print/ReportOutput.h"

using namespace Qt::StringLiterals;

namespace {

/// Rows of a group number, a line number, a name and an amount of 0.10 each.
QString Layout(const QString& parts) {
    return u"<report paper=\"A5\"><query>P</query><fields><field name=\"Day\" "
           "format=\"number\"/><field name=\"Line\" format=\"number\"/><field name=\"Name\"/>"
           "<field name=\"Amount\" format=\"money\"/></fields>%1</report>"_s.arg(parts);
}

const QString kBody =
    u"<body><column heading=\"No.\" width=\"10\">row {{Line}}.</column>"
    "<column heading=\"Patient\" width=\"30\">{{Name}}</column>"
    "<column heading=\"Amount\" width=\"12\">{{Amount}}</column></body>"_s;
const QString kHeader = u"<header><h3>Head {{page}}</h3></header>"_s;
const QString kFooter = u"<footer><p>Page {{page}} of {{pages}}, {{count}} rows</p></footer>"_s;

QStringList LinesOf(const print::ReportPages& pages, const QString& beginning) {
    QStringList found;
    for (int page = 0; page < pages.Count(); ++page) {
        const QStringList lines = pages.Text(page).split(u'\n');
        for (const QString& line : lines) {
            if (line.startsWith(beginning))
                found += line;
        }
    }
    return found;
}

double LowestBaseline(const print::ReportPages& pages, int page, bool highest = false) {
    double edge = highest ? 1e9 : 0;
    for (const auto& text : pages.Page(page).Texts)
        edge = highest ? std::min(edge, text.Baseline.y()) : std::max(edge, text.Baseline.y());
    return edge;
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
        m_name = "Dela Cruz, Maria Concepcion";
        m_files->Fill = [this](int row, embedded::RowSink& sink) {
            sink.Integer(row / m_daySize);
            sink.Integer(row);
            sink.Text(std::string_view(m_name.constData(), size_t(m_name.size())));
            sink.Double(0.1);
        };
    }

    void Paging_printsEveryRowOnceBetweenHeaderAndFooter_data() {
        QTest::addColumn<int>("rows");
        for (const int rows : {1, 37, 38, 39, 40, 41, 42, 43, 44, 45, 46, 47, 500})
            QTest::addRow("%d rows", rows) << rows;
    }

    void Paging_printsEveryRowOnceBetweenHeaderAndFooter() {
        QFETCH(int, rows);
        m_files->RowCount = rows;
        const auto pages = m_files->PagesOf(Layout(kHeader + kBody + kFooter));
        QStringList expected;
        for (int row = 0; row < rows; ++row)
            expected += u"row %1."_s.arg(row);
        QCOMPARE(LinesOf(*pages, u"row"_s), expected);
        for (int page = 0; page < pages->Count(); ++page) {
            const QString text = pages->Text(page);
            QVERIFY(text.startsWith(u"Head %1\nNo.\nPatient\nAmount\nrow"_s.arg(page + 1)));
            QVERIFY(text.endsWith(
                u"\nPage %1 of %2, %3 rows"_s.arg(page + 1).arg(pages->Count()).arg(rows)));
            const QRectF paper(QPointF(), pages->SheetSize());
            QVERIFY(LowestBaseline(*pages, page) <
                    paper.bottom() - 12 / 25.4 * print::kUnitsPerInch);
            const auto& texts = pages->Page(page).Texts;
            const double lastRow = texts[texts.size() - 2].Baseline.y();
            QVERIFY(lastRow + 9 * print::kUnitsPerPoint < texts.back().Baseline.y());
        }
    }

    void Paging_keepsTotalsOfGroupsAndReport() {
        m_files->RowCount = 130;
        m_daySize = 60;
        const auto pages = m_files->PagesOf(
            Layout(kBody + u"<group by=\"Day\"><header><p>Day {{Day}}: {{count}}</p></header>"
                           "<footer totals=\"yes\"><cell span=\"2\">Sum of {{Day}}</cell>"
                           "<cell>of day {{sum.Amount}}</cell></footer></group>"
                           "<summary><p>All {{count}}: {{sum.Amount}}, {{sum.Line}}</p>"
                           "</summary>"_s));
        QCOMPARE(LinesOf(*pages, u"Day"_s),
                 QStringList({u"Day 0: 60"_s, u"Day 1: 60"_s, u"Day 2: 10"_s}));
        QCOMPARE(LinesOf(*pages, u"of day"_s),
                 QStringList({u"of day 6.00"_s, u"of day 6.00"_s, u"of day 1.00"_s}));
        QCOMPARE(LinesOf(*pages, u"All"_s), QStringList(u"All 130: 13.00, 8385"_s));
        QCOMPARE(LinesOf(*pages, u"row"_s).size(), 130);
    }

    void Paging_keepsAGroupsHeaderWithItsFirstRow() {
        const QString grouped =
            Layout(kBody + u"<group by=\"Day\"><header><p>Day {{Day}}</p></header></group>"_s);
        // Every size of the first group, so that the second begins at every height of the page.
        for (m_daySize = 20; m_daySize < 60; ++m_daySize) {
            m_files->RowCount = m_daySize + 2;
            const auto pages = m_files->PagesOf(grouped);
            for (int page = 0; page < pages->Count(); ++page) {
                const QStringList lines = pages->Text(page).split(u'\n');
                const auto at = lines.indexOf(u"Day 1"_s);
                if (at >= 0)
                    QCOMPARE(lines.value(at + 1), u"row %1."_s.arg(m_daySize));
            }
        }
    }

    void Paging_keepsTotalsWithTheLastRow() {
        const QString totalled =
            Layout(kBody + u"<summary totals=\"yes\"><cell>Total</cell></summary>"_s);
        for (int rows = 30; rows < 60; ++rows) {
            m_files->RowCount = rows;
            const auto pages = m_files->PagesOf(totalled);
            const QString last = pages->Text(pages->Count() - 1);
            QVERIFY2(last.contains(u"row %1."_s.arg(rows - 1)), qPrintable(last));
            QVERIFY(last.endsWith(u"Total"));
        }
    }

    void Paging_cutsNoRowInHalf() {
        m_name =
            "A name so long that it needs quite a few lines of its narrow column, three at least";
        m_files->RowCount = 90;
        const auto pages = m_files->PagesOf(Layout(kBody));
        QVERIFY(pages->Count() > 2);
        QCOMPARE(LinesOf(*pages, u"row"_s).size(), 90);
        // The lines of a wrapped cell are joined again by reading: whole names only.
        QCOMPARE(LinesOf(*pages, u"A name"_s), QStringList(90, QString::fromUtf8(m_name)));
    }

    void Paging_continuesARowLongerThanAPage() {
        QStringList words;
        for (int i = 0; i < 2000; ++i)
            words += u"word%1"_s.arg(i);
        m_name = words.join(u' ').toUtf8();
        m_files->RowCount = 2;
        const auto pages = m_files->PagesOf(Layout(kHeader + kBody + kFooter));
        QStringList printed;
        for (int page = 0; page < pages->Count(); ++page) {
            const QStringList all = pages->Text(page).split(QRegularExpression(u"\\s"_s));
            for (const QString& word : all) {
                if (word.startsWith(u"word"))
                    printed += word;
            }
            QVERIFY(LowestBaseline(*pages, page) < pages->SheetSize().height());
            QVERIFY(LowestBaseline(*pages, page, true) > 0);
        }
        QCOMPARE(printed, words + words);
    }

    void Paging_alignsMoneyAtOneEdge() {
        m_files->RowCount = 3;
        m_files->Fill = [](int row, embedded::RowSink& sink) {
            sink.Integer(0);
            sink.Integer(row);
            sink.Text("x");
            sink.Double(std::pow(100.0, row));
        };
        const auto pages = m_files->PagesOf(Layout(kBody));
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
        const auto pages = m_files->PagesOf(Layout(kBody +
                                                   u"<norows><p>No patient.</p></norows>"
                                                   "<summary><p>{{count}} in all</p></summary>"_s +
                                                   kFooter));
        QCOMPARE(pages->Text(0),
                 u"No.\nPatient\nAmount\nNo patient.\n0 in all\n"
                 "Page 1 of 1, 0 rows"_s);
    }

    void Paging_isQuickWithTenThousandRows() {
        m_files->RowCount = 10000;
        const auto report = m_files->Open(Layout(kHeader + kBody + kFooter));
        report->ReadRecords(m_files->Connection());
        QElapsedTimer timer;
        timer.start();
        const auto pages = report->Pages();
        const qint64 took = timer.elapsed();
        qInfo("%d pages in %lld ms", pages->Count(), took);
        QCOMPARE(LinesOf(*pages, u"row"_s).size(), 10000);
        // About a second on a desk computer; sanitizers and busy machines get room.
        QVERIFY2(took < 8000, qPrintable(QString::number(took)));
    }

    void Find_seesWrappedAndStyledTexts() {
        m_name = "Juan Carlos Fernandez de la Reguera y Águilera, son of Maria";
        m_files->RowCount = 60;
        const auto pages = m_files->PagesOf(
            Layout(kBody + u"<footer><p>Name and <b>bold</b>er names</p></footer>"_s));
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
        const auto pages = m_files->PagesOf(Layout(
            u"<header><table width=\"100%\"><tr><td width=\"50%\">left</td><td width=\"50%\" "
            "align=\"right\">right</td></tr></table><hr/><p><span "
            "style=\"color:#c00000;font-size:20pt\">"
            "big</span></p></header>"_s));
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

    void PdfOf_makesOneSheetAPage() {
        m_files->RowCount = 100;
        const auto pages = m_files->PagesOf(Layout(kHeader + kBody + kFooter));
        const QByteArray pdf = print::PdfOf(*pages, u"Visits"_s);
        QVERIFY(pdf.startsWith("%PDF-") && pdf.trimmed().endsWith("%%EOF"));
        QVERIFY(pdf.contains("/Count " + QByteArray::number(pages->Count())));
        // Fonts that tell which letters they draw: what makes the text searchable.
        QVERIFY(pdf.contains("/ToUnicode"));
    }

private:
    std::unique_ptr<ReportFiles> m_files;
    int m_daySize = 1000000;
    QByteArray m_name;
};

QTEST_MAIN(tst_ReportPages)
#include "tst_ReportPages.moc"
