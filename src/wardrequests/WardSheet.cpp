#include "wardrequests/WardSheet.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "base/Errors.h"
#include "base/Numbers.h"
#include "session/modGlobals.h"
#include "toolkit/FlexGrid.h"
#include "toolkit/MsgBox.h"
#include "toolkit/Twips.h"
#include "wardrequests/WardChecks.h"
#include "wardrequests/WardEntryValidator.h"

using components::CodeSearch;
using modGlobals::gCodeSearch;
using modGlobals::gSupplyInfo;
using toolkit::MsgBox;
using namespace WardColumn;

namespace {

const QString kCodePrompt =
    QStringLiteral("Type Item Code or first 4 letters of Item Name then Press <Enter>....");
const QString kFrequencyPrompt =
    QStringLiteral("Type Dosage Code or first letters of Dosage Name then Press <Enter>....");
const QString kQuantityPrompt = QStringLiteral("Type Quantity to request then Press <Enter>....");
const QString kRemarksPrompt = QStringLiteral("Type Addition Remarks and then Press <Enter>...");

constexpr int kBesideCell = 25;
constexpr int kNarrowerThanCell = 20;
constexpr int kCaretAndFrame = 12;
constexpr int kNoLimit = 32767;

// A number too large for any item is a code that does not exist, not a name.
bool IsZero(const QString& text) {
    try {
        return base::Val(text) == 0;
    } catch (const base::RuntimeError&) {
        return false;
    }
}

}  // namespace

WardSheet::WardSheet(toolkit::FlexGrid& grid, QLabel& prompt, const WardVariant& variant,
                     QString idNum, QObject* parent)
    : QObject(parent),
      m_grid(grid),
      m_prompt(prompt),
      m_variant(variant),
      m_idNum(std::move(idNum)),
      m_lines(grid, variant),
      m_box(new QLineEdit(grid.viewport())),
      m_validator(new WardEntryValidator(this)) {
    m_box->setObjectName(QStringLiteral("txtEntry"));
    m_box->setAccessibleName(QStringLiteral("Entry"));
    m_box->setFont(QFont(QStringLiteral("Arial"), m_grid.font().pointSize()));
    m_box->setFixedHeight(m_grid.verticalHeader()->defaultSectionSize());
    m_box->setTextMargins(0, 0, 0, 0);
    m_box->setValidator(m_validator);
    m_box->installEventFilter(this);
    m_grid.installEventFilter(this);
    m_grid.SetCellCursor();
    m_grid.SetMarkedWhen([this](int row) { return IsLeftIncomplete(row); });
    connect(m_box, &QLineEdit::textChanged, this, &WardSheet::ShowPrompt);
    connect(m_box, &QLineEdit::textChanged, this, &WardSheet::PlaceBox);
    connect(&m_grid, &toolkit::FlexGrid::CellsMoved, this, &WardSheet::PlaceBox);
    connect(&m_grid, &toolkit::FlexGrid::CellLeft, this, &WardSheet::LeaveCellByMouse);
    connect(&m_grid, &toolkit::FlexGrid::CellEntered, this,
            [this] { EnterCell(Arriving::ByMouse); });
}

void WardSheet::Start() {
    m_lines.LayOut();
    m_grid.SetCell(1, Code);
    LoadCell();
}

bool WardSheet::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress)
        return HandleKey(static_cast<QKeyEvent*>(event)->key());
    // The sheet's keyboard is the box, wherever in the grid the mouse was.
    if (watched == &m_grid && event->type() == QEvent::FocusIn && m_box->isVisible())
        m_box->setFocus();
    return QObject::eventFilter(watched, event);
}

bool WardSheet::HandleKey(int key) {
    const int row = m_grid.Row(), col = m_grid.Col();
    switch (key) {
        case Qt::Key_Home:
            m_grid.SetCell(row, m_lines.NextCol(row, col, -1));
            break;
        case Qt::Key_End:
            m_grid.SetCell(row, m_lines.NextCol(row, col, 1));
            break;
        case Qt::Key_Up:
            m_grid.SetCell(row - 1, col);
            break;
        case Qt::Key_Down:
            m_grid.SetCell(row + 1, col);
            break;
        case Qt::Key_Left:
        case Qt::Key_Right:
            break;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Enter();
            return true;
        default:
            return false;
    }
    EnterCell(Arriving::ByKey);
    return true;
}

