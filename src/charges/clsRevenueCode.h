#pragma once

#include <QString>

#include "db/Recordset.h"

/// Checks the revenue code that begins a charge line against the codes this unit may charge, and
/// keeps the attributes of the one last accepted for the sheet to copy into the line.
class clsRevenueCode final {
public:
    clsRevenueCode() = default;
    clsRevenueCode(const clsRevenueCode&) = delete;
    clsRevenueCode& operator=(const clsRevenueCode&) = delete;

    /// The program's one instance, made at first use.
    static clsRevenueCode& Shared();

    /// True when the code names a revenue code, at once or by a pick from the list of those it may
    /// mean; then `code` is the picked one and the properties are its attributes. False after the
    /// message "Item does not exists." or, silently, when the list was cancelled; `code` and the
    /// properties then stay. Throws base::DatabaseError.
    bool ValidateRevenue(QString& code);

    /// Lets the user pick from the list of the revenue codes that `text` narrows; empty when the
    /// list was cancelled. Throws base::DatabaseError.
    static QString Pick(const QString& text);

    /// As the server spells it; empty before the first accepted code, as are the others.
    const QString& RevenueID() const { return m_accepted.RevenueID; }
    const QString& Revenue() const { return m_accepted.Revenue; }
    /// "Y" when the code has a list of billable items.
    const QString& WithItems() const { return m_accepted.WithItems; }
    /// True when its items are searched in the stock.
    bool SearchInventory() const { return m_accepted.SearchInventory; }
    /// The stock location of its items; empty when they are not stock items.
    const QString& LocationID() const { return m_accepted.LocationID; }
    const QString& InventoryCode() const { return m_accepted.InventoryCode; }

private:
    struct Attributes {
        QString RevenueID;
        QString Revenue;
        QString WithItems;
        bool SearchInventory = false;
        QString LocationID;
        QString InventoryCode;
    };
    void Open(const QString& mode, const QString& code);
    bool Accept();

    db::Recordset m_recordset;
    Attributes m_accepted;
};
