#include "toolkit/Theme.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

namespace toolkit {

namespace {

const QColor kAccent(0x0b, 0x5c, 0xad);

QPalette Palette() {
    const QColor ink(0x14, 0x1c, 0x24), paper(Qt::white), desk(0xee, 0xf1, 0xf4);
    const QColor faint(0x6b, 0x75, 0x7f);
    QPalette palette;
    palette.setColor(QPalette::Window, desk);
    palette.setColor(QPalette::WindowText, ink);
    palette.setColor(QPalette::Base, paper);
    palette.setColor(QPalette::AlternateBase, QColor(0xf1, 0xf6, 0xfb));
    palette.setColor(QPalette::Text, ink);
    palette.setColor(QPalette::Button, QColor(0xe3, 0xe8, 0xed));
    palette.setColor(QPalette::ButtonText, ink);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xff, 0xfb, 0xe0));
    palette.setColor(QPalette::ToolTipText, ink);
    palette.setColor(QPalette::PlaceholderText, faint);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, kAccent);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faint);
    palette.setColor(QPalette::Disabled, QPalette::Base, desk);
    palette.setColor(QPalette::Disabled, QPalette::AlternateBase, desk);
    return palette;
}

/// Fusion with a focus that is seen from across the desk.
class Style final : public QProxyStyle {
public:
    Style() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void polish(QWidget* widget) override {
        QProxyStyle::polish(widget);
        if (qobject_cast<QAbstractScrollArea*>(widget))
            widget->installEventFilter(this);
    }

    void unpolish(QWidget* widget) override {
        widget->removeEventFilter(this);
        QProxyStyle::unpolish(widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameFocusRect && !widget)
            return QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (element == PE_FrameFocusRect && !qobject_cast<const QAbstractScrollArea*>(widget))
            return DrawFocus(painter, option->rect);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool framed = element == PE_FrameLineEdit || element == PE_Frame;
        if (framed && option->state.testFlag(State_HasFocus))
            DrawFocus(painter, option->rect);
    }

    // The frame of a list does not repaint by itself when the keyboard comes or goes.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            static_cast<QWidget*>(object)->update();
        return QProxyStyle::eventFilter(object, event);
    }

private:
    static void DrawFocus(QPainter* painter, const QRect& place) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(kAccent, 2));
        painter->drawRoundedRect(QRectF(place).adjusted(1, 1, -1, -1), 2, 2);
        painter->restore();
    }
};

}  // namespace

void ApplyTheme(QApplication& application) {
    application.setStyle(new Style);
    application.setPalette(Palette());
    QFont font = application.font();
    font.setPointSize(10);
    application.setFont(font);
}

}  // namespace toolkit
