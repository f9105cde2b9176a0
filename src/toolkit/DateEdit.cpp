#include "toolkit/DateEdit.h"

#include <QKeyEvent>

namespace toolkit {

DateEdit::DateEdit(QWidget* parent) : QDateEdit(parent) {
    setDisplayFormat(QStringLiteral("M/d/yyyy"));
    setCalendarPopup(true);
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
    const bool ledOn = m_ledOn;
    m_ledOn = false;
    if (ledOn && event->text() == u"/")
        return;
    const Section before = currentSection();
    QDateEdit::keyPressEvent(event);
    const QString typed = event->text();
    m_ledOn = !typed.isEmpty() && typed[0].isDigit() && currentSection() != before;
}

void DateEdit::focusInEvent(QFocusEvent* event) {
    QDateEdit::focusInEvent(event);
    m_ledOn = false;
    // Coming by Tab or by its letter, the whole date is typed from its month on.
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
        setSelectedSection(MonthSection);
}

}  // namespace toolkit
