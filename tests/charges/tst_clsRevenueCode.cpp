#include "Rows.h"
#include "charges/clsRevenueCode.h"

#include <QPushButton>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/PickListKeys.h"
#include "patients/frmSearch.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;

namespace {

QString Command(const char* arguments) {
    return u"CLINICAL_AREA..sp_CAPD_SearchRevenue "_s + QString::fromUtf8(arguments);
}

QString Attributes(const clsRevenueCode& revenue) {
    return QStringList{revenue.RevenueID(),  revenue.Revenue(),
                       revenue.WithItems(),  revenue.SearchInventory() ? u"stock"_s : QString(),
                       revenue.LocationID(), revenue.InventoryCode()}
        .join(u'|');
}

}  // namespace

class tst_clsRevenueCode final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_user = std::make_shared<fakes::User>();
        m_user->Session = m_hospital->Connect();
        m_user->Session->SetDefaultDatabase(u"CLINICAL_AREA"_s);
        modGlobals::gCurrentUser = m_user;
    }

    void Code_thatIsExactIsAcceptedAtOnce_data() {
        Columns<QString, QString>();
        QTest::newRow("supplies") << "CA"
                                  << "CA|CAPD SUPPLIES|Y|stock|46|CA";
        QTest::newRow("small letters") << "ca"
                                       << "CA|CAPD SUPPLIES|Y|stock|46|CA";
        QTest::newRow("no location") << "CY"
                                     << "CY|CAPD CONSULTATION FEE|Y|||";
        QTest::newRow("the only description that begins so") << "PHARM"
                                                             << "PH|PHARMACY|Y|stock|20|PH";
    }

    void Code_thatIsExactIsAcceptedAtOnce() {
        auto [typed, attributes] = Fetch<QString, QString>();
        clsRevenueCode revenue;
        PickListKeys keys;
        const CommandLog log;
        QString code = typed;
        QVERIFY(revenue.ValidateRevenue(code));
        QCOMPARE(code, typed);
        QCOMPARE(Attributes(revenue), attributes);
        QCOMPARE(log.Sent, QStringList(Command("'1','") + typed + u'\''));
        QCOMPARE(keys.Shown, 0);
    }

    void Code_thatMayMeanSeveralIsPickedFromTheList() {
        clsRevenueCode revenue;
        const CommandLog log;
        PickListKeys keys([](QDialog& list) {
            QCOMPARE(list.windowTitle(), u"Revenue Codes"_s);
            auto* box = list.findChild<QLineEdit*>(u"txtSearchStr"_s);
            QCOMPARE(box->text(), u"cap"_s);
            QTest::keyClick(box, Qt::Key_Down);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
        });
        QString code = u"cap"_s;
        QVERIFY(revenue.ValidateRevenue(code));
        QCOMPARE(code, u"CA"_s);
        QCOMPARE(revenue.RevenueID(), u"CA"_s);
        QCOMPARE(revenue.LocationID(), u"46"_s);
        QCOMPARE(log.Sent,
                 QStringList({Command("'1','cap'"), Command("'2','cap'"),
                              u"sp_CAPD_SearchRevenue '0','cap'"_s, Command("'1','CA'")}));
    }

    void Code_whoseListIsCancelledIsRefusedSilently() {
        clsRevenueCode revenue;
        QString code = u"MD"_s;
        QVERIFY(revenue.ValidateRevenue(code));
        const toolkit::BoxScript boxes;
        PickListKeys keys(
            [](QDialog& list) { list.findChild<QPushButton*>(u"cmdCancel"_s)->click(); });
        code = u"C"_s;
        QVERIFY(!revenue.ValidateRevenue(code));
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(code, u"C"_s);
        QCOMPARE(Attributes(revenue), u"MD|PROFESSIONAL FEE|Y|||"_s);
        QVERIFY(boxes.Shown().empty());
    }

    void Code_thatIsUnknownIsRefusedWithAWord_data() {
        QTest::addColumn<QString>("code");
        QTest::newRow("nothing begins so") << "ZZ";
        QTest::newRow("another department's") << "XR";
        QTest::newRow("quotes") << "'; DELETE FROM BILLING..tbRevenueCode --";
        QTest::newRow("1,000 letters") << QString(1000, u'C');
        QTest::newRow("line ends") << "C\r\nA";
        QTest::newRow("wildcard") << "C%";
    }

    void Code_thatIsUnknownIsRefusedWithAWord() {
        QFETCH(QString, code);
        clsRevenueCode revenue;
        QString accepted = u"CA"_s;
        QVERIFY(revenue.ValidateRevenue(accepted));
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        const QString typed = code;
        QVERIFY(!revenue.ValidateRevenue(code));
        QCOMPARE(code, typed);
        QCOMPARE(boxes.Shown().size(), 1u);
        QCOMPARE(boxes.Shown()[0].Text, u"Item does not exists."_s);
        QCOMPARE(boxes.Shown()[0].Title, toolkit::kProgramName);
        QCOMPARE(boxes.Shown()[0].Icon, toolkit::BoxIcon::Exclamation);
        QCOMPARE(revenue.RevenueID(), u"CA"_s);
    }

    void Code_thatVanishesWhileTheListIsOpenIsRefused() {
        clsRevenueCode revenue;
        toolkit::BoxScript boxes;
        boxes.Answer(toolkit::BoxAnswer::Ok);
        PickListKeys keys([this](QDialog& list) {
            m_hospital->Connect()->Execute(u"DELETE BILLING..tbRevenueCode"_s);
            list.findChild<QPushButton*>(u"cmdSelect"_s)->click();
        });
        QString code = u"C"_s;
        QVERIFY(!revenue.ValidateRevenue(code));
        QCOMPARE(code, u"C"_s);
        QCOMPARE(revenue.RevenueID(), QString());
        QCOMPARE(boxes.Leftovers(), QStringList());
    }

    void Failure_leavesTheLastCode() {
        clsRevenueCode revenue;
        QString code = u"CA"_s;
        QVERIFY(revenue.ValidateRevenue(code));
        // The server goes while the second command is on its way.
        db::Connection::SetCommandHook([](const QString& text) {
            if (text.contains(u"'2'"))
                throw base::DatabaseError(-1, u"The server is gone."_s, text);
        });
        code = u"C"_s;
        QVERIFY_EXCEPTION_THROWN(revenue.ValidateRevenue(code), base::DatabaseError);
        QCOMPARE(revenue.RevenueID(), u"CA"_s);
        db::Connection::SetCommandHook({});
        code = u"CY"_s;
        QVERIFY(revenue.ValidateRevenue(code));
        QCOMPARE(revenue.RevenueID(), u"CY"_s);
    }

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<fakes::User> m_user;
};

QTEST_MAIN(tst_clsRevenueCode)
#include "tst_clsRevenueCode.moc"
