#include "reports/OpenReport.h"

#include <QTimer>
#include <QtTest>

#include "FakeComponents.h"
#include "base/Clock.h"
#include "print/PageView.h"
#include "print/ReportFiles.h"
#include "reports/UnitReports.h"
#include "reports/frmReportDate2.h"
#include "reports/frmReportViewer.h"
#include "session/modGlobals.h"

class tst_OpenReport : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void OpenReport_givesParametersInOrder_data();
    void OpenReport_givesParametersInOrder();
    void OpenReport_logsEveryTableOn();
    void OpenReport_keepsTheReportBeforeOnFailure();
    void ShowReport_showsAFreshViewerAndReleasesTheReport();
    void UnitReports_openWithTheirTitleAndCommand_data();
    void UnitReports_openWithTheirTitleAndCommand();
    void UnitReports_produceNothingWhenCancelled();

private:
    void Answer(const QStringList& columns);

    std::unique_ptr<ReportFiles> m_files;
    std::shared_ptr<fakes::User> m_user;
    FakeServer m_server;
};

void tst_OpenReport::init() {
    m_files = std::make_unique<ReportFiles>();
    m_server = FakeServer();
    Answer({QStringLiteral("Name")});
    m_user = std::make_shared<fakes::User>();
    m_user->Session = std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server));
    modGlobals::gCurrentUser = m_user;
    base::Clock::Replace([] { return QDateTime(QDate(2026, 3, 10), QTime(9, 30)); });
    modGlobals::gCompany = QStringLiteral("St. Agnes' Hospital");
    modGlobals::gAddress1 = QStringLiteral("1 Hill Road");
}

void tst_OpenReport::cleanup() {
    modGlobals::gReport.reset();
}

void tst_OpenReport::Answer(const QStringList& columns) {
    m_server.Answer = [columns](const QString&, embedded::RowSink& sink) {
        std::vector<embedded::ResultColumn> kinds;
        for (const QString& column : columns)
            kinds.push_back({column, embedded::ColumnKind::Text});
        sink.BeginResult(kinds);
        for (qsizetype i = 0; i < columns.size(); ++i)
            sink.Text("Dela Cruz");
        sink.EndRow();
        return qint64(-1);
    };
}

void tst_OpenReport::OpenReport_givesParametersInOrder_data() {
    QTest::addColumn<QStringList>("values");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, const QStringList& values, const QString& shown) {
        QTest::newRow(name) << values << shown;
    };
    const QString a = QStringLiteral("a");
    const QString b = QStringLiteral("b");
    row("none", {}, QStringLiteral("St. Agnes' Hospital: [][]"));
    row("fewer", {a}, QStringLiteral("St. Agnes' Hospital: [a][]"));
    row("as many", {a, b}, QStringLiteral("St. Agnes' Hospital: [a][b]"));
    row("more", {a, b, QStringLiteral("c")}, QStringLiteral("St. Agnes' Hospital: [a][b]"));
}

void tst_OpenReport::OpenReport_givesParametersInOrder() {
    QFETCH(QStringList, values);
    modMain::OpenReport(
        m_files->Write(QStringLiteral(
            "<report><query>P</query><header>{{title}}: [{{param.B}}][{{param.A}}]</header>"
            "<parameters><parameter name=\"B\"/><parameter name=\"A\"/></parameters></report>")),
        QStringLiteral("CLINICAL_AREA"), values);
    QTEST(modGlobals::gReport->Pages()->Text(0), "shown");
}

void tst_OpenReport::OpenReport_logsEveryTableOn() {
    modMain::OpenReport(
        m_files->Write(QStringLiteral(
            "<report><query>SELECT 1</query><tables><table database=\"A\" name=\"t\"/>"
            "<table database=\"B\" name=\"u\"/></tables></report>")),
        QStringLiteral("STATION"), {});
    for (const auto& table : modGlobals::gReport->Tables()) {
        QCOMPARE(table.Server, QStringLiteral("SERVER"));
        QCOMPARE(table.Database, QStringLiteral("STATION"));
    }
    QCOMPARE(m_server.Steps, QStringList(QStringLiteral("SELECT 1")));
}

void tst_OpenReport::OpenReport_keepsTheReportBeforeOnFailure() {
    const QString good = m_files->Write(QStringLiteral("<report><query>P</query></report>"));
    modMain::OpenReport(good, {}, {});
    const auto before = modGlobals::gReport;
    const QString missing = modMain::ProgramDirectory() + QStringLiteral("/Missing.rpt");
    QCOMPARE(FaultOf([&] { modMain::OpenReport(missing, {}, {}); }),
             QStringLiteral("File not found: ") + missing);
    m_server.Answer = [](const QString&, embedded::RowSink&) -> qint64 {
        throw base::DatabaseError(208, QStringLiteral("Invalid object name 'P'."));
    };
    QCOMPARE(FaultOf([&] { modMain::OpenReport(good, {}, {}); }),
             QStringLiteral("Invalid object name 'P'."));
    QCOMPARE(modGlobals::gReport, before);
}

