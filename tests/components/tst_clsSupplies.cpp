#include "PickListKeys.h"
#include "TestHospital.h"
#include "components/builtin/PickListDelegate.h"
#include "components/builtin/clsSupplies.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using namespace components;

// The catalogue's list and records, and the stock card with its effect on the stock on hand.
class tst_clsSupplies final : public QObject {
    Q_OBJECT

private slots:
    void init();
    void InitConnection_needsAConnection();
    void SearchDrug_knowsCodesOfItsLocation_data();
    void SearchDrug_knowsCodesOfItsLocation();
    void SearchDrug_emptiesTheRecordOfAnUnknownCode();
    void ShowList_givesTheOneItemWithoutAList_data();
    void ShowList_givesTheOneItemWithoutAList();
    void ShowList_offersItsCatalogue_data();
    void ShowList_offersItsCatalogue();
    void ShowList_picksByKeys();
    void ShowList_showsMoneyStockAndState();
    void TwoLists_keepTheirCatalogues();
    void AppendStockCard_sendsThirtyOnePositions();
    void AppendStockCard_changesTheStockOnHand_data();
    void AppendStockCard_changesTheStockOnHand();
    void AppendStockCard_refuses_data();
    void AppendStockCard_refuses();

private:
    static StockCardEntry Issue(double quantity);
    double OnHand() const;
    int Entries() const;

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsListDrugs m_list;
    clsDrug m_drug;
};

void tst_clsSupplies::init() {
    m_hospital = std::make_unique<TestHospital>();
    m_connection = m_hospital->Connect();
    m_list = clsListDrugs();
    QVERIFY(m_list.InitConnection(m_connection));
    m_drug = clsDrug();
    QVERIFY(m_drug.InitConnect(m_connection));
    m_connection->Execute(QStringLiteral(
        "UPDATE BILLING..tbDrugStock SET OnHand = 5 WHERE DrugCode = '105' AND LocationID = '46'"));
}

// A slip's line as the charge window records it.
StockCardEntry tst_clsSupplies::Issue(double quantity) {
    StockCardEntry entry;
    entry[StockCard::HospNum] = QStringLiteral("200016");
    entry[StockCard::IdNum] = QStringLiteral("A100B");
    entry[StockCard::ItemCode] = QStringLiteral("105");
    entry[StockCard::Moment] = QStringLiteral("11/22/2026 09:30");
    entry[StockCard::RefNum] = QStringLiteral("C1'2D");
    entry[StockCard::Quantity] = quantity;
    entry[StockCard::Balance] = 0;
    entry[StockCard::NetAmount] = 30.0 * quantity;
    entry[StockCard::Reference] = QString();
    entry[StockCard::LocationID] = QStringLiteral("46");
    entry[StockCard::Flag] = 1;
    entry[StockCard::Discount] = QStringLiteral("0");
    return entry;
}

double tst_clsSupplies::OnHand() const {
    return m_connection
        ->Execute(QStringLiteral("SELECT OnHand FROM BILLING..tbDrugStock WHERE DrugCode = '105' "
                                 "AND LocationID = '46'"))
        ->Fields(0)
        .Number();
}

int tst_clsSupplies::Entries() const {
    return int(m_connection->Execute(QStringLiteral("SELECT COUNT(*) FROM BILLING..tbStockCard"))
                   ->Fields(0)
                   .Number());
}

void tst_clsSupplies::InitConnection_needsAConnection() {
    QVERIFY(!clsListDrugs().InitConnection(nullptr));
    QVERIFY(!clsDrug().InitConnect(nullptr));
}

void tst_clsSupplies::SearchDrug_knowsCodesOfItsLocation_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("location");
    QTest::addColumn<bool>("found");
    const auto row = [](const char* name, const char* code, const char* location, bool found) {
        QTest::newRow(name) << QString::fromUtf8(code) << QString::fromUtf8(location) << found;
    };
    row("anywhere", "105", "", true);
    row("kept there", "105", "46", true);
    row("kept elsewhere", "105", "21", false);
    row("medicine", "1001", "", true);
    row("beginning of a code", "10", "", false);
    row("unknown", "99999", "", false);
    row("empty", "", "", false);
    row("quote", "1' OR '1'='1", "", false);
    row("wild card", "1%", "46", false);
}

void tst_clsSupplies::SearchDrug_knowsCodesOfItsLocation() {
    QFETCH(QString, code);
    QFETCH(QString, location);
    QFETCH(bool, found);
    QCOMPARE(m_drug.SearchDrug(code, location), found);
    QCOMPARE(m_drug.Drug().DrugCode, found ? code : QString());
}

