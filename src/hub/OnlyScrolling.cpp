#include "hub/OnlyScrolling.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

OnlyScrolling::OnlyScrolling(QAbstractScrollArea& text) : m_text(text) {
    qApp->installEventFilter(this);
}

bool OnlyScrolling::Scrolls(QObject* watched, const QEvent& event) const {
    const auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == m_text.verticalScrollBar() || widget == m_text.horizontalScrollBar())
        return true;
    if (event.type() == QEvent::Wheel)
        return widget && (widget == &m_text || m_text.isAncestorOf(widget));
    if (event.type() != QEvent::KeyPress && event.type() != QEvent::KeyRelease)
        return false;
    switch (static_cast<const QKeyEvent&>(event).key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
        case Qt::Key_Home:
        case Qt::Key_End:
            return watched == &m_text;
        default:
            return false;
    }
}

bool OnlyScrolling::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::Close:
            event->ignore();
            return true;
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::ShortcutOverride:
        case QEvent::Shortcut:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::ContextMenu:
        case QEvent::Wheel:
            // A window hands its keys on to the widget that has them: they are judged there.
            return watched->isWidgetType() && !Scrolls(watched, *event);
        default:
            return false;
    }
}
