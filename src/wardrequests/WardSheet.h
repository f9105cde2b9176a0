#pragma once

#include <QObject>

#include "wardrequests/WardLines.h"

class QKeyEvent;
class QLabel;
class QLineEdit;
class WardEntryValidator;

namespace toolkit {
class FlexGrid;
}

/// The keyboard of a request sheet: one entry box floats over the current cell of the grid, its
/// keys move it, and Enter looks up, checks and stores what was typed in it.
class WardSheet final : public QObject {
    Q_OBJECT
public:
    /// Makes the box "txtEntry" in the grid; the prompt follows the cell. The visit is the one
    /// whose requests are checked.
    WardSheet(toolkit::FlexGrid& grid, QLabel& prompt, const WardVariant& variant, QString idNum,
              QObject* parent);

    WardLines& Lines() { return m_lines; }
    /// Lays the sheet out and puts the box on the first cell.
    void Start();
    /// Takes the current line out: F3.
    void DeleteRow();
    /// Fills the box with the cell that is current now, and gives it the keyboard.
    void LoadCell();
    /// Stores what is typed in the current cell and not yet entered, by the rules of Enter. False,
    /// after a message and with the cursor in the cell, when it is refused.
    bool StoreOpenCell();
    /// Whether the cursor has left a line that would not be requested; such lines are marked.
    bool LeftIncomplete() const;

signals:
    /// The cursor came to a cell, the one before is done.
    void CellEntered();
    /// What was typed could not be looked up: the window cannot go on.
    void Failed();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Arriving { ByKey, ByMouse };

    bool HandleKey(int key);
    void EnterCell(Arriving how);
    void LeaveCellByMouse(int row, int col);
    void PutTextBox(int col, int row);
    void PlaceBox();
    void ShowPrompt();
    void Refill();

    void Enter();
    /// Whether the entry was stored; the box keeps it where it was not.
    bool Store();
    bool StoreCode();
    bool StoreFrequency();
    bool StoreQuantity();
    bool StoreRemarks();
    bool IsUnchanged() const;
    bool IsLeftIncomplete(int row) const;
    bool IsRequestable(const QString& code, int row);
    QString PickItem(const QString& text);
    void RefuseCode(int row);
    void Advance();

    toolkit::FlexGrid& m_grid;
    QLabel& m_prompt;
    const WardVariant& m_variant;
    const QString m_idNum;
    WardLines m_lines;
    QLineEdit* m_box;
    WardEntryValidator* m_validator;
};
