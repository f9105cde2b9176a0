#pragma once

#include <QStyledItemDelegate>

namespace components {

/// How a column of a pick list is shown, beyond its plain text.
enum class PickListLook {
    Stock,     ///< to the right, in red below zero
    Inactive,  ///< "Inactive" for 1, else nothing
};

class PickListDelegate final : public QStyledItemDelegate {
    Q_OBJECT
public:
    PickListDelegate(PickListLook look, QObject* parent);

    QString displayText(const QVariant& value, const QLocale& locale) const override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    PickListLook m_look;
};

}  // namespace components
