#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScopeGuard>
#include <algorithm>

#include "toolkit/CellText.h"
#include "toolkit/EntryGridCommit.h"
#include "toolkit/Keys.h"
#include "toolkit/PickList.h"

namespace toolkit {

namespace {

bool IsOpenList(const QKeyEvent& event) {
    return event.key() == Qt::Key_F4 ||
           (event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier));
}

bool IsRemoveLine(const QKeyEvent& event) {
    return event.key() == Qt::Key_Delete && event.modifiers() == Qt::ControlModifier;
}

}  // namespace

// A key that the editor has no use for, as Ctrl+End, comes here as well: what is being typed is its
// cell's, and the cursor stays with it.
void EntryGrid::keyPressEvent(QKeyEvent* event) {
    event->setAccepted(m_commit || m_editing || HandleKey(event));
}

bool EntryGrid::HandleKey(QKeyEvent* event) {
    const int key = event->key();
    if (key == m_leaveKey)
        LeaveGrid();
    else if (key == m_lookupKey || IsOpenList(*event))
        return OpenList();
    else if (IsEnter(*event) && event->modifiers().testFlag(Qt::ShiftModifier))
        GoOn(false);
    else if (IsEnter(*event))
        Confirm();
    else if (IsRemoveLine(*event))
        RemoveLine();
    else if (HandleClipboardKey(*event))
        return true;
    else if (key == Qt::Key_F2)
        EditInPlace();
    else if (key == Qt::Key_Delete || key == Qt::Key_Backspace)
        EmptyCell();
    else if (IsCharacter(*event))
        TypeInto(event);
    else
        return Navigate(*event);
    return true;
}

/// True when the key is not for the editor.
bool EntryGrid::HandleEditingKey(QKeyEvent* event) {
    const int key = event->key();
    if (key == m_leaveKey)
        CloseEditor();
    else if (key == m_lookupKey || IsOpenList(*event))
        OpenList();
    else if (IsRemoveLine(*event))
        RemoveLine();
    else if (key == Qt::Key_F2)
        m_caret = Caret::InPlace;
    else if (key == Qt::Key_Tab || key == Qt::Key_Backtab)
        focusNextPrevChild(key == Qt::Key_Tab);
    else if (!IsLeavingEdit(*event))
        return false;
    else if (LeaveCell(Leaving::ByKey))
        HandleKey(event);
    return true;
}

bool EntryGrid::IsLeavingEdit(const QKeyEvent& event) const {
    switch (event.key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
            return m_caret == Caret::Typing && !(event.modifiers() & ~Qt::KeypadModifier);
        default:
            return false;
    }
}

bool EntryGrid::HandleClipboardKey(const QKeyEvent& event) {
    const bool cuts = event.matches(QKeySequence::Cut);
    if (IsPaste(event))
        Paste();
    else if (cuts || IsCopy(event))
        QGuiApplication::clipboard()->setText(TextMatrix(Row(), Col()));
    else
        return false;
    if (cuts)
        EmptyCell();
    return true;
}

bool EntryGrid::Navigate(const QKeyEvent& event) {
    CursorAction action;
    switch (event.key()) {
        case Qt::Key_Left:
            action = MoveLeft;
            break;
        case Qt::Key_Right:
            action = MoveRight;
            break;
        case Qt::Key_Up:
            action = MoveUp;
            break;
        case Qt::Key_Down:
            if (Row() == Rows() - 1) {
                AddLine();
                return true;
            }
            action = MoveDown;
            break;
        case Qt::Key_Home:
            action = MoveHome;
            break;
        case Qt::Key_End:
            action = MoveEnd;
            break;
        case Qt::Key_PageUp:
            action = MovePageUp;
            break;
        case Qt::Key_PageDown:
            action = MovePageDown;
            break;
        default:
            return false;
    }
    const QModelIndex target = moveCursor(action, event.modifiers() & Qt::ControlModifier);
    if (target.isValid())
        setCurrentIndex(target);
    return true;
}

/// To the next or previous cell that may be typed in; false when there is none.
bool EntryGrid::GoOn(bool forward) {
    const int step = forward ? 1 : -1;
    int row = Row(), col = Col() + step;
    for (; row >= FixedRows() && row < Rows(); row += step) {
        for (; col >= FixedCols() && col < Cols(); col += step) {
            if (IsTypedAndShown(row, col)) {
                MoveCursor(row, col);
                return true;
            }
        }
        col = forward ? FixedCols() : Cols() - 1;
    }
    return false;
}

/// The cell is done: on to the next one, of a new line if need be.
void EntryGrid::Confirm() {
    if (!GoOn(true))
        AddLine();
}

bool EntryGrid::focusNextPrevChild(bool next) {
    if (m_commit || !LeaveCell(Leaving::ByKey) || GoOn(next))
        return true;
    return QTableView::focusNextPrevChild(next);
}

void EntryGrid::TypeInto(QKeyEvent* event) {
    if (!IsTypedHere())
        return;
    if (IsPickList()) {
        const QStringList& items = m_model->Column(Col()).Items;
        const auto begins = [&](const QString& item) {
            return item.startsWith(event->text(), Qt::CaseInsensitive);
        };
        const auto found = std::find_if(items.begin(), items.end(), begins);
        if (found != items.end() || event->key() == Qt::Key_Space)
            OpenPickList(found != items.end() ? *found : TextMatrix(Row(), Col()));
        else if (event->text().at(0).isDigit())
            TypeIntoNextNumber(event);
        return;
    }
    // A letter that a number cannot have leaves the number alone.
    if (m_model->Column(Col()).IsNumeric && NumericPart(event->text()).isEmpty())
        return emit NotTaken(event->text());
    BeginEdit({}, Caret::Typing);
    m_editor->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(m_editor, event);
}

