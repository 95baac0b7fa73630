// SPDX-License-Identifier: MIT
#include "input/clock_time.h"

#include <date/date.h>

namespace zorvekan {

namespace {

// Reads `least` to `most` decimal digits at p into `value`; null when there are fewer
// than `least` or more than `most`.
const char* digitsAt(const char* p, const char* end, int least, int most, int& value) {
    value = 0;
    int n = 0;
    while (p < end && *p >= '0' && *p <= '9') {
        if (++n > most)
            return nullptr;
        value = value * 10 + (*p++ - '0');
    }
    return n >= least ? p : nullptr;
}

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// The separator between a date and its time: T, or blanks with at most one comma or
// semicolon among them. Null when there is none.
const char* dateTimeSeparator(const char* p, const char* end) {
    if (p < end && *p == 'T')
        return p + 1;
    const char* q = p;
    while (q < end && isBlank(*q))
        ++q;
    if (q < end && (*q == ',' || *q == ';'))
        ++q;
    while (q < end && isBlank(*q))
        ++q;
    return q == p ? nullptr : q;
}

const char* dateAt(const char* p, const char* end, ClockFields& f) {
    int a = 0;
    const char* q = digitsAt(p, end, 1, 4, a);
    if (!q || q == end || (*q != '-' && *q != '/'))
        return nullptr;
    const char separator = *q;
    if (q - p == 4) { // 2024-03-01 or 2024/03/01
        f.yearFirst = true;
        f.year = a;
        q = digitsAt(q + 1, end, 1, 2, f.first);
        if (!q || q == end || *q != separator)
            return nullptr;
        return digitsAt(q + 1, end, 1, 2, f.second);
    }
    if (separator != '/' || q - p > 2)
        return nullptr;
    f.yearFirst = false;
    f.first = a;
    q = digitsAt(q + 1, end, 1, 2, f.second);
    if (!q || q == end || *q != '/')
        return nullptr;
    return digitsAt(q + 1, end, 4, 4, f.year);
}

const char* timeAt(const char* p, const char* end, ClockFields& f) {
    const char* q = digitsAt(p, end, 1, 2, f.hour);
    if (!q || q == end || *q != ':')
        return nullptr;
    q = digitsAt(q + 1, end, 2, 2, f.minute);
    if (!q)
        return nullptr;
    f.seconds = 0;
    f.micros = 0;
    if (q < end && *q == ':') {
        q = digitsAt(q + 1, end, 2, 2, f.seconds);
        if (!q)
            return nullptr;
        if (q < end && *q == '.') {
            ++q;
            int scale = 100000;
            const char* digits = q;
            for (; q < end && *q >= '0' && *q <= '9'; ++q, scale /= 10)
                f.micros += scale * (*q - '0'); // digits beyond the microsecond add 0
            if (q == digits)
                return nullptr;
        }
    }
    // A 12-hour clock: " AM", " pm".
    f.half = ClockFields::Half::None;
    const char* r = q;
    while (r < end && *r == ' ')
        ++r;
    if (end - r >= 2 && (r[1] == 'M' || r[1] == 'm') &&
        (end - r == 2 || !((r[2] | 0x20) >= 'a' && (r[2] | 0x20) <= 'z'))) {
        if (r[0] == 'A' || r[0] == 'a')
            f.half = ClockFields::Half::Am;
        else if (r[0] == 'P' || r[0] == 'p')
            f.half = ClockFields::Half::Pm;
        if (f.half != ClockFields::Half::None)
            q = r + 2;
    }
    return q;
}

constexpr const char* kMonthNames[] = {"January",   "February", "March",    "April",
                                       "May",       "June",     "July",     "August",
                                       "September", "October",  "November", "December"};

} // namespace

const char* dateOrderName(DateOrder order) {
    switch (order) {
    case DateOrder::DayMonthYear:
        return "day/month/year";
    case DateOrder::MonthDayYear:
        return "month/day/year";
    case DateOrder::Unknown:
        break;
    }
    return "unknown";
}

const char* readClockFields(const char* p, const char* end, ClockFields& fields) {
    const char* q = dateAt(p, end, fields);
    if (!q)
        return nullptr;
    q = dateTimeSeparator(q, end);
    return q ? timeAt(q, end, fields) : nullptr;
}

bool clockDayMicros(const ClockFields& f, DateOrder order, std::int64_t& micros,
                    std::string& problem) {
    int month = f.first, day = f.second;
    if (!f.yearFirst) {
        if (order == DateOrder::Unknown) {
            problem = "the order of day and month is not known";
            return false;
        }
        if (order == DateOrder::DayMonthYear)
            std::swap(month, day);
    }
    const auto inOrder = [&] {
        return f.yearFirst ? std::string() : std::string(" (read ") + dateOrderName(order) + ")";
    };
    if (month < 1 || month > 12) {
        problem = "there is no month " + std::to_string(month) + inOrder();
        return false;
    }
    const date::year_month_day ymd{date::year{f.year}, date::month{unsigned(month)},
                                   date::day{unsigned(day)}};
    if (!ymd.ok()) {
        problem = std::string(kMonthNames[month - 1]) + " " + std::to_string(f.year) +
                  " has no day " + std::to_string(day) + inOrder();
        return false;
    }
    micros = std::int64_t{date::sys_days{ymd}.time_since_epoch().count()} * 86400000000LL;
    return true;
}

bool clockTimeOfDayMicros(const ClockFields& f, std::int64_t& micros, std::string& problem) {
    int hour = f.hour;
    if (f.half != ClockFields::Half::None) {
        if (hour < 1 || hour > 12) {
            problem = "the hour " + std::to_string(hour) + " is not on a 12-hour clock";
            return false;
        }
        hour = hour % 12 + (f.half == ClockFields::Half::Pm ? 12 : 0);
    }
    if (hour > 23 || f.minute > 59 || f.seconds > 59) {
        problem = "there is no time of day " + std::to_string(f.hour) + ":" +
                  (f.minute < 10 ? "0" : "") + std::to_string(f.minute) + ":" +
                  (f.seconds < 10 ? "0" : "") + std::to_string(f.seconds);
        return false;
    }
    micros = ((hour * 60LL + f.minute) * 60 + f.seconds) * 1000000LL + f.micros;
    return true;
}

bool clockMicros(const ClockFields& f, DateOrder order, std::int64_t& micros,
                 std::string& problem) {
    std::int64_t day = 0, time = 0;
    if (!clockDayMicros(f, order, day, problem) || !clockTimeOfDayMicros(f, time, problem))
        return false;
    micros = day + time;
    return true;
}

} // namespace zorvekan
