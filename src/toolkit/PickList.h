#pragma once

#include <QListWidget>

namespace toolkit {

/// The short list that drops down from a cell: arrows and first letters move, Enter, Tab or a
/// click picks, anything else that closes it picks nothing.
class PickList final : public QListWidget {
    Q_OBJECT
public:
    explicit PickList(QWidget* parent);

    /// Drops down under the cell (in global coordinates), standing on the item `current`.
    void Open(const QStringList& items, const QString& current, const QRect& cell);

signals:
    /// Raised after the list has closed.
    void Picked(const QString& item);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Pick();
};

}  // namespace toolkit
