#include "PickListKeys.h"
#include "Rows.h"
#include "TestHospital.h"
#include "components/builtin/PickListDelegate.h"
#include "components/builtin/clsSupplies.h"
#include "db/CommandText.h"
#include "db/Recordset.h"

using namespace Qt::StringLiterals;
using namespace components;

// The catalogue's list and records, and the stock card with its effect on the stock on hand.
class tst_clsSupplies final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_hospital = std::make_unique<TestHospital>();
        m_connection = m_hospital->Connect();
        m_list = clsListDrugs();
        QVERIFY(m_list.InitConnection(m_connection));
        m_drug = clsDrug();
        QVERIFY(m_drug.InitConnect(m_connection));
        m_connection->Execute(
            u"UPDATE BILLING..tbDrugStock SET OnHand = 5 WHERE DrugCode = '105' AND LocationID = '46'"_s);
    }

    void InitConnection_needsAConnection() {
        QVERIFY(!clsListDrugs().InitConnection(nullptr));
        QVERIFY(!clsDrug().InitConnect(nullptr));
    }

    void SearchDrug_knowsCodesOfItsLocation_data() {
        Columns<QString, QString, bool>();
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

    void SearchDrug_knowsCodesOfItsLocation() {
        auto [code, location, found] = Fetch<QString, QString, bool>();
        QCOMPARE(m_drug.SearchDrug(code, location), found);
        QCOMPARE(m_drug.Drug().DrugCode, found ? code : QString());
    }

    void SearchDrug_emptiesTheRecordOfAnUnknownCode() {
        QVERIFY(m_drug.SearchDrug(u"109"_s, u"46"_s));
        QCOMPARE(m_drug.Drug().DrugName, u"TITANIUM ADAPTER"_s);
        QCOMPARE(m_drug.Drug().SellingPriceIn, 2150.0);
        QCOMPARE(m_drug.Drug().SellingPriceOut, 2095.35);
        QVERIFY(!m_drug.Drug().Status);
        QVERIFY(m_drug.SearchDrug(u"116"_s));
        QVERIFY(m_drug.Drug().Status);
        QVERIFY(!m_drug.SearchDrug(u"99999"_s));
        QVERIFY(m_drug.Drug().DrugName.isEmpty());
        QCOMPARE(m_drug.Drug().SellingPriceOut, 0.0);
    }

    void ShowList_givesTheOneItemWithoutAList_data() {
        Columns<bool, QString, QString, QString>();
        QTest::newRow("medicine by name") << true << u"vanc"_s << QString() << u"1025"_s;
        QTest::newRow("supply by name") << false << u"titan"_s << u"46"_s << u"109"_s;
        QTest::newRow("supply by code") << false << u"116"_s << u"46"_s << u"116"_s;
        QTest::newRow("what the pharmacy keeps") << false << u"vanc"_s << u"20"_s << u"1025"_s;
    }

    void ShowList_givesTheOneItemWithoutAList() {
        auto [drugs, text, location, code] = Fetch<bool, QString, QString, QString>();
        PickListKeys keys;
        m_list.SetDrugsORCSR(drugs);
        QCOMPARE(m_list.ShowList(text, true, location), code);
        QCOMPARE(keys.Shown, 0);
    }

    void ShowList_offersItsCatalogue_data() {
        Columns<bool, QString, QString, int>();
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

    void ShowList_offersItsCatalogue() {
        auto [drugs, text, location, rows] = Fetch<bool, QString, QString, int>();
        int shownRows = -1;
        QString title;
        PickListKeys keys([&](QDialog& list) {
            shownRows = PickListKeys::Total(list);
            title = list.windowTitle();
        });
        m_list.SetListTitle(u"List of Medicines"_s);
        m_list.SetDrugsORCSR(drugs);
        QCOMPARE(m_list.ShowList(text, true, location), QString());
        QCOMPARE(keys.Shown, 1);
        QCOMPARE(shownRows, rows);
        QCOMPARE(title, u"List of Medicines"_s);
    }

    void ShowList_picksByKeys() {
        PickListKeys keys([](QDialog& list) {
            QTest::keyClick(PickListKeys::Box(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Down);
            QTest::keyClick(PickListKeys::Rows(list), Qt::Key_Return);
        });
        m_list.SetDrugsORCSR(true);
        QCOMPARE(m_list.ShowList(u"AMLO"_s, false), u"1001"_s);
    }

    void ShowList_showsMoneyStockAndState() {
        m_connection->Execute(
            u"UPDATE BILLING..tbDrugStock SET OnHand = -2.5 "
            "WHERE DrugCode = '116' AND LocationID = '46'"_s);
        const auto shown = [](QDialog& list, int column) {
            const auto* rows = PickListKeys::Rows(list);
            QStyleOptionViewItem option;
            static_cast<PickListDelegate*>(rows->itemDelegateForColumn(column))
                ->initStyleOption(&option, rows->model()->index(0, column));
            return option;
        };
        PickListKeys keys([&](QDialog& list) {
            QCOMPARE(PickListKeys::Cell(list, 0, 0), u"116"_s);
            QCOMPARE(PickListKeys::Cell(list, 0, 3), u"480.00"_s);
            QCOMPARE(shown(list, 5).text, u"-2.5"_s);
            QVERIFY(shown(list, 5).palette.color(QPalette::Text).red() > 0x90);
            QVERIFY(shown(list, 5).palette.color(QPalette::Text).green() < 0x40);
            QCOMPARE(shown(list, 6).text, u"Inactive"_s);
        });
        // Two that begin so, the first of them never delivered.
        m_connection->Execute(
            u"INSERT INTO BILLING..tbDrug (DrugCode, DrugName, Kind, Status, "
            "SellingPriceIn, SellingPriceOut) VALUES ('1161', 'W', 'S', 0, 1, 1)"_s);
        m_connection->Execute(
            u"INSERT INTO BILLING..tbDrugStock (DrugCode, LocationID, OnHand) "
            "VALUES ('1161', '46', 1)"_s);
        m_list.ShowList(u"116"_s, true, u"46"_s);
        QCOMPARE(keys.Shown, 1);
    }

    void TwoLists_keepTheirCatalogues() {
        clsListDrugs pharmacy;
        QVERIFY(pharmacy.InitConnection(m_connection));
        pharmacy.SetDrugsORCSR(true);
        m_list.SetDrugsORCSR(false);
        QCOMPARE(pharmacy.ShowList(u"mupi"_s, false), u"1018"_s);
        QCOMPARE(m_list.ShowList(u"titan"_s, false), u"109"_s);
    }

    void AppendStockCard_sendsThirtyOnePositions() {
        QString command;
        db::Connection::SetCommandHook([&command](const QString& text) { command = text; });
        m_drug.AppendStockCard(Issue(2));
        db::Connection::SetCommandHook({});
        QCOMPARE(command,
                 u"BILLING..sp_StockCard_Append '200016','A100B','105','11/22/2026 09:30',"
                 "'C1''2D','2','0','60',NULL,NULL,'','46',NULL,NULL,NULL,NULL,NULL,NULL,"
                 "NULL,NULL,NULL,NULL,NULL,'1',NULL,NULL,NULL,NULL,NULL,NULL,'0'"_s);
        const auto row =
            m_connection->Execute(u"SELECT * FROM BILLING..tbStockCard WHERE RefNum = 'C1''2D'"_s);
        QCOMPARE(row->RecordCount(), 1);
        QCOMPARE(row->Fields(u"TransDate"_s).Text(), u"11/22/2026 9:30:00 AM"_s);
        QVERIFY(row->Fields(u"UserID"_s).Value().IsNull());
        QVERIFY(row->Fields(u"Position19"_s).Value().IsNull());
        QCOMPARE(row->Fields(u"NetAmount"_s).Number(), 60.0);
        QCOMPARE(row->Fields(u"StockAfter"_s).Number(), 3.0);
    }

    void AppendStockCard_changesTheStockOnHand_data() {
        Columns<double, double>();
        QTest::newRow("issue") << 2.0 << 3.0;
        QTest::newRow("all of it") << 5.0 << 0.0;
        QTest::newRow("below zero") << 7.5 << -2.5;
        QTest::newRow("return") << -2.0 << 7.0;
    }

    void AppendStockCard_changesTheStockOnHand() {
        auto [quantity, onHand] = Fetch<double, double>();
        const int before = Entries();
        m_drug.AppendStockCard(Issue(quantity));
        QCOMPARE(OnHand(), onHand);
        m_drug.AppendStockCard(Issue(-quantity));
        QCOMPARE(OnHand(), 5.0);
        QCOMPARE(Entries(), before + 2);
    }

    void AppendStockCard_refuses_data() {
        Columns<int, QString, int>();
        QTest::newRow("unknown item") << int(StockCard::ItemCode) << u"99999"_s << 50131;
        QTest::newRow("other location") << int(StockCard::LocationID) << u"21"_s << 50131;
        QTest::newRow("no quantity") << int(StockCard::Quantity) << QString() << 50132;
    }

    void AppendStockCard_refuses() {
        auto [position, text, number] = Fetch<int, QString, int>();
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

private:
    // A slip's line as the charge window records it.
    static StockCardEntry Issue(double quantity) {
        StockCardEntry entry;
        entry[StockCard::HospNum] = u"200016"_s;
        entry[StockCard::IdNum] = u"A100B"_s;
        entry[StockCard::ItemCode] = u"105"_s;
        entry[StockCard::Moment] = u"11/22/2026 09:30"_s;
        entry[StockCard::RefNum] = u"C1'2D"_s;
        entry[StockCard::Quantity] = quantity;
        entry[StockCard::Balance] = 0;
        entry[StockCard::NetAmount] = 30.0 * quantity;
        entry[StockCard::Reference] = QString();
        entry[StockCard::LocationID] = u"46"_s;
        entry[StockCard::Flag] = 1;
        entry[StockCard::Discount] = u"0"_s;
        return entry;
    }

    double OnHand() const {
        return m_connection
            ->Execute(
                u"SELECT OnHand FROM BILLING..tbDrugStock WHERE DrugCode = '105' "
                "AND LocationID = '46'"_s)
            ->Fields(0)
            .Number();
    }

    int Entries() const {
        return int(m_connection->Execute(u"SELECT COUNT(*) FROM BILLING..tbStockCard"_s)
                       ->Fields(0)
                       .Number());
    }

    std::unique_ptr<TestHospital> m_hospital;
    std::shared_ptr<db::Connection> m_connection;
    clsListDrugs m_list;
    clsDrug m_drug;
};

QTEST_MAIN(tst_clsSupplies)
#include "tst_clsSupplies.moc"
