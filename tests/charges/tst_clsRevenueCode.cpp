#include "charges/clsRevenueCode.h"

#include <QPushButton>

#include "CommandLog.h"
#include "FakeComponents.h"
#include "TestHospital.h"
#include "components/PickListKeys.h"
#include "patients/frmSearch.h"
#include "session/modGlobals.h"
#include "toolkit/MsgBox.h"

namespace {

QString Command(const char* arguments) {
    return QStringLiteral("CLINICAL_AREA..sp_CAPD_SearchRevenue ") + QString::fromUtf8(arguments);
}

QString Attributes(const clsRevenueCode& revenue) {
    return QStringList{
        revenue.RevenueID(),  revenue.Revenue(),
        revenue.WithItems(),  revenue.SearchInventory() ? QStringLiteral("stock") : QString(),
        revenue.LocationID(), revenue.InventoryCode()}
        .join(u'|');
}

}  // namespace

class tst_clsRevenueCode final : public QObject {
    Q_OBJECT
private slots:
    void init();
    void Code_thatIsExactIsAcceptedAtOnce_data();
    void Code_thatIsExactIsAcceptedAtOnce();
    void Code_thatMayMeanSeveralIsPickedFromTheList();
    void Code_whoseListIsCancelledIsRefusedSilently();
    void Code_thatIsUnknownIsRefusedWithAWord_data();
    void Code_thatIsUnknownIsRefusedWithAWord();
    void Code_thatVanishesWhileTheListIsOpenIsRefused();
    void Failure_leavesTheLastCode();

private:
    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<fakes::User> m_user;
};

void tst_clsRevenueCode::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_user = std::make_shared<fakes::User>();
    m_user->Session = m_hospital->Connect();
    m_user->Session->SetDefaultDatabase(QStringLiteral("CLINICAL_AREA"));
    modGlobals::gCurrentUser = m_user;
}

void tst_clsRevenueCode::Code_thatIsExactIsAcceptedAtOnce_data() {
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("attributes");
    QTest::newRow("supplies") << "CA"
                              << "CA|CAPD SUPPLIES|Y|stock|46|CA";
    QTest::newRow("small letters") << "ca"
                                   << "CA|CAPD SUPPLIES|Y|stock|46|CA";
    QTest::newRow("no location") << "CY"
                                 << "CY|CAPD CONSULTATION FEE|Y|||";
    QTest::newRow("the only description that begins so") << "PHARM"
                                                         << "PH|PHARMACY|Y|stock|20|PH";
}

void tst_clsRevenueCode::Code_thatIsExactIsAcceptedAtOnce() {
    QFETCH(QString, typed);
    clsRevenueCode revenue;
    PickListKeys keys;
    const CommandLog log;
    QString code = typed;
    QVERIFY(revenue.ValidateRevenue(code));
    QCOMPARE(code, typed);
    QTEST(Attributes(revenue), "attributes");
    QCOMPARE(log.Sent, QStringList(Command("'1','") + typed + u'\''));
    QCOMPARE(keys.Shown, 0);
}

