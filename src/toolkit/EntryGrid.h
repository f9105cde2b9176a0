#pragma once

#include <QList>
#include <QPointer>
#include <QTableView>
#include <functional>
#include <memory>
#include <optional>

#include "toolkit/EntryGridModel.h"

class QLineEdit;
class QToolButton;

namespace toolkit {

class CellValidator;
class PickList;

/// The sheet in which lines are typed cell by cell. Row 0 is the header while FixedRows is 1; data
/// rows are 1 to Rows() - 1. Every cell holds text.
///
/// Typing replaces a cell's content, F2 or a double click edits it in place, Delete and Backspace
/// empty it, Ctrl+Insert and Shift+Insert copy and paste. Enter and Tab go to the next cell that
/// may be typed in; Enter behind the last one and Down on the last line begin a new line once the
/// last has an entry in its key column. Ctrl+Delete removes the line. The look-up key, F4 or
/// Alt+Down open a cell's list. Esc takes back what is being typed, else it leaves the grid.
///
/// A cell that was changed commits once, however it is left: its text stands in the grid, then
/// CellCommitted is raised. When the handler does nothing, the cursor goes where it was going.
/// When it sets Row or Col (also to the same cell), the cursor stays there; a click on another
/// cell holds against a handler that moves on, but not against one that keeps the cell. When it
/// calls RefuseCommit(), or throws, the cell gets its former text back and its editor opens again
/// with what was typed, unless the handler wrote the cell itself. Writing cells from the program
/// commits nothing. A digit typed into a pick list that has none goes to the number that follows.
class EntryGrid final : public QTableView {
    Q_OBJECT
public:
    explicit EntryGrid(QWidget* parent = nullptr);
    ~EntryGrid() override;

    int Rows() const { return m_model->Rows(); }
    /// Adds empty rows or takes away the last ones; never fewer than the fixed row.
    void SetRows(int rows);
    int Cols() const { return m_model->Cols(); }
    void SetCols(int cols);
    /// 1 makes row 0 the header, 0 a data row.
    int FixedRows() const { return m_model->FixedRows(); }
    void SetFixedRows(int rows);
    /// So many columns at the left are out of the cursor's reach; may be set before the columns.
    int FixedCols() const { return m_model->FixedCols(); }
    void SetFixedCols(int cols);
    /// Empties every cell, headers too, drops an edit, and puts the cursor on the first cell.
    /// Widths and the columns' rules stay.
    void Reinitialise();

    /// The cursor; 0 while there is no data row.
    int Row() const;
    int Col() const;
    /// Moves the cursor, into the grid's bounds. An edit elsewhere is committed before; where it
    /// is not accepted, the cursor stays.
    void SetRow(int row) { SetCell(row, Col()); }
    void SetCol(int col) { SetCell(Row(), col); }
    void SetCell(int row, int col);

    /// The cell's text; empty outside the grid. What is being typed is not in it yet.
    QString TextMatrix(int row, int col) const { return m_model->Text(row, col); }
    /// Writes the cell; an edit of that cell is dropped. Throws base::RuntimeError 381 outside.
    void SetTextMatrix(int row, int col, const QString& text);
    /// Sum of the leading numbers of the column's cells, both rows included.
    double Sum(int col, int firstRow, int lastRow) const;

    /// All widths at once, in twips; 0 hides the column. A numeric column grows for what is in it.
    void SetColWidths(const QList<int>& twips);
    void SetHeader(int col, const QString& text) { SetTextMatrix(0, col, text); }
    /// `list` holds a pick list's items, separated by CR LF.
    void SetColKind(int col, EntryKind kind, const QString& list = {});
    /// The column takes the room that the others leave.
    void SetRoomCol(int col);
    /// Digits and one point, no sign; shown to the right.
    void SetNumeric(int col, bool numeric = true);
    /// Neither typed nor pasted into; Enter and Tab pass it by.
    void SetProtected(int col, bool isProtected = true);
    /// Protected on the rows for which it answers true, whatever SetProtected() said.
    void SetProtectedWhen(int col, std::function<bool(int row)> isProtectedOn);
    /// The column that must have an entry for a line to count; -1 for none.
    void SetKeyCol(int col) { m_keyCol = col; }