void tst_clsSupplies::SearchDrug_emptiesTheRecordOfAnUnknownCode() {
    QVERIFY(m_drug.SearchDrug(QStringLiteral("109"), QStringLiteral("46")));
    QCOMPARE(m_drug.Drug().DrugName, QStringLiteral("TITANIUM ADAPTER"));
    QCOMPARE(m_drug.Drug().SellingPriceIn, 2150.0);
    QCOMPARE(m_drug.Drug().SellingPriceOut, 2095.35);
    QVERIFY(!m_drug.Drug().Status);
    QVERIFY(m_drug.SearchDrug(QStringLiteral("116")));
    QVERIFY(m_drug.Drug().Status);
    QVERIFY(!m_drug.SearchDrug(QStringLiteral("99999")));
    QVERIFY(m_drug.Drug().DrugName.isEmpty());
    QCOMPARE(m_drug.Drug().SellingPriceOut, 0.0);
}

void tst_clsSupplies::ShowList_givesTheOneItemWithoutAList_data() {
    QTest::addColumn<bool>("drugs");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("location");
    QTest::addColumn<QString>("code");
    QTest::newRow("medicine by name")
        << true << QStringLiteral("vanc") << QString() << QStringLiteral("1025");
    QTest::newRow("supply by name")
        << false << QStringLiteral("titan") << QStringLiteral("46") << QStringLiteral("109");
    QTest::newRow("supply by code")
        << false << QStringLiteral("116") << QStringLiteral("46") << QStringLiteral("116");
    QTest::newRow("what the pharmacy keeps")
        << false << QStringLiteral("vanc") << QStringLiteral("20") << QStringLiteral("1025");
}

void tst_clsSupplies::ShowList_givesTheOneItemWithoutAList() {
    QFETCH(bool, drugs);
    QFETCH(QString, text);
    QFETCH(QString, location);
    PickListKeys keys;
    m_list.SetDrugsORCSR(drugs);
    QTEST(m_list.ShowList(text, true, location), "code");
    QCOMPARE(keys.Shown, 0);
}

void tst_clsSupplies::ShowList_offersItsCatalogue_data() {
    QTest::addColumn<bool>("drugs");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("location");
    QTest::addColumn<int>("rows");
    const auto row = [](const char* name, bool drugs, const char* text, const char* location,
                        int rows) {
        QTest::newRow(name) << drugs << QString::fromUtf8(text) << QString::fromUtf8(location)
                            << rows;
    };
    row("all medicines", true, "", "", 25);
    row("all supplies", false, "", "", 28);
    row("a location's supplies", false, "", "46", 16);
    row("several names", false, "dialysis", "46", 4);
    row("a supply is no medicine", true, "dialysis", "", 0);
    row("wild card", false, "%", "46", 0);
    row("quote", true, "O'", "", 0);
}

void tst_clsSupplies::ShowList_offersItsCatalogue() {
    QFETCH(bool, drugs);
    QFETCH(QString, text);
    QFETCH(QString, location);
    QFETCH(int, rows);
    int shownRows = -1;
    QString title;
    PickListKeys keys([&](QDialog& list) {
        shownRows = PickListKeys::Total(list);
        title = list.windowTitle();
    });
    m_list.SetListTitle(QStringLiteral("List of Medicines"));
    m_list.SetDrugsORCSR(drugs);
    QCOMPARE(m_list.ShowList(text, true, location), QString());
    QCOMPARE(keys.Shown, 1);
    QCOMPARE(shownRows, rows);
    QCOMPARE(title, QStringLiteral("List of Medicines"));
}

void tst_clsSupplies::ShowList_picksByKeys() {
    PickListKeys keys([](QDialog& list) {
        QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
        QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
    });
    m_list.SetDrugsORCSR(true);
    QCOMPARE(m_list.ShowList(QStringLiteral("AMLO"), false), QStringLiteral("1001"));
}

void tst_clsSupplies::ShowList_showsMoneyStockAndState() {
    m_connection->Execute(
        QStringLiteral("UPDATE BILLING..tbDrugStock SET OnHand = -2.5 "
                       "WHERE DrugCode = '116' AND LocationID = '46'"));
    const auto shown = [](QDialog& list, int column) {
        const auto* rows = PickListKeys::Rows(list);
        QStyleOptionViewItem option;
        static_cast<PickListDelegate*>(rows->itemDelegateForColumn(column))
            ->initStyleOption(&option, rows->model()->index(0, column));
        return option;
    };
    PickListKeys keys([&](QDialog& list) {
        QCOMPARE(PickListKeys::Cell(list, 0, 0), QStringLiteral("116"));
        QCOMPARE(PickListKeys::Cell(list, 0, 3), QStringLiteral("480.00"));
        QCOMPARE(shown(list, 5).text, QStringLiteral("-2.5"));
        QVERIFY(shown(list, 5).palette.color(QPalette::Text).red() > 0x90);
        QVERIFY(shown(list, 5).palette.color(QPalette::Text).green() < 0x40);
        QCOMPARE(shown(list, 6).text, QStringLiteral("Inactive"));
    });
    // Two that begin so, the first of them never delivered.
    m_connection->Execute(
        QStringLiteral("INSERT INTO BILLING..tbDrug (DrugCode, DrugName, Kind, Status, "
                       "SellingPriceIn, SellingPriceOut) VALUES ('1161', 'W', 'S', 0, 1, 1)"));
    m_connection->Execute(
        QStringLiteral("INSERT INTO BILLING..tbDrugStock (DrugCode, LocationID, OnHand) "
                       "VALUES ('1161', '46', 1)"));
    m_list.ShowList(QStringLiteral("116"), true, QStringLiteral("46"));
    QCOMPARE(keys.Shown, 1);
}

