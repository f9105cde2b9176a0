#include "db/Value.h"

#include <cmath>

#include "base/Dates.h"
#include "base/Numbers.h"

namespace db {

namespace {

// Without an exponent wherever that is possible: the server reads no exponent into money.
QString RawNumber(double number) {
    constexpr int kDigits = 17;
    constexpr int kMostDecimals = 40;
    const int exponent = number == 0 ? 0 : int(std::floor(std::log10(std::abs(number))));
    const int decimals = std::max(0, kDigits - 1 - exponent);
    return decimals > kMostDecimals ? QString::number(number, 'g', kDigits)
                                    : QString::number(number, 'f', decimals);
}

}  // namespace

QString Value::Text() const {
    if (const auto* number = std::get_if<qint64>(&m_value)) {
        return QString::number(*number);
    }
    if (const auto* number = std::get_if<double>(&m_value)) {
        return base::PlainText(*number);
    }
    if (const auto* text = std::get_if<QString>(&m_value)) {
        return *text;
    }
    if (const auto* moment = std::get_if<QDateTime>(&m_value)) {
        return base::DateTimeText(*moment);
    }
    return {};
}

QString Value::RawText() const {
    if (const auto* number = std::get_if<double>(&m_value)) {
        return RawNumber(*number);
    }
    if (const auto* moment = std::get_if<QDateTime>(&m_value)) {
        return moment->toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    }
    return Text();
}

double Value::Number() const {
    if (const auto* number = std::get_if<qint64>(&m_value)) {
        return double(*number);
    }
    if (const auto* number = std::get_if<double>(&m_value)) {
        return *number;
    }
    if (const auto* text = std::get_if<QString>(&m_value)) {
        return base::Val(*text);
    }
    return 0;
}

QDateTime Value::Moment() const {
    const auto* moment = std::get_if<QDateTime>(&m_value);
    return moment ? *moment : QDateTime();
}

}  // namespace db
