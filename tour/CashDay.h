#pragma once

#include "tour/DayPart.h"

namespace toolkit {
class EntryGrid;
class ListView;
}  // namespace toolkit

/// The cash patients of the day: assessed, looked up again, revoked, printed anew. Begins and ends
/// with the main window; the keyboard alone is used.
class CashDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void FindWalkIn();
    void TypeCharges();
    void PrintSlip();
    void SeeOnePaid();
    void RevokeAnother();
    void ReprintAThird();
    /// Empties the search box and lists the assessments that the text finds.
    static void SearchFor(const QString& text);
    /// Goes down the list to the first line whose status begins so, and remembers its slip.
    void GoDownTo(const QString& status);
    static toolkit::ListView& List();
    static QString Cell(int row, int column);
    static QString CellOfChosen(int column);

    QString m_walkIn;
    QString m_slip;
};
