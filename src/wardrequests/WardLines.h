#pragma once

#include <array>
#include <vector>

#include "wardrequests/NurseLogBook.h"
#include "wardrequests/WardVariant.h"

namespace toolkit {
class FlexGrid;
}

/// The lines of a request sheet: what its grid holds, and which cells the cursor skips.
class WardLines final {
public:
    WardLines(toolkit::FlexGrid& grid, const WardVariant& variant);
    WardLines(const WardLines&) = delete;
    WardLines& operator=(const WardLines&) = delete;

    /// Headers, the stated widths from the grid's width now, and one empty line, numbered 1.
    void LayOut();

    QString Text(int row, int col) const;
    void Write(int row, int col, const QString& text);
    int LastRow() const;

    static int MaxLength(int col);
    static bool IsNumeric(int col);
    /// From now on the description is skipped.
    void SkipDescription() { m_exemptCols[1] = WardColumn::Description; }
    /// Whether the cursor skips the column on that row; on none, where the code is "00".
    bool ExcemptCol(int row, int col) const;
    /// The next column in that direction (-1, 1) that is not skipped; `col` when there is none.
    int NextCol(int row, int col, int direction) const;

    /// Code, frequency, quantity and amount are all there, and what an unlisted item is.
    bool CompleteRow(int row) const;
    /// Whether anything is entered on the line.
    bool QualifiedRow(int row) const;
    /// Whether something is entered that would not be requested.
    bool IsIncomplete(int row) const { return QualifiedRow(row) && !CompleteRow(row); }
    /// Whether a line above the last one, other than `row`, has this code.
    bool Check_Code(const QString& code, int row) const;
    /// An empty line at the end, once the last line and this one are complete.
    void AddRow(int row);
    /// Empties the first line, takes any other out.
    void DeleteRow(int row);
    /// Takes the line out, or empties the only one, and numbers the lines anew.
    void RemoveRequest(int row);

    /// Begins the line anew with a found item.
    void SetItem(int row, const QString& code, const QString& name, double unitPrice);
    /// Whether the line's code is that of a found item.
    bool HasItem(int row) const;
    /// Whether the line is one that its remarks describe: code "00".
    bool IsUnlisted(int row) const;
    /// Nothing of an item stays behind that another code could stand beside.
    void Empty(int row);
    /// Quantity and what it costs at the line's unit price.
    void SetQuantity(int row, const QString& quantity);
    /// Quantity times unit price; of one unit while there is no quantity.
    void ComputeAmount(int row);
    /// The complete lines, in order.
    std::vector<WardRequestLine> Complete() const;
    /// How many lines have an entry and are not complete.
    int Incomplete() const;

private:
    void NumberFrom(int row, const QString& mark);

    toolkit::FlexGrid& m_grid;
    const WardVariant& m_variant;
    std::array<int, 6> m_exemptCols{0, 0, WardColumn::Amount, 0, 0, 0};
    int m_rowCounter = 1;
};
