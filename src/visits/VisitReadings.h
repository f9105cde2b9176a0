#pragma once

#include <QDateTime>
#include <QPointF>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "db/RowStore.h"

/// What can be drawn of the texts that nurses write at a visit. What is no reading is nothing: a
/// gap in a line, never a zero.
namespace visits {

struct BloodPressure {
    std::optional<double> Systolic;
    std::optional<double> Diastolic;
};

/// The leading number: "55.5", "55,5 kg". Nothing for no number, for zero, and for the beginning of
/// something longer: "12/05/24", "55-57".
std::optional<double> ReadWeight(const QString& text);
/// "130/80", also with blanks or words around; a number alone is the upper one. Nothing of
/// "120/80/60", "1300/80" or a date.
BloodPressure ReadBloodPressure(const QString& text);

struct Visit {
    QDateTime Moment;
    std::optional<double> Weight;
    BloodPressure Pressure;
};

/// The rows of the visit list in their order.
std::vector<Visit> ReadVisits(const db::RowStore& rows);

using Reading = std::optional<double> (*)(const Visit&);
/// The points of one line over the milliseconds of the visits, broken where a visit has no reading.
std::vector<std::vector<QPointF>> Runs(const std::vector<Visit>& visits, Reading reading);

}  // namespace visits
