#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "base/Numbers.h"
#include "embedded/Conversions.h"
#include "embedded/Functions.h"

namespace embedded {

namespace {

using Whole = sqlite3_int64;

constexpr double kLargestMoney = 922337203685477.5807;
constexpr int kMoneyScale = 4;
/// 2 to the power of 63: the first number beyond bigint.
constexpr double kBeyondBigInt = 9223372036854775808.0;

Failure Overflow(const std::string& what) {
    return Failure(8115, "Arithmetic overflow error converting " + what + ".");
}

Failure OverflowOfExpression(const std::string& type) {
    return Overflow("expression to data type " + type);
}

std::string_view Trimmed(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

enum class Reading { Good, Malformed, TooLarge };

/// Digits with a sign; empty is 0.
Reading ReadWhole(std::string_view text, Whole& value) {
    value = 0;
    text = Trimmed(text);
    if (text.empty())
        return Reading::Good;
    if (text.front() == '+' && text.size() > 1 && text[1] != '-')
        text.remove_prefix(1);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size() || error == std::errc::invalid_argument)
        return Reading::Malformed;
    return error == std::errc() ? Reading::Good : Reading::TooLarge;
}

/// Digits with a sign and a point, and an exponent where one is allowed; not empty.
bool ReadReal(std::string_view text, bool exponentAllowed, double& value) {
    const bool negative = !text.empty() && text.front() == '-';
    if (negative || (!text.empty() && text.front() == '+'))
        text.remove_prefix(1);
    if (text.find_first_not_of(exponentAllowed ? "0123456789.eE+-" : "0123456789.") !=
        std::string_view::npos)
        return false;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (end != text.data() + text.size() || error != std::errc())
        return false;
    if (negative)
        value = -value;
    return true;
}

Whole FromReal(double number, const std::string& type) {
    if (!(number > -kBeyondBigInt && number < kBeyondBigInt))
        throw OverflowOfExpression(type);
    return Whole(number);
}

void ReturnInt(FunctionCall& call, Whole value) {
    if (value < std::numeric_limits<int>::min() || value > std::numeric_limits<int>::max())
        throw OverflowOfExpression("int");
    call.Return(value);
}

void ToIntFrom(FunctionCall& call, double (*toWhole)(double)) {
    switch (call.Kind(0)) {
        case SQLITE_NULL:
            return call.ReturnNull();
        case SQLITE_INTEGER:
            return ReturnInt(call, call.Integer(0));
        case SQLITE_FLOAT:
            return ReturnInt(call, FromReal(toWhole(call.Number(0)), "int"));
    }
    const std::string text(call.Text(0));
    Whole value = 0;
    const Reading reading = ReadWhole(text, value);
    if (reading == Reading::Malformed)
        throw Failure(245, "Conversion failed when converting the varchar value '" + text +
                               "' to data type int.");
    if (reading == Reading::TooLarge || value < std::numeric_limits<int>::min() ||
        value > std::numeric_limits<int>::max())
        throw Failure(
            248, "The conversion of the varchar value '" + text + "' overflowed an int column.");
    call.Return(value);
}

double RoundedWhole(double number) {
    return base::RoundDecimal(number, 0);
}

double TruncatedWhole(double number) {
    return std::trunc(number);
}

/// A text as money: a sign, one currency sign, digits with commas between them, four decimals.
double MoneyFromText(std::string_view text) {
    std::string number;
    for (const char c : Trimmed(text)) {
        const bool leading = number.empty() || number == "-" || number == "+";
        if (!(c == ',' && !leading) && !(c == '$' && leading))
            number += c;
    }
    double value = 0;
    if (!number.empty() && !ReadReal(number, false, value))
        throw Failure(235,
                      "Cannot convert a char value to money. The char value has incorrect syntax.");
    return value;
}

void TextOfMoney(FunctionCall& call) {
    const Whole style = call.Count() == 2 ? call.Integer(1) : 0;
    const double amount = call.Number(0);
    std::string text = base::FixedText(amount, style == 2 ? kMoneyScale : 2).toStdString();
    if (style == 1) {
        const size_t first = text.front() == '-' ? 1 : 0;
        for (size_t comma = text.size() - 3; comma > first + 3;) {
            comma -= 3;
            text.insert(comma, 1, ',');
        }
    }
    call.Return(text);
}

void TextOfDecimal(FunctionCall& call) {
    call.Return(base::FixedText(call.Number(0), int(call.Integer(1))).toStdString());
}

/// Six digits; an exponent has three.
void TextOfFloat(FunctionCall& call) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.6g", call.Number(0) + 0.0);
    std::string text(buffer);
    const size_t exponent = text.find('e');
    if (exponent != std::string::npos && text.size() == exponent + 4)
        text.insert(exponent + 2, 1, '0');
    call.Return(text);
}

void Round(FunctionCall& call) {
    const int digits = int(std::clamp<Whole>(call.Integer(1), -40, 40));
    if (call.Kind(0) != SQLITE_INTEGER) {
        call.ReturnReal(base::RoundDecimal(call.Number(0), digits));
        return;
    }
    const Whole value = call.Integer(0);
    if (digits >= 0) {
        call.Return(value);
        return;
    }
    if (digits < -18) {
        call.Return(Whole(0));
        return;
    }
    Whole unit = 1;
    for (int i = digits; i < 0; ++i)
        unit *= 10;
    const Whole rest = value % unit;
    const Whole down = value - rest;
    const bool away = std::abs(rest) >= unit / 2;
    Whole result = down;
    if (away && __builtin_add_overflow(down, value < 0 ? -unit : unit, &result))
        throw OverflowOfExpression("bigint");
    call.Return(result);
}

Failure DivisionByZero() {
    return Failure(8134, "Divide by zero error encountered.");
}

void DivideWhole(FunctionCall& call) {
    const Whole divisor = call.Integer(1);
    if (divisor == 0)
        throw DivisionByZero();
    // The smallest bigint has no positive counterpart.
    if (divisor == -1 && call.Integer(0) == std::numeric_limits<Whole>::min())
        throw OverflowOfExpression("bigint");
    call.Return(call.Integer(0) / divisor);
}

void DivideReal(FunctionCall& call) {
    const double divisor = call.Number(1);
    if (divisor == 0)
        throw DivisionByZero();
    call.ReturnReal(call.Number(0) / divisor);
}

void Remainder(FunctionCall& call) {
    if (call.Number(1) == 0)
        throw DivisionByZero();
    if (call.Kind(0) == SQLITE_FLOAT || call.Kind(1) == SQLITE_FLOAT)
        call.ReturnReal(std::fmod(call.Number(0), call.Number(1)));
    else
        call.Return(call.Integer(1) == -1 ? 0 : call.Integer(0) % call.Integer(1));
}

}  // namespace

