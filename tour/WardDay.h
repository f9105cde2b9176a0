#pragma once

#include "tour/DayPart.h"

/// The part of the day in which medicines and supplies are requested; begins and ends with the
/// patient list.
class WardDay final : public DayPart {
public:
    using DayPart::DayPart;
    void Walk();

private:
    void OpenThePatient();
    void RequestMedicines();
    void RequestSupplies();
    void DeleteLines();
    void RepeatARequest();
    /// From the hub, by its button.
    void OpenSheet(const QString& step, const char* button);
    /// The visit then has so many requests more that wait, this item first, stored as told.
    void Save(const QString& step, int pending, const QString& item, const QString& stored);
    void EnterLine(const QString& step, const QStringList& entries, int row, const QString& line);
    static void ExpectLine(int row, const QString& line);

    QString m_waiting;  ///< a medicine that is already requested
    int m_pending = 0;  ///< requests of the visit that wait
};