void tst_OpenReport::ShowReport_showsAFreshViewerAndReleasesTheReport() {
    for (int i = 0; i < 2; ++i) {
        modMain::OpenReport(m_files->Write(QStringLiteral("<report><query>P</query></report>")), {},
                            {});
        bool looked = false;
        QTimer::singleShot(0, this, [&] {
            auto* viewer = qobject_cast<frmReportViewer*>(QApplication::activeModalWidget());
            looked = viewer && viewer->windowTitle() == u"CAPD ChargeSlip" &&
                     viewer->findChild<QWidget*>(QStringLiteral("CRViewer1")) &&
                     modGlobals::gReport;
            QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
        });
        modMain::ShowReport(false, QStringLiteral("CAPD ChargeSlip"), false);
        QVERIFY(looked);
        QVERIFY(!modGlobals::gReport);
    }
    QCOMPARE(frmReportViewer().windowTitle(), QStringLiteral("VIEW REPORT"));
}

void tst_OpenReport::UnitReports_openWithTheirTitleAndCommand_data() {
    QTest::addColumn<int>("report");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("command");
    QTest::addColumn<QStringList>("columns");
    QTest::addColumn<QStringList>("printed");
    const auto names = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
    QTest::newRow("patients")
        << 0 << QStringLiteral("List of CAPD Patients")
        << QStringLiteral("CLINICAL_AREA..sp_CAPD_ReportPatients")
        << names(
               "CAPDNum HospNum LastName FirstName MiddleName Age Sex TypeOfPD Status Diagnosis "
               "RegisteredAt LatestVisit Visits")
        << QStringList{QStringLiteral("St. Agnes' Hospital")};
    QTest::newRow("visits")
        << 1 << QStringLiteral("CAPD Visits Report")
        << QStringLiteral("CLINICAL_AREA..sp_CAPD_ReportVisits '3/10/2026','3/10/2026'")
        << names(
               "TransDate IdNum CAPDNum HospNum LastName FirstName MiddleName Age Sex TypeOfPD "
               "Purpose Diagnosis Weight BP Remarks")
        << QStringList{QStringLiteral("St. Agnes' Hospital"), QStringLiteral("1 Hill Road"),
                       QStringLiteral("3/10/2026 to 3/10/2026"), QStringLiteral("by Nurse One")};
    QTest::newRow("income")
        << 2 << QStringLiteral("IncomeReport")
        << QStringLiteral("CLINICAL_AREA..sp_CAPD_ReportIncome '3/10/2026','3/10/2026'")
        << names("ChargeDay RevenueID Revenue Kind Lines Amount Discount NetAmount FundPaid")
        << QStringList{QStringLiteral("St. Agnes' Hospital"), QStringLiteral("TOTAL INCOME")};
}

void tst_OpenReport::UnitReports_openWithTheirTitleAndCommand() {
    QFETCH(int, report);
    QFETCH(QStringList, columns);
    QFETCH(QStringList, printed);
    Answer(columns);
    QString title;
    QString text;
    const auto look = [&] {
        title = QApplication::activeModalWidget()->windowTitle();
        text = modGlobals::gReport->Pages()->Text(0);
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
    };
    const auto enter = [&] {
        QTimer::singleShot(0, this, look);
        QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return);
    };
    if (report == 0)
        QTimer::singleShot(0, this, look);
    else
        QTimer::singleShot(0, this, enter);
    const std::array produce = {&modMain::PrintCAPDPatients, &modMain::PrintCAPDVisits,
                                &modMain::PrintIncome};
    produce[size_t(report)]();
    QTEST(title, "title");
    QTEST(m_server.Steps.join(u'|'), "command");
    for (const QString& part : printed)
        QVERIFY2(text.contains(part), qPrintable(text));
}

void tst_OpenReport::UnitReports_produceNothingWhenCancelled() {
    for (const auto produce : {&modMain::PrintCAPDVisits, &modMain::PrintIncome}) {
        QTimer::singleShot(
            0, this, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape); });
        produce();
        QVERIFY(m_server.Steps.isEmpty());
        QVERIFY(!modGlobals::gReport);
    }
}

QTEST_MAIN(tst_OpenReport)
#include "tst_OpenReport.moc"
