#pragma once

#include <QString>
#include <vector>

#include "charges/SlipPrint.h"

namespace toolkit {
class FlexGrid;
}

/// One row of the list of charges: a line of a slip as it was saved.
struct ListedCharge {
    QString ItemCode;
    QString Description;
    double Quantity = 0;
    double Price = 0;
    double Amount = 0;
    double Discount = 0;
    double NetAmount = 0;
    QString EmployeeCode;
    QString LocationID;  ///< of supplies; empty for fees
    QString RevenueID;   ///< of supplies their inventory code as well
};

/// The charges of a visit that stand, in the list under the sheet.
class ChargeList final {
public:
    /// Sets the list's widths. It must live as long.
    explicit ChargeList(toolkit::FlexGrid& grid);

    /// Reads the visit's charges; an empty answer empties the list. The chosen slip stays chosen;
    /// where it is listed no more, or none was chosen, no row is: only a key or a click in the list
    /// chooses one.
    /// Throws base::DatabaseError; the list is then as it was.
    void Load(const QString& idNum);
    /// Whether the current row is a charge.
    bool IsOnCharge() const;
    /// The slip of the current row; empty where there is none.
    QString Slip() const;
    /// The lines of a slip, in their order.
    std::vector<ListedCharge> LinesOf(const QString& slipNumber) const;

private:
    toolkit::FlexGrid& m_grid;
};

/// The lines as the slip's first print printed them.
std::vector<PrintLine> PrintLines(const std::vector<ListedCharge>& lines);

/// What of a slip's lines is taken back and what stays charged, with amounts, from the lines before
/// and after its reversal.
QString ReversalText(const QString& slipNumber, const std::vector<ListedCharge>& before,
                     const std::vector<ListedCharge>& after);
