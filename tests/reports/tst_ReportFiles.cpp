#include <QRegularExpression>
#include <QtTest>

#include "FakeComponents.h"
#include "Rows.h"
#include "TestHospital.h"
#include "base/Clock.h"
#include "base/Dates.h"
#include "base/Numbers.h"
#include "db/Recordset.h"
#include "print/ReportPages.h"
#include "reports/OpenReport.h"
#include "session/modGlobals.h"

using namespace Qt::StringLiterals;

/// The report files that come with the program, over the demo hospital.
class tst_ReportFiles : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_connection->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        modGlobals::gCompany = u"St. Agnes' Hospital"_s;
        m_start = base::ShortDate(base::Clock::Today().addDays(-60));
        m_end = base::ShortDate(base::Clock::Today());
    }

    void Patients_listTheWholeRegister() {
        const QString text = Open(u"CAPDPatients.rpt"_s, {});
        const int patients = int(Ask(u"SELECT COUNT(*) FROM tbCAPDPatient"_s));
        QVERIFY(patients > 50);
        QVERIFY2(text.contains(u"Patients on the register: %1\n"_s.arg(patients)),
                 qPrintable(text));
        const auto records = m_connection->Execute(u"SELECT CAPDNum FROM tbCAPDPatient"_s);
        for (; !records->Eof(); records->MoveNext())
            QVERIFY(text.contains(u'\n' + records->Fields(0).Text() + u'\n'));
    }

    void Visits_listThePeriodsLogBook() {
        const QString text =
            Open(u"CAPDVisits.rpt"_s, {m_start, m_end, modGlobals::gCompany, u"1 Hill Road"_s, {}});
        const int visits =
            int(Ask(u"SELECT COUNT(*) FROM tbCAPDLogBook WHERE TransDate >= '%1'"_s.arg(m_start)));
        QVERIFY(visits > 20);
        QVERIFY2(text.contains(u"Visits in this period: %1\n"_s.arg(visits)), qPrintable(text));
        QVERIFY(text.contains(u"%1 to %2"_s.arg(m_start, m_end)));
    }

    void Income_addsUpWhatItsDaysSay() {
        const QString text = Open(u"Incomereport.rpt"_s, {m_start, m_end});
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
        QCOMPARE(match.captured(1), u"TOTAL INCOME"_s);
        QCOMPARE(match.captured(3), base::MoneyText(amount));
        QCOMPARE(match.captured(4), base::MoneyText(discount));
        QCOMPARE(match.captured(5), base::MoneyText(amount - discount));
    }

    void Empty_periodsSaySo_data() {
        Columns<QString, QString>();
        QTest::newRow("visits") << u"CAPDVisits.rpt"_s
                                << u"No visit was registered in this period."_s;
        QTest::newRow("income") << u"Incomereport.rpt"_s
                                << u"Nothing was charged in this period."_s;
    }

    void Empty_periodsSaySo() {
        auto [file, said] = Fetch<QString, QString>();
        const QString day = u"1/1/1990"_s;
        QVERIFY(Open(file, {day, day}).contains(said));
    }

private:
    /// Everything that the report says.
    QString Open(const QString& file, const QStringList& parameters) {
        modMain::OpenReport(modMain::ProgramDirectory() + u'/' + file, u"CLINICAL_AREA"_s,
                            parameters);
        const auto pages = modGlobals::gReport->Pages();
        QString all;
        for (int page = 0; page < pages->Count(); ++page)
            all += pages->Text(page) + u'\n';
        return all;
    }

    double Ask(const QString& statement) {
        return m_connection->Execute(statement)->Fields(0).Number();
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    QString m_start;
    QString m_end;
};

QTEST_MAIN(tst_ReportFiles)
#include "tst_ReportFiles.moc"
