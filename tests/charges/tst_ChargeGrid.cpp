#include "charges/ChargeGrid.h"

#include <QDialog>
#include <QSignalSpy>
#include <limits>

#include "ChargeSession.h"
#include "charges/clsComputeDiscount.h"
#include "toolkit/MsgBox.h"

using namespace ChargeColumn;

namespace {

constexpr double kNothing = std::numeric_limits<double>::quiet_NaN();

/// A catalogue that holds one item at whatever price a test gives it.
class OddCatalogue final : public components::SupplyInfo {
public:
    explicit OddCatalogue(double price) {
        m_drug.DrugCode = QStringLiteral("101");
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
    explicit OddFees(double rate) : m_fee{QStringLiteral("501"), QStringLiteral("FEE"), rate} {}
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
    void init();
    void Price_thatIsNoneCountsAsNothing_data();
    void Price_thatIsNoneCountsAsNothing();
    void Price_beyondMoneyIsRefused();
    void Discount_ofAnotherPriceIsNotGiven();
    void Catalogue_isSearchedInItsOrder();
    void CashSheet_hasNoDiscount();
    void Type_changesNothing();

private:
    void LayOut(const ChargeRules& rules);
    QString Line(int from = 0) const;

    std::unique_ptr<ChargeSession> m_session;
    std::unique_ptr<toolkit::EntryGrid> m_grid;
    std::unique_ptr<ChargeGrid> m_charges;
    ChargeTotals m_totals;
};

void tst_ChargeGrid::init() {
    m_charges.reset();
    m_session = std::make_unique<ChargeSession>();
    m_totals = {};
    LayOut(RequestRules());
}

void tst_ChargeGrid::LayOut(const ChargeRules& rules) {
    m_charges.reset();
    m_grid = std::make_unique<toolkit::EntryGrid>();
    m_charges = std::make_unique<ChargeGrid>(*m_grid, rules);
    connect(m_charges.get(), &ChargeGrid::TotalsChanged, this,
            [this](const ChargeTotals& totals) { m_totals = totals; });
    m_charges->Initialize_TableInput(nullptr, nullptr);
}

QString tst_ChargeGrid::Line(int from) const {
    QStringList cells;
    for (int col = from; col < m_grid->Cols(); ++col)
        cells << m_grid->TextMatrix(1, col);
    return cells.join(u'|');
}

void tst_ChargeGrid::Price_thatIsNoneCountsAsNothing_data() {
    QTest::addColumn<double>("price");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("below zero") << -385.0;
    QTest::newRow("not a number") << kNothing;
}

void tst_ChargeGrid::Price_thatIsNoneCountsAsNothing() {
    QFETCH(double, price);
    modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(price);
    m_grid->CommitText(QStringLiteral("CA"));
    m_grid->CommitText(QStringLiteral("101"));
    QCOMPARE(Line(Price), QStringLiteral("0.00|1|0.00|Y|46|0.00|CA|0|0"));
    modGlobals::gCodeSearch = std::make_shared<OddFees>(price);
    m_grid->SetCol(Dept);
    m_grid->CommitText(QStringLiteral("CY"));
    m_grid->CommitText(QStringLiteral("501"));
    QCOMPARE(Line(), QStringLiteral("Y|CY|501|FEE||0.00|1|0.00|Y||0.00||0|0"));
}

void tst_ChargeGrid::Price_beyondMoneyIsRefused() {
    const QString told = QStringLiteral("The catalogue's price is more than can be charged.");
    QSignalSpy tells(m_charges.get(), &ChargeGrid::Told);
    modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(1e300);
    m_grid->CommitText(QStringLiteral("CA"));
    const QString before = Line();
    m_grid->CommitText(QStringLiteral("101"));
    QCOMPARE(tells.back().front().toString(), told);
    QCOMPARE(Line(), before);
    // The most that is taken, and no quantity that goes beyond it.
    modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(9e14);
    m_grid->CommitText(QStringLiteral("101"));
    const QString priced = Line();
    m_grid->SetCol(Quantity);
    m_grid->CommitText(QStringLiteral("2"));
    QCOMPARE(tells.back().front().toString(),
             QStringLiteral("So many cost more than can be charged."));
    QCOMPARE(Line(), priced);
    QCOMPARE(m_totals.Gross, 9e14);
    m_grid->SetTextMatrix(1, Quantity, QStringLiteral("1"));
    modGlobals::gCodeSearch = std::make_shared<OddFees>(1e300);
    m_grid->SetCol(Dept);
    m_grid->CommitText(QStringLiteral("CY"));
    m_grid->CommitText(QStringLiteral("501"));
    QCOMPARE(tells.back().front().toString(), told);
}

void tst_ChargeGrid::Discount_ofAnotherPriceIsNotGiven() {
    clsComputeDiscount::Shared().SetIdNum(m_session->Visit(QStringLiteral("SM")));
    m_grid->CommitText(QStringLiteral("CA"));
    m_grid->CommitText(QStringLiteral("101"));
    QCOMPARE(Line(NetAmount), QStringLiteral("308|77"));
    // The item costs 385.00 on the server, but the catalogue said 100.00 a moment ago.
    modGlobals::gSupplyInfo = std::make_shared<OddCatalogue>(100.0);
    m_grid->SetCol(Code);
    m_grid->CommitText(QStringLiteral("0101"));
    QCOMPARE(Line(NetAmount), QStringLiteral("100|0"));
}

void tst_ChargeGrid::Catalogue_isSearchedInItsOrder() {
    clsComputeDiscount::Shared().SetIdNum(m_session->Visit(QStringLiteral("SM")));
    m_grid->CommitText(QStringLiteral("CA"));
    QStringList commands;
    db::Connection::SetCommandHook([&](const QString& text) { commands << text; });
    m_grid->CommitText(QStringLiteral("101"));
    db::Connection::SetCommandHook({});
    // The item twice, its net amount and its discount by five commands each.
    QCOMPARE(commands.size(), 12);
    QCOMPARE(commands[0], commands[1]);
    QCOMPARE(commands[6], QStringLiteral("RADIOLOGY..spRadio_GetDiscount 'CA','101','SM','', '0'"));
    QCOMPARE(commands.mid(2, 5), commands.mid(7, 5));
}

void tst_ChargeGrid::CashSheet_hasNoDiscount() {
    LayOut(AssessmentRules());
    QCOMPARE(m_grid->TextMatrix(0, InventoryCode), QStringLiteral("InventoryCode"));
    QCOMPARE(m_grid->TextMatrix(0, NetAmount), QString());
    m_grid->CommitText(QStringLiteral("CA"));
    QStringList commands;
    db::Connection::SetCommandHook([&](const QString& text) { commands << text; });
    m_grid->CommitText(QStringLiteral("101"));
    db::Connection::SetCommandHook({});
    QCOMPARE(commands.size(), 2);
    m_grid->SetCol(Quantity);
    m_grid->CommitText(QStringLiteral("2"));
    QCOMPARE(Line(Price), QStringLiteral("385.00|2|770.00|Y|46|385.00|CA||"));
    QCOMPARE(m_totals.Gross, 770.0);
    m_grid->SetCell(2, Dept);
    m_grid->CommitText(QStringLiteral("CY"));
    m_grid->CommitText(QStringLiteral("501"));
    m_grid->SetCol(Amount);
    m_grid->CommitText(QStringLiteral("500"));
    QCOMPARE(m_totals.Gross, 1270.0);
    QCOMPARE(m_grid->TextMatrix(2, NetAmount) + m_grid->TextMatrix(2, Discount), QString());
}

void tst_ChargeGrid::Type_changesNothing() {
    m_grid->CommitText(QStringLiteral("CY"));
    m_grid->CommitText(QStringLiteral("501"));
    QSignalSpy totals(m_charges.get(), &ChargeGrid::TotalsChanged);
    m_grid->CommitText(QStringLiteral("ROUTINE"));
    QCOMPARE(Line(Type), QStringLiteral("ROUTINE|450.00|1|450.00|Y||450.00||450|0"));
    QCOMPARE(totals.size(), 0);
    QCOMPARE(m_grid->Col(), int(Quantity));
}

QTEST_MAIN(tst_ChargeGrid)
#include "tst_ChargeGrid.moc"
