#include "toolkit/FlexGrid.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "base/Errors.h"
#include "toolkit/ColumnFit.h"
#include "toolkit/Keys.h"
#include "toolkit/Tips.h"
#include "toolkit/Twips.h"

namespace toolkit {

namespace {

constexpr int kNoSuchField = 3265;
constexpr int kAnchorTwips = 1;
constexpr int kTwipsToTheInch = 1440;
constexpr int kNewColumnTwips = 960;
constexpr int kAirAroundText = 8;
constexpr int kEmptyListRows = 2;

}  // namespace

FlexGrid::FlexGrid(QWidget* parent)
    : QTableView(parent),
      m_model(new FlexGridModel(this)),
      m_widths{kAnchorTwips, kNewColumnTwips} {
    setModel(m_model);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setShowGrid(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    horizontalHeader()->setMinimumSectionSize(1);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kAirAroundText);
    verticalHeader()->hide();
    TipCutTexts(*this);
    connect(this, &QTableView::clicked, this,
            [this](const QModelIndex& index) { emit RowClicked(index.row() + 1); });
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit RowOpened(index.row() + 1); });
    ShowFirstRow();
}

void FlexGrid::SetRows(int rows) {
    m_model->SetRows(rows);
    ShowFirstRow();
}

void FlexGrid::SetCols(int cols) {
    m_model->SetCols(cols);
    m_widths.resize(Cols(), kNewColumnTwips);
    ShowFirstRow();
}

void FlexGrid::SetFormatString(const QString& format) {
    const QStringList parts = format.split(u'|');
    if (parts.size() > Cols())
        SetCols(int(parts.size()));
    for (int col = 0; col < parts.size(); ++col) {
        QString header = parts[col];
        const QChar mark = header.isEmpty() ? QChar() : header.front();
        if (mark == u'<' || mark == u'>' || mark == u'^')
            header.remove(0, 1);
        m_model->SetAlignment(col, mark == u'>'   ? Qt::AlignRight
                                   : mark == u'^' ? Qt::AlignHCenter
                                                  : Qt::AlignLeft);
        m_model->SetText(0, col, header);
        if (col > 0)
            m_widths[col] = MeasuredTwips(header);
    }
    ApplyWidths();
}

int FlexGrid::MeasuredTwips(const QString& header) const {
    const int pixels = horizontalHeader()->fontMetrics().horizontalAdvance(header) + kAirAroundText;
    return pixels * kTwipsToTheInch / logicalDpiX();
}

void FlexGrid::SetColWidth(int col, int twips) {
    m_widths.at(col) = twips;
    ApplyWidth(col);
}

void FlexGrid::SetTextMatrix(int row, int col, const QString& text) {
    m_model->SetText(row, col, text);
}

void FlexGrid::Clear() {
    m_model->Empty();
    ShowFirstRow();
}

void FlexGrid::FillFrom(const std::shared_ptr<const db::RowStore>& rows,
                        const QStringList& fields) {
    if (!rows)
        return;
    std::vector<int> positions;
    for (const QString& field : fields) {
        positions.push_back(field.isEmpty() ? -1 : rows->ColumnIndex(field));
        if (!field.isEmpty() && positions.back() < 0)
            throw base::DatabaseError(kNoSuchField,
                                      QStringLiteral("The rows have no column %1.").arg(field));
    }
    m_model->Append(rows, positions);
    ShowFirstRow();
}

void FlexGrid::Bind(const std::shared_ptr<const db::RowStore>& rows) {
    if (rows) {
        m_model->Replace(rows);
        m_widths.resize(Cols(), kNewColumnTwips);
    } else {
        m_model->Empty();
        m_model->SetRows(kEmptyListRows);
    }
    ShowFirstRow();
}

void FlexGrid::SetRowsInSight(int rows) {
    setMaximumHeight(2 * frameWidth() + horizontalHeader()->sizeHint().height() +
                     rows * verticalHeader()->defaultSectionSize() +
                     horizontalScrollBar()->sizeHint().height());
}

void FlexGrid::SetRow(int row) {
    if (row == 0) {
        const QScopedValueRollback<bool> quiet(m_filling, true);
        setCurrentIndex({});
    } else if (row >= 1 && row < Rows())
        setCurrentIndex(m_model->index(row - 1, qMin(1, Cols() - 1)));
}