void ToInt(FunctionCall& call) {
    ToIntFrom(call, &TruncatedWhole);
}

void ToIntRounded(FunctionCall& call) {
    ToIntFrom(call, &RoundedWhole);
}

void ToBigInt(FunctionCall& call) {
    switch (call.Kind(0)) {
        case SQLITE_NULL:
            return call.ReturnNull();
        case SQLITE_INTEGER:
            return call.ReturnArgument(0);
        case SQLITE_FLOAT:
            return call.Return(FromReal(call.Number(0), "bigint"));
    }
    Whole value = 0;
    const Reading reading = ReadWhole(call.Text(0), value);
    if (reading == Reading::Malformed)
        throw Failure(8114, "Error converting data type varchar to bigint.");
    if (reading == Reading::TooLarge)
        throw OverflowOfExpression("bigint");
    call.Return(value);
}

void ToBit(FunctionCall& call) {
    if (call.IsNull(0))
        return call.ReturnNull();
    if (call.Kind(0) != SQLITE_TEXT)
        return call.Return(Whole(call.Number(0) != 0));
    const std::string text(call.Text(0));
    const std::string_view word = Trimmed(text);
    if (sqlite3_strnicmp(word.data(), "true", 5) == 0 && word.size() == 4)
        return call.Return(Whole(1));
    if (word.size() == 5 && sqlite3_strnicmp(word.data(), "false", 5) == 0)
        return call.Return(Whole(0));
    Whole value = 0;
    if (ReadWhole(text, value) == Reading::Malformed)
        throw Failure(245, "Conversion failed when converting the varchar value '" + text +
                               "' to data type bit.");
    call.Return(Whole(value != 0));
}

void ToMoney(FunctionCall& call) {
    if (call.IsNull(0))
        return call.ReturnNull();
    const double value = call.Kind(0) == SQLITE_TEXT ? MoneyFromText(call.Text(0)) : call.Number(0);
    const double rounded = base::RoundDecimal(value, kMoneyScale);
    if (!(std::fabs(rounded) <= kLargestMoney))
        throw OverflowOfExpression("money");
    call.ReturnReal(rounded);
}

void ToFloat(FunctionCall& call) {
    if (call.IsNull(0))
        return call.ReturnNull();
    if (call.Kind(0) != SQLITE_TEXT)
        return call.ReturnReal(call.Number(0));
    const std::string_view text = Trimmed(call.Text(0));
    double value = 0;
    if (!text.empty() && !ReadReal(text, true, value))
        throw Failure(8114, "Error converting data type varchar to float.");
    call.ReturnReal(value);
}

void ToDecimal(FunctionCall& call) {
    if (call.IsNull(0))
        return call.ReturnNull();
    const bool fromText = call.Kind(0) == SQLITE_TEXT;
    double value = fromText ? 0 : call.Number(0);
    // An empty text is no decimal, although it is 0 for every other kind of number.
    if (fromText && !ReadReal(Trimmed(call.Text(0)), false, value))
        throw Failure(8114, "Error converting data type varchar to numeric.");
    const int precision = int(call.Integer(1));
    const int scale = int(call.Integer(2));
    const double rounded = base::RoundDecimal(value, scale);
    if (!(std::fabs(rounded) < std::pow(10.0, precision - scale))) {
        const std::string source = fromText                         ? "varchar"
                                   : call.Kind(0) == SQLITE_INTEGER ? "int"
                                                                    : "numeric";
        throw Overflow(source + " to data type numeric");
    }
    call.ReturnReal(rounded);
}

void RegisterNumberFunctions(sqlite3* database) {
    RegisterFunction<&ToInt>(database, "t_int", 1);
    RegisterFunction<&ToIntRounded>(database, "t_int_round", 1);
    RegisterFunction<&ToBigInt>(database, "t_bigint", 1);
    RegisterFunction<&ToBit>(database, "t_bit", 1);
    RegisterFunction<&ToMoney>(database, "t_money", 1);
    RegisterFunction<&ToFloat>(database, "t_float", 1);
    RegisterFunction<&ToDecimal>(database, "t_decimal", 3);
    RegisterFunction<&Round>(database, "t_round", 2);
    RegisterFunction<&DivideWhole>(database, "t_idiv", 2);
    RegisterFunction<&DivideReal>(database, "t_fdiv", 2);
    RegisterFunction<&Remainder>(database, "t_mod", 2);
    RegisterFunction<&TextOfMoney>(database, "t_text_money", 1);
    RegisterFunction<&TextOfMoney>(database, "t_text_money", 2);
    RegisterFunction<&TextOfDecimal>(database, "t_text_decimal", 2);
    RegisterFunction<&TextOfFloat>(database, "t_text_float", 1);
}

}  // namespace embedded
