#include "hub/OnlyScrolling.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

namespace {

bool IsScrollKey(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
            return true;
        default:
            return false;
    }
}

}  // namespace

OnlyScrolling::OnlyScrolling(QAbstractScrollArea& text) : m_text(text) {
    qApp->installEventFilter(this);
}

bool OnlyScrolling::Scrolls(QObject* watched, const QEvent& event) const {
    const bool isBar =
        watched == m_text.verticalScrollBar() || watched == m_text.horizontalScrollBar();
    switch (event.type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
            return watched == &m_text && IsScrollKey(static_cast<const QKeyEvent&>(event));
        case QEvent::Wheel:
            return isBar || watched == &m_text || watched == m_text.viewport();
        default:
            return isBar;
    }
}

bool OnlyScrolling::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::ContextMenu:
        case QEvent::Wheel:
        case QEvent::Close:
            // A window hands its events on to a widget, which is judged in its turn.
            if (watched->isWindowType() || Scrolls(watched, *event))
                return false;
            break;
        default:
            return false;
    }
    // An override that is taken keeps the key from being a shortcut; a close is refused.
    event->setAccepted(event->type() == QEvent::ShortcutOverride);
    return true;
}
