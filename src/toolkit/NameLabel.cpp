#include "toolkit/NameLabel.h"
#include "toolkit/Tips.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace toolkit {

QSize NameLabel::minimumSizeHint() const {
    return {0, QLabel::minimumSizeHint().height()};
}

QRect NameLabel::Room() const {
    return contentsRect().adjusted(qMax(0, indent()), 0, 0, 0);
}

QString NameLabel::Shown() const {
    return fontMetrics().elidedText(text(), Qt::ElideRight, Room().width());
}

bool NameLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip && Shown() != text()) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), TipOf(text()), this);
        return true;
    }
    return QLabel::event(event);
}

void NameLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    style()->drawItemText(&painter, Room(), int(alignment()) | Qt::TextSingleLine, palette(),
                          isEnabled(), Shown(), foregroundRole());
}

}  // namespace toolkit
