#pragma once

#include <QDateEdit>

namespace toolkit {

/// A date box for typing: "M/d/yyyy" with a calendar behind its arrow. A slash typed after a part
/// that was complete by itself (the "9" of "9/1/2025" has already led on to the day) is not taken
/// for a second step.
class DateEdit final : public QDateEdit {
    Q_OBJECT
public:
    explicit DateEdit(QWidget* parent = nullptr);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    bool m_ledOn = false;
};

}  // namespace toolkit
