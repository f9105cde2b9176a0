#pragma once

#include <QString>

namespace modMain {

/// One movement of a slip's stock item: a positive quantity leaves the location.
struct StockMovement {
    QString HospNum;
    QString IdNum;
    QString ItemCode;
    QString RefNum;  ///< the slip
    double Quantity;
    double NetAmount;
    QString Reference;
    QString LocationID;
    QString Department;
    QString InventoryCode;
    int Flag;
    double Discount;
};

/// Records it on the stock card, now and by the current user, and changes the stock on hand with
/// it. Throws base::DatabaseError.
void AppendStockCardEntry(const StockMovement& movement);

}  // namespace modMain
