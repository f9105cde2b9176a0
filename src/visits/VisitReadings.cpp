#include "visits/VisitReadings.h"

#include <QRegularExpression>

#include "base/Errors.h"

namespace visits {

namespace {

constexpr int kNoSuchField = 3265;
// Of somebody who came on foot or was carried in; beyond them something else was written.
constexpr double kLowestSystolic = 40, kHighestSystolic = 300, kLowestDiastolic = 10;
constexpr double kHeaviest = 500;

bool IsSystolic(double pressure) {
    return pressure >= kLowestSystolic && pressure <= kHighestSystolic;
}

std::optional<double> Positive(QString digits) {
    const double value = digits.replace(u',', u'.').toDouble();
    return value > 0 ? std::optional(value) : std::nullopt;
}

int Column(const db::RowStore& rows, const QString& name) {
    const int column = rows.ColumnIndex(name);
    if (column < 0)
        throw base::DatabaseError(kNoSuchField,
                                  QStringLiteral("The visits have no column %1.").arg(name));
    return column;
}

}  // namespace

std::optional<double> ReadWeight(const QString& text) {
    static const QRegularExpression number(
        QStringLiteral("^\\s*(\\d+(?:[.,]\\d+)?)(?![.,]?\\d|\\s*[/-]\\s*\\d)"));
    const std::optional<double> weight = Positive(number.match(text).captured(1));
    return weight && *weight <= kHeaviest ? weight : std::nullopt;
}

// Three numbers between slashes are a date or a slip of the hand, and no two of them a pressure.
BloodPressure ReadBloodPressure(const QString& text) {
    static const QRegularExpression chain(
        QStringLiteral("(?<![\\d.,/])\\d+(?:\\s*/\\s*\\d+)+(?![\\d/])"));
    static const QRegularExpression upper(
        QStringLiteral("^\\s*(\\d{2,3})(?![.,]?\\d|\\s*/\\s*\\d)"));
    for (const auto& match : chain.globalMatch(text)) {
        const QStringList parts = match.captured().split(u'/');
        const double systolic = parts[0].toDouble();
        const double diastolic = parts[1].toDouble();
        if (parts.size() == 2 && IsSystolic(systolic) && diastolic >= kLowestDiastolic &&
            diastolic < systolic)
            return {systolic, diastolic};
    }
    const std::optional<double> alone = Positive(upper.match(text).captured(1));
    return {alone && IsSystolic(*alone) ? alone : std::nullopt, std::nullopt};
}

std::vector<Visit> ReadVisits(const db::RowStore& rows) {
    const int moment = Column(rows, QStringLiteral("VISIT DATE"));
    const int weight = Column(rows, QStringLiteral("WEIGHT"));
    const int pressure = Column(rows, QStringLiteral("BLOOD PRESSURE"));
    std::vector<Visit> visits;
    visits.reserve(size_t(rows.RowCount()));
    for (int row = 0; row < rows.RowCount(); ++row)
        visits.push_back({rows.At(row, moment).Moment(), ReadWeight(rows.TextAt(row, weight)),
                          ReadBloodPressure(rows.TextAt(row, pressure))});
    return visits;
}

std::vector<std::vector<QPointF>> Runs(const std::vector<Visit>& visits, Reading reading) {
    std::vector<std::vector<QPointF>> runs;
    bool open = false;
    for (const Visit& visit : visits) {
        const std::optional<double> value = reading(visit);
        if (value && !open)
            runs.emplace_back();
        if (value)
            runs.back().emplace_back(double(visit.Moment.toMSecsSinceEpoch()), *value);
        open = value.has_value();
    }
    return runs;
}

}  // namespace visits
