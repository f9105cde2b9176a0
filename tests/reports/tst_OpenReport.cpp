#include "reports/OpenReport.h"

#include <QtWidgets>

#include "Rows.h"
#include "Session.h"
#include "base/Dates.h"
#include "base/Numbers.h"
#include "print/ReportFiles.h"
#include "reports/UnitReports.h"
#include "reports/frmReportDate2.h"
#include "toolkit/DateEdit.h"

using namespace Qt::StringLiterals;

/// How reports are opened, and the unit's three reports over the demo hospital.
class tst_OpenReport : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { m_session = std::make_unique<Session>(); }
    void init() {
        modGlobals::gReport.reset();
        m_end = QDate::currentDate();
        m_start = m_end.addDays(-60);
    }
    void cleanupTestCase() { m_session.reset(); }

    void OpenReport_givesParametersInOrder_data() {
        Columns<QStringList, QString>();
        const QStringList values{u"a"_s, u"b"_s, u"c"_s};
        Row("none", QStringList(), "[][]");
        Row("fewer", values.first(1), "[a][]");
        Row("as many", values.first(2), "[a][b]");
        Row("more", values, "[a][b]");
    }

    void OpenReport_givesParametersInOrder() {
        auto [values, shown] = Fetch<QStringList, QString>();
        modMain::OpenReport(
            m_files.Write(
                u"<report><query>SELECT 1 AS n FROM {{database}}..tbDosage</query>"
                "<tables><table database=\"A\" name=\"t\"/><table database=\"B\" "
                "name=\"u\"/></tables>"
                "<header>{{title}}: [{{param.B}}][{{param.A}}]</header>"
                "<parameters><parameter name=\"B\"/><parameter name=\"A\"/></parameters></report>"_s),
            u"STATION"_s, values);
        QCOMPARE(modGlobals::gReport->Pages()->Text(0), modGlobals::gCompany + u": "_s + shown);
        for (const auto& table : modGlobals::gReport->Tables())
            QCOMPARE(table.Database, u"STATION"_s);
    }

    void OpenReport_keepsTheReportBeforeOnFailure() {
        const auto open = [](const QString& file) {
            return FaultOf([&] { modMain::OpenReport(file, {}, {}); });
        };
        const auto query = [this](const char* text) {
            return m_files.Write(u"<report><query>%1</query></report>"_s.arg(QLatin1String(text)));
        };
        QCOMPARE(open(query("SELECT 1 AS n")), u"no error"_s);
        const auto before = modGlobals::gReport;
        QCOMPARE(open(u"/nowhere/Slip.rpt"_s), u"File not found: /nowhere/Slip.rpt"_s);
        QVERIFY(open(query("SELECT * FROM tbNowhere")).contains(u"tbNowhere"));
        QCOMPARE(modGlobals::gReport, before);
    }

    void Patients_listTheWholeRegister() {
        const QString text = Shown(&modMain::PrintCAPDPatients);
        const QString numbers = Ask(u"SELECT CAPDNum FROM CLINICAL_AREA..tbCAPDPatient"_s);
        QVERIFY(numbers.count(u';') > 50);
        QVERIFY(text.contains(u"Patients on the register: %1\n"_s.arg(numbers.count(u';') + 1)));
        for (const QString& number : numbers.split(u';'))
            QVERIFY(text.contains(u'\n' + number + u'\n'));
    }

    void Visits_listThePeriodsLogBook() {
        const QString text = Shown(&modMain::PrintCAPDVisits);
        const QString start = base::ShortDate(m_start);
        const QString visits =
            Ask(u"SELECT COUNT(*) FROM CLINICAL_AREA..tbCAPDLogBook WHERE TransDate >= '%1'"_s.arg(
                start));
        QVERIFY(visits.toInt() > 20);
        for (const QString& said : {modGlobals::gCompany, modGlobals::gAddress1, u"by Nurse One"_s,
                                    u"%1 to %2"_s.arg(start, base::ShortDate(m_end)),
                                    u"Visits in this period: %1\n"_s.arg(visits)})
            QVERIFY2(text.contains(said), qPrintable(said + text));
    }

    void Income_addsUpWhatItsDaysSay() {
        static const QRegularExpression totals(
            uR"((Total of|TOTAL INCOME)[^\n]*\n(\d+)\n(-?[\d.]+)\n(-?[\d.]+)\n(-?[\d.]+)\n)"_s);
        const QString text = Shown(&modMain::PrintIncome);
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

    void Empty_periodsSaySo() {
        m_start = m_end = QDate(1990, 1, 1);
        QVERIFY(
            Shown(&modMain::PrintCAPDVisits).contains(u"No visit was registered in this period."));
        QVERIFY(Shown(&modMain::PrintIncome).contains(u"Nothing was charged in this period."));
    }

    void Dates_cancelledProduceNothing() {
        for (const auto produce : {&modMain::PrintCAPDVisits, &modMain::PrintIncome}) {
            QTimer::singleShot(0, this, [] {
                QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Escape);
            });
            produce();
            QVERIFY(!modGlobals::gReport);
        }
    }

private:
    /// All that the viewer shows of a report for the days from m_start to m_end. Closed, it leaves
    /// no report behind.
    QString Shown(void (*produce)()) {
        QString text;
        const auto look = [&text] {
            QWidget* viewer = QApplication::activeModalWidget();
            for (int page = 0; page < modGlobals::gReport->Pages()->Count(); ++page)
                text += modGlobals::gReport->Pages()->Text(page) + u'\n';
            QTest::keyClick(viewer, Qt::Key_Escape);
        };
        QTimer::singleShot(0, this, [&] {
            auto* dates = qobject_cast<frmReportDate2*>(QApplication::activeModalWidget());
            if (!dates)
                return look();
            dates->findChild<toolkit::DateEdit*>(u"dtStart"_s)->setDate(m_start);
            dates->findChild<toolkit::DateEdit*>(u"dtEnd"_s)->setDate(m_end);
            QTimer::singleShot(0, this, look);
            QTest::keyClick(dates, Qt::Key_Return);
        });
        produce();
        return modGlobals::gReport ? u"the report is left"_s : text;
    }

    std::unique_ptr<Session> m_session;
    ReportFiles m_files;
    QDate m_start;
    QDate m_end;
};

QTEST_MAIN(tst_OpenReport)
#include "tst_OpenReport.moc"
