#pragma once

#include <QObject>
#include <utility>
#include <vector>

#include "charges/ChargeRules.h"

namespace toolkit {
class EntryGrid;
}

/// The rules by which a charge sheet is filled: what a revenue code, an item code, a quantity and
/// an amount do to their line. On every line with a discount the net amount is the amount less the
/// discount, and the totals are the sums of the columns after every commit.
class ChargeGrid final : public QObject {
    Q_OBJECT
public:
    /// Stands over the grid, which must live as long.
    ChargeGrid(toolkit::EntryGrid& grid, const ChargeRules& rules, QObject* parent = nullptr);

    /// Lays the grid out with one empty line, the cursor in it. Esc leads to the two buttons.
    void Initialize_TableInput(QWidget* saveButton, QWidget* closeButton);

    /// Prices the line with a stock item: by its code, else by what is picked from the list that
    /// `code` narrows. False when nothing was picked, after the message "Item not found on file."
    /// and for an inactive item; the line is then unchanged. Throws base::DatabaseError.
    bool LookupInventoryItem(int row, QString& code, const QString& location);
    /// Prices the line with a fee of the line's revenue code. False when nothing was picked, when
    /// the fee stands on another line (the message "Exam already selected." is shown and the code
    /// emptied), or when the search failed, which Told() says. Throws nothing.
    bool LookupRevenueItem(int row, QString& code);
    /// Whether a line other than `row` has this item under this revenue code.
    bool IsDuplicateItem(int row, const QString& revenueId, const QString& itemCode) const;
    /// The price times the quantity; a quantity of less than 1 or none counts as 1, fractions are
    /// rounded to whole units, halves to even.
    double ComputeLineAmount(int row) const;
    ChargeTotals Totals() const;

    /// Whether the last commit told something while the cursor has gone no further since; once.
    bool TakeUnread() { return std::exchange(m_isUnread, false); }
    /// Adds to what was told that nothing is saved before it was read.
    void TellThatSaveWaits();

signals:
    void TotalsChanged(const ChargeTotals& totals);
    /// An item code was committed, found or not.
    void ItemCommitted();
    /// A word that needs no answer; empty once it no longer holds.
    void Told(const QString& text);

private:
    /// What the sheet knows of a line beside its cells.
    struct Line {
        QString RevenueID;        ///< as last accepted
        double UnitDiscount = 0;  ///< on one unit: quantities scale from it
        bool IsRaised = false;    ///< the amount was typed above price times quantity
    };
    struct PricedItem {
        QString Code;
        QString Description;
        QString OpenPrice;
        double Price;
        double UnitDiscount;
    };

    void CommitCell(int row, int col);
    void CommitRevenueCode(int row);
    void CommitItemCode(int row);
    void CommitQuantity(int row);
    /// Whether the amount was taken.
    bool CommitAmount(int row);
    void TellOfNotTaken(const QString& taken);
    /// Adds to the message line, which begins empty with each commit.
    void Tell(const QString& text);
    /// Says why what was typed is not taken; the cell keeps it to be put right.
    void Refuse(const QString& why);
    void ShowListOf(int row, int col);
    QString PickItem(int row, const QString& text);
    bool SearchRevenueItem(int row, QString& code);
    /// Whether the price can be charged; else that is told.
    bool IsMoney(double price);
    double UnitDiscountOf(int row, const QString& code, double price) const;
    double QuantityOf(int row) const;
    void WriteItem(int row, const PricedItem& item);
    void WriteAmounts(int row, double amount, double discount);
    void EmptyItem(int row);
    QString Text(int row, int col) const;
    void Write(int row, int col, const QString& text);
    Line& LineOf(int row);

    toolkit::EntryGrid& m_grid;
    const ChargeRules& m_rules;
    std::vector<Line> m_lines;
    bool m_isUnread = false;
    QStringList m_told;
    QString m_notTaken;  ///< typed and left out since the last commit
};
