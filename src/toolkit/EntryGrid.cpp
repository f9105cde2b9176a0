#include "toolkit/EntryGrid.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QStyle>
#include <QToolButton>

#include "base/Numbers.h"
#include "toolkit/CellText.h"
#include "toolkit/ColumnFit.h"
#include "toolkit/EntryGridCommit.h"
#include "toolkit/PickList.h"
#include "toolkit/Tips.h"
#include "toolkit/Twips.h"

namespace toolkit {

namespace {

constexpr int kAirAroundText = 8;

/// The key that a key code of the windows stands for.
int KeyOf(int keyCode) {
    constexpr int kEscapeCode = 27, kF1Code = 112, kF12Code = 123;
    if (keyCode >= kF1Code && keyCode <= kF12Code)
        return Qt::Key_F1 + keyCode - kF1Code;
    return keyCode == kEscapeCode ? int(Qt::Key_Escape) : keyCode;
}

}  // namespace

EntryGrid::EntryGrid(QWidget* parent) : QTableView(parent), m_model(new EntryGridModel(this)) {
    MakeCellWidgets();
    setModel(m_model);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kAirAroundText);
    verticalHeader()->hide();
    TipCutTexts(*this);
}

EntryGrid::~EntryGrid() = default;

void EntryGrid::MakeCellWidgets() {
    m_validator = new CellValidator(this);
    m_editor = new QLineEdit(viewport());
    m_editor->setObjectName(QStringLiteral("txtCell"));
    m_editor->setAutoFillBackground(true);
    m_editor->setFocusPolicy(Qt::ClickFocus);
    m_editor->setContextMenuPolicy(Qt::NoContextMenu);
    m_editor->setValidator(m_validator);
    m_editor->installEventFilter(this);
    connect(m_editor, &QLineEdit::textEdited, this, &EntryGrid::PlaceCellWidgets);
    connect(m_validator, &CellValidator::NotTaken, this, &EntryGrid::NotTaken);
    m_editor->hide();

    m_listButton = new QToolButton(viewport());
    m_listButton->setObjectName(QStringLiteral("cmdList"));
    m_listButton->setArrowType(Qt::DownArrow);
    m_listButton->setFocusPolicy(Qt::NoFocus);
    m_listButton->setAccessibleName(tr("Open the list"));
    m_listButton->setToolTip(tr("Open the list (F4)"));
    m_listButton->hide();
    connect(m_listButton, &QToolButton::clicked, this, &EntryGrid::OpenList);

    m_pickList = new PickList(this);
    connect(m_pickList, &PickList::Picked, this, [this](const QString& item) {
        if (IsTypedHere() && Store(item, Leaving::ByKey))
            Confirm();
    });
}

void EntryGrid::SetRows(int rows) {
    if (m_editing && Row() >= rows)
        CloseEditor();
    m_model->SetRows(rows);
}

void EntryGrid::SetCols(int cols) {
    Reshape(Rows(), cols, FixedRows(), FixedCols());
}

void EntryGrid::SetFixedRows(int rows) {
    Reshape(Rows(), Cols(), rows, FixedCols());
    horizontalHeader()->setVisible(FixedRows() > 0);
}

void EntryGrid::SetFixedCols(int cols) {
    Reshape(Rows(), Cols(), FixedRows(), cols);
}

void EntryGrid::Reshape(int rows, int cols, int fixedRows, int fixedCols) {
    CloseEditor();
    const int row = Row(), col = Col();
    m_model->Reshape(rows, cols, fixedRows, fixedCols);
    MoveCursor(row, col);
}

void EntryGrid::Reinitialise() {
    CloseEditor();
    m_model->Empty();
    MoveCursor(0, 0);
}

int EntryGrid::Row() const {
    return currentIndex().isValid() ? currentIndex().row() + FixedRows() : 0;
}

int EntryGrid::Col() const {
    return currentIndex().isValid() ? currentIndex().column() : 0;
}

void EntryGrid::SetCell(int row, int col) {
    if (m_commit)
        m_commit->Moved = true;
    else if (!LeaveCell(Leaving::ByKey))
        return;
    MoveCursor(row, col);
}

void EntryGrid::MoveCursor(int row, int col) {
    if (Rows() == FixedRows() || Cols() <= FixedCols())
        return;
    setCurrentIndex(m_model->IndexOf(qBound(FixedRows(), row, Rows() - 1),
                                     qBound(FixedCols(), col, Cols() - 1)));
}

void EntryGrid::SetTextMatrix(int row, int col, const QString& text) {
    if (m_editing && row == Row() && col == Col())
        CloseEditor();
    if (m_commit && row == m_commit->Row && col == m_commit->Col)
        m_commit->Rewritten = true;
    m_model->SetText(row, col, text);
    WidenFor(col, text);
}

