#pragma once

#include <QDateEdit>

namespace toolkit {

/// A date box for typing: "M/d/yyyy" with a calendar behind its arrow. A slash typed after a part
/// that was complete by itself (the "9" of "9/1/2025" has already led on to the day) is not taken
/// for a second step; "25" is the year 2025.
class DateEdit final : public QDateEdit {
    Q_OBJECT
public:
    explicit DateEdit(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// A typed year of two digits is one of this century.
    void TakeShortYear();

    bool m_ledOn = false;
};

}  // namespace toolkit
