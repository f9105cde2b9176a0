#include "charges/ChargeList.h"

#include "base/Numbers.h"
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

QString DoctorCommand(const QString& slipNumber) {
    return db::FromTemplate(
        QStringLiteral("SELECT TOP (1) DoctorName FROM CLINICAL_AREA..tbCAPDRequest WHERE RefNum = "
                       "'##' ORDER BY RequestID"),
        {{QStringLiteral("##"), slipNumber}});
}

}  // namespace

ChargeList::ChargeList(toolkit::FlexGrid& grid) : m_grid(grid) {
    m_grid.SetCols(int(std::size(kWidths)));
    for (int col = 0; col < int(std::size(kWidths)); ++col)
        m_grid.SetColWidth(col, kWidths[col]);
    m_grid.SetNumeric(Quantity);
    for (const int col : {NetAmount, Amount, Discount, Price})
        m_grid.SetMoney(col);
}

void ChargeList::Load(const QString& idNum) {
    db::Recordset charges;
    charges.SetCursorLocation(3);
    charges.Open(ListCommand(idNum), modGlobals::gConnection, 2, 1, -1);
    const QString slip = Slip();
    m_grid.Bind(charges.RecordCount() > 0 ? charges.Rows() : nullptr);
    // A slip that has gone leaves no row chosen: a button pressed twice must not meet another slip.
    if (!slip.isEmpty() && !GoToSlip(slip))
        m_grid.setCurrentIndex({});
}

bool ChargeList::GoToSlip(const QString& slipNumber) {
    for (int row = 1; row < m_grid.Rows(); ++row) {
        if (m_grid.TextMatrix(row, SlipNumber) == slipNumber) {
            m_grid.SetRow(row);
            return true;
        }
    }
    return false;
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

QString RequestingDoctorOf(const QString& slipNumber) {
    const auto found = modGlobals::gConnection->Execute(DoctorCommand(slipNumber));
    return found->Eof() ? QString() : found->Fields(QStringLiteral("DoctorName")).Text();
}
