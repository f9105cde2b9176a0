#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "embedded/Conversions.h"
#include "embedded/Functions.h"
#include "embedded/Moment.h"

namespace embedded {

namespace {

using Whole = sqlite3_int64;

enum class Part {
    Year,
    Quarter,
    Month,
    DayOfYear,
    Day,
    Week,
    Weekday,
    Hour,
    Minute,
    Second,
    Millisecond
};

Part PartOf(std::string_view name) {
    struct Name {
        std::string_view Text;
        Part Meaning;
    };
    static constexpr Name kNames[] = {
        {"day", Part::Day},
        {"dd", Part::Day},
        {"d", Part::Day},
        {"month", Part::Month},
        {"mm", Part::Month},
        {"m", Part::Month},
        {"year", Part::Year},
        {"yy", Part::Year},
        {"yyyy", Part::Year},
        {"hour", Part::Hour},
        {"hh", Part::Hour},
        {"minute", Part::Minute},
        {"mi", Part::Minute},
        {"n", Part::Minute},
        {"second", Part::Second},
        {"ss", Part::Second},
        {"s", Part::Second},
        {"millisecond", Part::Millisecond},
        {"ms", Part::Millisecond},
        {"weekday", Part::Weekday},
        {"dw", Part::Weekday},
        {"w", Part::Weekday},
        {"dayofyear", Part::DayOfYear},
        {"dy", Part::DayOfYear},
        {"y", Part::DayOfYear},
        {"quarter", Part::Quarter},
        {"qq", Part::Quarter},
        {"q", Part::Quarter},
        {"week", Part::Week},
        {"wk", Part::Week},
        {"ww", Part::Week},
    };
    for (const Name& known : kNames) {
        if (known.Text.size() == name.size() &&
            sqlite3_strnicmp(known.Text.data(), name.data(), int(name.size())) == 0)
            return known.Meaning;
    }
    throw Failure(155, "'" + std::string(name) + "' is not a recognized datepart option.");
}

Moment MomentFromDays(double days) {
    const double whole = std::floor(days);
    Moment moment;
    if (std::fabs(whole) < 1e7)
        moment = {static_cast<long long>(whole),
                  int(std::lround((days - whole) * Moment::TicksADay))};
    if (moment.Tick == Moment::TicksADay)
        moment = {moment.Day + 1, 0};
    if (std::fabs(whole) >= 1e7 || !moment.IsInRange())
        throw Failure(8115,
                      "Arithmetic overflow error converting expression to data type datetime.");
    return moment;
}

/// A number is so many days since 1900, as it is on the server.
Moment MomentOf(const FunctionCall& call, int argument) {
    return call.Kind(argument) == SQLITE_TEXT ? MomentFromText(call.Text(argument))
                                              : MomentFromDays(call.Number(argument));
}

Failure AddedTooMuch() {
    return Failure(517, "Adding a value to a 'datetime' column caused an overflow.");
}

Moment AddMonths(const Moment& moment, Whole months) {
    CalendarDay date = moment.Date();
    const Whole month = date.Year * Whole(12) + date.Month - 1 + months;
    if (month < 0 || month >= Whole(10000) * 12)
        throw AddedTooMuch();
    date.Year = int(month / 12);
    date.Month = int(month % 12) + 1;
    date.Day = std::min(date.Day, Moment::DaysInMonth(date.Year, date.Month));
    return {Moment::DayOf(date), moment.Tick};
}

Moment AddTicks(const Moment& moment, Whole ticks) {
    const Whole sum = moment.Tick + ticks;
    const Whole rest = ((sum % Moment::TicksADay) + Moment::TicksADay) % Moment::TicksADay;
    return {moment.Day + (sum - rest) / Moment::TicksADay, int(rest)};
}

/// Thousandths become three-hundredths, halves away from zero.
Whole TicksOfMilliseconds(Whole milliseconds) {
    return (milliseconds * 3 + (milliseconds < 0 ? -5 : 5)) / 10;
}

Moment Added(const Moment& moment, Part part, Whole count) {
    constexpr Whole kSecond = Moment::TicksASecond;
    switch (part) {
        case Part::Year:
            return AddMonths(moment, count * 12);
        case Part::Quarter:
            return AddMonths(moment, count * 3);
        case Part::Month:
            return AddMonths(moment, count);
        case Part::DayOfYear:
        case Part::Day:
        case Part::Weekday:
            return {moment.Day + count, moment.Tick};
        case Part::Week:
            return {moment.Day + count * 7, moment.Tick};
        case Part::Hour:
            return AddTicks(moment, count * 3600 * kSecond);
        case Part::Minute:
            return AddTicks(moment, count * 60 * kSecond);
        case Part::Second:
            return AddTicks(moment, count * kSecond);
        case Part::Millisecond:
            break;
    }
    return AddTicks(moment, TicksOfMilliseconds(count));
}

void DateAdd(FunctionCall& call) {
    const Part part = PartOf(call.Text(0));
    const Whole count = call.Integer(1);
    if (count < std::numeric_limits<int>::min() || count > std::numeric_limits<int>::max())
        throw Failure(8115, "Arithmetic overflow error converting expression to data type int.");
    const Moment moment = Added(MomentOf(call, 2), part, count);
    if (!moment.IsInRange())
        throw AddedTooMuch();
    call.Return(moment.Stored());
}

/// A count of the part's units since some fixed moment: two of them differ by the boundaries
/// between.
Whole UnitsSinceStart(const Moment& moment, Part part) {
    const Whole seconds = moment.Day * Whole(86400) + moment.Tick / Moment::TicksASecond;
    switch (part) {
        case Part::Year:
            return moment.Date().Year;
        case Part::Quarter:
            return moment.Date().Year * Whole(4) + (moment.Date().Month - 1) / 3;
        case Part::Month:
            return moment.Date().Year * Whole(12) + moment.Date().Month;
        case Part::DayOfYear:
        case Part::Day:
        case Part::Weekday:
            return moment.Day;
        case Part::Week:
            // Weeks begin on Sunday; the first one before 1900 is day -1.
            return (moment.Day - moment.Weekday() + 1) / 7;
        case Part::Hour:
            return moment.Day * Whole(24) + moment.Tick / (3600 * Moment::TicksASecond);
        case Part::Minute:
            return moment.Day * Whole(1440) + moment.Tick / (60 * Moment::TicksASecond);
        case Part::Second:
            return seconds;
        case Part::Millisecond:
            break;
    }
    return seconds * 1000 + moment.Millisecond();
}

void DateDifference(FunctionCall& call) {
    const Part part = PartOf(call.Text(0));
    const Whole difference =
        UnitsSinceStart(MomentOf(call, 2), part) - UnitsSinceStart(MomentOf(call, 1), part);
    if (difference < std::numeric_limits<int>::min() ||
        difference > std::numeric_limits<int>::max())
        throw Failure(535,
                      "The datediff function resulted in an overflow. The number of dateparts "
                      "separating two date/time instances is too large. Try to use datediff with "
                      "a less precise datepart.");
    call.Return(difference);
}

void DatePart(FunctionCall& call) {
    const Part part = PartOf(call.Text(0));
    const Moment moment = MomentOf(call, 1);
    const CalendarDay date = moment.Date();
    const Whole yearStart = Moment::DayOf({date.Year, 1, 1});
    const int seconds = moment.Tick / Moment::TicksASecond;
    switch (part) {
        case Part::Year:
            return call.Return(Whole(date.Year));
        case Part::Quarter:
            return call.Return(Whole((date.Month + 2) / 3));
        case Part::Month:
            return call.Return(Whole(date.Month));
        case Part::DayOfYear:
            return call.Return(Whole(moment.Day - yearStart + 1));
        case Part::Day:
            return call.Return(Whole(date.Day));
        case Part::Week:
            return call.Return((moment.Day - yearStart + Moment{yearStart, 0}.Weekday()) / 7 + 1);
        case Part::Weekday:
            return call.Return(Whole(moment.Weekday() + 1));
        case Part::Hour:
            return call.Return(Whole(seconds / 3600));
        case Part::Minute:
            return call.Return(Whole(seconds / 60 % 60));
        case Part::Second:
            return call.Return(Whole(seconds % 60));
        case Part::Millisecond:
            return call.Return(Whole(moment.Millisecond()));
    }
}

std::string Written(const char* form, int first, int second, int third) {
    char buffer[40];
    const int length = std::snprintf(buffer, sizeof buffer, form, first, second, third);
    return std::string(buffer, size_t(length));
}

/// "Nov 22 2026  9:05PM"
std::string InWords(const Moment& moment) {
    static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                              "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    const CalendarDay date = moment.Date();
    const int minutes = moment.Tick / (60 * Moment::TicksASecond);
    const int hour = minutes / 60;
    return kMonths[date.Month - 1] +
           Written(" %2d %04d %2d", date.Day, date.Year, hour % 12 == 0 ? 12 : hour % 12) +
           Written(hour < 12 ? ":%02dAM" : ":%02dPM", minutes % 60, 0, 0);
}

void TextOfDateTime(FunctionCall& call) {
    const Moment moment = MomentOf(call, 0);
    const Whole style = call.Integer(1);
    const CalendarDay date = moment.Date();
    const std::string stored = moment.Stored();
    switch (style) {
        case 0:
        case 100:
            return call.Return(InWords(moment));
        case 101:
            return call.Return(Written("%02d/%02d/%04d", date.Month, date.Day, date.Year));
        case 102:
            return call.Return(Written("%04d.%02d.%02d", date.Year, date.Month, date.Day));
        case 103:
            return call.Return(Written("%02d/%02d/%04d", date.Day, date.Month, date.Year));
        case 108:
            return call.Return(stored.substr(11, 8));
        case 110:
            return call.Return(Written("%02d-%02d-%04d", date.Month, date.Day, date.Year));
        case 111:
            return call.Return(Written("%04d/%02d/%02d", date.Year, date.Month, date.Day));
        case 112:
            return call.Return(Written("%04d%02d%02d", date.Year, date.Month, date.Day));
        case 114:
            return call.Return(stored.substr(11, 8) + ':' + stored.substr(20));
        case 120:
            return call.Return(stored.substr(0, 19));
        case 121:
            return call.Return(stored);
    }
    throw Failure(281, std::to_string(style) +
                           " is not a valid style number when converting from datetime to a "
                           "character string.");
}

}  // namespace

void ToDateTime(FunctionCall& call) {
    if (call.IsNull(0))
        return call.ReturnNull();
    call.Return(MomentOf(call, 0).Stored());
}

void RegisterDateFunctions(sqlite3* database) {
    RegisterFunction<&ToDateTime>(database, "t_datetime", 1);
    RegisterFunction<&DateAdd>(database, "t_dateadd", 3);
    RegisterFunction<&DateDifference>(database, "t_datediff", 3);
    RegisterFunction<&DatePart>(database, "t_datepart", 2);
    RegisterFunction<&TextOfDateTime>(database, "t_text_datetime", 2);
}

}  // namespace embedded
