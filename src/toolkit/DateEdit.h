#pragma once

#include <QDate>
#include <QLineEdit>

class QCalendarWidget;

namespace toolkit {

/// A date box for typing: "M/d/yyyy", empty when no date is known. Points, dashes and blanks divide
/// as well as slashes, "02282026" needs none, "26" is the year 2026 (or 1926 in a box for the
/// past); leaving the box writes the date out. A date that does not exist stays as typed, in red,
/// and is not a date. Up and Down step the part at the caret (today, in an empty box); F4, Alt+Down
/// or the button opens a calendar.
class DateEdit final : public QLineEdit {
    Q_OBJECT
public:
    explicit DateEdit(QWidget* parent = nullptr);

    /// Two digits of a year now mean the latest one whose date is not after today.
    void SetForPast() { m_forPast = true; }
    /// Invalid while the box is empty or what is typed is no date from 1753 to 9999.
    QDate date() const;
    /// An invalid date empties the box.
    void setDate(const QDate& date);
    /// True when something is typed that is no date.
    bool IsUnreadable() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void WriteOut();
    void ShowReadable();
    void Step(int by);
    void OpenCalendar();
    QDate Read(const QString& text) const;

    bool m_forPast = false;
    QCalendarWidget* m_calendar = nullptr;
};

}  // namespace toolkit