void WardSheet::EnterCell(Arriving how) {
    // A column that is typed in on one line may be skipped on the next.
    while (how == Arriving::ByKey && m_grid.Col() > Code &&
           m_lines.ExcemptCol(m_grid.Row(), m_grid.Col()))
        m_grid.SetCell(m_grid.Row(), m_grid.Col() - 1);
    const int row = m_grid.Row(), col = m_grid.Col();
    const int longest = WardLines::MaxLength(col);
    m_validator->SetNumeric(WardLines::IsNumeric(col));
    m_box->setMaxLength(longest > 0 ? longest : kNoLimit);
    Refill();
    PutTextBox(col, row);
    m_grid.viewport()->update();
    emit CellEntered();
    if (m_box->isVisible() || how == Arriving::ByKey)
        m_box->setFocus();
    else
        m_grid.setFocus();
}

// What is typed next takes the place of what the cell held.
void WardSheet::Refill() {
    m_box->setText(m_lines.Text(m_grid.Row(), m_grid.Col()));
    m_box->selectAll();
    ShowPrompt();
}

void WardSheet::LeaveCellByMouse(int row, int col) {
    m_box->clear();
    m_box->hide();
    m_grid.setFocus();
    if (col < SupplyPrice && m_lines.CompleteRow(row))
        m_lines.AddRow(row);
}

void WardSheet::PutTextBox(int col, int row) {
    if (m_lines.ExcemptCol(row, col) || col > Remarks)
        return;
    m_box->show();
    PlaceBox();
}

// A text that is longer than its cell lies over the next one. The distances are from the grid's
// outer edge; the box stands within its frame, so that cells scrolled out of sight take it along.
void WardSheet::PlaceBox() {
    const QRect cell = m_grid.CellRect(m_grid.Row(), m_grid.Col());
    if (m_box->isHidden() || cell.isEmpty())
        return;
    const int beside = toolkit::Twips(kBesideCell, &m_grid) - m_grid.frameWidth();
    const int stated = cell.width() - toolkit::Twips(kNarrowerThanCell, &m_grid);
    const int needed = m_box->fontMetrics().horizontalAdvance(m_box->text()) + kCaretAndFrame;
    const int room = m_grid.viewport()->width() - cell.left() - beside;
    m_box->setFixedWidth(qMax(stated, qMin(needed, room)));
    m_box->move(cell.left() + beside, cell.top() + beside);
}

void WardSheet::ShowPrompt() {
    switch (m_grid.Col()) {
        case Code:
            m_prompt.setText(kCodePrompt);
            break;
        case Frequency:
            m_prompt.setText(kFrequencyPrompt);
            break;
        case Quantity:
            m_prompt.setText(kQuantityPrompt);
            break;
        case Remarks:
            m_prompt.setText(kRemarksPrompt);
            break;
        default:
            break;
    }
}

void WardSheet::LoadCell() {
    EnterCell(Arriving::ByKey);
}

void WardSheet::DeleteRow() {
    m_lines.DeleteRow(m_grid.Row());
    m_grid.SetCell(m_lines.LastRow(), Code);
    LoadCell();
}

// The line that is being typed is not yet left.
bool WardSheet::IsLeftIncomplete(int row) const {
    return row != m_grid.Row() && m_lines.IsIncomplete(row);
}

bool WardSheet::LeftIncomplete() const {
    for (int row = 1; row <= m_lines.LastRow(); ++row)
        if (IsLeftIncomplete(row))
            return true;
    return false;
}

bool WardSheet::StoreOpenCell() {
    const bool isOpen =
        m_box->isVisible() && m_box->text() != m_lines.Text(m_grid.Row(), m_grid.Col());
    if (!isOpen || Store())
        return true;
    m_box->selectAll();
    m_box->setFocus();
    return false;
}

void WardSheet::Enter() {
    try {
        if (Store())
            Advance();
        else
            m_box->selectAll();
    } catch (const base::RuntimeError& error) {
        MsgBox(m_variant.ErrorMessage + error.Description());
        if (m_variant.ClosesOnError)
            emit Failed();
    }
}

bool WardSheet::Store() {
    switch (m_grid.Col()) {
        case Code:
            return StoreCode();
        case Frequency:
            return StoreFrequency();
        case Quantity:
            return StoreQuantity();
        case Remarks:
            return StoreRemarks();
        default:
            return true;
    }
}

