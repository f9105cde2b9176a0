#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace toolkit {
class EntryGrid;
}

/// One line of a charge sheet that has an item: the texts of its cells as they stand.
struct SlipLine {
    QString RevenueID;
    QString ItemCode;
    QString Description;
    QString Price;
    QString Quantity;
    QString Amount;
    QString LocationID;  ///< of a stock item; empty on a fee's line
    QString InventoryCode;
    double NetAmount = 0;
    double Discount = 0;
};

/// The lines of a sheet that have an item code, in order.
std::vector<SlipLine> SlipLines(const toolkit::EntryGrid& grid);

/// The same, when the sheet can be saved. Nothing after the message "There are no entries to be
/// saved." or, for a line without an amount, "Please indicate the quantity for the exam '...'.", of
/// an open price "the amount"; the cursor then stands in that line's quantity or amount.
std::optional<std::vector<SlipLine>> LinesToSave(toolkit::EntryGrid& grid);

/// What stands on every line of a slip: who is charged and which doctor asked.
struct SlipHead {
    QString HospNum;
    QString IdNum;
    QString CAPDNum;
    QString DoctorID;
    QString Doctor;
};

/// "C" with the next number of the unit's counter and "D", such as C10234D; the counter is moved
/// on with the caller's transaction. Another station that took the number first is given way, ten
/// times at most. Throws base::DatabaseError.
QString TakeSlipNumber();

/// Posts a doctor's fee on a slip; a negative amount takes it back. Throws base::DatabaseError.
void ChargeDoctor(const QString& slipNumber, const SlipHead& head, const QString& itemCode,
                  const QString& amount);

/// The saving of one sheet as one charge slip. What is written for a line is each sheet's own.
class ChargeSlip {
public:
    explicit ChargeSlip(SlipHead head) : m_head(std::move(head)) {}
    virtual ~ChargeSlip() = default;
    ChargeSlip(const ChargeSlip&) = delete;
    ChargeSlip& operator=(const ChargeSlip&) = delete;

    /// Takes a slip number and writes the lines, all in one transaction, and returns the number;
    /// empty where Begin() refuses. Throws base::DatabaseError; then, as in the other case, nothing
    /// is written and no number is taken.
    QString Save(const std::vector<SlipLine>& lines);

protected:
    /// Reads what holds for all lines, inside the transaction; false when nothing may be saved.
    virtual bool Begin() { return true; }
    /// Writes one line; nothing for a line that this sheet does not save.
    virtual void WriteLine(const SlipLine& line) = 0;

    const SlipHead& Head() const { return m_head; }
    /// The number taken; empty before.
    const QString& SlipNumber() const { return m_slipNumber; }
    /// The line's doctor's fee.
    void ChargeDoctor(const SlipLine& line);
    /// The line's row among the patient's requests.
    void SaveRequest(const SlipLine& line);

private:
    SlipHead m_head;
    QString m_slipNumber;
};
