#include <QApplication>
#include <QLineEdit>
#include <QtTest>

#include "FakeComponents.h"
#include "Rows.h"
#include "TestHospital.h"
#include "base/Numbers.h"
#include "db/Recordset.h"
#include "funds/frmPDAF.h"
#include "session/modGlobals.h"

using namespace Qt::StringLiterals;

/// The fund window over the demo hospital.
class tst_frmPDAF : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        const auto user = std::make_shared<fakes::User>();
        user->Session = m_connection;
        modGlobals::gCurrentUser = user;
        modGlobals::gConnection = m_connection;
        modGlobals::ApplyDepartmentCode(u"46"_s);
    }

    void Window_showsTheFundsOfAVisit_data() {
        Columns<QString, QString>();
        const auto visit = m_connection->Execute(
            u"SELECT TOP (1) v.HospNum, v.IdNum FROM BILLING..tbVisitAccount v INNER "
            "JOIN BILLING..tbFundCostCenter c ON c.AccountNum = v.FundAccountNum AND "
            "c.RevenueID = 'CY' WHERE v.PaidAmount > 0 ORDER BY v.IdNum"_s);
        QTest::newRow("sponsored") << visit->Fields(0).Text() << visit->Fields(1).Text();
        QTest::newRow("no fund") << u"nobody"_s << u"nowhere"_s;
    }

    void Window_showsTheFundsOfAVisit() {
        auto [hospNum, idNum] = Fetch<QString, QString>();
        const auto sum = [&](const QString& query) {
            return base::PlainText(
                m_connection->Execute(query.arg(hospNum, idNum))->Fields(0).Number());
        };
        const QString ofFunds =
            u"SELECT SUM(%3) FROM BILLING..tbFundAccount WHERE HospNum = '%1' AND "
            "AccountNum IN (SELECT AccountNum FROM BILLING..tbFundCostCenter WHERE "
            "RevenueID = 'CY') AND '%2' <> ''"_s;
        QStringList shown;
        QStringList closing;
        frmPDAF window;
        window.SetIdNum(idNum);
        window.SetHospNum(hospNum);
        QTimer::singleShot(0, this, [&] {
            for (const char* box :
                 {"txtTotalCDF", "txtCDFBalance", "txtHospBill", "txtNetHospBill"}) {
                auto* line = window.findChild<QLineEdit*>(QLatin1String(box));
                QVERIFY(line->isReadOnly());
                shown << line->text();
            }
            QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        });
        window.exec();
        QCOMPARE(shown.value(0), sum(ofFunds.arg(u"%1", u"%2", u"AllocatedFund")));
        QCOMPARE(shown.value(1), sum(ofFunds.arg(u"%1", u"%2", u"FundBalance")));
        // Net of what the funds paid; the demo's funds pay all of a visit's fees and supplies.
        const QString bill =
            sum(u"SELECT ISNULL((SELECT SUM(Amount) FROM BILLING..tbBill WHERE IdNum = '%2'), 0) + "
                "ISNULL((SELECT SUM(NetAmount) FROM BILLING..tbStockCard WHERE IdNum = '%2'), 0) "
                "AS Bill "
                "FROM PATIENT_DATA..tbHospitalInfo WHERE '%1' <> ''"_s);
        QCOMPARE(shown.value(2), bill);
        QCOMPARE(shown.value(3), u"0"_s);
    }

    void Window_isNotShownWithoutFigures() {
        frmPDAF window;
        window.SetIdNum(QString(QChar::Null));
        QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
        QVERIFY(!window.isVisible());
    }

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
};

QTEST_MAIN(tst_frmPDAF)
#include "tst_frmPDAF.moc"
