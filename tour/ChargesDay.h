#pragma once

#include "tour/Tour.h"

namespace toolkit {
class EntryGrid;
}

/// The part of the day in which a patient's charges are typed; begins and ends with the patient's
/// hub open.
class ChargesDay final {
public:
    explicit ChargesDay(Tour& tour) : m_tour(tour) {}
    void Walk();

    /// Key by key, to whoever has the keyboard.
    static void Keys(const QString& text);
    static void Enter(const QString& text);

private:
    void NameTheDoctor();
    void TypeSupplies();
    void TypeFees();
    void SaveTheSheet();
    static toolkit::EntryGrid& Sheet();
    static void Click(int row, int col);
    /// An entry into a cell that is clicked before.
    void EnterAt(const QString& step, int row, int col, const QString& text, const QString& gross);
    void ReadBox(const QString& step, const QString& said);
    void Expect(int row, int col, const QString& text);

    Tour& m_tour;
};
