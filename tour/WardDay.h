#pragma once

#include "tour/Tour.h"

/// The part of the day in which medicines and supplies are requested; begins and ends with the
/// patient list.
class WardDay final {
public:
    explicit WardDay(Tour& tour) : m_tour(tour) {}
    void Walk();

private:
    void OpenThePatient();
    void RequestMedicines();
    void RequestSupplies();
    void DeleteLines();
    void RepeatARequest();
    /// From the hub, by its button.
    void OpenSheet(const QString& step, const char* button);
    void Save(const QString& step, int pending, const QString& item);
    /// Types into the current cell and confirms.
    static void Enter(const QString& text);
    static void Keys(const QString& text);
    void EnterLine(const QString& step, const QStringList& entries, int row, const QString& line);
    void ReadBox(const QString& step, const QString& said, int answer);
    void ExpectLine(int row, const QString& line);

    Tour& m_tour;
    QString m_waiting;  ///< a medicine that is already requested
    int m_pending = 0;  ///< requests of the visit that wait
};
