#include "Rows.h"
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

using namespace Qt::StringLiterals;

class tst_OpenReport : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_files = std::make_unique<ReportFiles>();
        m_server = FakeServer();
        Answer({u"Name"_s});
        m_user = std::make_shared<fakes::User>();
        m_user->Session = std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server));
        modGlobals::gCurrentUser = m_user;
        base::Clock::Replace([] { return QDateTime(QDate(2026, 3, 10), QTime(9, 30)); });
        modGlobals::gCompany = u"St. Agnes' Hospital"_s;
        modGlobals::gAddress1 = u"1 Hill Road"_s;
    }

    void cleanup() { modGlobals::gReport.reset(); }

    void OpenReport_givesParametersInOrder_data() {
        Columns<QStringList, QString>();
        const auto row = [](const char* name, const QStringList& values, const QString& shown) {
            QTest::newRow(name) << values << shown;
        };
        const QString a = u"a"_s;
        const QString b = u"b"_s;
        row("none", {}, u"St. Agnes' Hospital: [][]"_s);
        row("fewer", {a}, u"St. Agnes' Hospital: [a][]"_s);
        row("as many", {a, b}, u"St. Agnes' Hospital: [a][b]"_s);
        row("more", {a, b, u"c"_s}, u"St. Agnes' Hospital: [a][b]"_s);
    }

    void OpenReport_givesParametersInOrder() {
        auto [values, shown] = Fetch<QStringList, QString>();
        modMain::OpenReport(
            m_files->Write(
                u"<report><query>P</query><header>{{title}}: [{{param.B}}][{{param.A}}]</header>"
                "<parameters><parameter name=\"B\"/><parameter name=\"A\"/></parameters></report>"_s),
            u"CLINICAL_AREA"_s, values);
        QCOMPARE(modGlobals::gReport->Pages()->Text(0), shown);
    }

    void OpenReport_logsEveryTableOn() {
        modMain::OpenReport(
            m_files->Write(
                u"<report><query>SELECT 1</query><tables><table database=\"A\" name=\"t\"/>"
                "<table database=\"B\" name=\"u\"/></tables></report>"_s),
            u"STATION"_s, {});
        for (const auto& table : modGlobals::gReport->Tables()) {
            QCOMPARE(table.Server, u"SERVER"_s);
            QCOMPARE(table.Database, u"STATION"_s);
        }
        QCOMPARE(m_server.Steps, QStringList(u"SELECT 1"_s));
    }

    void OpenReport_keepsTheReportBeforeOnFailure() {
        const QString good = m_files->Write(u"<report><query>P</query></report>"_s);
        modMain::OpenReport(good, {}, {});
        const auto before = modGlobals::gReport;
        const QString missing = modMain::ProgramDirectory() + u"/Missing.rpt"_s;
        QCOMPARE(FaultOf([&] { modMain::OpenReport(missing, {}, {}); }),
                 u"File not found: "_s + missing);
        m_server.Answer = [](const QString&, embedded::RowSink&) -> qint64 {
            throw base::DatabaseError(208, u"Invalid object name 'P'."_s);
        };
        QCOMPARE(FaultOf([&] { modMain::OpenReport(good, {}, {}); }),
                 u"Invalid object name 'P'."_s);
        QCOMPARE(modGlobals::gReport, before);
    }

    void ShowReport_showsAFreshViewerAndReleasesTheReport() {
        for (int i = 0; i < 2; ++i) {
            modMain::OpenReport(m_files->Write(u"<report><query>P</query></report>"_s), {}, {});
            bool looked = false;
            QTimer::singleShot(0, this, [&] {
                auto* viewer = qobject_cast<frmReportViewer*>(QApplication::activeModalWidget());
                looked = viewer && viewer->windowTitle() == u"CAPD ChargeSlip" &&
                         viewer->findChild<QWidget*>(u"CRViewer1"_s) && modGlobals::gReport;
                QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            });
            modMain::ShowReport(false, u"CAPD ChargeSlip"_s, false);
            QVERIFY(looked);
            QVERIFY(!modGlobals::gReport);
        }
        QCOMPARE(frmReportViewer().windowTitle(), u"VIEW REPORT"_s);
    }

    void UnitReports_openWithTheirTitleAndCommand_data() {
        Columns<int, QString, QString, QStringList, QStringList>();
        const auto names = [](const char* text) { return QString::fromLatin1(text).split(u' '); };
        QTest::newRow("patients") << 0 << u"List of CAPD Patients"_s
                                  << u"CLINICAL_AREA..sp_CAPD_ReportPatients"_s
                                  << names(
                                         "CAPDNum HospNum LastName FirstName MiddleName Age Sex "
                                         "TypeOfPD Status Diagnosis "
                                         "RegisteredAt LatestVisit Visits")
                                  << QStringList{u"St. Agnes' Hospital"_s};
        QTest::newRow("visits")
            << 1 << u"CAPD Visits Report"_s
            << u"CLINICAL_AREA..sp_CAPD_ReportVisits '3/10/2026','3/10/2026'"_s
            << names(
                   "TransDate IdNum CAPDNum HospNum LastName FirstName MiddleName Age Sex TypeOfPD "
                   "Purpose Diagnosis Weight BP Remarks")
            << QStringList{u"St. Agnes' Hospital"_s, u"1 Hill Road"_s, u"3/10/2026 to 3/10/2026"_s,
                           u"by Nurse One"_s};
        QTest::newRow("income")
            << 2 << u"IncomeReport"_s
            << u"CLINICAL_AREA..sp_CAPD_ReportIncome '3/10/2026','3/10/2026'"_s
            << names("ChargeDay RevenueID Revenue Kind Lines Amount Discount NetAmount FundPaid")
            << QStringList{u"St. Agnes' Hospital"_s, u"TOTAL INCOME"_s};
    }

    void UnitReports_openWithTheirTitleAndCommand() {
        auto [report, title, command, columns, printed] =
            Fetch<int, QString, QString, QStringList, QStringList>();
        Answer(columns);
        QString shownTitle;
        QString text;
        const auto look = [&] {
            shownTitle = QApplication::activeModalWidget()->windowTitle();
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
        QCOMPARE(shownTitle, title);
        QCOMPARE(m_server.Steps.join(u'|'), command);
        for (const QString& part : printed)
            QVERIFY2(text.contains(part), qPrintable(text));
    }

    void UnitReports_produceNothingWhenCancelled() {
        for (const auto produce : {&modMain::PrintCAPDVisits, &modMain::PrintIncome}) {
            QTimer::singleShot(0, this, [] {
                QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            });
            produce();
            QVERIFY(m_server.Steps.isEmpty());
            QVERIFY(!modGlobals::gReport);
        }
    }

private:
    void Answer(const QStringList& columns) {
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

    std::unique_ptr<ReportFiles> m_files;
    std::shared_ptr<fakes::User> m_user;
    FakeServer m_server;
};

QTEST_MAIN(tst_OpenReport)
#include "tst_OpenReport.moc"
