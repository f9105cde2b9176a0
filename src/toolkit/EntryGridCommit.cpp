#include "toolkit/EntryGridCommit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopeGuard>

#include "toolkit/CellText.h"

namespace toolkit {

void EntryGrid::BeginEdit(const QString& text, Caret caret) {
    m_editing = true;
    m_caret = caret;
    m_refusedText.reset();
    m_openedWith.reset();
    const EntryColumn& column = m_model->Column(Col());
    m_validator->SetNumeric(column.IsNumeric);
    m_editor->setAlignment((column.IsNumeric ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    m_editor->setAccessibleName(TextMatrix(0, Col()));
    m_editor->setText(text);
    scrollTo(currentIndex());
    PlaceCellWidgets();
    m_editor->show();
}

void EntryGrid::CloseEditor() {
    if (!m_editing)
        return;
    // First no longer editing, then out of sight: losing the focus now commits nothing.
    m_editing = false;
    m_refusedText.reset();
    if (m_editor->hasFocus())
        setFocus(Qt::OtherFocusReason);
    m_editor->hide();
}

bool EntryGrid::EndEditMode() {
    return LeaveCell(hasFocus() || m_editor->hasFocus() ? Leaving::ByKey : Leaving::ByFocus);
}

QString EntryGrid::EditText() const {
    return m_editing ? m_editor->text() : TextMatrix(Row(), Col());
}

void EntryGrid::RefuseCommit() {
    if (m_commit)
        m_commit->Refused = true;
}

void EntryGrid::CommitText(const QString& text) {
    if (m_commit || !IsTypedHere())
        return;
    CloseEditor();
    if (Store(text, Leaving::ByKey))
        Confirm();
}

/// True when the cursor may go on to where it was going.
bool EntryGrid::LeaveCell(Leaving leaving) {
    if (!m_editing)
        return true;
    const QString typed = m_editor->text();
    // A text that the program wrote may not fit the cell's rules; looking at it does not change it.
    const bool onlyLookedAt = m_openedWith == typed;
    CloseEditor();
    return onlyLookedAt || Store(typed, leaving);
}

bool EntryGrid::Store(const QString& typed, Leaving leaving) {
    const int row = Row(), col = Col();
    const QString former = TextMatrix(row, col);
    if (typed == former || m_commit)
        return true;
    m_model->SetText(row, col, typed);
    m_commit = std::make_unique<Commit>(Commit{row, col, former, typed, leaving});

    // The handler may close the window, and the grid with it.
    const QPointer<EntryGrid> self(this);
    bool mayGoOn = false, returned = false;
    const auto settle = [&] {
        if (!self)
            return;
        const std::unique_ptr<Commit> commit = std::move(m_commit);
        if (!returned || commit->Refused)
            return TakeBack(*commit);
        const bool kept = Row() == row && Col() == col;
        mayGoOn = !commit->Moved || (leaving == Leaving::ByMouse && !kept);
        PlaceCellWidgets();
        // What the row now holds may protect or open its other cells.
        const QRect cell = visualRect(m_model->IndexOf(row, col));
        viewport()->update(0, cell.top(), viewport()->width(), cell.height());
    };
    {
        const auto always = qScopeGuard(settle);
        emit CellCommitted(row, col);
        returned = true;
    }
    return mayGoOn;
}

void EntryGrid::TakeBack(const Commit& commit) {
    MoveCursor(commit.Row, commit.Col);
    if (commit.Rewritten || Row() != commit.Row || Col() != commit.Col)
        return;
    m_model->SetText(commit.Row, commit.Col, commit.Former);
    if (IsPickList())
        return;
    BeginEdit(commit.Typed, Caret::InPlace);
    m_editor->selectAll();
    m_refusedText = commit.Typed;
    if (commit.How != Leaving::ByFocus)
        m_editor->setFocus(Qt::OtherFocusReason);
}

bool EntryGrid::eventFilter(QObject* object, QEvent* event) {
    if (object != m_editor || !m_editing)
        return QTableView::eventFilter(object, event);
    if (event->type() == QEvent::KeyPress)
        return HandleEditingKey(static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::MouseButtonPress)
        m_caret = Caret::InPlace;
    if (event->type() != QEvent::FocusOut || m_lookingUp)
        return false;
    // A menu over the cell, another program in front or a click in the grid is not yet leaving the
    // cell, and what was refused once is not asked again until the clerk confirms it.
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    const bool comesBack = reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason ||
                           reason == Qt::ActiveWindowFocusReason || hasFocus();
    const QPointer<EntryGrid> self(this);
    if (!comesBack && m_refusedText != m_editor->text())
        LeaveCell(Leaving::ByFocus);
    return !self;
}

}  // namespace toolkit