    /// Where Esc goes: to the Save button, to Close while Save is disabled.
    void SetSaveButton(QWidget* button) { m_saveButton = button; }
    void SetCloseButton(QWidget* button) { m_closeButton = button; }
    /// Key codes as the windows give them: 27 Esc, 112 to 123 F1 to F12.
    void SetLookupKey(int keyCode);
    void SetLeaveKey(int keyCode);

    bool InEditMode() const { return m_editing; }
    /// Commits what is being typed. False when it was not accepted: it is still being edited.
    bool EndEditMode();
    /// What is being typed, else the current cell's text.
    QString EditText() const;
    /// For handlers of CellCommitted: the cursor stays, see above.
    void RefuseCommit();
    /// As if the text had been typed into the current cell and Enter pressed: how a handler of
    /// LookupRequested hands over what was chosen. Does nothing in a protected cell.
    void CommitText(const QString& text);

    /// Removes the current line without committing it; the last data row is emptied instead.
    void RemoveLine();
    /// Adds an empty line and goes there. False, when the last line does not count yet.
    bool AddLine();

signals:
    void CellCommitted(int row, int col);
    /// The user asks for the list of a look-up column; EditText() is what to look for. A handler
    /// that only returns leaves everything as it was.
    void LookupRequested(int row, int col);
    void CellEntered(int row, int col);
    /// Something of what was typed or pasted is not for this column, and was left out.
    void NotTaken(const QString& typed);
    /// The line was removed or emptied by the user: totals are due.
    void LineRemoved(int row);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void focusInEvent(QFocusEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void updateGeometries() override;

private:
    enum class Leaving { ByKey, ByMouse, ByFocus };
    enum class Caret { Typing, InPlace };
    struct Commit;

    void WidenFor(int col, const QString& text);
    void GiveRoom();
    QRect EditorPlace(QRect cell) const;
    void MakeCellWidgets();
    void Reshape(int rows, int cols, int fixedRows, int fixedCols);
    void PlaceCellWidgets();
    bool IsTypedAndShown(int row, int col) const;
    bool IsTypedHere() const { return m_model->IsTyped(Row(), Col()); }
    bool IsPickList() const { return m_model->Column(Col()).Kind == EntryKind::PickList; }
    void MoveCursor(int row, int col);

    void BeginEdit(const QString& text, Caret caret);
    void CloseEditor();
    bool LeaveCell(Leaving leaving);
    bool Store(const QString& typed, Leaving leaving);
    void TakeBack(const Commit& commit);

    bool HandleKey(QKeyEvent* event);
    bool HandleEditingKey(QKeyEvent* event);
    bool IsLeavingEdit(const QKeyEvent& event) const;
    bool HandleClipboardKey(const QKeyEvent& event);
    bool Navigate(const QKeyEvent& event);
    bool GoOn(bool forward);
    void Confirm();
    void TypeInto(QKeyEvent* event);
    void TypeIntoNextNumber(QKeyEvent* event);
    void EditInPlace();
    void EmptyCell();
    void Paste();
    bool OpenList();
    void OpenPickList(const QString& current);
    void LeaveGrid();

    EntryGridModel* m_model;
    QLineEdit* m_editor;
    CellValidator* m_validator;
    QToolButton* m_listButton;
    PickList* m_pickList;
    QPointer<QWidget> m_saveButton;
    QPointer<QWidget> m_closeButton;
    int m_lookupKey = Qt::Key_F1;
    int m_leaveKey = Qt::Key_Escape;
    int m_keyCol = -1;
    int m_roomCol = -1;
    int m_leastRoom = 0;
    bool m_editing = false;
    bool m_lookingUp = false;
    Caret m_caret = Caret::Typing;
    std::optional<QString> m_openedWith;
    std::optional<QString> m_refusedText;
    std::unique_ptr<Commit> m_commit;
};

}  // namespace toolkit