// Whoever types the quantity while the cursor still stands before it means the quantity.
void EntryGrid::TypeIntoNextNumber(QKeyEvent* event) {
    const int row = Row(), col = Col();
    if (GoOn(true) && Row() == row && m_model->Column(Col()).IsNumeric)
        return TypeInto(event);
    MoveCursor(row, col);
}

void EntryGrid::inputMethodEvent(QInputMethodEvent* event) {
    const bool hasText = !event->commitString().isEmpty() || !event->preeditString().isEmpty();
    if (m_commit || !hasText || !IsTypedHere() || IsPickList())
        return;
    BeginEdit({}, Caret::Typing);
    m_editor->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(m_editor, event);
}

void EntryGrid::EditInPlace() {
    if (!IsTypedHere())
        return;
    if (IsPickList())
        return OpenPickList(TextMatrix(Row(), Col()));
    BeginEdit(TextMatrix(Row(), Col()), Caret::InPlace);
    m_openedWith = m_editor->text();
    m_editor->setFocus(Qt::OtherFocusReason);
}

void EntryGrid::EmptyCell() {
    if (!IsTypedHere() || TextMatrix(Row(), Col()).isEmpty())
        return;
    if (IsPickList()) {
        Store({}, Leaving::ByKey);
        return;
    }
    BeginEdit({}, Caret::Typing);
    m_editor->setFocus(Qt::OtherFocusReason);
}

void EntryGrid::Paste() {
    if (!IsTypedHere())
        return;
    if (IsPickList()) {
        const QString item = OneLine(QGuiApplication::clipboard()->text()).trimmed();
        if (m_model->Column(Col()).Items.contains(item))
            Store(item, Leaving::ByKey);
        return;
    }
    if (m_editing)
        return m_editor->paste();
    BeginEdit({}, Caret::Typing);
    m_editor->paste();
    if (m_editor->text().isEmpty())
        return CloseEditor();
    m_editor->setFocus(Qt::OtherFocusReason);
}

bool EntryGrid::OpenList() {
    if (m_commit || m_lookingUp || !IsTypedHere())
        return false;
    switch (m_model->Column(Col()).Kind) {
        case EntryKind::Text:
            return false;
        case EntryKind::PickList:
            OpenPickList(TextMatrix(Row(), Col()));
            return true;
        case EntryKind::LookUp: {
            // The window's list takes the focus; what is typed waits for the choice.
            const QPointer<EntryGrid> self(this);
            m_lookingUp = true;
            const auto done = qScopeGuard([&] {
                if (self)
                    m_lookingUp = false;
            });
            emit LookupRequested(Row(), Col());
            return true;
        }
    }
    return false;
}

void EntryGrid::OpenPickList(const QString& current) {
    const QRect cell = visualRect(currentIndex());
    m_pickList->Open(m_model->Column(Col()).Items, current,
                     QRect(viewport()->mapToGlobal(cell.topLeft()), cell.size()));
}

void EntryGrid::LeaveGrid() {
    QWidget* target = m_saveButton && m_saveButton->isEnabled() ? m_saveButton : m_closeButton;
    if (target)
        target->setFocus(Qt::ShortcutFocusReason);
    else
        QTableView::focusNextPrevChild(true);
}

void EntryGrid::focusInEvent(QFocusEvent* event) {
    QTableView::focusInEvent(event);
    if (m_editing)
        m_editor->setFocus(event->reason());
}

QItemSelectionModel::SelectionFlags EntryGrid::selectionCommand(const QModelIndex&,
                                                                const QEvent*) const {
    return QItemSelectionModel::ClearAndSelect;
}

void EntryGrid::mousePressEvent(QMouseEvent* event) {
    const QModelIndex target = indexAt(event->position().toPoint());
    if (m_commit || (target != currentIndex() && !LeaveCell(Leaving::ByMouse)))
        return;
    if (target.flags().testFlag(Qt::ItemIsEnabled))
        QTableView::mousePressEvent(event);
}

void EntryGrid::mouseDoubleClickEvent(QMouseEvent* event) {
    if (!m_commit && !m_editing && indexAt(event->position().toPoint()) == currentIndex())
        EditInPlace();
}

void EntryGrid::contextMenuEvent(QContextMenuEvent* event) {
    if (m_commit || !currentIndex().isValid())
        return;
    const bool typed = IsTypedHere();
    auto* menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("mnuCell"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const auto add = [&](const QString& text, bool enabled, auto act) {
        menu->addAction(text, this, act)->setEnabled(enabled);
    };
    const bool hasList = typed && m_model->Column(Col()).Kind != EntryKind::Text;
    add(tr("&List\tF4"), hasList, [this] { OpenList(); });
    menu->addSeparator();
    add(tr("&Copy\tCtrl+C"), !EditText().isEmpty(),
        [this] { QGuiApplication::clipboard()->setText(EditText()); });
    add(tr("&Paste\tCtrl+V"), typed, [this] { Paste(); });
    menu->addSeparator();
    const bool counts = m_keyCol < 0 || !TextMatrix(Rows() - 1, m_keyCol).isEmpty();
    add(tr("&Add a line"), counts, [this] {
        if (LeaveCell(Leaving::ByKey))
            AddLine();
    });
    add(tr("&Remove the line\tCtrl+Del"), true, [this] { RemoveLine(); });
    menu->popup(event->reason() == QContextMenuEvent::Keyboard
                    ? viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft())
                    : event->globalPos());
}

}  // namespace toolkit
