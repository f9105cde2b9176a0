#include "charges/ChargeGrid.h"

#include <QDialog>
#include <QSignalSpy>
#include <limits>

#include "ChargeSession.h"
#include "charges/clsComputeDiscount.h"
#include "toolkit/MsgBox.h"

using namespace Qt::StringLiterals;
using namespace ChargeColumn;

namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

/// A catalogue that holds one item at whatever price a test gives it.
class OddCatalogue final : public components::SupplyInfo {
public:
    explicit OddCatalogue(double price) {
        m_drug.DrugCode = u"101"_s;
        m_drug.SellingPriceOut = price;
    }
    bool InitConnect(const std::shared_ptr<db::Connection>&) override { return true; }
    bool SearchDrug(const QString&, const QString&) override { return true; }
    const components::DrugRecord& Drug() const override { return m_drug; }

private:
    components::DrugRecord m_drug;
};

/// Fees of whatever rate.
class OddFees final : public components::CodeSearch {
public:
    explicit OddFees(double rate) : m_fee{u"501"_s, u"FEE"_s, rate} {}
    void SetMTS_Server(const QString&) override {}
    void Initialize_Classes() override {}
    void SetCompanyName(const QString&) override {}
    void SetSearchMode(bool) override {}
    void SetConnection(const std::shared_ptr<db::Connection>&) override {}
    void SetOtherSectionID(const QString&) override {}
    bool SearchListing(QString&, int) override { return true; }
    const components::OtherRevenueRecord& OtherRevenue() const override { return m_fee; }

private:
    components::OtherRevenueRecord m_fee;
};

}  // namespace

// The rules of a charge sheet beneath its window: odd prices, the cash sheet, whole line amounts.
class tst_ChargeGrid final : public QObject {
    Q_OBJECT
private slots:
    void init() {
        m_charges.reset();
        m_session = std::make_unique<ChargeSession>();
        m_totals = {};
        LayOut(RequestRules());
    }

    void Price_thatIsNoneCountsAsNothing_data() {
        QTest::addColumn<double>("price");
        QTest::newRow("zero") << 0.0;
        QTest::newRow("below zero") << -385.0;
        QTest::newRow("not a number") << kNothing;
    }

    void Price_thatIsNoneCountsAsNothing() {
        QFETCH(double, price);
        modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(price);
        m_grid->CommitText(u"CA"_s);
        m_grid->CommitText(u"101"_s);
        QCOMPARE(Line(Price), u"0.00|1|0.00|Y|46|0.00|CA|0|0"_s);
        modGlobals::gCodeSearch = std::make_shared<OddFees>(price);
        m_grid->SetCol(Dept);
        m_grid->CommitText(u"CY"_s);
        m_grid->CommitText(u"501"_s);
        QCOMPARE(Line(), u"Y|CY|501|FEE||0.00|1|0.00|Y||0.00||0|0"_s);
    }

    void Price_beyondMoneyIsRefused() {
        const QString told = u"The catalogue's price is more than can be charged."_s;
        QSignalSpy tells(m_charges.get(), &ChargeGrid::Told);
        modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(1e300);
        m_grid->CommitText(u"CA"_s);
        const QString before = Line();
        m_grid->CommitText(u"101"_s);
        QCOMPARE(tells.back().front().toString(), told);
        QCOMPARE(Line(), before);
        // The most that is taken, and no quantity that goes beyond it.
        modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(9e14);
        m_grid->CommitText(u"101"_s);
        const QString priced = Line();
        m_grid->SetCol(Quantity);
        m_grid->CommitText(u"2"_s);
        QCOMPARE(tells.back().front().toString(), u"So many cost more than can be charged."_s);
        QCOMPARE(Line(), priced);
        QCOMPARE(m_totals.Gross, 9e14);
        m_grid->SetTextMatrix(1, Quantity, u"1"_s);
        modGlobals::gCodeSearch = std::make_shared<OddFees>(1e300);
        m_grid->SetCol(Dept);
        m_grid->CommitText(u"CY"_s);
        m_grid->CommitText(u"501"_s);
        QCOMPARE(tells.back().front().toString(), told);
    }

