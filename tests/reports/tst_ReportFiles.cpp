#include <QRegularExpression>
#include <QtTest>

#include "FakeComponents.h"
#include "TestHospital.h"
#include "base/Clock.h"
#include "base/Dates.h"
#include "base/Numbers.h"
#include "db/Recordset.h"
#include "print/ReportPages.h"
#include "reports/OpenReport.h"
#include "session/modGlobals.h"

/// The report files that come with the program, over the demo hospital.
class tst_ReportFiles : public QObject {
    Q_OBJECT
private slots:
    void initTestCase();
    void Patients_listTheWholeRegister();
    void Visits_listThePeriodsLogBook();
    void Income_addsUpWhatItsDaysSay();
    void Empty_periodsSaySo_data();
    void Empty_periodsSaySo();

private:
    QString Open(const QString& file, const QStringList& parameters);
    double Ask(const QString& statement);

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    QString m_start;
    QString m_end;
};

void tst_ReportFiles::initTestCase() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_connection->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    const auto user = std::make_shared<fakes::User>();
    user->Session = m_connection;
    modGlobals::gCurrentUser = user;
    modGlobals::gCompany = QStringLiteral("St. Agnes' Hospital");
    m_start = base::ShortDate(base::Clock::Today().addDays(-60));
    m_end = base::ShortDate(base::Clock::Today());
}

/// Everything that the report says.
QString tst_ReportFiles::Open(const QString& file, const QStringList& parameters) {
    modMain::OpenReport(modMain::ProgramDirectory() + u'/' + file, QStringLiteral("CLINICAL_AREA"),
                        parameters);
    const auto pages = modGlobals::gReport->Pages();
    QString all;
    for (int page = 0; page < pages->Count(); ++page)
        all += pages->Text(page) + u'\n';
    return all;
}

double tst_ReportFiles::Ask(const QString& statement) {
    return m_connection->Execute(statement)->Fields(0).Number();
}

void tst_ReportFiles::Patients_listTheWholeRegister() {
    const QString text = Open(QStringLiteral("CAPDPatients.rpt"), {});
    const int patients = int(Ask(QStringLiteral("SELECT COUNT(*) FROM tbCAPDPatient")));
    QVERIFY(patients > 50);
    QVERIFY2(text.contains(QStringLiteral("Patients on the register: %1\n").arg(patients)),
             qPrintable(text));
    const auto records = m_connection->Execute(QStringLiteral("SELECT CAPDNum FROM tbCAPDPatient"));
    for (; !records->Eof(); records->MoveNext())
        QVERIFY(text.contains(u'\n' + records->Fields(0).Text() + u'\n'));
}

void tst_ReportFiles::Visits_listThePeriodsLogBook() {
    const QString text =
        Open(QStringLiteral("CAPDVisits.rpt"),
             {m_start, m_end, modGlobals::gCompany, QStringLiteral("1 Hill Road"), {}});
    const int visits = int(Ask(
        QStringLiteral("SELECT COUNT(*) FROM tbCAPDLogBook WHERE TransDate >= '%1'").arg(m_start)));
    QVERIFY(visits > 20);
    QVERIFY2(text.contains(QStringLiteral("Visits in this period: %1\n").arg(visits)),
             qPrintable(text));
    QVERIFY(text.contains(QStringLiteral("%1 to %2").arg(m_start, m_end)));
}

void tst_ReportFiles::Income_addsUpWhatItsDaysSay() {
    const QString text = Open(QStringLiteral("Incomereport.rpt"), {m_start, m_end});
    static const QRegularExpression totals(QStringLiteral(
        R"((Total of|TOTAL INCOME)[^\n]*\n(\d+)\n(-?[\d.]+)\n(-?[\d.]+)\n(-?[\d.]+)\n)"));
    double amount = 0;
    double discount = 0;
    int days = 0;
    QRegularExpressionMatch match;
    for (auto it = totals.globalMatch(text); it.hasNext(); ++days) {
        match = it.next();
        if (match.captured(1) == u"TOTAL INCOME")
            break;
        amount += match.captured(3).toDouble();
        discount += match.captured(4).toDouble();
    }
    QVERIFY2(days > 5, qPrintable(text));
    QCOMPARE(match.captured(1), QStringLiteral("TOTAL INCOME"));
    QCOMPARE(match.captured(3), base::MoneyText(amount));
    QCOMPARE(match.captured(4), base::MoneyText(discount));
    QCOMPARE(match.captured(5), base::MoneyText(amount - discount));
}

void tst_ReportFiles::Empty_periodsSaySo_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("said");
    QTest::newRow("visits") << QStringLiteral("CAPDVisits.rpt")
                            << QStringLiteral("No visit was registered in this period.");
    QTest::newRow("income") << QStringLiteral("Incomereport.rpt")
                            << QStringLiteral("Nothing was charged in this period.");
}

void tst_ReportFiles::Empty_periodsSaySo() {
    QFETCH(QString, file);
    QFETCH(QString, said);
    const QString day = QStringLiteral("1/1/1990");
    QVERIFY(Open(file, {day, day}).contains(said));
}

QTEST_MAIN(tst_ReportFiles)
#include "tst_ReportFiles.moc"