void FlexGrid::SetRowChosenByHand() {
    m_chosenByHand = true;
    ShowFirstRow();
}

/// What was just laid out stands at its top, with a row to go on from by key.
void FlexGrid::ShowFirstRow() {
    const QScopedValueRollback<bool> quiet(m_filling, true);
    ApplyWidths();
    SetRow(m_chosenByHand ? 0 : 1);
}

void FlexGrid::ApplyWidths() {
    for (int col = 0; col < Cols(); ++col)
        ApplyWidth(col);
    GiveRoom();
}

void FlexGrid::SetRoomCol(int col) {
    m_roomCol = col;
    GiveRoom();
}

void FlexGrid::GiveRoom() {
    if (m_roomCol >= 0 && m_roomCol < Cols())
        setColumnWidth(m_roomCol, WidthWithRoom(*this, m_roomCol, WidthOf(m_roomCol)));
}

void FlexGrid::ApplyWidth(int col) {
    setColumnHidden(col, m_widths[col] == 0);
    if (m_widths[col] > 0)
        setColumnWidth(col, WidthOf(col));
}

int FlexGrid::WidthOf(int col) const {
    const int stated = Twips(m_widths[col], this);
    const bool isAnchor = stated <= 1 || (col == 0 && !m_cellCursor);
    return isAnchor ? stated : FittedWidth(*this, *horizontalHeader(), col, stated);
}

void FlexGrid::SetCell(int row, int col) {
    if (row < 1 || row >= Rows() || col < 1 || col >= Cols())
        return;
    const QScopedValueRollback<bool> quiet(m_filling, true);
    setCurrentIndex(m_model->index(row - 1, col));
}

void FlexGrid::AddItem() {
    m_model->AppendRow();
}

void FlexGrid::RemoveItem(int row) {
    if (row < 1 || row >= Rows())
        return;
    const QScopedValueRollback<bool> quiet(m_filling, true);
    const int currentRow = Row();
    const int currentCol = Col();
    m_model->RemoveRow(row);
    SetCell(qMin(currentRow > row ? currentRow - 1 : currentRow, Rows() - 1), currentCol);
}

void FlexGrid::GrowColumns() {
    for (int col = 0; col < Cols(); ++col) {
        const int width = WidthOf(col);
        if (width > columnWidth(col) && !isColumnHidden(col))
            setColumnWidth(col, width);
    }
    GiveRoom();
}

QRect FlexGrid::CellRect(int row, int col) const {
    return visualRect(m_model->index(row - 1, col));
}

void FlexGrid::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, dy);
    emit CellsMoved();
}

void FlexGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    GiveRoom();
}

void FlexGrid::updateGeometries() {
    QTableView::updateGeometries();
    emit CellsMoved();
}

void FlexGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (m_filling)
        return;
    if (m_cellCursor && previous.isValid())
        emit CellLeft(previous.row() + 1, previous.column());
    if (m_cellCursor && current.isValid())
        emit CellEntered(current.row() + 1, current.column());
    if (current.row() != previous.row())
        emit CurrentRowChanged(current.row() + 1);
}

void FlexGrid::keyPressEvent(QKeyEvent* event) {
    if (m_cellCursor) {
        event->ignore();
    } else if (IsCopy(*event)) {
        QStringList texts;
        for (int col = 1; Row() > 0 && col < Cols(); ++col)
            texts.append(TextMatrix(Row(), col));
        QGuiApplication::clipboard()->setText(texts.join(u'\t'));
    } else if (IsEnter(*event)) {
        if (Row() > 0)
            emit RowOpened(Row());
    } else if (event->key() == Qt::Key_Home || (Row() == 0 && event->key() == Qt::Key_Down)) {
        SetRow(1);
    } else if (event->key() == Qt::Key_End) {
        SetRow(Rows() - 1);
    } else {
        QTableView::keyPressEvent(event);
    }
}

void FlexGrid::focusInEvent(QFocusEvent* event) {
    // Whoever comes by key stands on a row that is seen.
    if (Row() == 0 && !m_chosenByHand && event->reason() != Qt::MouseFocusReason)
        SetRow(1);
    QTableView::focusInEvent(event);
}

QItemSelectionModel::SelectionFlags FlexGrid::selectionCommand(const QModelIndex&,
                                                               const QEvent*) const {
    return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
}

}  // namespace toolkit
