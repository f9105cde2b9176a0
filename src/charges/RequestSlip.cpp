#include "charges/RequestSlip.h"

#include "base/Numbers.h"
#include "charges/SlipCodes.h"
#include "charges/StockCardEntry.h"
#include "db/CommandText.h"
#include "funds/clsPDAF.h"
#include "funds/modCDF.h"
#include "session/modGlobals.h"

using namespace SlipCodes;
using modGlobals::gCurrentUser;
using modGlobals::gRevenueID;

namespace {

QString AddBillCommand(const QString& slipNumber, const SlipHead& head, const SlipLine& line) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_capd_addbill"),
                    {slipNumber, head.IdNum, line.ItemCode, line.Amount,
                     gCurrentUser->EmployeeCode(), head.HospNum, gRevenueID});
}

QString KeepPriceCommand(const QString& slipNumber, const SlipLine& line) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_KeepPrice"),
                    {slipNumber, line.RevenueID, line.ItemCode, line.Price});
}

}  // namespace

bool RequestSlip::Begin() {
    m_isSponsored = modCDF::CheckCompany(Head().IdNum.trimmed());
    return !m_isSponsored || !IsFundUsedUp();
}

bool RequestSlip::IsFundUsedUp() const {
    clsPDAF fund;
    fund.SetHospNum(Head().HospNum);
    fund.SetDeptID(kUnit);
    fund.Show_Balance();
    return fund.OutputFundBalance() == 0;
}

void RequestSlip::WriteLine(const SlipLine& line) {
    const double amount = base::Val(line.Amount);
    if (line.RevenueID == gRevenueID) {
        AddBill(line);
        PayFromFund(line, kUnit, amount);
    } else if (line.RevenueID == kDoctor) {
        ChargeDoctor(line);
        PayFromFund(line, kDoctor, amount);
    } else if (!line.LocationID.isEmpty()) {
        IssueStock(line);
        PayFromFund(line, kUnit, line.NetAmount);
    } else {
        return;
    }
    SaveRequest(line);
    KeepRaisedPrice(line);
}

// The server keeps a line's amount of one unit as its price; only of a raised or open one that is
// not what the slip prints.
void RequestSlip::KeepRaisedPrice(const SlipLine& line) {
    const double quantity = line.Quantity.isEmpty() ? 1 : base::Val(line.Quantity);
    if (base::MoneyText(base::Val(line.Price) * quantity) !=
        base::MoneyText(base::Val(line.Amount)))
        modGlobals::gConnection->Execute(KeepPriceCommand(SlipNumber(), line));
}

void RequestSlip::AddBill(const SlipLine& line) {
    modGlobals::gConnection->Execute(AddBillCommand(SlipNumber(), Head(), line));
}

void RequestSlip::IssueStock(const SlipLine& line) {
    modMain::AppendStockCardEntry({.HospNum = Head().HospNum,
                                   .IdNum = Head().IdNum,
                                   .ItemCode = line.ItemCode,
                                   .RefNum = SlipNumber(),
                                   .Quantity = base::Val(line.Quantity),
                                   .NetAmount = line.NetAmount,
                                   .Reference = QString(),
                                   .LocationID = line.LocationID,
                                   .Department = QStringLiteral("OPD"),
                                   .InventoryCode = line.InventoryCode,
                                   .Flag = kStockCardFlag,
                                   .Discount = line.Discount});
}

void RequestSlip::PayFromFund(const SlipLine& line, const QString& costCenter, double itemAmount) {
    if (!m_isSponsored)
        return;
    m_fund.SetAccountNum(QString());
    m_fund.SetDeptID(costCenter);
    m_fund.SetDrCr(kDrCr);
    m_fund.SetHospNum(Head().HospNum);
    m_fund.SetIdNum(Head().IdNum);
    m_fund.SetItemAmount(itemAmount);
    m_fund.SetItemID(line.ItemCode);
    m_fund.SetRefNum(SlipNumber());
    m_fund.SetRevenueID(costCenter);
    m_fund.SetUserID(gCurrentUser->EmployeeCode());
    if (m_fund.With_Fund() && base::Val(line.Amount) > 0)
        m_fund.Save_PDAF();
}
