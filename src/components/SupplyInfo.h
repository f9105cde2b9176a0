#pragma once

#include <array>
#include <memory>

#include "components/Component.h"
#include "db/Connection.h"
#include "db/Value.h"

namespace components {

/// The positions of a stock card entry, from 0; those not named are left out by every caller.
namespace StockCard {
enum Position {
    HospNum = 0,
    IdNum = 1,
    ItemCode = 2,
    Moment = 3,
    RefNum = 4,
    Quantity = 5,
    Balance = 6,
    NetAmount = 7,
    UserID = 8,
    Frequency = 9,
    Reference = 10,
    LocationID = 11,
    Remarks = 12,
    Department = 13,
    Cancelled = 14,
    InventoryCode = 15,
    RevenueID = 16,
    Mark = 17,
    PatientType = 21,
    Flag = 23,
    Discount = 30,
    Count = 31
};
}  // namespace StockCard
/// One entry; what is left out stays null.
using StockCardEntry = std::array<db::Value, StockCard::Count>;

/// A catalogue record.
struct DrugRecord {
    QString DrugCode;
    QString DrugName;
    bool Status = false;      ///< true: inactive, not to be requested
    bool IsMedicine = false;  ///< else a supply
    double SellingPriceIn = 0;
    double SellingPriceOut = 0;
    double OnHand = 0;  ///< at the location that was asked for, else everywhere
};

/// `DrugCatalog.clsDrug`: one medicine or supply, and the stock card.
class SupplyInfo : public Component {
public:
    /// False when the catalogue cannot be reached over this connection.
    virtual bool InitConnect(const std::shared_ptr<db::Connection>& connection) = 0;
    /// True when the code exists (in that stock location, where one is given); loads Drug(), which
    /// is empty otherwise.
    virtual bool SearchDrug(const QString& code, const QString& location = {});
    virtual const DrugRecord& Drug() const;
    /// Records a movement and changes the stock on hand with it, also below zero; what is null is
    /// sent as NULL. Throws base::DatabaseError for an item that the location does not keep (50131)
    /// and for an entry without a quantity (50132).
    virtual void AppendStockCard(const StockCardEntry& entry);
};

}  // namespace components
