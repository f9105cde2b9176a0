#pragma once

#include "tour/DayPart.h"

namespace toolkit {
class EntryGrid;
}

/// The part of the day in which a patient's charges are typed; begins and ends with the patient's
/// hub open.
class ChargesDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void NameTheDoctor();
    void TypeSupplies();
    void TypeFees();
    void SaveTheSheet();
    static toolkit::EntryGrid& Sheet();
    static void Click(int row, int col);
    /// An entry into a cell that is clicked before.
    void EnterAt(const QString& step, int row, int col, const QString& text, const QString& gross);
    static void ExpectCell(int row, int col, const QString& text);
};
