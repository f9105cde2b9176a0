#include "charges/ChargeList.h"

#include "base/Numbers.h"
#include "charges/SlipCodes.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"

namespace {

enum Column {
    RequestDate = 1,
    ItemCode,
    Description,
    Quantity,
    NetAmount,
    SlipNumber,
    EmployeeCode,
    CAPDNum,
    LocationID,
    Amount,
    Discount,
    Price,
    RevenueID
};

const int kWidths[] = {100, 2400, 800, 2500, 700, 1000, 1000, 1000, 0, 1100, 1100, 1100, 0};

QString ListCommand(const QString& idNum) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_GetRequest"), {idNum.trimmed()});
}

/// Lines of each kind and what they cost.
class Sum final {
public:
    explicit Sum(const std::vector<ListedCharge>& lines) {
        for (const ListedCharge& line : lines) {
            ++(line.RevenueID == SlipCodes::kDoctor ? m_doctors
               : line.LocationID.isEmpty()          ? m_fees
                                                    : m_supplies);
            m_amount += line.NetAmount;
        }
    }
    Sum Less(const Sum& other) const {
        Sum rest = *this;
        rest.m_supplies -= other.m_supplies;
        rest.m_doctors -= other.m_doctors;
        rest.m_fees -= other.m_fees;
        rest.m_amount -= other.m_amount;
        return rest;
    }
    /// "1124.40 (1 supply, 1 doctor's fee)", or "nothing".
    QString Text() const {
        QStringList kinds;
        Count(kinds, m_supplies, u"supply", u"supplies");
        Count(kinds, m_doctors, u"doctor's fee", u"doctor's fees");
        Count(kinds, m_fees, u"fee of the unit", u"fees of the unit");
        if (kinds.isEmpty())
            return QStringLiteral("nothing");
        return QStringLiteral("%1 (%2)").arg(base::MoneyText(m_amount),
                                             kinds.join(QStringLiteral(", ")));
    }

private:
    static void Count(QStringList& kinds, int count, QStringView one, QStringView more) {
        if (count > 0)
            kinds << QStringLiteral("%1 %2").arg(count).arg(count == 1 ? one : more);
    }

    int m_supplies = 0;
    int m_doctors = 0;
    int m_fees = 0;
    double m_amount = 0;
};

}  // namespace

ChargeList::ChargeList(toolkit::FlexGrid& grid) : m_grid(grid) {
    m_grid.SetCols(int(std::size(kWidths)));
    for (int col = 0; col < int(std::size(kWidths)); ++col)
        m_grid.SetColWidth(col, kWidths[col]);
    m_grid.SetNumeric(Quantity);
    for (const int col : {NetAmount, Amount, Discount, Price})
        m_grid.SetMoney(col);
    m_grid.SetRowChosenByHand();
}

void ChargeList::Load(const QString& idNum) {
    db::Recordset charges;
    charges.SetCursorLocation(3);
    charges.Open(ListCommand(idNum), modGlobals::gConnection, 2, 1, -1);
    const QString slip = Slip();
    m_grid.Bind(charges.RecordCount() > 0 ? charges.Rows() : nullptr);
    // A slip that has gone leaves no row chosen: a button pressed twice must not meet another slip.
    for (int row = 1; row < m_grid.Rows() && !slip.isEmpty(); ++row)
        if (m_grid.TextMatrix(row, SlipNumber) == slip)
            return m_grid.SetRow(row);
}

bool ChargeList::IsOnCharge() const {
    return m_grid.Row() > 0 && !m_grid.TextMatrix(m_grid.Row(), RequestDate).isEmpty();
}

QString ChargeList::Slip() const {
    return m_grid.Row() > 0 ? m_grid.TextMatrix(m_grid.Row(), SlipNumber) : QString();
}

std::vector<ListedCharge> ChargeList::LinesOf(const QString& slipNumber) const {
    std::vector<ListedCharge> lines;
    for (int row = 1; row < m_grid.Rows() && !slipNumber.isEmpty(); ++row) {
        const auto text = [&](int col) { return m_grid.TextMatrix(row, col); };
        const auto number = [&](int col) { return base::Val(text(col)); };
        if (text(SlipNumber) != slipNumber)
            continue;
        lines.push_back({text(ItemCode), text(Description), number(Quantity), number(Price),
                         number(Amount), number(Discount), number(NetAmount), text(EmployeeCode),
                         text(LocationID), text(RevenueID)});
    }
    return lines;
}

std::vector<PrintLine> PrintLines(const std::vector<ListedCharge>& lines) {
    std::vector<PrintLine> printed;
    for (const ListedCharge& line : lines)
        printed.push_back({line.ItemCode, line.Description, line.Quantity, line.Price, line.Amount,
                           line.RevenueID, line.EmployeeCode, line.Discount, line.NetAmount});
    return printed;
}

QString ReversalText(const QString& slipNumber, const std::vector<ListedCharge>& before,
                     const std::vector<ListedCharge>& after) {
    const Sum stays(after);
    const Sum back = Sum(before).Less(stays);
    return QStringLiteral("Slip %1: %2 taken back, %3 stays charged.")
        .arg(slipNumber, back.Text(), stays.Text());
}
