#pragma once

#include <QKeyEvent>

/// What the keys of the lists and grids mean, the same in all of them.
namespace toolkit {

/// Ctrl+C and Ctrl+Insert.
inline bool IsCopy(const QKeyEvent& event) {
    return event.matches(QKeySequence::Copy) ||
           (event.key() == Qt::Key_Insert && event.modifiers() == Qt::ControlModifier);
}

/// Ctrl+V and Shift+Insert.
inline bool IsPaste(const QKeyEvent& event) {
    return event.matches(QKeySequence::Paste) ||
           (event.key() == Qt::Key_Insert && event.modifiers() == Qt::ShiftModifier);
}

/// Either of the two Enter keys.
inline bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

/// A character to be typed; the right Alt key, which makes accents, comes as Ctrl+Alt.
inline bool IsCharacter(const QKeyEvent& event) {
    const auto commands =
        event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    return !event.text().isEmpty() && event.text().at(0).isPrint() &&
           (!commands || commands == (Qt::ControlModifier | Qt::AltModifier));
}

}  // namespace toolkit
