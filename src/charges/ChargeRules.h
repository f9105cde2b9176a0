#pragma once

#include <QStringList>

/// The columns of a charge sheet; each line is one charge.
namespace ChargeColumn {
enum Column {
    OpenPrice,  ///< "Y": a fee whose amount is typed, "N": a fee with a price, empty: a stock item
    Dept,
    Code,
    Description,
    Type,
    Price,
    Quantity,
    Amount,
    WithItems,
    LocationID,  ///< of a stock item; empty on a fee's line
    ListPrice,
    InventoryCode,
    NetAmount,
    Discount,
    Count
};
}  // namespace ChargeColumn

/// Sums over all lines of a sheet, in hospital money.
struct ChargeTotals {
    double Gross = 0;
    double Discount = 0;
    double NetAmount = 0;
};

/// What the sheets do differently with the same lines.
struct ChargeRules {
    QStringList Headers;  ///< of the columns, from column 0
    bool WithDiscount;    ///< lines carry a net amount and a discount
};

/// Of the sheet that charges a patient's account.
const ChargeRules& RequestRules();
/// Of the sheet of a patient who pays cash.
const ChargeRules& AssessmentRules();
