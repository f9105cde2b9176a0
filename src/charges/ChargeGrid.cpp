#include "charges/ChargeGrid.h"

#include <algorithm>
#include <limits>

#include "base/Errors.h"
#include "base/Numbers.h"
#include "base/Texts.h"
#include "charges/clsComputeDiscount.h"
#include "charges/clsRevenueCode.h"
#include "session/modGlobals.h"
#include "toolkit/CellText.h"
#include "toolkit/EntryGrid.h"
#include "toolkit/MsgBox.h"

using namespace ChargeColumn;
using toolkit::BoxIcon;
using toolkit::EntryKind;
using toolkit::MsgBox;

namespace {

// What the server's money columns hold.
constexpr double kMostMoney = 922'337'203'685'477.0;
constexpr double kMostUnits = 32'767;

/// The leading number of a cell; of one that no double holds, more than anything.
double NumberIn(const QString& text) {
    try {
        return base::Val(text);
    } catch (const base::RuntimeError&) {
        return std::numeric_limits<double>::infinity();
    }
}

// The price as the line shows and sends it. A price below zero would pay the patient: none.
double ShownPrice(double price) {
    return price > 0 ? base::Val(base::MoneyText(price)) : 0;
}

/// What is told when the cell counts as another number than the one that was typed; else empty.
QString CountsAs(const QString& typed, const QString& counted) {
    if (NumberIn(typed) == NumberIn(counted) && !typed.isEmpty())
        return {};
    return QStringLiteral("%1 counts as %2.")
        .arg(typed.isEmpty() ? QStringLiteral("An empty cell") : typed, counted);
}

void PrepareSupplyList() {
    modGlobals::gSupplyList->SetListTitle(base::ProperCase(QStringLiteral("Medicines/Supplies")));
    modGlobals::gSupplyList->SetDrugsORCSR(false);
}

}  // namespace

ChargeGrid::ChargeGrid(toolkit::EntryGrid& grid, const ChargeRules& rules, QObject* parent)
    : QObject(parent), m_grid(grid), m_rules(rules) {
    connect(&m_grid, &toolkit::EntryGrid::CellCommitted, this, &ChargeGrid::CommitCell);
    connect(&m_grid, &toolkit::EntryGrid::CellEntered, this, [this] { m_isUnread = false; });
    connect(&m_grid, &toolkit::EntryGrid::LookupRequested, this, &ChargeGrid::ShowListOf);
    connect(&m_grid, &toolkit::EntryGrid::NotTaken, this, [this](const QString& typed) {
        m_notTaken = typed;
        emit Told(QStringLiteral("%1: only digits and one point count here.").arg(typed));
    });
    connect(&m_grid, &toolkit::EntryGrid::LineRemoved, this, [this](int row) {
        // A sheet's only line is emptied instead of removed: it begins anew as well.
        if (row < int(m_lines.size()))
            m_lines.erase(m_lines.begin() + row);
        emit TotalsChanged(Totals());
    });
}

void ChargeGrid::Initialize_TableInput(QWidget* saveButton, QWidget* closeButton) {
    m_lines.clear();
    m_grid.SetSaveButton(saveButton);
    m_grid.SetCloseButton(closeButton);
    m_grid.SetLookupKey(112);
    m_grid.SetLeaveKey(27);
    m_grid.SetFixedCols(1);
    m_grid.SetFixedRows(0);
    m_grid.SetCols(ChargeColumn::Count);
    m_grid.SetRows(1);
    m_grid.Reinitialise();
    m_grid.SetFixedRows(1);
    m_grid.SetRows(2);
    m_grid.Reinitialise();
    m_grid.SetColWidths({100, 1000, 1000, 4000, 1500, 1000, 1000, 1000, 0, 0, 0, 0, 0, 0});
    for (int col = 0; col < int(m_rules.Headers.size()); ++col)
        m_grid.SetHeader(col, m_rules.Headers[col]);
    m_grid.SetRoomCol(Description);
    m_grid.SetColKind(Dept, EntryKind::LookUp);
    m_grid.SetColKind(Code, EntryKind::LookUp);
    m_grid.SetColKind(Type, EntryKind::PickList, QStringLiteral("\r\nSTAT\r\nROUTINE"));
    for (const int col : {Price, Quantity, Amount})
        m_grid.SetNumeric(col);
    for (const int col : {Description, Amount, WithItems, LocationID, Price, ListPrice,
                          InventoryCode, NetAmount, Discount})
        m_grid.SetProtected(col);
    // A fee's amount may be raised above its price; a stock item costs what it costs.
    m_grid.SetProtectedWhen(Amount, [this](int row) {
        return Text(row, Code).isEmpty() || !Text(row, LocationID).isEmpty();
    });
    m_grid.SetKeyCol(Code);
    emit TotalsChanged(Totals());
}