    void Discount_ofAnotherPriceIsNotGiven() {
        clsComputeDiscount::Shared().SetIdNum(m_session->Visit(u"SM"_s));
        m_grid->CommitText(u"CA"_s);
        m_grid->CommitText(u"101"_s);
        QCOMPARE(Line(NetAmount), u"308|77"_s);
        // The item costs 385.00 on the server, but the catalogue said 100.00 a moment ago.
        modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(100.0);
        m_grid->SetCol(Code);
        m_grid->CommitText(u"0101"_s);
        QCOMPARE(Line(NetAmount), u"100|0"_s);
    }

    void Catalogue_isSearchedInItsOrder() {
        clsComputeDiscount::Shared().SetIdNum(m_session->Visit(u"SM"_s));
        m_grid->CommitText(u"CA"_s);
        QStringList commands;
        db::Connection::SetCommandHook([&](const QString& text) { commands << text; });
        m_grid->CommitText(u"101"_s);
        db::Connection::SetCommandHook({});
        // The item twice, its net amount and its discount by five commands each.
        QCOMPARE(commands.size(), 12);
        QCOMPARE(commands[0], commands[1]);
        QCOMPARE(commands[6], u"RADIOLOGY..spRadio_GetDiscount 'CA','101','SM','', '0'"_s);
        QCOMPARE(commands.mid(2, 5), commands.mid(7, 5));
    }

    void CashSheet_hasNoDiscount() {
        LayOut(AssessmentRules());
        QCOMPARE(m_grid->TextMatrix(0, InventoryCode), u"InventoryCode"_s);
        QCOMPARE(m_grid->TextMatrix(0, NetAmount), QString());
        m_grid->CommitText(u"CA"_s);
        QStringList commands;
        db::Connection::SetCommandHook([&](const QString& text) { commands << text; });
        m_grid->CommitText(u"101"_s);
        db::Connection::SetCommandHook({});
        QCOMPARE(commands.size(), 2);
        m_grid->SetCol(Quantity);
        m_grid->CommitText(u"2"_s);
        QCOMPARE(Line(Price), u"385.00|2|770.00|Y|46|385.00|CA||"_s);
        QCOMPARE(m_totals.Gross, 770.0);
        m_grid->SetCell(2, Dept);
        m_grid->CommitText(u"CY"_s);
        m_grid->CommitText(u"501"_s);
        m_grid->SetCol(Amount);
        m_grid->CommitText(u"500"_s);
        QCOMPARE(m_totals.Gross, 1270.0);
        QCOMPARE(m_grid->TextMatrix(2, NetAmount) + m_grid->TextMatrix(2, Discount), QString());
    }

    void Type_changesNothing() {
        m_grid->CommitText(u"CY"_s);
        m_grid->CommitText(u"501"_s);
        QSignalSpy totals(m_charges.get(), &ChargeGrid::TotalsChanged);
        m_grid->CommitText(u"ROUTINE"_s);
        QCOMPARE(Line(Type), u"ROUTINE|450.00|1|450.00|Y||450.00||450|0"_s);
        QCOMPARE(totals.size(), 0);
        QCOMPARE(m_grid->Col(), int(Quantity));
    }

private:
    void LayOut(const ChargeRules& rules) {
        m_charges.reset();
        m_grid = std::make_unique<toolkit::EntryGrid>();
        m_charges = std::make_unique<ChargeGrid>(*m_grid, rules);
        connect(m_charges.get(), &ChargeGrid::TotalsChanged, this,
                [this](const ChargeTotals& totals) { m_totals = totals; });
        m_charges->Initialize_TableInput(nullptr, nullptr);
    }

    QString Line(int from = 0) const {
        QStringList cells;
        for (int col = from; col < m_grid->Cols(); ++col)
            cells << m_grid->TextMatrix(1, col);
        return cells.join(u'|');
    }

    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<toolkit::EntryGrid> m_grid;
    std::unique_ptr<ChargeGrid> m_charges;
    ChargeTotals m_totals;
};

QTEST_MAIN(tst_ChargeGrid)
#include "tst_ChargeGrid.moc"
