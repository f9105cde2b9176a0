#include <QtTest>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "base/Numbers.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "print/ReportPages.h"
#include "reports/OpenReport.h"
#include "session/modGlobals.h"

namespace {

const QString kPlain = QStringLiteral("ChargeSlip.rpt");
const QString kWithFunds = QStringLiteral("ChargeSlip_withPDAF.rpt");

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
    void initTestCase();
    void Slip_addsUpWhateverItsLength_data();
    void Slip_addsUpWhateverItsLength();
    void Slip_showsItsOwnStationsLines();

private:
    static QStringList Open(const QString& file);
    static void Stage(db::Connection& connection, int lines);

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<fakes::User> m_user = std::make_shared<fakes::User>();
};

void tst_SlipReports::initTestCase() {
    m_hospital = std::make_unique<TestHospital>();
    m_user->Session = m_hospital->Connect();
    m_user->Session->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    modGlobals::gCurrentUser = m_user;
    modGlobals::gCompany = QStringLiteral("Velmora General Hospital");
}

/// The text of each page.
QStringList tst_SlipReports::Open(const QString& file) {
    modMain::OpenReport(modMain::ProgramDirectory() + u'/' + file, QStringLiteral("CLINICAL_AREA"),
                        Parameters());
    const auto pages = modGlobals::gReport->Pages();
    QStringList texts;
    for (int page = 0; page < pages->Count(); ++page)
        texts << pages->Text(page);
    return texts;
}

/// Line n costs n x 10.05 with a discount of a tenth.
void tst_SlipReports::Stage(db::Connection& connection, int lines) {
    connection.Execute(QStringLiteral("DELETE CLINICAL_AREA..tbCAPDChargeSlip"));
    for (int n = 1; n <= lines; ++n) {
        const double amount = n * 10.05;
        const double discount = base::RoundDecimal(amount / 10, 2);
        connection.Execute(db::Call(
            QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip"),
            {QString::number(100 + n), QStringLiteral("DIALYSIS SOLUTION 1.5% 2 L, LINE %1").arg(n),
             QString::number(n), QStringLiteral("10.05"), base::PlainText(amount),
             QStringLiteral("CA"), QStringLiteral("4601"), base::PlainText(discount),
             base::PlainText(amount - discount)}));
    }
}

void tst_SlipReports::Slip_addsUpWhateverItsLength_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("lines");
    QTest::addColumn<int>("pages");
    QTest::newRow("plain, 1 line") << kPlain << 1 << 1;
    QTest::newRow("plain, 40 lines") << kPlain << 40 << 3;
    QTest::newRow("plain, none") << kPlain << 0 << 1;
    QTest::newRow("funds, 5 lines") << kWithFunds << 5 << 1;
    QTest::newRow("funds, 40 lines") << kWithFunds << 40 << 3;
    QTest::newRow("funds, none") << kWithFunds << 0 << 1;
}

void tst_SlipReports::Slip_addsUpWhateverItsLength() {
    QFETCH(QString, file);
    QFETCH(int, lines);
    QFETCH(int, pages);
    db::Connection& connection = *m_user->Session;
    Stage(connection, lines);
    const auto slip = connection.Execute(
        QStringLiteral("SELECT TOP (1) RefNum, COUNT(DISTINCT AccountNum), SUM(Amount) FROM "
                       "BILLING..tbCompanyPayment GROUP BY RefNum HAVING COUNT(DISTINCT "
                       "AccountNum) = 2 ORDER BY RefNum"));
    const double paid = slip->Fields(2).Number();
    const bool withFunds = file == kWithFunds && lines > 0;
    connection.Execute(db::Call(
        QStringLiteral("RADIOLOGY..spRadio_GenerateChargeSlip"),
        {lines > 0 ? slip->Fields(0).Text() : QStringLiteral("none"), QStringLiteral("4601")}));
    const QStringList texts = Open(file);
    QCOMPARE(texts.size(), pages);
    for (const QString& said : {QStringLiteral("CAPD CC No.: C15856D"), Parameters()[1],
                                QStringLiteral("200005 (old OLD-77)"), QStringLiteral("61 / F"),
                                Parameters()[11], QStringLiteral("Received by")}) {
        for (const QString& text : texts)
            QVERIFY2(text.contains(said), qPrintable(said + u'\n' + text));
    }
    if (lines == 0) {
        QVERIFY(texts[0].contains(QStringLiteral("There are no charges on this slip.")));
        return;
    }
    const QString all = texts.join(u'\n');
    double amount = 0;
    double discount = 0;
    for (int n = 1; n <= lines; ++n) {
        QVERIFY(all.contains(QStringLiteral("LINE %1\n").arg(n)));
        amount += n * 10.05;
        discount += base::RoundDecimal(n * 1.005, 2);
    }
    const auto says = [&texts](const QStringList& cells) {
        return texts.last().contains(u'\n' + cells.join(u'\n'));
    };
    QVERIFY2(says({withFunds ? QStringLiteral("Total charges") : QStringLiteral("TOTAL CHARGES"),
                   base::MoneyText(amount), base::MoneyText(discount),
                   base::MoneyText(amount - discount)}),
             qPrintable(texts.last()));
    if (withFunds) {
        QVERIFY2(says({QStringLiteral("Total paid from funds"), base::MoneyText(paid)}),
                 qPrintable(texts.last()));
        QVERIFY2(says({QStringLiteral("LEFT TO THE PATIENT"),
                       base::MoneyText(amount - discount - paid)}),
                 qPrintable(texts.last()));
    }
}

// A station that clears the slip of another one in mid-print would leave it half a slip: filling
// and reading are one transaction, so it has to wait. Rows that it left do not show here.
void tst_SlipReports::Slip_showsItsOwnStationsLines() {
    const auto other = m_hospital->Connect();
    Stage(*other, 7);
    m_user->Session->Execute(
        db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_PrintChargeSlip"),
                 {QStringLiteral("999"), QStringLiteral("OUR OWN"), QStringLiteral("1"),
                  QStringLiteral("5"), QStringLiteral("5"), QStringLiteral("CY"),
                  QStringLiteral("4601"), QStringLiteral("0"), QStringLiteral("5")}));
    const QString text = Open(kPlain).join(QString());
    QVERIFY(text.contains(QStringLiteral("OUR OWN")));
    QVERIFY(!text.contains(QStringLiteral("LINE")));
}

QTEST_MAIN(tst_SlipReports)
#include "tst_SlipReports.moc"