void ChargeGrid::CommitCell(int row, int col) {
    m_told.clear();
    emit Told({});
    TellOfNotTaken(Text(row, col));
    switch (col) {
        case Dept:
            CommitRevenueCode(row);
            break;
        case Code:
            CommitItemCode(row);
            break;
        case Quantity:
            CommitQuantity(row);
            break;
        case Amount:
            // The totals go on counting the amount that the grid puts back.
            if (!CommitAmount(row))
                return;
            break;
        default:
            return;
    }
    emit TotalsChanged(Totals());
}

void ChargeGrid::CommitRevenueCode(int row) {
    QString code = Text(row, Dept);
    clsRevenueCode& revenue = clsRevenueCode::Shared();
    if (!revenue.ValidateRevenue(code))
        return m_grid.RefuseCommit();
    Write(row, Dept, revenue.RevenueID());
    if (revenue.RevenueID() != LineOf(row).RevenueID) {
        EmptyItem(row);
        Write(row, Code, {});
        Write(row, Type, {});
        Write(row, InventoryCode, revenue.InventoryCode());
        Write(row, Description, revenue.Revenue());
        Write(row, WithItems, revenue.WithItems());
        Write(row, LocationID, revenue.LocationID());
        LineOf(row).RevenueID = revenue.RevenueID();
    }
    const bool hasItems = revenue.WithItems() == u"Y" || revenue.SearchInventory();
    m_grid.SetCol(hasItems ? Code : Dept);
}

void ChargeGrid::CommitItemCode(int row) {
    QString code = Text(row, Code);
    const QString location = Text(row, LocationID);
    const bool found = location.isEmpty() ? LookupRevenueItem(row, code)
                                          : LookupInventoryItem(row, code, location);
    emit ItemCommitted();
    if (found)
        m_grid.SetCol(Type);
    else
        m_grid.RefuseCommit();
}

void ChargeGrid::CommitQuantity(int row) {
    const QString typed = Text(row, Quantity);
    if (NumberIn(typed) > kMostUnits)
        return Refuse(QStringLiteral("The largest quantity is %1.").arg(kMostUnits));
    const double quantity = QuantityOf(row);
    const double amount = ComputeLineAmount(row);
    if (amount > kMostMoney)
        return Refuse(QStringLiteral("So many cost more than can be charged."));
    // The sheet, the stock card and the bill go by the whole units that are priced.
    Write(row, Quantity, base::PlainText(quantity));
    Tell(CountsAs(typed, base::PlainText(quantity)));
    // What was typed for an open-price fee is the amount, however many times it was done.
    if (Text(row, OpenPrice) == u"Y")
        return;
    if (std::exchange(LineOf(row).IsRaised, false))
        Tell(QStringLiteral("The amount %1 is now price times quantity: %2.")
                 .arg(Text(row, Amount), base::MoneyText(amount)));
    WriteAmounts(row, amount, LineOf(row).UnitDiscount * quantity);
}

bool ChargeGrid::CommitAmount(int row) {
    const double price = base::Val(Text(row, Price));
    const QString typed = Text(row, Amount);
    double amount = NumberIn(typed);
    if (amount > kMostMoney) {
        Refuse(QStringLiteral("The largest amount is %1.").arg(base::MoneyText(kMostMoney)));
        return false;
    }
    if (amount < price) {
        MsgBox(QStringLiteral("You cannot enter amount lesser than the price."),
               BoxIcon::Information, QStringLiteral("Message"));
        amount = price;
        Tell(QStringLiteral("The amount is the price of one again: %1.")
                 .arg(base::MoneyText(price)));
    } else {
        Tell(CountsAs(typed, base::MoneyText(amount)));
    }
    WriteAmounts(row, amount, 0);
    LineOf(row).IsRaised = Text(row, OpenPrice) != u"Y" &&
                           Text(row, Amount) != base::MoneyText(ComputeLineAmount(row));
    return true;
}