bool WardSheet::StoreCode() {
    const int row = m_grid.Row();
    if (IsUnchanged() && m_lines.HasItem(row))
        return true;
    if (m_lines.Text(row, Code).isEmpty())
        m_lines.Write(row, Code, m_box->text());
    m_lines.SkipDescription();
    QString code = m_box->text();
    auto price = m_variant.TypedPrice;
    if (IsZero(code)) {
        code = PickItem(code);
        m_box->setText(code);
        if (code.isEmpty())
            return false;
        price = m_variant.PickedPrice;
    }
    if (!gSupplyInfo->SearchDrug(code, m_variant.Location)) {
        MsgBox(QStringLiteral("Code Not Exists!"));
        return false;
    }
    const components::DrugRecord drug = gSupplyInfo->Drug();
    if (drug.Status) {
        MsgBox(QStringLiteral("Record is inactive...please reenter..."),
               toolkit::BoxIcon::Exclamation, QStringLiteral("Message"));
        return false;
    }
    if (drug.IsMedicine != m_variant.ListsMedicines) {
        MsgBox(QStringLiteral("%1 %2 is not in this list.").arg(drug.DrugCode, drug.DrugName));
        return false;
    }
    m_box->setText(drug.DrugCode);
    if (!IsRequestable(drug.DrugCode, row)) {
        RefuseCode(row);
        return false;
    }
    m_lines.SetItem(row, drug.DrugCode, drug.DrugName, drug.*price);
    return true;
}

// What was accepted before is not looked up, priced or counted anew.
bool WardSheet::IsUnchanged() const {
    return !m_box->text().isEmpty() && m_box->text() == m_lines.Text(m_grid.Row(), m_grid.Col());
}

QString WardSheet::PickItem(const QString& text) {
    m_variant.List->SetListTitle(m_variant.ListTitle);
    m_variant.List->SetDrugsORCSR(m_variant.ListsMedicines);
    return m_variant.List->ShowList(text, false, m_variant.Location);
}

bool WardSheet::IsRequestable(const QString& code, int row) {
    if (m_lines.Check_Code(code, row)) {
        MsgBox(m_variant.DuplicateMessage);
        return false;
    }
    return !CheckExamStatus(m_idNum, code, m_variant.Department) &&
           !CheckExamPosted(m_idNum, code, m_variant.Department);
}

void WardSheet::RefuseCode(int row) {
    m_box->clear();
    m_lines.Empty(row);
}

bool WardSheet::StoreFrequency() {
    if (IsUnchanged())
        return true;
    const int row = m_grid.Row();
    QString text = m_box->text();
    if (!m_variant.LooksUpFrequency) {
        m_lines.Write(row, Frequency, text.isEmpty() ? m_variant.UsualFrequency : text);
        return true;
    }
    if (!gCodeSearch->SearchListing(text, CodeSearch::kDosages)) {
        MsgBox(QStringLiteral("Dosage Code Does not Exist !"));
        return false;
    }
    m_lines.Write(row, Frequency, gCodeSearch->Dosage().ResultCode);
    // Before the item there is no price to compute an amount with.
    if (m_lines.Text(row, m_variant.PriceColumn).isEmpty())
        m_lines.Write(row, Quantity, gCodeSearch->Dosage().Frequency);
    else
        m_lines.SetQuantity(row, gCodeSearch->Dosage().Frequency);
    return true;
}

bool WardSheet::StoreQuantity() {
    if (IsZero(m_box->text())) {
        MsgBox(QStringLiteral("Quantity should be greater than zero!"));
        return false;
    }
    m_lines.SetQuantity(m_grid.Row(), m_box->text());
    return true;
}

bool WardSheet::StoreRemarks() {
    const int row = m_grid.Row();
    const bool isUnlisted = m_lines.IsUnlisted(row);
    if (isUnlisted && m_box->text().trimmed().isEmpty()) {
        MsgBox(QStringLiteral("Item 00 needs remarks: they say what is requested."));
        return false;
    }
    m_lines.Write(row, Remarks, m_box->text());
    if (isUnlisted)
        m_lines.Write(row, Description, m_box->text());
    return true;
}

void WardSheet::Advance() {
    const int row = m_grid.Row(), col = m_grid.Col();
    if (col < SupplyPrice)
        m_lines.AddRow(row);
    m_grid.GrowColumns();
    if (col == Remarks)
        m_grid.SetCell(qMin(row + 1, m_lines.LastRow()), Code);
    else
        m_grid.SetCell(row, m_lines.NextCol(row, col, 1));
    EnterCell(Arriving::ByKey);
}
