#include "wardrequests/WardLines.h"

#include <algorithm>

#include "base/Numbers.h"
#include "toolkit/FlexGrid.h"

using namespace WardColumn;

namespace {

const QString kHeaders =
    QStringLiteral("<# |<Code |<Item Description    |<Freq.  |<Quantity|<Amount |<Remarks    |");
constexpr int kMaxLengths[] = {0, 5, 35, 8, 3, 3, 30, 0, 0};
// An item with this code is described and priced by hand.
const QString kUnlisted = QStringLiteral("00");
constexpr int kHidden = 1;
constexpr int kTwipsToTheInch = 1440;
// Before a line's number, where a negative one would have its sign.
const QString kSignPlace = QStringLiteral(" ");

}  // namespace

WardLines::WardLines(toolkit::FlexGrid& grid, const WardVariant& variant)
    : m_grid(grid), m_variant(variant) {}

void WardLines::LayOut() {
    m_grid.SetFormatString(kHeaders);
    m_grid.SetCols(Count);
    const auto width = [this](int col) { return m_grid.ColWidth(col); };
    const int gridWidth = int(m_grid.width() * double(kTwipsToTheInch) / m_grid.logicalDpiX());
    m_grid.SetColWidth(Quantity, gridWidth / 11);
    m_grid.SetColWidth(Number, width(Frequency) / 3 + 50);
    m_grid.SetColWidth(Code, width(Number) + 500);
    m_grid.SetColWidth(Description, width(Code) * 4);
    m_grid.SetColWidth(Frequency, width(Number) + 500);
    m_grid.SetColWidth(Amount, kHidden);
    m_grid.SetColWidth(Remarks, width(Quantity) * 2 + 500);
    m_grid.SetRoomCol(Description);
    m_grid.SetColWidth(SupplyPrice, kHidden);
    m_grid.SetColWidth(MedicinePrice, kHidden);
    Write(1, Number, kSignPlace + QString::number(m_rowCounter));
}

QString WardLines::Text(int row, int col) const {
    return m_grid.TextMatrix(row, col);
}

void WardLines::Write(int row, int col, const QString& text) {
    m_grid.SetTextMatrix(row, col, text);
}

int WardLines::LastRow() const {
    return m_grid.Rows() - 1;
}

int WardLines::MaxLength(int col) {
    return kMaxLengths[col];
}

bool WardLines::IsNumeric(int col) {
    return col == Quantity || col == Amount;
}

bool WardLines::ExcemptCol(int row, int col) const {
    const bool listed =
        std::find(m_exemptCols.begin(), m_exemptCols.end(), col) != m_exemptCols.end();
    return listed && !IsUnlisted(row);
}

int WardLines::NextCol(int row, int col, int direction) const {
    constexpr int kLast = Count - 3;
    int next = col + direction;
    while (next >= Code && next <= kLast && ExcemptCol(row, next))
        next += direction;
    return next >= Code && next <= kLast ? next : col;
}

bool WardLines::CompleteRow(int row) const {
    return !Text(row, Code).isEmpty() && !Text(row, Frequency).isEmpty() &&
           !Text(row, Quantity).isEmpty() && !Text(row, Amount).isEmpty() &&
           !(IsUnlisted(row) && Text(row, Remarks).trimmed().isEmpty());
}

bool WardLines::QualifiedRow(int row) const {
    for (int col = Code; col < Count; ++col)
        if (!Text(row, col).trimmed().isEmpty())
            return true;
    return false;
}

// The line that the code is typed on is no other request: Enter on a code that was accepted
// before must not refuse it.
bool WardLines::Check_Code(const QString& code, int row) const {
    for (int other = 1; other < LastRow(); ++other)
        if (other != row && Text(other, Code).trimmed() == code.trimmed())
            return true;
    return false;
}

void WardLines::AddRow(int row) {
    if (!CompleteRow(LastRow()) || !CompleteRow(row))
        return;
    m_grid.AddItem();
    ++m_rowCounter;
    Write(LastRow(), Number, kSignPlace + QString::number(m_rowCounter));
}

void WardLines::DeleteRow(int row) {
    if (row == 1) {
        Empty(row);
        return;
    }
    m_grid.RemoveItem(row);
    --m_rowCounter;
    NumberFrom(row, kSignPlace);
}

void WardLines::RemoveRequest(int row) {
    if (LastRow() > 1)
        m_grid.RemoveItem(row);
    else
        Empty(row);
    NumberFrom(1, {});
    m_rowCounter = LastRow();
}

void WardLines::Empty(int row) {
    for (int col = Code; col < Count; ++col)
        Write(row, col, {});
}

void WardLines::SetItem(int row, const QString& code, const QString& name, double unitPrice) {
    Empty(row);
    Write(row, Code, code);
    Write(row, Description, name);
    Write(row, m_variant.PriceColumn, base::PlainText(unitPrice));
    ComputeAmount(row);
}

bool WardLines::HasItem(int row) const {
    return !Text(row, m_variant.PriceColumn).isEmpty();
}

bool WardLines::IsUnlisted(int row) const {
    return Text(row, Code) == kUnlisted;
}

void WardLines::NumberFrom(int row, const QString& mark) {
    for (; row <= LastRow(); ++row)
        Write(row, Number, mark + QString::number(row));
}

void WardLines::SetQuantity(int row, const QString& quantity) {
    Write(row, Quantity, quantity);
    ComputeAmount(row);
}

void WardLines::ComputeAmount(int row) {
    const QString quantity = Text(row, Quantity);
    const double count = quantity.isEmpty() ? 1 : base::Val(quantity);
    const double price = base::Val(Text(row, m_variant.PriceColumn));
    Write(row, Amount, base::PlainText(count * price));
}

int WardLines::Incomplete() const {
    int count = 0;
    for (int row = 1; row <= LastRow(); ++row)
        count += IsIncomplete(row);
    return count;
}

std::vector<WardRequestLine> WardLines::Complete() const {
    std::vector<WardRequestLine> lines;
    for (int row = 1; row <= LastRow(); ++row)
        if (CompleteRow(row))
            lines.push_back({Text(row, Code), Text(row, IsUnlisted(row) ? Remarks : Description),
                             Text(row, Frequency), Text(row, Quantity), Text(row, Amount),
                             Text(row, Remarks), Text(row, m_variant.PriceColumn)});
    return lines;
}