// What was taken back meanwhile and typed anew begins otherwise.
void ChargeGrid::TellOfNotTaken(const QString& taken) {
    const QString typed = std::exchange(m_notTaken, QString());
    if (!typed.isEmpty() && taken.startsWith(toolkit::NumericPart(typed)))
        Tell(QStringLiteral("Taken: %1. Only digits and one point count.").arg(taken));
}

void ChargeGrid::Tell(const QString& text) {
    if (text.isEmpty())
        return;
    m_told << text;
    m_isUnread = true;
    emit Told(m_told.join(u' '));
}

void ChargeGrid::TellThatSaveWaits() {
    emit Told((m_told + QStringList{QStringLiteral("Not saved yet: save once more.")}).join(u' '));
}

void ChargeGrid::Refuse(const QString& why) {
    Tell(why);
    m_grid.RefuseCommit();
}

bool ChargeGrid::IsMoney(double price) {
    const bool fits = !(price > kMostMoney);
    if (!fits)
        Tell(QStringLiteral("The catalogue's price is more than can be charged."));
    return fits;
}

bool ChargeGrid::LookupInventoryItem(int row, QString& code, const QString& location) {
    using namespace modGlobals;
    PrepareSupplyList();
    if (!gSupplyInfo->SearchDrug(code, location))
        code = gSupplyList->ShowList(code, true, location);
    code = code.trimmed();
    if (code.isEmpty())
        return false;
    if (!gSupplyInfo->SearchDrug(code, location)) {
        MsgBox(QStringLiteral("Item not found on file."), BoxIcon::Information);
        return false;
    }
    const components::DrugRecord& drug = gSupplyInfo->Drug();
    if (drug.Status) {
        MsgBox(QStringLiteral("Record is inactive...please reenter..."), BoxIcon::Exclamation,
               QStringLiteral("Message"));
        return false;
    }
    if (!IsMoney(drug.SellingPriceOut))
        return false;
    if (drug.OnHand <= 0)
        Tell(QStringLiteral("%1: none in stock (%2).")
                 .arg(drug.DrugName, base::PlainText(drug.OnHand)));
    const double price = ShownPrice(drug.SellingPriceOut);
    WriteItem(row, {code, drug.DrugName, {}, price, UnitDiscountOf(row, code, price)});
    return true;
}

bool ChargeGrid::LookupRevenueItem(int row, QString& code) {
    try {
        if (!SearchRevenueItem(row, code))
            return false;
        const components::OtherRevenueRecord& fee = modGlobals::gCodeSearch->OtherRevenue();
        code = fee.ResultCode;
        if (IsDuplicateItem(row, Text(row, Dept), code)) {
            MsgBox(QStringLiteral("Exam already selected."), BoxIcon::Exclamation,
                   QStringLiteral("Assessment"));
            EmptyItem(row);
            Write(row, Code, {});
            return false;
        }
        if (!IsMoney(fee.RateA))
            return false;
        const double price = ShownPrice(fee.RateA);
        WriteItem(row, {code, fee.OtherRevenue,
                        price == 0 ? QStringLiteral("Y") : QStringLiteral("N"), price, 0});
        return true;
    } catch (const base::RuntimeError& error) {
        Tell(QStringLiteral("%1  %2").arg(error.Number()).arg(error.Description()));
        return false;
    }
}

bool ChargeGrid::SearchRevenueItem(int row, QString& code) {
    if (Text(row, Dept).isEmpty()) {
        Tell(QStringLiteral("Type the revenue code of the line first."));
        return false;
    }
    components::CodeSearch& search = *modGlobals::gCodeSearch;
    search.SetSearchMode(true);
    search.SetOtherSectionID(Text(row, Dept));
    return search.SearchListing(code, components::CodeSearch::kOtherRevenue);
}

