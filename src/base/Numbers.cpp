#include "base/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

#include "base/Errors.h"

namespace base {

namespace {

constexpr int kOverflow = 6;
constexpr int kSignificantDigits = 15;
constexpr double kTooSmallToShow = 1e-15;

/// A number as its 15 significant decimal digits: 0.d1d2d3... times ten to the power of Point.
struct Decimal {
    bool Negative = false;
    std::string Digits;
    int Point = 0;
};

[[noreturn]] void ThrowOverflow() {
    throw RuntimeError(kOverflow, QStringLiteral("Overflow"));
}

Decimal ToDecimal(double number) {
    Decimal decimal;
    decimal.Negative = number < 0;
    char buffer[40];
    const auto end = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(number),
                                   std::chars_format::scientific, kSignificantDigits - 1)
                         .ptr;
    const char* exponent = std::find(buffer, end, 'e');
    for (const char* c = buffer; c != exponent; ++c) {
        if (*c != '.')
            decimal.Digits += *c;
    }
    int power = 0;
    std::from_chars(exponent + (exponent[1] == '+' ? 2 : 1), end, power);
    decimal.Point = power + 1;
    return decimal;
}

/// Rounds half away from zero, keeping so many digits behind the point.
void RoundTo(Decimal& decimal, int decimals) {
    const int kept = decimal.Point + decimals;
    if (kept >= int(decimal.Digits.size()))
        return;
    if (kept < 0) {
        decimal.Digits.clear();
        return;
    }
    const bool up = decimal.Digits[kept] >= '5';
    decimal.Digits.resize(kept);
    if (!up)
        return;
    int place = kept - 1;
    while (place >= 0 && decimal.Digits[place] == '9')
        decimal.Digits[place--] = '0';
    if (place >= 0) {
        ++decimal.Digits[place];
    } else {
        decimal.Digits.insert(0, 1, '1');
        ++decimal.Point;
    }
}

std::string PlainDigits(Decimal decimal) {
    while (!decimal.Digits.empty() && decimal.Digits.back() == '0')
        decimal.Digits.pop_back();
    if (decimal.Digits.empty())
        return "0";
    std::string text = decimal.Negative ? "-" : "";
    if (decimal.Point <= 0) {
        text += "0.";
        text.append(-decimal.Point, '0');
        return text + decimal.Digits;
    }
    const size_t point = decimal.Point;
    if (decimal.Digits.size() <= point)
        return text + decimal.Digits + std::string(point - decimal.Digits.size(), '0');
    return text + decimal.Digits.substr(0, point) + '.' + decimal.Digits.substr(point);
}

double PowerOfTen(int power) {
    static constexpr double kPowers[] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                         1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return power >= 0 && power < int(std::size(kPowers)) ? kPowers[power] : std::pow(10.0, power);
}

bool IsBlank(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

bool IsDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

}  // namespace

double Val(const QString& text) {
    std::string number;
    bool point = false;
    bool exponent = false;
    bool digit = false;
    for (const QChar c : text) {
        if (IsBlank(c))
            continue;
        const bool first = number.empty() || (exponent && number.back() == 'e');
        if (IsDigit(c)) {
            digit = true;
        } else if ((c == u'-' || c == u'+') && first) {
            // from_chars takes no plus sign in front.
            if (c == u'+' && number.empty())
                number += '0';
            else
                number += char(c.unicode());
            continue;
        } else if (c == u'.' && !point && !exponent) {
            point = true;
        } else if ((c == u'e' || c == u'E' || c == u'd' || c == u'D') && digit && !exponent) {
            exponent = true;
            number += 'e';
            continue;
        } else {
            break;
        }
        number += char(c.unicode());
    }
    double value = 0;
    const auto parsed = std::from_chars(number.data(), number.data() + number.size(), value);
    if (parsed.ec == std::errc::result_out_of_range) {
        if (number.find("e-") == std::string::npos)
            ThrowOverflow();
        return 0;
    }
    return parsed.ec == std::errc() ? value : 0;
}

QString PlainText(double number) {
    if (!std::isfinite(number))
        return {};
    if (std::fabs(number) < kTooSmallToShow)
        return QStringLiteral("0");
    if (std::fabs(number) < 1e15 && number == std::trunc(number))
        return QString::number(qint64(number));
    return QString::fromStdString(PlainDigits(ToDecimal(number)));
}

double RoundDecimal(double number, int decimals) {
    if (!std::isfinite(number) || number == 0)
        return number;
    // Far from a half and well inside the 15 digits, binary rounding gives the same answer.
    if (decimals >= 0 && decimals <= kSignificantDigits) {
        const double power = PowerOfTen(decimals);
        const double scaled = number * power;
        if (std::fabs(scaled) < 1e11) {
            const double whole = std::trunc(scaled);
            const double rest = std::fabs(scaled - whole);
            if (rest < 0.499)
                return whole / power + 0.0;
            if (rest > 0.501)
                return (whole + std::copysign(1.0, scaled)) / power;
        }
    }
    Decimal decimal = ToDecimal(number);
    RoundTo(decimal, decimals);
    const std::string text = PlainDigits(decimal);
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

QString FixedText(double number, int decimals) {
    if (!std::isfinite(number))
        return {};
    Decimal decimal = ToDecimal(number);
    RoundTo(decimal, decimals);
    std::string text = PlainDigits(decimal);
    if (decimals > 0) {
        size_t point = text.find('.');
        if (point == std::string::npos) {
            point = text.size();
            text += '.';
        }
        text.append(point + 1 + decimals - text.size(), '0');
    }
    return QString::fromStdString(text);
}

QString MoneyText(double amount) {
    return FixedText(amount, 2);
}

short ToInt16(double number) {
    const double rounded = std::nearbyint(number);
    if (!(rounded >= -32768.0 && rounded <= 32767.0))
        ThrowOverflow();
    return short(rounded);
}

bool IsNumeric(const QString& text) {
    const QStringView trimmed = QStringView(text).trimmed();
    qsizetype at = 0;
    const auto skipSign = [&] {
        if (at < trimmed.size() && (trimmed[at] == u'-' || trimmed[at] == u'+'))
            ++at;
    };
    const auto skipDigits = [&] {
        const qsizetype from = at;
        while (at < trimmed.size() && IsDigit(trimmed[at]))
            ++at;
        return at - from;
    };
    skipSign();
    qsizetype digits = skipDigits();
    if (at < trimmed.size() && trimmed[at] == u'.') {
        ++at;
        digits += skipDigits();
    }
    if (digits == 0)
        return false;
    if (at < trimmed.size() && (trimmed[at] == u'e' || trimmed[at] == u'E')) {
        ++at;
        skipSign();
        if (skipDigits() == 0)
            return false;
    }
    return at == trimmed.size();
}

}  // namespace base
