#include "toolkit/EntryKeys.h"

#include <QButtonGroup>
#include <QDialog>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>

#include "toolkit/Keys.h"

namespace toolkit {

namespace {

QButtonGroup* GroupOf(QWidget* widget) {
    const auto* option = qobject_cast<QRadioButton*>(widget);
    return option ? option->group() : nullptr;
}

/// The Tab key stops once at a group: at its chosen option, else at its first.
void LeadTab(const QButtonGroup* group) {
    const QAbstractButton* stop =
        group->checkedButton() ? group->checkedButton() : group->buttons().front();
    for (QAbstractButton* option : group->buttons())
        option->setFocusPolicy(option == stop ? Qt::StrongFocus : Qt::ClickFocus);
}

}  // namespace

EntryKeys::EntryKeys(QDialog& sheet, std::vector<QWidget*> order, QPushButton& close)
    : QObject(&sheet), m_sheet(sheet), m_order(std::move(order)), m_close(close) {
    sheet.installEventFilter(this);
    for (QWidget* field : m_order)
        if (QButtonGroup* group = GroupOf(field)) {
            LeadTab(group);
            connect(group, &QButtonGroup::buttonToggled, this, [group] { LeadTab(group); });
        }
    for (size_t at = 0; at + 1 < m_order.size(); ++at)
        QWidget::setTabOrder(m_order[at], m_order[at + 1]);
}

// The fields leave these keys to their window, whose filter is asked before the window itself.
bool EntryKeys::eventFilter(QObject* watched, QEvent* event) {
    if (watched != &m_sheet || event->type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    if (IsEnter(key)) {
        Enter();
        return true;
    }
    if (key.key() == Qt::Key_Escape) {
        m_close.setFocus(Qt::OtherFocusReason);
        return true;
    }
    return key.key() == Qt::Key_Delete && TakeBackChoice();
}

void EntryKeys::Enter() {
    QWidget* from = m_sheet.focusWidget();
    QButtonGroup* group = GroupOf(from);
    const auto found = std::find_if(m_order.begin(), m_order.end(), [&](QWidget* field) {
        return field == from || (group && GroupOf(field) == group);
    });
    if (found == m_order.end() || found + 1 == m_order.end())
        return;
    QWidget* next = *(found + 1);
    if (const QButtonGroup* options = GroupOf(next))
        next = options->checkedButton() ? options->checkedButton() : options->buttons().front();
    next->setFocus(Qt::TabFocusReason);
}

bool EntryKeys::TakeBackChoice() {
    QButtonGroup* group = GroupOf(m_sheet.focusWidget());
    if (!group || !group->checkedButton())
        return false;
    group->setExclusive(false);
    group->checkedButton()->setChecked(false);
    group->setExclusive(true);
    LeadTab(group);
    m_sheet.focusWidget()->setFocus();
    return true;
}

}  // namespace toolkit
