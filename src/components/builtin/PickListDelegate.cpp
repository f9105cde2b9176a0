#include "components/builtin/PickListDelegate.h"

#include "base/Numbers.h"

namespace components {

namespace {

const QColor kBelowZero(0xb0, 0x00, 0x20);
const QColor kBelowZeroChosen(0xff, 0xd0, 0xd0);

}  // namespace

PickListDelegate::PickListDelegate(PickListLook look, QObject* parent)
    : QStyledItemDelegate(parent), m_look(look) {}

QString PickListDelegate::displayText(const QVariant& value, const QLocale& locale) const {
    const QString text = QStyledItemDelegate::displayText(value, locale);
    switch (m_look) {
        case PickListLook::Inactive:
            return base::Val(text) != 0 ? QStringLiteral("Inactive") : QString();
        case PickListLook::Stock:
            break;
    }
    return text;
}

void PickListDelegate::initStyleOption(QStyleOptionViewItem* option,
                                       const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    if (m_look == PickListLook::Inactive)
        return;
    option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
    if (m_look == PickListLook::Stock && base::Val(index.data().toString()) < 0) {
        option->palette.setColor(QPalette::Text, kBelowZero);
        option->palette.setColor(QPalette::HighlightedText, kBelowZeroChosen);
        option->font.setBold(true);
    }
}

}  // namespace components
