#include "toolkit/PickList.h"

#include <QScreen>

#include "toolkit/KeyGuard.h"
#include "toolkit/Keys.h"

namespace toolkit {

PickList::PickList(QWidget* parent) : QListWidget(parent) {
    setWindowFlag(Qt::Popup);
    setObjectName(QStringLiteral("lstPick"));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setUniformItemSizes(true);
    KeyGuard::TakesNoEarlyKeys(*this);
    connect(this, &QListWidget::itemClicked, this, &PickList::Pick);
}

void PickList::Open(const QStringList& items, const QString& current, const QRect& cell) {
    clear();
    addItems(items);
    setCurrentRow(qMax(0, int(items.indexOf(current))));
    const int height = sizeHintForRow(0) * int(items.size()) + 2 * frameWidth();
    QRect place(cell.bottomLeft(), QSize(cell.width(), height));
    if (place.bottom() > screen()->availableGeometry().bottom())
        place.moveBottom(cell.top());
    setGeometry(place);
    show();
    setFocus(Qt::PopupFocusReason);
}

void PickList::keyPressEvent(QKeyEvent* event) {
    if (IsEnter(*event) || event->key() == Qt::Key_Tab)
        Pick();
    else if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_F4)
        close();
    else
        QListWidget::keyPressEvent(event);
}

void PickList::Pick() {
    const QListWidgetItem* item = currentItem();
    close();
    if (item)
        emit Picked(item->text());
}

}  // namespace toolkit
