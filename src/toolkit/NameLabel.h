#pragma once

#include <QLabel>

namespace toolkit {

/// A name on one line: where it is longer than the room for it, it ends in three dots and is whole
/// under the mouse. Never makes its window wider than the screen.
class NameLabel final : public QLabel {
    Q_OBJECT
public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRect Room() const;
    QString Shown() const;
};

}  // namespace toolkit
