#include "toolkit/DateEdit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>

namespace toolkit {

DateEdit::DateEdit(QWidget* parent) : QDateEdit(parent) {
    setDisplayFormat(QStringLiteral("M/d/yyyy"));
    setCalendarPopup(true);
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        TakeShortYear();
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

void DateEdit::focusOutEvent(QFocusEvent* event) {
    TakeShortYear();
    QDateEdit::focusOutEvent(event);
}

void DateEdit::TakeShortYear() {
    static const QRegularExpression shortYear(QStringLiteral("^(\\d{1,2})/(\\d{1,2})/(\\d{2})$"));
    const QRegularExpressionMatch match = shortYear.match(lineEdit()->text());
    const QDate date(2000 + match.captured(3).toInt(), match.captured(1).toInt(),
                     match.captured(2).toInt());
    if (match.hasMatch() && date.isValid())
        setDate(date);
}

}  // namespace toolkit
