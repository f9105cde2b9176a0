#include "toolkit/DateEdit.h"

#include <QAction>
#include <QCalendarWidget>
#include <QKeyEvent>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

#include "base/Clock.h"
#include "base/Dates.h"
#include "toolkit/Images.h"
#include "toolkit/Keys.h"

namespace toolkit {

namespace {

// Servers know no date before this year.
constexpr int kFirstYear = 1753, kLastYear = 9999;
constexpr int kCentury = 2000;
constexpr int kLongest = 10;

}  // namespace

QDate DateEdit::Read(const QString& text) const {
    static const QRegularExpression divided(
        QStringLiteral("^(\\d{1,2})[/. -](\\d{1,2})[/. -](\\d{4}|\\d{2})$"));
    static const QRegularExpression digits(QStringLiteral("^(\\d{2})(\\d{2})(\\d{4}|\\d{2})$"));
    QRegularExpressionMatch match = divided.match(text);
    if (!match.hasMatch())
        match = digits.match(text);
    if (!match.hasMatch())
        return {};
    const bool isShort = match.capturedLength(3) == 2;
    const QDate date(match.captured(3).toInt() + (isShort ? kCentury : 0),
                     match.captured(1).toInt(), match.captured(2).toInt());
    if (isShort && m_forPast && date > base::Clock::Today())
        return date.addYears(-100);
    return date.year() < kFirstYear ? QDate() : date;
}

DateEdit::DateEdit(QWidget* parent) : QLineEdit(parent) {
    static const QRegularExpression typed(QStringLiteral("[0-9/. -]*"));
    setValidator(new QRegularExpressionValidator(typed, this));
    setMaxLength(kLongest);
    QAction* open = addAction(Images::Icon(Image::Calendar), TrailingPosition);
    open->setToolTip(QStringLiteral("Calendar (F4)"));
    connect(open, &QAction::triggered, this, &DateEdit::OpenCalendar);
    connect(this, &QLineEdit::textChanged, this, &DateEdit::ShowReadable);
}

QDate DateEdit::date() const {
    return Read(text().trimmed());
}

void DateEdit::setDate(const QDate& date) {
    setText(base::ShortDate(date));
    setModified(false);
}

bool DateEdit::IsUnreadable() const {
    return !text().trimmed().isEmpty() && !date().isValid();
}

void DateEdit::WriteOut() {
    if (date().isValid())
        setText(base::ShortDate(date()));
    ShowReadable();
}

// Red only once the box is left: every date is unreadable while it is being typed.
void DateEdit::ShowReadable() {
    const bool refused = IsUnreadable() && !hasFocus();
    QPalette shown;
    if (refused)
        shown.setColor(QPalette::Text, QColor(0xb0, 0x10, 0x10));
    setPalette(shown);
    setToolTip(refused ? QStringLiteral("There is no such date.") : QString());
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    if (event->key() == Qt::Key_F4 ||
        (event->key() == Qt::Key_Down && event->modifiers() == Qt::AltModifier)) {
        OpenCalendar();
    } else if (plain && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        Step(event->key() == Qt::Key_Up ? 1 : -1);
    } else {
        if (IsEnter(*event))
            WriteOut();
        QLineEdit::keyPressEvent(event);
    }
}

void DateEdit::Step(int by) {
    const QDate from = date();
    if (!from.isValid()) {
        if (text().trimmed().isEmpty())
            setDate(base::Clock::Today());
        return;
    }
    const int caret = hasSelectedText() ? selectionStart() : cursorPosition();
    const qsizetype part = text().left(caret).count(u'/');
    WriteOut();
    const QDate to = part == 0   ? from.addMonths(by)
                     : part == 1 ? from.addDays(by)
                                 : from.addYears(by);
    if (to.year() >= kFirstYear && to.year() <= kLastYear)
        setDate(to);
    const qsizetype start = part == 0 ? 0 : text().section(u'/', 0, part - 1).size() + 1;
    setSelection(int(start), int(text().section(u'/', part, part).size()));
}

void DateEdit::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    ShowReadable();
    // Coming by key, the whole date is typed anew.
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
        selectAll();
}

void DateEdit::focusOutEvent(QFocusEvent* event) {
    WriteOut();
    QLineEdit::focusOutEvent(event);
}

void DateEdit::OpenCalendar() {
    if (!m_calendar) {
        m_calendar = new QCalendarWidget(this);
        m_calendar->setWindowFlags(Qt::Popup);
        const auto take = [this](const QDate& chosen) {
            setDate(chosen);
            m_calendar->hide();
        };
        connect(m_calendar, &QCalendarWidget::activated, this, take);
        connect(m_calendar, &QCalendarWidget::clicked, this, take);
    }
    m_calendar->setSelectedDate(date().isValid() ? date() : base::Clock::Today());
    m_calendar->move(mapToGlobal(QPoint(0, height())));
    m_calendar->show();
    m_calendar->setFocus();
}

}  // namespace toolkit