void ChargeGrid::ShowListOf(int row, int col) {
    m_told.clear();
    // A code that stands needs no narrowing: whoever asks for the list wants another one.
    const QString typed = m_grid.InEditMode() ? m_grid.EditText() : QString();
    const QString code = col == Dept ? clsRevenueCode::Pick(typed) : PickItem(row, typed);
    if (!code.isEmpty())
        m_grid.CommitText(code);
}

QString ChargeGrid::PickItem(int row, const QString& text) {
    if (const QString location = Text(row, LocationID); !location.isEmpty()) {
        PrepareSupplyList();
        return modGlobals::gSupplyList->ShowList(text, true, location);
    }
    QString code = text;
    return SearchRevenueItem(row, code) ? code : QString();
}

bool ChargeGrid::IsDuplicateItem(int row, const QString& revenueId, const QString& itemCode) const {
    for (int other = 1; other < m_grid.Rows(); ++other) {
        if (other != row && Text(other, Code) == itemCode && Text(other, Dept) == revenueId)
            return true;
    }
    return false;
}

double ChargeGrid::QuantityOf(int row) const {
    const double typed = base::Val(Text(row, Quantity));
    return typed > 0 ? std::max<double>(base::ToInt16(typed), 1) : 1;
}

double ChargeGrid::ComputeLineAmount(int row) const {
    return base::Val(Text(row, Price)) * QuantityOf(row);
}

// A discount that does not add up with the price, because the item's price was changed between two
// questions, is not one of this line.
double ChargeGrid::UnitDiscountOf(int row, const QString& code, double price) const {
    if (!m_rules.WithDiscount)
        return 0;
    clsComputeDiscount& server = clsComputeDiscount::Shared();
    server.SetRevenueID(Text(row, Dept));
    server.SetItemCode(code);
    server.SetWithMarkUp(0);
    server.SetFullPrice(price);
    const double netAmount = server.NetAmount();
    const double discount = server.DiscountAmount();
    const bool addsUp = discount >= 0 && discount <= price &&
                        base::MoneyText(netAmount + discount) == base::MoneyText(price);
    return addsUp ? discount : 0;
}

ChargeTotals ChargeGrid::Totals() const {
    const int last = m_grid.Rows() - 1;
    return {m_grid.Sum(Amount, 1, last), m_grid.Sum(Discount, 1, last),
            m_grid.Sum(NetAmount, 1, last)};
}

void ChargeGrid::WriteItem(int row, const PricedItem& item) {
    LineOf(row).UnitDiscount = item.UnitDiscount;
    LineOf(row).IsRaised = false;
    const QString price = base::MoneyText(item.Price);
    Write(row, Code, item.Code);
    Write(row, Description, item.Description);
    Write(row, Type, {});
    Write(row, OpenPrice, item.OpenPrice);
    Write(row, Price, price);
    Write(row, ListPrice, price);
    Write(row, Quantity, QStringLiteral("1"));
    WriteAmounts(row, item.Price, item.UnitDiscount);
}

void ChargeGrid::WriteAmounts(int row, double amount, double discount) {
    const QString shownAmount = base::MoneyText(amount);
    Write(row, Amount, shownAmount);
    if (!m_rules.WithDiscount)
        return;
    Write(row, NetAmount, base::PlainText(base::Val(shownAmount) - discount));
    Write(row, Discount, base::PlainText(discount));
}

void ChargeGrid::EmptyItem(int row) {
    LineOf(row).UnitDiscount = 0;
    LineOf(row).IsRaised = false;
    // The description of a line without an item is its revenue code's: it stays.
    if (!Text(row, ListPrice).isEmpty())
        Write(row, Description, {});
    for (const int col : {OpenPrice, Price, Quantity, Amount, ListPrice, NetAmount, Discount})
        Write(row, col, {});
}

QString ChargeGrid::Text(int row, int col) const {
    return m_grid.TextMatrix(row, col);
}

void ChargeGrid::Write(int row, int col, const QString& text) {
    m_grid.SetTextMatrix(row, col, text);
}

ChargeGrid::Line& ChargeGrid::LineOf(int row) {
    m_lines.resize(size_t(m_grid.Rows()));
    return m_lines[size_t(row)];
}
