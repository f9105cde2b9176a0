#pragma once

#include <QDateTime>
#include <QString>
#include <variant>

namespace db {

/// What one cell holds, whichever engine it came from: nothing, a whole number, a number (also
/// money and decimals), a text or a moment.
class Value final {
public:
    Value() = default;
    Value(qint64 number) : m_value(number) {}
    Value(int number) : m_value(qint64(number)) {}
    Value(double number) : m_value(number) {}
    Value(QString text) : m_value(std::move(text)) {}
    Value(QDateTime moment) : m_value(std::move(moment)) {}

    bool IsNull() const { return m_value.index() == 0; }
    /// The cell as text, null as empty: numbers as plain decimals, moments as
    /// "M/d/yyyy h:mm:ss AM/PM" without the time at midnight.
    QString Text() const;
    /// The cell exactly, for the server to compare or store: numbers with 17 significant digits,
    /// moments as "yyyy-MM-ddTHH:mm:ss.fff", which no date order of the server misreads.
    QString RawText() const;
    /// The cell as a number: a text by its leading number, null as 0, a moment as 0.
    double Number() const;
    /// The cell as a moment; invalid unless it holds one.
    QDateTime Moment() const;

    bool operator==(const Value& other) const = default;

private:
    friend class RowStore;
    std::variant<std::monostate, qint64, double, QString, QDateTime> m_value;
};

}  // namespace db
