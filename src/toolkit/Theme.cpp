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
const QColor kFocusOnAccent(0xff, 0xb9, 0x00);
constexpr int kAirAroundRow = 4;

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
    // A chosen row of a list that has not the keys stays seen, but is not the place where one
    // types.
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(0xcd, 0xdf, 0xf2));
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, ink);
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

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons)
            return 0;
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_ItemViewItem || IsPrimary(widget))
            size.rheight() += kAirAroundRow;
        return size;
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (const auto* item = qstyleoption_cast<const QStyleOptionViewItem*>(option)) {
            QStyleOptionViewItem cell(*item);
            cell.state.setFlag(State_Active, widget && widget->hasFocus());
            return QProxyStyle::drawControl(element, &cell, painter, widget);
        }
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (element != CE_PushButton || !button || !IsPrimary(widget) || !widget->isEnabled())
            return QProxyStyle::drawControl(element, option, painter, widget);
        QStyleOptionButton coloured = *button;
        coloured.palette.setColor(QPalette::Button, kAccent.darker(150));
        coloured.palette.setColor(QPalette::ButtonText, Qt::white);
        QProxyStyle::drawControl(element, &coloured, painter, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameFocusRect && widget &&
            !qobject_cast<const QAbstractScrollArea*>(widget))
            return DrawFocus(painter, option->rect);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        const bool framed = element == PE_FrameLineEdit || element == PE_Frame ||
                            (element == PE_PanelButtonCommand && widget && !IsPrimary(widget));
        if (framed && option->state.testFlag(State_HasFocus))
            DrawFocus(painter, option->rect);
        if (element == PE_PanelButtonCommand && IsPrimary(widget) &&
            option->state.testFlag(State_HasFocus))
            DrawRing(painter, option->rect, kFocusOnAccent);
    }

    // The frame of a list does not repaint by itself when the keyboard comes or goes.
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
            static_cast<QWidget*>(object)->update();
        return QProxyStyle::eventFilter(object, event);
    }

private:
    /// The one button of a window that a nurse most likely wants.
    static bool IsPrimary(const QWidget* widget) {
        return widget && widget->property("primary").toBool();
    }

    static void DrawFocus(QPainter* painter, const QRect& place) {
        DrawRing(painter, place, kAccent);
    }

    static void DrawRing(QPainter* painter, const QRect& place, const QColor& colour) {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(colour, 2));
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
    // fontconfig knows a stand-in for the other faces that the windows name.
    QFont::insertSubstitution(QStringLiteral("Monotype Corsiva"), QStringLiteral("Z003"));
}

}  // namespace toolkit
