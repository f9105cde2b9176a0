#pragma once

#include <QObject>
#include <vector>

class QButtonGroup;
class QDialog;
class QPushButton;
class QWidget;

namespace toolkit {

/// The keys of an entry sheet. Enter goes from field to field in their order; of an option group
/// the order names one option, and the group counts as one field. Delete takes back the choice of a
/// group. Esc leads to the button that closes, so that a slip of the finger loses nothing that was
/// typed.
class EntryKeys final : public QObject {
    Q_OBJECT
public:
    EntryKeys(QDialog& sheet, std::vector<QWidget*> order, QPushButton& close);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Enter();
    bool TakeBackChoice();

    QDialog& m_sheet;
    std::vector<QWidget*> m_order;
    QPushButton& m_close;
};

}  // namespace toolkit
