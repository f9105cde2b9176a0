#include "visits/VisitReadings.h"

#include <QRegularExpression>

#include "base/Errors.h"

namespace visits {

namespace {

constexpr int kNoSuchField = 3265;

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
    static const QRegularExpression number(QStringLiteral("^\\s*(\\d+(?:[.,]\\d+)?)"));
    return Positive(number.match(text).captured(1));
}

BloodPressure ReadBloodPressure(const QString& text) {
    static const QRegularExpression pair(QStringLiteral("(\\d{2,3})\\s*/\\s*(\\d{2,3})(?!\\d|/)"));
    static const QRegularExpression upper(QStringLiteral("^\\s*(\\d{2,3})(?!\\d|\\s*/\\s*\\d)"));
    if (const auto both = pair.match(text); both.hasMatch())
        return {Positive(both.captured(1)), Positive(both.captured(2))};
    return {Positive(upper.match(text).captured(1)), std::nullopt};
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
