#include "toolkit/KeyGuard.h"

#include <QAbstractButton>
#include <QCoreApplication>

#include "toolkit/Keys.h"

namespace toolkit {

namespace {

constexpr char kNoEarlyKeys[] = "takesNoEarlyKeys";

bool IsPushed(const QWidget& widget) {
    return widget.inherits("QPushButton") || widget.inherits("QToolButton");
}

/// What may go on while a key is held down.
bool MovesOrTypes(const QWidget& target, const QKeyEvent& key) {
    const bool withAlt = key.modifiers().testFlag(Qt::AltModifier);
    const bool withCtrl = key.modifiers().testFlag(Qt::ControlModifier);
    switch (key.key()) {
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_Home:
        case Qt::Key_End:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return !withAlt;
        case Qt::Key_Backspace:
        case Qt::Key_Delete:
            return !withAlt && !withCtrl;
        default:
            // A letter on a button of a box answers it.
            return IsCharacter(key) && !IsPushed(target);
    }
}

}  // namespace

KeyGuard::KeyGuard() {
    QCoreApplication::instance()->installEventFilter(this);
}

void KeyGuard::TakesNoEarlyKeys(QWidget& box) {
    box.setProperty(kNoEarlyKeys, true);
}

bool KeyGuard::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Show:
            if (watched->property(kNoEarlyKeys).toBool())
                m_unpainted.insert(watched);
            return false;
        case QEvent::Paint:
        case QEvent::Hide:
            m_unpainted.remove(watched);
            return false;
        case QEvent::KeyRelease:
            NoteRelease(static_cast<const QKeyEvent&>(*event));
            return false;
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress:
            break;
        default:
            return false;
    }
    auto* target = qobject_cast<QWidget*>(watched);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (!target)
        return false;
    if (IsUnmeant(*target, key)) {
        // Accepted, so that no shortcut takes it either.
        event->accept();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    if (key.modifiers() == Qt::AltModifier && !key.text().isEmpty())
        return true;
    if (!IsEnter(key) || !IsPushed(*target))
        return false;
    qobject_cast<QAbstractButton*>(target)->click();
    return true;
}

// A keyboard's repeats may come as releases and presses, at once one after the other: whoever lets
// a key go and presses it again takes many times as long. Keys without a scan code come from a
// program.
void KeyGuard::NoteRelease(const QKeyEvent& key) {
    m_releasedCode = key.nativeScanCode();
    m_releasedAt = key.timestamp();
}

bool KeyGuard::IsHeld(const QKeyEvent& key) const {
    constexpr quint64 kAtOnce = 2;  // milliseconds
    return key.isAutoRepeat() || (m_releasedCode != 0 && key.nativeScanCode() == m_releasedCode &&
                                  key.timestamp() - m_releasedAt <= kAtOnce);
}

bool KeyGuard::IsUnmeant(const QWidget& target, const QKeyEvent& key) const {
    return (IsHeld(key) && !MovesOrTypes(target, key)) || m_unpainted.contains(target.window());
}

}  // namespace toolkit
