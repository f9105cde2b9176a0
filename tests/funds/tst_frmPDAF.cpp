#include "funds/frmPDAF.h"

#include "WindowTest.h"

/// The fund window over the demo hospital.
class tst_frmPDAF : public WindowTest {
    Q_OBJECT
private slots:
    void init() { SetUp(); }
    void cleanup() { TearDown(); }

    void Window_showsTheFundsOfAVisit() {
        const QString visit = Ask(
            u"SELECT TOP (1) v.HospNum, v.IdNum FROM BILLING..tbVisitAccount v INNER JOIN "
            "BILLING..tbFundCostCenter c ON c.AccountNum = v.FundAccountNum AND c.RevenueID = 'CY' "
            "WHERE v.PaidAmount > 0 ORDER BY v.IdNum"_s);
        const QString hospNum = visit.section(u'|', 0, 0), idNum = visit.section(u'|', 1);
        // The demo's funds pay all of a visit's fees and supplies; this fee is not paid yet.
        Do(u"INSERT INTO BILLING..tbBill (RefNum, IdNum, HospNum, RevenueID, ItemCode, Amount, "
           "UserID, TransDate) VALUES ('C1D', '%1', '%2', 'CY', '501', 450.25, '4601', "
           "GETDATE())"_s.arg(idNum, hospNum));
        const QString expected =
            Ask(u"SELECT SUM(AllocatedFund), SUM(FundBalance), (SELECT SUM(Amount) FROM "
                "BILLING..tbBill WHERE IdNum = '%2') + ISNULL((SELECT SUM(NetAmount) FROM "
                "BILLING..tbStockCard WHERE IdNum = '%2'), 0), 450.25 FROM BILLING..tbFundAccount "
                "WHERE HospNum = '%1' AND AccountNum IN (SELECT AccountNum FROM "
                "BILLING..tbFundCostCenter WHERE RevenueID = 'CY')"_s.arg(hospNum, idNum));
        QCOMPARE(Shown(hospNum, idNum), expected);
        QCOMPARE(Shown(u"nobody"_s, u"nowhere"_s), u"0|0|0|0"_s);
    }

    void Window_isNotShownWithoutFigures() {
        frmPDAF window;
        PluggedDriver::GoesAfter(1);
        QVERIFY_EXCEPTION_THROWN(window.exec(), base::DatabaseError);
        QVERIFY(!window.isVisible());
    }

private:
    /// Allocated, left, billed and left to pay, until Enter closes the window.
    QString Shown(const QString& hospNum, const QString& idNum) {
        frmPDAF window;
        window.SetIdNum(idNum);
        window.SetHospNum(hospNum);
        QStringList shown;
        QTimer::singleShot(0, this, [&] {
            for (const char* box :
                 {"txtTotalCDF", "txtCDFBalance", "txtHospBill", "txtNetHospBill"})
                shown << TextOf(window, box);
            QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        });
        window.exec();
        return shown.join(u'|');
    }
};

QTEST_MAIN(tst_frmPDAF)
#include "tst_frmPDAF.moc"
