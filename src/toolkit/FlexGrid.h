#pragma once

#include <QTableView>
#include <memory>
#include <vector>

#include "db/RowStore.h"
#include "toolkit/FlexGridModel.h"

namespace toolkit {

/// The read-only list of requests and results. Row 0 is the fixed header; column 0 is an anchor,
/// 1 twip wide until told otherwise; an empty list has two rows, the header and a blank one. Rows
/// are chosen whole: arrows, Home and End move, Enter or a double click opens, Ctrl+Insert copies
/// the row, its cells separated by tabs. Filled columns grow beyond their widths for their texts.
///
/// With SetCellCursor() it is the sheet under a floating entry box: one cell is current, the mouse
/// alone moves it here, and every key is left to the window.
class FlexGrid final : public QTableView {
    Q_OBJECT
public:
    explicit FlexGrid(QWidget* parent = nullptr);

    /// Header and data rows together, at least 1.
    int Rows() const { return m_model->Rows(); }
    void SetRows(int rows);
    int Cols() const { return m_model->Cols(); }
    void SetCols(int cols);
    /// " |<A |>B": one column for each part between bars, `<`, `>` or `^` before a header aligns
    /// the column left, right or centred, and the header's text with its blanks gives the width
    /// (not of column 0). Adds the columns that are missing, takes none away.
    void SetFormatString(const QString& format);
    /// The column, which must be there, shows plain numbers to the right.
    void SetNumeric(int col) { m_model->SetAlignment(col, Qt::AlignRight); }
    /// The column, which must be there, shows hospital money with two decimals, to the right;
    /// TextMatrix() stays plain.
    void SetMoney(int col) { m_model->SetMoney(col); }
    /// What a filled row shows in this column where its record is empty; TextMatrix() stays empty.
    void SetTextOfEmpty(int col, const QString& text) { m_model->SetTextOfEmpty(col, text); }
    /// Rows for which it answers true stand out; asked at each painting.
    void SetMarkedWhen(std::function<bool(int row)> isMarked) {
        m_model->SetMarkedWhen(std::move(isMarked));
    }
    /// The column takes the room that the others leave.
    void SetRoomCol(int col);
    /// Width in twips; 0 hides the column. Widths survive every filling.
    void SetColWidth(int col, int twips);
    /// As stated; the column may be shown wider for its texts.
    int ColWidth(int col) const { return m_widths.at(col); }

    /// Empty outside the grid.
    QString TextMatrix(int row, int col) const { return m_model->Text(row, col); }
    /// What the row's record holds in a field, shown or not; empty for a blank row. Throws
    /// base::DatabaseError 3265 for a field that the record lacks.
    QString FieldText(int row, const QString& field) const {
        return m_model->FieldText(row, field);
    }
    /// Throws base::RuntimeError 381 outside the grid.
    void SetTextMatrix(int row, int col, const QString& text);
    /// Empties every cell, the header too; shape and widths stay.
    void Clear();
    /// The row fill: the first record goes to row 1 while that is blank, every other one to a row
    /// of its own at the end, whatever its cells hold. `fields` name what columns 1, 2, ... show;
    /// an empty name leaves its column. Null is shown empty. The rows are shared, nothing is
    /// copied. A field that the rows lack throws base::DatabaseError 3265 naming it.
    void FillFrom(const std::shared_ptr<const db::RowStore>& rows, const QStringList& fields);
    /// Shows exactly these rows, their columns in order from column 1 on, headed by their names;
    /// null shows an empty list with the columns there are.
    void Bind(const std::shared_ptr<const db::RowStore>& rows);

    /// Grows no higher than so many data rows need, and leaves the room to what stands below.
    void SetRowsInSight(int rows);
    /// The current row; row 1 after each filling, 0 when there is none.
    int Row() const { return currentIndex().isValid() ? currentIndex().row() + 1 : 0; }
    /// No row is current after a filling, nor because the list gets the keyboard: a key or a click
    /// chooses one.
    void SetRowChosenByHand();
    /// 0 leaves no row current, until a key leads into the list; ignored outside the data rows.
    void SetRow(int row);

    void SetCellCursor() { m_cellCursor = true; }
    /// The current column; 0 when there is none.
    int Col() const { return qMax(0, currentIndex().column()); }
    /// Moves the cursor and brings the cell into sight; ignored outside the data cells. Raises
    /// nothing but CellsMoved().
    void SetCell(int row, int col);
    /// An empty row at the end; the cursor stays.
    void AddItem();
    /// Takes a data row out; the cursor goes to the row that takes its place, else to the last.
    /// Ignored outside the data rows.
    void RemoveItem(int row);
    /// Widens, never narrows, the columns to their texts as a filling does.
    void GrowColumns();
    /// Where the cell is on the viewport.
    QRect CellRect(int row, int col) const;

signals:
    /// A click on a data row, also on the current one.
    void RowClicked(int row);
    /// Enter or a double click on a data row.
    void RowOpened(int row);
    /// The user, or SetRow(), went to another row; a filling does not raise it.
    void CurrentRowChanged(int row);
    /// With a cell cursor: the user went by mouse from one cell to another.
    void CellLeft(int row, int col);
    void CellEntered(int row, int col);
    /// Cells may stand elsewhere: scrolled, resized, columns of another width.
    void CellsMoved();

protected:
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void scrollContentsBy(int dx, int dy) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;

private:
    void ShowFirstRow();
    void ApplyWidths();
    void ApplyWidth(int col);
    int MeasuredTwips(const QString& header) const;
    int WidthOf(int col) const;
    void GiveRoom();

    FlexGridModel* m_model;
    std::vector<int> m_widths;
    int m_roomCol = -1;
    bool m_filling = false;
    bool m_cellCursor = false;
    bool m_chosenByHand = false;
};

}  // namespace toolkit