void tst_clsSupplies::TwoLists_keepTheirCatalogues() {
    clsListDrugs pharmacy;
    QVERIFY(pharmacy.InitConnection(m_connection));
    pharmacy.SetDrugsORCSR(true);
    m_list.SetDrugsORCSR(false);
    QCOMPARE(pharmacy.ShowList(QStringLiteral("mupi"), false), QStringLiteral("1018"));
    QCOMPARE(m_list.ShowList(QStringLiteral("titan"), false), QStringLiteral("109"));
}

void tst_clsSupplies::AppendStockCard_sendsThirtyOnePositions() {
    QString command;
    db::Connection::SetCommandHook([&command](const QString& text) { command = text; });
    m_drug.AppendStockCard(Issue(2));
    db::Connection::SetCommandHook({});
    QCOMPARE(command, QStringLiteral(
                          "BILLING..sp_StockCard_Append '200016','A100B','105','11/22/2026 09:30',"
                          "'C1''2D','2','0','60',NULL,NULL,'','46',NULL,NULL,NULL,NULL,NULL,NULL,"
                          "NULL,NULL,NULL,NULL,NULL,'1',NULL,NULL,NULL,NULL,NULL,NULL,'0'"));
    const auto row = m_connection->Execute(
        QStringLiteral("SELECT * FROM BILLING..tbStockCard WHERE RefNum = 'C1''2D'"));
    QCOMPARE(row->RecordCount(), 1);
    QCOMPARE(row->Fields(QStringLiteral("TransDate")).Text(),
             QStringLiteral("11/22/2026 9:30:00 AM"));
    QVERIFY(row->Fields(QStringLiteral("UserID")).Value().IsNull());
    QVERIFY(row->Fields(QStringLiteral("Position19")).Value().IsNull());
    QCOMPARE(row->Fields(QStringLiteral("NetAmount")).Number(), 60.0);
    QCOMPARE(row->Fields(QStringLiteral("StockAfter")).Number(), 3.0);
}

void tst_clsSupplies::AppendStockCard_changesTheStockOnHand_data() {
    QTest::addColumn<double>("quantity");
    QTest::addColumn<double>("onHand");
    QTest::newRow("issue") << 2.0 << 3.0;
    QTest::newRow("all of it") << 5.0 << 0.0;
    QTest::newRow("below zero") << 7.5 << -2.5;
    QTest::newRow("return") << -2.0 << 7.0;
}

void tst_clsSupplies::AppendStockCard_changesTheStockOnHand() {
    QFETCH(double, quantity);
    QFETCH(double, onHand);
    const int before = Entries();
    m_drug.AppendStockCard(Issue(quantity));
    QCOMPARE(OnHand(), onHand);
    m_drug.AppendStockCard(Issue(-quantity));
    QCOMPARE(OnHand(), 5.0);
    QCOMPARE(Entries(), before + 2);
}

void tst_clsSupplies::AppendStockCard_refuses_data() {
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("unknown item") << int(StockCard::ItemCode) << QStringLiteral("99999") << 50131;
    QTest::newRow("other location") << int(StockCard::LocationID) << QStringLiteral("21") << 50131;
    QTest::newRow("no quantity") << int(StockCard::Quantity) << QString() << 50132;
}

void tst_clsSupplies::AppendStockCard_refuses() {
    QFETCH(int, position);
    QFETCH(QString, text);
    QFETCH(int, number);
    StockCardEntry entry = Issue(2);
    entry[position] = text.isEmpty() ? db::Value() : db::Value(text);
    const int before = Entries();
    try {
        m_drug.AppendStockCard(entry);
        QFAIL("the entry was taken");
    } catch (const base::DatabaseError& error) {
        QCOMPARE(error.Number(), number);
    }
    QCOMPARE(Entries(), before);
    QCOMPARE(OnHand(), 5.0);
}

QTEST_MAIN(tst_clsSupplies)
#include "tst_clsSupplies.moc"
