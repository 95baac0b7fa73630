// SPDX-License-Identifier: MIT
// A date and time read from any text either is refused or names a moment whose
// calendar date and time of day, as the date library gives them back, are the fields
// as written (day and month in the order read, the 12-hour clock turned into 24
// hours); the library writes that moment out and reads it back to the same moment,
// and the reader reads the library's text to it too.
#include "input/clock_time.h"

#include <date/date.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvekan;
    using Micros = std::chrono::sys_time<std::chrono::microseconds>;
    const char* p = reinterpret_cast<const char*>(data);
    ClockFields f;
    if (!readClockFields(p, p + size, f))
        return 0;
    for (const DateOrder order : {DateOrder::DayMonthYear, DateOrder::MonthDayYear}) {
        std::int64_t micros = 0;
        std::string problem;
        if (!clockMicros(f, order, micros, problem)) {
            if (problem.empty())
                std::abort();
            continue;
        }
        const Micros moment{std::chrono::microseconds{micros}};
        const auto day = date::floor<date::days>(moment);
        const date::year_month_day ymd{day};
        const date::hh_mm_ss<std::chrono::microseconds> clock{moment - day};
        const bool swapped = !f.yearFirst && order == DateOrder::DayMonthYear;
        const int hour = f.half == ClockFields::Half::None
                             ? f.hour
                             : f.hour % 12 + (f.half == ClockFields::Half::Pm ? 12 : 0);
        if (int(ymd.year()) != f.year ||
            unsigned(ymd.month()) != unsigned(swapped ? f.second : f.first) ||
            unsigned(ymd.day()) != unsigned(swapped ? f.first : f.second) ||
            clock.hours().count() != hour || clock.minutes().count() != f.minute ||
            clock.seconds().count() != f.seconds || clock.subseconds().count() != f.micros)
            std::abort();
        if (f.year < 1000) // the library's %Y reads and writes four digits alike only from 1000 on
            continue;
        const std::string text = date::format("%Y-%m-%d %H:%M:%S", moment);
        std::istringstream in(text);
        Micros back{};
        in >> date::parse("%Y-%m-%d %H:%M:%S", back);
        ClockFields again;
        std::int64_t reread = 0;
        if (in.fail() || back != moment ||
            readClockFields(text.data(), text.data() + text.size(), again) !=
                text.data() + text.size() ||
            !clockMicros(again, order, reread, problem) || reread != micros)
            std::abort();
    }
    return 0;
}
