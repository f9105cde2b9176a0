#pragma once

#include <QObject>

class QAbstractScrollArea;

/// While one lives, no key and no click reaches the program but those that scroll this text, and
/// no window closes: what is being composed is finished first.
class OnlyScrolling final : public QObject {
    Q_OBJECT
public:
    explicit OnlyScrolling(QAbstractScrollArea& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Scrolls(QObject* watched, const QEvent& event) const;

    QAbstractScrollArea& m_text;
};
