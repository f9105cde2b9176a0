#include "charges/SlipReversal.h"

#include <algorithm>

#include "base/Numbers.h"
#include "charges/SlipCodes.h"
#include "charges/StockCardEntry.h"
#include "db/CommandText.h"
#include "db/Recordset.h"
#include "funds/clsPDAF.h"
#include "session/modGlobals.h"

using namespace SlipCodes;
using modGlobals::gConnection;
using modGlobals::gCurrentUser;

namespace {

const QString kClearStaging = QStringLiteral("DELETE CLINICAL_AREA..tbCAPDChargeSlip");

QString PackageCommand(const QString& slipNumber) {
    return db::Call(QStringLiteral("CLINICAL_AREA..sp_CAPD_GetPackage"), {slipNumber.trimmed()});
}

/// The listed line that an item of the package was issued on, taken out of the list: an item may
/// stand on two lines of a slip. What is not listed is returned by the package's own figures.
ListedCharge TakeLineOf(db::Recordset& item, std::vector<ListedCharge>& lines) {
    const auto text = [&item](const QString& name) { return item.Fields(name).Text(); };
    const QString code = text(QStringLiteral("ItemCode"));
    const double quantity = item.Fields(QStringLiteral("Quantity")).Number();
    const auto isItem = [&](const ListedCharge& line) {
        return line.RevenueID != kDoctor && !line.LocationID.isEmpty() && line.ItemCode == code;
    };
    auto found = std::find_if(lines.begin(), lines.end(), [&](const ListedCharge& line) {
        return isItem(line) && line.Quantity == quantity;
    });
    if (found == lines.end())
        found = std::find_if(lines.begin(), lines.end(), isItem);
    if (found != lines.end()) {
        const ListedCharge line = *found;
        lines.erase(found);
        return line;
    }
    ListedCharge line;
    line.ItemCode = code;
    line.NetAmount = item.Fields(QStringLiteral("Amount")).Number();
    line.RevenueID = text(QStringLiteral("InventoryCode"));
    return line;
}

}  // namespace

SlipReversal::SlipReversal(SlipHead head, QString slipNumber, clsPDAF& fund)
    : m_head(std::move(head)), m_slipNumber(std::move(slipNumber)), m_fund(fund) {}

void SlipReversal::Revoke(const std::vector<ListedCharge>& lines) {
    db::Transaction transaction(*gConnection);
    gConnection->Execute(kClearStaging);
    bool isPackageReturned = false;
    for (const ListedCharge& line : lines) {
        if (line.RevenueID == kDoctor) {
            ReverseDoctor(line);
        } else if (!line.LocationID.isEmpty() && !isPackageReturned) {
            ReversePackage(lines);
            isPackageReturned = true;
        }
    }
    transaction.Commit();
}

void SlipReversal::ReverseDoctor(const ListedCharge& line) {
    ChargeDoctor(m_slipNumber, m_head, line.ItemCode, base::PlainText(-line.NetAmount));
    CancelPayment(line, kDoctor);
}

void SlipReversal::ReversePackage(std::vector<ListedCharge> lines) {
    db::Recordset package;
    package.SetCursorLocation(3);
    package.Open(PackageCommand(m_slipNumber), gConnection, 2, 1, -1);
    const auto number = [&package](const QString& name) { return package.Fields(name).Number(); };
    for (; !package.Eof(); package.MoveNext()) {
        const ListedCharge line = TakeLineOf(package, lines);
        modMain::AppendStockCardEntry(
            {.HospNum = m_head.HospNum,
             .IdNum = m_head.IdNum,
             .ItemCode = line.ItemCode,
             .RefNum = m_slipNumber,
             .Quantity = -number(QStringLiteral("Quantity")),
             .NetAmount = -number(QStringLiteral("Amount")),
             .Reference = gCurrentUser->EmployeeCode(),
             .LocationID = package.Fields(QStringLiteral("LocationID")).Text(),
             .Department = package.Fields(QStringLiteral("roomid")).Text(),
             .InventoryCode = line.RevenueID,
             .Flag = kStockCardFlag,
             .Discount = number(QStringLiteral("Discount"))});
        CancelPayment(line, kUnit);
    }
}

void SlipReversal::CancelPayment(const ListedCharge& line, const QString& costCenter) {
    m_fund.SetDeptID(costCenter);
    m_fund.SetDrCr(kDrCr);
    m_fund.SetHospNum(m_head.HospNum);
    m_fund.SetIdNum(m_head.IdNum.trimmed());
    m_fund.SetItemAmount(-line.NetAmount);
    m_fund.SetItemID(line.ItemCode);
    m_fund.SetRefNum(m_slipNumber);
    m_fund.SetRevenueID(costCenter);
    m_fund.SetUserID(gCurrentUser->EmployeeCode());
    m_fund.With_SavedPayment();
}
