#include <QtTest>

#include "Rows.h"
#include "Session.h"
#include "base/Numbers.h"
#include "print/ReportPages.h"
#include "reports/OpenReport.h"

using namespace Qt::StringLiterals;

namespace {

const QString kPlain = u"ChargeSlip.rpt"_s;
const QString kWithFunds = u"ChargeSlip_withPDAF.rpt"_s;

QStringList Parameters() {
    return QString::fromUtf8(
               "CAPD CC No.: C15856D|DELA PEÑA-O'HARA, Maria Consolación Luz|C-1001 "
               "Velmora Relief Fund|A7300005B|Nurse One|4601|11/23/2026|VELMORA|"
               "Dunmarrow|200005|OPD|DR. ANSELMO & Sons|OLD-77|61|F|11/23/2026|Pay "
               "Patient")
        .split(u'|');
}

}  // namespace

/// The two charge slips as they leave the printer.
class tst_SlipReports : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { m_session = std::make_unique<Session>(); }
    void cleanupTestCase() {
        modGlobals::gReport.reset();
        m_session.reset();
    }

    void Slip_addsUpWhateverItsLength_data() {
        Columns<QString, int, int>();
        Row("plain, 1 line", kPlain, 1, 1);
        Row("plain, 40 lines", kPlain, 40, 3);
        Row("plain, none", kPlain, 0, 1);
        Row("funds, 5 lines", kWithFunds, 5, 1);
        Row("funds, 40 lines", kWithFunds, 40, 3);
        Row("funds, none", kWithFunds, 0, 1);
    }

    void Slip_addsUpWhateverItsLength() {
        auto [file, lines, pages] = Fetch<QString, int, int>();
        Stage(m_session->Connection(), lines);
        const QStringList slip = Ask(u"SELECT TOP (1) RefNum, SUM(Amount) FROM "
                                     u"BILLING..tbCompanyPayment GROUP BY RefNum "
                                     "HAVING COUNT(DISTINCT AccountNum) = 2 ORDER BY RefNum"_s)
                                     .split(u'|');
        const double paid = slip[1].toDouble();
        const bool withFunds = file == kWithFunds && lines > 0;
        Do(u"RADIOLOGY..spRadio_GenerateChargeSlip '%1','4601'"_s.arg(lines > 0 ? slip[0]
                                                                                : u"none"_s));
        const QStringList texts = Open(file);
        QCOMPARE(texts.size(), pages);
        for (const QString& said :
             {u"CAPD CC No.: C15856D"_s, Parameters()[1], u"200005 (old OLD-77)"_s, u"61 / F"_s,
              Parameters()[11], u"Received by"_s}) {
            for (const QString& text : texts)
                QVERIFY2(text.contains(said), qPrintable(said + u'\n' + text));
        }
        if (lines == 0) {
            QVERIFY(texts[0].contains(u"There are no charges on this slip."_s));
            return;
        }
        const QString all = texts.join(u'\n');
        double amount = 0;
        double discount = 0;
        for (int n = 1; n <= lines; ++n) {
            QVERIFY(all.contains(u"LINE %1\n"_s.arg(n)));
            amount += n * 10.05;
            discount += base::RoundDecimal(n * 1.005, 2);
        }
        const auto says = [&texts](const char* what, std::initializer_list<double> sums) {
            QString cells = u'\n' + QLatin1String(what);
            for (const double sum : sums)
                cells += u'\n' + base::MoneyText(sum);
            return texts.last().contains(cells);
        };
        QVERIFY2(says(withFunds ? "Total charges" : "TOTAL CHARGES",
                      {amount, discount, amount - discount}),
                 qPrintable(texts.last()));
        QCOMPARE(says("Total paid from funds", {paid}), withFunds);
        QCOMPARE(says("LEFT TO THE PATIENT", {amount - discount - paid}), withFunds);
    }

    // A station that clears the slip of another one in mid-print would leave it half a slip:
    // filling and reading are one transaction, so it has to wait. Rows that it left do not show
    // here.
    void Slip_showsItsOwnStationsLines() {
        Stage(*m_session->Hospital().Connect(), 7);
        Do(u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '999','OUR OWN','1','5','5','CY','4601','0','5'"_s);
        const QString text = Open(kPlain).join(QString());
        QVERIFY(text.contains(u"OUR OWN"_s));
        QVERIFY(!text.contains(u"LINE"_s));
    }

private:
    /// The text of each page.
    static QStringList Open(const QString& file) {
        modMain::OpenReport(modMain::ProgramDirectory() + u'/' + file, u"CLINICAL_AREA"_s,
                            Parameters());
        const auto pages = modGlobals::gReport->Pages();
        QStringList texts;
        for (int page = 0; page < pages->Count(); ++page)
            texts << pages->Text(page);
        return texts;
    }

    /// Line n costs n x 10.05 with a discount of a tenth.
    static void Stage(db::Connection& connection, int lines) {
        connection.Execute(u"DELETE CLINICAL_AREA..tbCAPDChargeSlip"_s);
        for (int n = 1; n <= lines; ++n) {
            const double amount = n * 10.05;
            const double discount = base::RoundDecimal(amount / 10, 2);
            connection.Execute(
                u"CLINICAL_AREA..sp_CAPD_PrintChargeSlip '%1','DIALYSIS SOLUTION, LINE "
                "%2','%2','10.05','%3','CA','4601','%4','%5'"_s.arg(100 + n)
                    .arg(n)
                    .arg(base::PlainText(amount), base::PlainText(discount),
                         base::PlainText(amount - discount)));
        }
    }

    std::unique_ptr<Session> m_session;
};

QTEST_MAIN(tst_SlipReports)
#include "tst_SlipReports.moc"