// An amount that is cut off reads as another amount, and a mark is only a letter wide.
void EntryGrid::WidenFor(int col, const QString& text) {
    const bool isFitted = m_model->Column(col).IsNumeric || col < FixedCols();
    if (!isFitted || text.isEmpty() || isColumnHidden(col))
        return;
    const int margin = 2 * (style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 1);
    const int needed = fontMetrics().horizontalAdvance(text) + 2 * margin;
    if (needed <= columnWidth(col))
        return;
    setColumnWidth(col, needed);
    GiveRoom();
}

void EntryGrid::SetRoomCol(int col) {
    m_roomCol = col;
    m_leastRoom = columnWidth(col);
    GiveRoom();
}

void EntryGrid::GiveRoom() {
    if (m_roomCol >= 0 && m_roomCol < Cols())
        setColumnWidth(m_roomCol, WidthWithRoom(*this, m_roomCol, m_leastRoom));
}

// A text that is longer than its cell lies over the next ones while it is typed.
QRect EntryGrid::EditorPlace(QRect cell) const {
    constexpr int kCaretAndFrame = 10;
    const int needed = m_editor->fontMetrics().horizontalAdvance(m_editor->text()) + kCaretAndFrame;
    const int room = viewport()->width() - cell.left();
    cell.setWidth(qMax(cell.width(), qMin(needed, room)));
    return cell;
}

double EntryGrid::Sum(int col, int firstRow, int lastRow) const {
    double sum = 0;
    for (int row = firstRow; row <= lastRow; ++row)
        sum += base::Val(TextMatrix(row, col));
    return sum;
}

void EntryGrid::SetColWidths(const QList<int>& twips) {
    const int count = qMin(Cols(), int(twips.size()));
    for (int col = 0; col < count; ++col) {
        setColumnHidden(col, twips[col] == 0);
        if (twips[col] > 0)
            setColumnWidth(col, Twips(twips[col], this));
    }
}

void EntryGrid::SetColKind(int col, EntryKind kind, const QString& list) {
    EntryColumn& column = m_model->Column(col);
    column.Kind = kind;
    column.Items = list.split(QStringLiteral("\r\n"));
    PlaceCellWidgets();
}

void EntryGrid::SetNumeric(int col, bool numeric) {
    m_model->Column(col).IsNumeric = numeric;
    viewport()->update();
}

void EntryGrid::SetProtected(int col, bool isProtected) {
    m_model->Column(col).IsProtected = isProtected;
    PlaceCellWidgets();
    viewport()->update();
}

void EntryGrid::SetProtectedWhen(int col, std::function<bool(int)> isProtectedOn) {
    m_model->Column(col).IsProtectedOn = std::move(isProtectedOn);
    PlaceCellWidgets();
    viewport()->update();
}

void EntryGrid::SetLookupKey(int keyCode) {
    m_lookupKey = KeyOf(keyCode);
}

void EntryGrid::SetLeaveKey(int keyCode) {
    m_leaveKey = KeyOf(keyCode);
}

void EntryGrid::RemoveLine() {
    if (Row() < FixedRows() || !currentIndex().isValid() || m_commit)
        return;
    CloseEditor();
    const int row = Row(), col = Col();
    if (Rows() - FixedRows() == 1)
        m_model->EmptyRow(row);
    else
        m_model->RemoveRow(row);
    MoveCursor(row, col);
    emit LineRemoved(row);
}

bool EntryGrid::AddLine() {
    if (m_keyCol >= 0 && TextMatrix(Rows() - 1, m_keyCol).isEmpty())
        return false;
    m_model->SetRows(Rows() + 1);
    int col = FixedCols();
    while (col < Cols() - 1 && !IsTypedAndShown(Rows() - 1, col))
        ++col;
    MoveCursor(Rows() - 1, col);
    return true;
}

bool EntryGrid::IsTypedAndShown(int row, int col) const {
    return m_model->IsTyped(row, col) && !isColumnHidden(col);
}

void EntryGrid::PlaceCellWidgets() {
    const QModelIndex current = currentIndex();
    QRect cell = visualRect(current);
    const bool hasList = current.isValid() && IsTypedHere() && !isColumnHidden(Col()) &&
                         m_model->Column(Col()).Kind != EntryKind::Text;
    m_listButton->setVisible(hasList);
    if (hasList) {
        const int side = qMin(cell.height(), cell.width() / 2);
        m_listButton->setGeometry(cell.right() - side + 1, cell.top(), side, cell.height());
        cell.setRight(cell.right() - side);
    }
    if (m_editing)
        m_editor->setGeometry(EditorPlace(cell));
}

void EntryGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    PlaceCellWidgets();
    if (current.isValid())
        emit CellEntered(Row(), Col());
}

void EntryGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    GiveRoom();
}

void EntryGrid::updateGeometries() {
    QTableView::updateGeometries();
    PlaceCellWidgets();
}

}  // namespace toolkit
