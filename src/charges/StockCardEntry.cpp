#include "charges/StockCardEntry.h"

#include "base/Clock.h"
#include "base/Numbers.h"
#include "session/modGlobals.h"

namespace modMain {

void AppendStockCardEntry(const StockMovement& movement) {
    using namespace components::StockCard;
    const bool isInPatient = base::IsNumeric(movement.IdNum.trimmed());
    components::StockCardEntry entry;
    entry[HospNum] = movement.HospNum;
    entry[IdNum] = movement.IdNum;
    entry[ItemCode] = movement.ItemCode;
    entry[Moment] = base::Clock::Now().toString(QStringLiteral("MM/dd/yyyy hh:mm"));
    entry[RefNum] = movement.RefNum;
    entry[Quantity] = movement.Quantity;
    entry[Balance] = 0;
    entry[NetAmount] = movement.NetAmount;
    entry[UserID] = modGlobals::gCurrentUser->EmployeeCode();
    entry[Frequency] = QStringLiteral("PRN");
    entry[Reference] = movement.Reference;
    entry[LocationID] = movement.LocationID;
    entry[Remarks] = QString();
    entry[Department] = movement.Department;
    entry[Cancelled] = 0;
    entry[InventoryCode] = movement.InventoryCode;
    entry[RevenueID] = movement.InventoryCode;
    entry[Mark] = QStringLiteral("*");
    entry[PatientType] = isInPatient ? QStringLiteral("I") : QStringLiteral("O");
    entry[Flag] = movement.Flag;
    entry[Discount] = base::PlainText(movement.Discount);
    modGlobals::gSupplyInfo->AppendStockCard(entry);
}

}  // namespace modMain