void tst_clsRevenueCode::Code_thatMayMeanSeveralIsPickedFromTheList() {
    clsRevenueCode revenue;
    const CommandLog log;
    PickListKeys keys([](QDialog& list) {
        QCOMPARE(list.windowTitle(), QStringLiteral("Revenue Codes"));
        auto* box = list.findChild<QLineEdit*>(QStringLiteral("txtSearchStr"));
        QCOMPARE(box->text(), QStringLiteral("cap"));
        QTest::keyClick(box, Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    QString code = QStringLiteral("cap");
    QVERIFY(revenue.ValidateRevenue(code));
    QCOMPARE(code, QStringLiteral("CA"));
    QCOMPARE(revenue.RevenueID(), QStringLiteral("CA"));
    QCOMPARE(revenue.LocationID(), QStringLiteral("46"));
    QCOMPARE(log.Sent,
             QStringList({Command("'1','cap'"), Command("'2','cap'"),
                          QStringLiteral("sp_CAPD_SearchRevenue '0','cap'"), Command("'1','CA'")}));
}

void tst_clsRevenueCode::Code_whoseListIsCancelledIsRefusedSilently() {
    clsRevenueCode revenue;
    QString code = QStringLiteral("MD");
    QVERIFY(revenue.ValidateRevenue(code));
    const toolkit::BoxScript boxes;
    PickListKeys keys(
        [](QDialog& list) { list.findChild<QPushButton*>(QStringLiteral("cmdCancel"))->click(); });
    code = QStringLiteral("C");
    QVERIFY(!revenue.ValidateRevenue(code));
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(code, QStringLiteral("C"));
    QCOMPARE(Attributes(revenue), QStringLiteral("MD|PROFESSIONAL FEE|Y|||"));
    QVERIFY(boxes.Shown().empty());
}

void tst_clsRevenueCode::Code_thatIsUnknownIsRefusedWithAWord_data() {
    QTest::addColumn<QString>("code");
    QTest::newRow("nothing begins so") << "ZZ";
    QTest::newRow("another department's") << "XR";
    QTest::newRow("quotes") << "'; DELETE FROM BILLING..tbRevenueCode --";
    QTest::newRow("1,000 letters") << QString(1000, u'C');
    QTest::newRow("line ends") << "C\r\nA";
    QTest::newRow("wildcard") << "C%";
}

void tst_clsRevenueCode::Code_thatIsUnknownIsRefusedWithAWord() {
    QFETCH(QString, code);
    clsRevenueCode revenue;
    QString accepted = QStringLiteral("CA");
    QVERIFY(revenue.ValidateRevenue(accepted));
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    const QString typed = code;
    QVERIFY(!revenue.ValidateRevenue(code));
    QCOMPARE(code, typed);
    QCOMPARE(boxes.Shown().size(), 1u);
    QCOMPARE(boxes.Shown()[0].Text, QStringLiteral("Item does not exists."));
    QCOMPARE(boxes.Shown()[0].Title, toolkit::kProgramName);
    QCOMPARE(boxes.Shown()[0].Icon, toolkit::BoxIcon::Exclamation);
    QCOMPARE(revenue.RevenueID(), QStringLiteral("CA"));
}

void tst_clsRevenueCode::Code_thatVanishesWhileTheListIsOpenIsRefused() {
    clsRevenueCode revenue;
    toolkit::BoxScript boxes;
    boxes.Answer(toolkit::BoxAnswer::Ok);
    PickListKeys keys([this](QDialog& list) {
        m_hospital->Connect()->Execute(QStringLiteral("DELETE BILLING..tbRevenueCode"));
        list.findChild<QPushButton*>(QStringLiteral("cmdSelect"))->click();
    });
    QString code = QStringLiteral("C");
    QVERIFY(!revenue.ValidateRevenue(code));
    QCOMPARE(code, QStringLiteral("C"));
    QCOMPARE(revenue.RevenueID(), QString());
    QCOMPARE(boxes.Leftovers(), QStringList());
}

void tst_clsRevenueCode::Failure_leavesTheLastCode() {
    clsRevenueCode revenue;
    QString code = QStringLiteral("CA");
    QVERIFY(revenue.ValidateRevenue(code));
    // The server goes while the second command is on its way.
    db::Connection::SetCommandHook([](const QString& text) {
        if (text.contains(u"'2'"))
            throw base::DatabaseError(-1, QStringLiteral("The server is gone."), text);
    });
    code = QStringLiteral("C");
    QVERIFY_EXCEPTION_THROWN(revenue.ValidateRevenue(code), base::DatabaseError);
    QCOMPARE(revenue.RevenueID(), QStringLiteral("CA"));
    db::Connection::SetCommandHook({});
    code = QStringLiteral("CY");
    QVERIFY(revenue.ValidateRevenue(code));
    QCOMPARE(revenue.RevenueID(), QStringLiteral("CY"));
}

QTEST_MAIN(tst_clsRevenueCode)
#include "tst_clsRevenueCode.moc"
