#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace embedded {

/// A day of the calendar.
struct CalendarDay {
    int Year;
    int Month;
    int Day;
};

/// A moment as the server keeps it: whole days since 1 January 1900 and three-hundredths of a
/// second since midnight.
struct Moment {
    static constexpr int TicksASecond = 300;
    static constexpr int TicksADay = 86400 * TicksASecond;

    long long Day = 0;
    int Tick = 0;

    /// Years 1753 to 9999.
    bool IsInRange() const;
    CalendarDay Date() const;
    /// 0 is Sunday.
    int Weekday() const;
    int Millisecond() const { return (Tick % TicksASecond * 10 + 1) / 3; }
    /// "yyyy-MM-dd HH:mm:ss.fff", the milliseconds ending in 0, 3 or 7.
    std::string Stored() const;

    static long long DayOf(const CalendarDay& date);
    static int DaysInMonth(int year, int month);
    /// Milliseconds since midnight, to the nearest tick; a whole day where they round up to it.
    static Moment At(long long day, long long milliseconds);
};

/// The stored form read back, quickly; nothing for any other text.
std::optional<Moment> MomentFromStored(std::string_view text);

/// Any text that the server takes as a date, month first. Throws Failure 241 for what is none,
/// 242 for what lies outside the calendar.
Moment MomentFromText(std::string_view text);

}  // namespace embedded
