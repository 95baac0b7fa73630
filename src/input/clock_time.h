// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace zorvekan {

// The order of day and month in a date written with slashes: 01/03/2024 is the 1st of
// March read day/month/year and the 3rd of January read month/day/year.
enum class DateOrder { Unknown, DayMonthYear, MonthDayYear };

// "day/month/year" or "month/day/year" ("unknown").
const char* dateOrderName(DateOrder order);

// A date and time as gauge exports write it, taken apart but not yet checked:
//   2024-03-01 12:00:00, 2024-03-01T12:00:00, 2024/03/01 12:00 (year first),
//   01/03/2024 12:00:00 (day and month in either order),
// seconds optional and with a fraction of any length (kept to the microsecond), a
// 12-hour clock with AM or PM, the date and the time separated by a T, blanks, or a
// comma or semicolon (a date column and a time column).
struct ClockFields {
    bool yearFirst = true;
    int year = 0;
    int first = 0;  // year first: the month; otherwise the number before the first slash
    int second = 0; // year first: the day; otherwise the number between the slashes
    int hour = 0;
    int minute = 0;
    int seconds = 0;
    int micros = 0;
    enum class Half { None, Am, Pm } half = Half::None;
};

// Reads a date and time at p. Returns the end of it, or null when the text there is
// not one (a date without a time, a number, a word).
const char* readClockFields(const char* p, const char* end, ClockFields& fields);

// The moment the fields name, in microseconds since 1970-01-01 00:00:00 on the
// gauge's own clock (no time zone is applied: a record keeps one clock). Dates with
// slashes are read in `order`. A date or time that does not exist in that order
// (month 13, 30 February, 25:00, 0 PM) gives false and says why in `problem`. The
// calendar arithmetic is the date library's (days since 1970 of a year/month/day).
bool clockMicros(const ClockFields& fields, DateOrder order, std::int64_t& micros,
                 std::string& problem);

// The two halves of clockMicros: the day's first moment, and the time of day.
bool clockDayMicros(const ClockFields& fields, DateOrder order, std::int64_t& micros,
                    std::string& problem);
bool clockTimeOfDayMicros(const ClockFields& fields, std::int64_t& micros, std::string& problem);

// Microseconds in an hour: elapsed clock time in hours is a difference of moments
// divided by this (exact integers below 2^53, so the one division is the only rounding).
inline constexpr double kMicrosPerHour = 3.6e9;

} // namespace zorvekan
