#include "embedded/Moment.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "embedded/Failure.h"

namespace embedded {

namespace {

constexpr size_t kStoredLength = 23;
/// From 1 March of the year 0.
constexpr long long kDaysTo1900 = 693901;
constexpr int kFirstYear = 1753;
constexpr int kLastYear = 9999;
/// Two-digit years up to this one belong to this century.
constexpr int kLastShortYear = 49;

constexpr std::array<std::string_view, 12> kMonths = {"jan", "feb", "mar", "apr", "may", "jun",
                                                      "jul", "aug", "sep", "oct", "nov", "dec"};

Failure NoDate() {
    return Failure(241,
                   "Conversion failed when converting date and/or time from character string.");
}

Failure OutOfRange() {
    return Failure(242,
                   "The conversion of a varchar data type to a datetime data type resulted in an "
                   "out-of-range value.");
}

int FixedDigits(std::string_view text, size_t from, size_t count) {
    int value = 0;
    for (size_t i = from; i < from + count; ++i) {
        const int digit = text[i] - '0';
        if (digit < 0 || digit > 9)
            return -1;
        value = value * 10 + digit;
    }
    return value;
}

void PutDigits(char* place, int value, int count) {
    for (int i = count - 1; i >= 0; --i) {
        place[i] = char('0' + value % 10);
        value /= 10;
    }
}

bool IsCalendarDay(const CalendarDay& date) {
    return date.Year >= kFirstYear && date.Year <= kLastYear && date.Month >= 1 &&
           date.Month <= 12 && date.Day >= 1 &&
           date.Day <= Moment::DaysInMonth(date.Year, date.Month);
}

/// Reads a date text from left to right; whatever does not fit throws.
class DateReader {
public:
    explicit DateReader(std::string_view text) : m_text(text) {}

    Moment Read() {
        SkipBlanks();
        CalendarDay date{1900, 1, 1};
        const bool timeOnly = StartsWithTime();
        if (!AtEnd() && !timeOnly) {
            date = ReadDate();
            const bool iso = Take('T');
            if (!iso && !AtEnd() && !SkipBlanks())
                throw NoDate();
            SkipBlanks();
        }
        const long long milliseconds = AtEnd() ? 0 : ReadTime();
        if (!AtEnd())
            throw NoDate();
        if (!IsCalendarDay(date))
            throw OutOfRange();
        const Moment moment = Moment::At(Moment::DayOf(date), milliseconds);
        if (!moment.IsInRange())
            throw OutOfRange();
        return moment;
    }

private:
    struct Number {
        int Value;
        int Length;
    };

    bool AtEnd() const { return m_at == m_text.size(); }
    char Next() const { return AtEnd() ? '\0' : m_text[m_at]; }
    bool Take(char c) {
        const bool there = std::toupper(static_cast<unsigned char>(Next())) == c && !AtEnd();
        m_at += there;
        return there;
    }
    bool SkipBlanks() {
        const size_t from = m_at;
        while (Next() == ' ')
            ++m_at;
        return m_at != from;
    }
    bool IsDigit() const { return Next() >= '0' && Next() <= '9'; }

    /// A time has its colon or its half of the day right behind the first number.
    bool StartsWithTime() const {
        const size_t behind = std::min(m_text.find_first_not_of("0123456789", m_at), m_text.size());
        if (behind - m_at > 2 || behind == m_at || behind == m_text.size())
            return false;
        const size_t word = std::min(m_text.find_first_not_of(' ', behind), m_text.size());
        if (m_text[behind] == ':')
            return true;
        const std::string_view half = m_text.substr(word, 2);
        return half == "AM" || half == "PM" || half == "am" || half == "pm";
    }

    Number ReadNumber(int mostDigits) {
        Number number{0, 0};
        while (IsDigit() && number.Length < mostDigits) {
            number.Value = number.Value * 10 + (Next() - '0');
            ++number.Length;
            ++m_at;
        }
        if (number.Length == 0 || IsDigit())
            throw NoDate();
        return number;
    }

    int YearOf(const Number& number) const {
        if (number.Length == 4)
            return number.Value;
        if (number.Length > 2)
            throw NoDate();
        return number.Value + (number.Value <= kLastShortYear ? 2000 : 1900);
    }

    CalendarDay ReadDate() {
        if (!IsDigit())
            return ReadMonthByName();
        const Number first = ReadNumber(8);
        if (first.Length == 8)
            return {first.Value / 10000, first.Value / 100 % 100, first.Value % 100};
        if (first.Length == 6)
            return {YearOf({first.Value / 10000, 2}), first.Value / 100 % 100, first.Value % 100};
        const char separator = Next();
        if (separator != '/' && separator != '-' && separator != '.') {
            if (first.Length != 4)
                throw NoDate();
            return {first.Value, 1, 1};
        }
        ++m_at;
        const Number second = ReadNumber(2);
        if (!Take(separator))
            throw NoDate();
        const Number third = ReadNumber(4);
        if (first.Length == 4 && third.Length <= 2)
            return {first.Value, second.Value, third.Value};
        if (first.Length > 2)
            throw NoDate();
        return {YearOf(third), first.Value, second.Value};
    }

