#include <QTest>

#include "components/builtin/clsSupplies.h"
#include "db/FakeDriver.h"

using namespace Qt::StringLiterals;
using namespace components;

// A catalogue record, and a slip's line on the stock card.
class tst_clsSupplies final : public QObject {
    Q_OBJECT

private slots:
    void init() {
        m_server = {};
        m_kind = "S";
        m_server.Answer = [this](const QString&, embedded::RowSink& sink) {
            using embedded::ColumnKind;
            sink.BeginResult({{u"DrugCode"_s, ColumnKind::Text},
                              {u"DrugName"_s, ColumnKind::Text},
                              {u"Status"_s, ColumnKind::Integer},
                              {u"SellingPriceIn"_s, ColumnKind::Double},
                              {u"SellingPriceOut"_s, ColumnKind::Double},
                              {u"Kind"_s, ColumnKind::Text},
                              {u"OnHand"_s, ColumnKind::Double}});
            if (m_kind.empty())
                return qint64(-1);
            sink.Text("105");
            sink.Text("CLAMP");
            sink.Integer(m_kind == "M");
            sink.Double(2150);
            sink.Double(2095.35);
            sink.Text(m_kind);
            sink.Double(-2.5);
            sink.EndRow();
            return qint64(-1);
        };
        QVERIFY(m_drug.InitConnect(
            std::make_shared<db::Connection>(std::make_unique<FakeDriver>(m_server))));
        m_server.Steps.clear();
    }

    void Record_isThatOfTheCodeOrEmpty() {
        for (const char* kind : {"M", "S"}) {
            m_kind = kind;
            QVERIFY(m_drug.SearchDrug(u"1'5"_s, u"46"_s));
            const DrugRecord& drug = m_drug.Drug();
            QCOMPARE(drug.DrugCode + drug.DrugName, u"105CLAMP"_s);
            QCOMPARE(drug.Status, m_kind == "M");
            QCOMPARE(drug.IsMedicine, m_kind == "M");
            QCOMPARE(drug.SellingPriceIn, 2150.0);
            QCOMPARE(drug.SellingPriceOut, 2095.35);
            QCOMPARE(drug.OnHand, -2.5);
        }
        QCOMPARE(m_server.Steps.last(), u"BILLING..sp_Drug_Find '1''5','46'"_s);
        m_kind.clear();
        QVERIFY(!m_drug.SearchDrug(u"99999"_s));
        QCOMPARE(m_drug.Drug().DrugCode + m_drug.Drug().DrugName, QString());
        QCOMPARE(m_drug.Drug().SellingPriceOut, 0.0);
        // Nor is there a catalogue where it cannot be read.
        QVERIFY(!clsDrug().InitConnect(nullptr));
    }

    void StockCard_hasThirtyOnePositions() {
        StockCardEntry entry;
        entry[StockCard::HospNum] = u"200016"_s;
        entry[StockCard::IdNum] = u"A100B"_s;
        entry[StockCard::ItemCode] = u"105"_s;
        entry[StockCard::Moment] = u"11/22/2026 09:30"_s;
        entry[StockCard::RefNum] = u"C1'2D"_s;
        entry[StockCard::Quantity] = 2.0;
        entry[StockCard::Balance] = 0;
        entry[StockCard::NetAmount] = 60.0;
        entry[StockCard::Reference] = QString();
        entry[StockCard::LocationID] = u"46"_s;
        entry[StockCard::Flag] = 1;
        entry[StockCard::Discount] = u"0"_s;
        m_drug.AppendStockCard(entry);
        QCOMPARE(m_server.Steps.last(),
                 u"BILLING..sp_StockCard_Append '200016','A100B','105','11/22/2026 09:30',"
                 "'C1''2D','2','0','60',NULL,NULL,'','46',NULL,NULL,NULL,NULL,NULL,NULL,"
                 "NULL,NULL,NULL,NULL,NULL,'1',NULL,NULL,NULL,NULL,NULL,NULL,'0'"_s);
    }

private:
    FakeServer m_server;
    std::string m_kind = "S";
    clsDrug m_drug;
};

QTEST_GUILESS_MAIN(tst_clsSupplies)
#include "tst_clsSupplies.moc"
