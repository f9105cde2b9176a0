#pragma once

#include "tour/Tour.h"

namespace toolkit {
class EntryGrid;
class ListView;
}  // namespace toolkit

/// The cash patients of the day: assessed, looked up again, revoked, printed anew. Begins and ends
/// with the main window; the keyboard alone is used.
class CashDay final {
public:
    explicit CashDay(Tour& tour) : m_tour(tour) {}
    void Walk();

private:
    void FindWalkIn();
    void TypeCharges();
    void PrintSlip();
    void SeeOnePaid();
    void RevokeAnother();
    void ReprintAThird();
    /// Key by key, to whoever has the keyboard.
    static void Keys(const QString& text);
    static void Enter(const QString& text);
    /// The box in front says this; Enter closes it.
    void ReadBox(const QString& step, const QString& said);
    /// The slip in the viewer becomes a PDF, then the viewer is closed.
    void SaveSlip(const QString& step, const QString& file);
    /// Empties the search box and lists the assessments that the text finds.
    static void SearchFor(const QString& text);
    /// Goes down the list to the first line whose status begins so, and remembers its slip.
    void GoDownTo(const QString& status);
    static toolkit::ListView& List();
    static QString Cell(int row, int column);
    static QString CellOfChosen(int column);

    Tour& m_tour;
    QString m_walkIn;
    QString m_slip;
};