    /// "Nov 22 2026" or "Nov 22, 2026".
    CalendarDay ReadMonthByName() {
        std::string name;
        while (std::isalpha(static_cast<unsigned char>(Next())))
            name += char(std::tolower(static_cast<unsigned char>(m_text[m_at++])));
        int month = 0;
        for (size_t i = 0; i < kMonths.size(); ++i) {
            if (name.substr(0, 3) == kMonths[i])
                month = int(i) + 1;
        }
        if (month == 0)
            throw NoDate();
        SkipBlanks();
        const Number day = ReadNumber(2);
        Take(',');
        SkipBlanks();
        return {YearOf(ReadNumber(4)), month, day.Value};
    }

    long long ReadTime() {
        int hour = ReadNumber(2).Value;
        int minute = 0;
        int second = 0;
        int millisecond = 0;
        const bool hasMinute = Take(':');
        if (hasMinute)
            minute = ReadNumber(2).Value;
        if (hasMinute && Take(':')) {
            second = ReadNumber(2).Value;
            const bool fraction = Next() == '.';
            if (Take('.') || Take(':')) {
                const Number parts = ReadNumber(3);
                millisecond = parts.Value;
                // ".5" is half a second, ":5" five milliseconds.
                for (int digits = parts.Length; fraction && digits < 3; ++digits)
                    millisecond *= 10;
            }
        }
        SkipBlanks();
        const bool morning = Take('A');
        const bool halfDay = morning || Take('P');
        if ((halfDay && !Take('M')) || (!halfDay && !hasMinute))
            throw NoDate();
        if (halfDay && hour <= 12)
            hour = hour % 12 + (morning ? 0 : 12);
        SkipBlanks();
        if (hour > 23 || minute > 59 || second > 59)
            throw OutOfRange();
        return ((hour * 60LL + minute) * 60 + second) * 1000 + millisecond;
    }

    std::string_view m_text;
    size_t m_at = 0;
};

}  // namespace

bool Moment::IsInRange() const {
    static const long long first = DayOf({kFirstYear, 1, 1});
    static const long long last = DayOf({kLastYear, 12, 31});
    return Day >= first && Day <= last;
}

long long Moment::DayOf(const CalendarDay& date) {
    // The year begins in March here, so that the leap day is its last; 400 years repeat.
    const long long year = date.Year - (date.Month <= 2);
    const long long era = (year >= 0 ? year : year - 399) / 400;
    const long long yearOfEra = year - era * 400;
    const long long dayOfYear = (153 * ((date.Month + 9) % 12) + 2) / 5 + date.Day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear -
           kDaysTo1900;
}

CalendarDay Moment::Date() const {
    const long long days = Day + kDaysTo1900;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const long long dayOfEra = days - era * 146097;
    const long long yearOfEra =
        (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const long long dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long month = (5 * dayOfYear + 2) / 153;
    const int civilMonth = int(month < 10 ? month + 3 : month - 9);
    return {int(yearOfEra + era * 400 + (civilMonth <= 2)), civilMonth,
            int(dayOfYear - (153 * month + 2) / 5 + 1)};
}

int Moment::Weekday() const {
    // 1 January 1900 was a Monday.
    return int(((Day + 1) % 7 + 7) % 7);
}

int Moment::DaysInMonth(int year, int month) {
    static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    const bool leap = year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
    return month == 2 && leap ? 29 : kDays[month - 1];
}

Moment Moment::At(long long day, long long milliseconds) {
    const long long ticks = (milliseconds * 3 + 5) / 10;
    return {day + ticks / TicksADay, int(ticks % TicksADay)};
}

std::string Moment::Stored() const {
    std::string text = "0000-00-00 00:00:00.000";
    const CalendarDay date = Date();
    const int seconds = Tick / TicksASecond;
    PutDigits(text.data(), date.Year, 4);
    PutDigits(text.data() + 5, date.Month, 2);
    PutDigits(text.data() + 8, date.Day, 2);
    PutDigits(text.data() + 11, seconds / 3600, 2);
    PutDigits(text.data() + 14, seconds / 60 % 60, 2);
    PutDigits(text.data() + 17, seconds % 60, 2);
    PutDigits(text.data() + 20, Millisecond(), 3);
    return text;
}

std::optional<Moment> MomentFromStored(std::string_view text) {
    if (text.size() != kStoredLength || text[4] != '-' || text[7] != '-' || text[10] != ' ' ||
        text[13] != ':' || text[16] != ':' || text[19] != '.')
        return std::nullopt;
    const CalendarDay date{FixedDigits(text, 0, 4), FixedDigits(text, 5, 2),
                           FixedDigits(text, 8, 2)};
    const int hour = FixedDigits(text, 11, 2);
    const int minute = FixedDigits(text, 14, 2);
    const int second = FixedDigits(text, 17, 2);
    const int millisecond = FixedDigits(text, 20, 3);
    if (!IsCalendarDay(date) || hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 ||
        second > 59 || millisecond < 0)
        return std::nullopt;
    const Moment moment = Moment::At(Moment::DayOf(date),
                                     ((hour * 60LL + minute) * 60 + second) * 1000 + millisecond);
    return moment.IsInRange() ? std::optional(moment) : std::nullopt;
}

Moment MomentFromText(std::string_view text) {
    const std::optional<Moment> stored = MomentFromStored(text);
    return stored ? *stored : DateReader(text).Read();
}

}  // namespace embedded
