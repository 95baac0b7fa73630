// SPDX-License-Identifier: MIT
#include "input/data_line.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace zorvekan {

namespace {

constexpr int kMostColumns = 1000; // a line is not searched further for its pressure

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool endsColumn(char c) {
    return isBlank(c) || c == ',' || c == ';';
}

bool isComment(const char* p, const char* end) {
    return *p == '#' || *p == ';' || *p == '\'' || (*p == '/' && p + 1 < end && p[1] == '/');
}

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

// Plain decimals ("2534.56", "-0.0125"), the form gauges write, read without the
// general parser: digits m < 2^53 and a power 10^k with k <= 22 are both exact, so
// the one division m / 10^k is correctly rounded, the same double as from_chars
// gives (Clinger's fast path). Anything else returns false and takes the general path.
bool plainDecimal(const char* p, const char* end, double& value, const char*& after) {
    const bool negative = p < end && *p == '-';
    if (negative)
        ++p;
    std::uint64_t mantissa = 0;
    int digits = 0, decimals = 0;
    while (p < end && isDigit(*p) && digits < 19) {
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
        ++digits;
    }
    if (p < end && *p == '.') {
        ++p;
        while (p < end && isDigit(*p) && digits < 19) {
            mantissa = mantissa * 10 + static_cast<std::uint64_t>(*p++ - '0');
            ++digits;
            ++decimals;
        }
    }
    constexpr std::uint64_t kExactLimit = std::uint64_t{1} << 53;
    if (digits == 0 || mantissa > kExactLimit || decimals > 22 ||
        (p < end && (isDigit(*p) || *p == 'e' || *p == 'E' || *p == '.')))
        return false;
    const double v = static_cast<double>(mantissa) / kPowersOfTen[decimals];
    value = negative ? -v : v;
    after = p;
    return true;
}

// The end of a number that readNumber reads as a plain decimal in range ([+][-]digits
// with at most one point, no exponent), without computing its value; null for any
// other text, which then goes through readNumber.
const char* plainNumberEnd(const char* p, const char* end) {
    if (p < end && *p == '+')
        ++p;
    if (p < end && *p == '-')
        ++p;
    std::ptrdiff_t digits = 0;
    while (p < end && isDigit(*p)) {
        ++p;
        ++digits;
    }
    if (p < end && *p == '.')
        ++p;
    while (p < end && isDigit(*p)) {
        ++p;
        ++digits;
    }
    // At most 300 digits: from 1E-300 to below 1E300, far inside the range of doubles.
    if (digits == 0 || digits > 300 || (p < end && (*p == 'e' || *p == 'E' || *p == '.')))
        return nullptr;
    return p;
}

bool startsNumber(std::string_view column) {
    const char* p = column.data();
    return lineStart(p, p + column.size()) == LineStart::Number;
}

std::string columnName(int index, const char* what) {
    return "column " + std::to_string(index) + " (" + what + ")";
}

} // namespace

NumberRead readNumber(const char* p, const char* end, double& value, const char*& after) {
    if (p < end && *p == '+')
        ++p;
    const char* digits = p < end && *p == '-' ? p + 1 : p;
    if (digits >= end || !(isDigit(*digits) || *digits == '.'))
        return NumberRead::NotANumber;
    if (plainDecimal(p, end, value, after))
        return NumberRead::Ok;
    const auto [ptr, ec] = std::from_chars(p, end, value);
    after = ptr;
    if (ec == std::errc::result_out_of_range)
        return NumberRead::OutOfRange;
    return ec == std::errc() ? NumberRead::Ok : NumberRead::NotANumber;
}

bool columnNumber(std::string_view column, double& value) {
    const char* end = column.data() + column.size();
    const char* after = nullptr;
    return readNumber(column.data(), end, value, after) == NumberRead::Ok && after == end;
}

std::string shownText(std::string_view text) {
    constexpr std::size_t kMax = 40;
    std::string s(text.substr(0, kMax));
    if (text.size() > kMax)
        s += "...";
    return "\"" + s + "\"";
}

LineStart lineStart(const char*& p, const char* end) {
    while (p < end && isBlank(*p))
        ++p;
    if (p == end)
        return LineStart::Blank;
    if (isComment(p, end))
        return LineStart::Comment;
    const char* q = p;
    if (*q == '+' || *q == '-')
        ++q;
    if (q < end && *q == '.')
        ++q;
    return q < end && isDigit(*q) ? LineStart::Number : LineStart::Other;
}

bool ColumnCursor::next(std::string_view& column) {
    const char* p = m_p;
    while (p < m_end && isBlank(*p))
        ++p;
    char kind = ' ';
    if (p < m_end && (*p == ',' || *p == ';')) {
        kind = *p++;
        while (p < m_end && isBlank(*p))
            ++p;
    }
    if (p == m_end) {
        m_p = p;
        return false;
    }
    const char* q = p;
    while (q < m_end && !endsColumn(*q))
        ++q;
    column = std::string_view(p, std::size_t(q - p));
    m_p = q;
    if (!column.empty()) {
        if (m_kind == 0)
            m_kind = kind;
        else if (kind != m_kind)
            m_mixed = true;
    }
    return true;
}

bool DataLineReader::refuse(LineFault& fault, DataLine& out, std::string field, std::string problem,
                            bool timeRead) {
    if (!m_dataBegun) {
        out.kind = DataLine::Kind::Header;
        if (!timeRead)
            return true;
    }
    fault.field = std::move(field);
    fault.problem = std::move(problem);
    return !m_dataBegun;
}

bool DataLineReader::read(std::string_view line, DataLine& out, LineFault& fault,
                          bool withPressure) {
    const char* p = line.data();
    const char* const end = p + line.size();
    switch (lineStart(p, end)) {
    case LineStart::Blank:
        out.kind = DataLine::Kind::Blank;
        return true;
    case LineStart::Comment:
        out.kind = DataLine::Kind::Comment;
        return true;
    case LineStart::Number:
    case LineStart::Other:
        break;
    }

    // Column 1: the time, in the form of the first data line.
    const char* q = nullptr;
    TimeForm form = TimeForm::Unknown;
    double number = 0;
    if (m_form != TimeForm::Number && (q = readClockFields(p, end, m_clock)) != nullptr) {
        form = TimeForm::Clock;
    } else if (m_form != TimeForm::Clock) {
        const NumberRead read = readNumber(p, end, number, q);
        if (read == NumberRead::OutOfRange) { // a header line never starts so
            fault = {columnName(1, "time"), "the time is beyond the range of numbers"};
            return false;
        }
        if (read == NumberRead::Ok)
            form = TimeForm::Number;
        else
            q = nullptr;
    }
    if (!q || (q < end && !endsColumn(*q)))
        return m_form == TimeForm::Clock
                   ? refuse(fault, out, columnName(1, "date and time"),
                            shownText(std::string_view(p, std::size_t(end - p))) +
                                " does not begin with a date and time")
                   : refuse(fault, out, columnName(1, "time"),
                            shownText(std::string_view(p, std::size_t(end - p))) +
                                " does not begin with a time");
    const std::string_view timeText(p, std::size_t(q - p));

    // The pressure column.
    ColumnCursor columns(q, end);
    std::string_view column;
    int index = 2;
    bool found = false;
    for (; index <= kMostColumns && columns.next(column); ++index)
        if (m_pressureColumn == 0 ? startsNumber(column) : index == m_pressureColumn) {
            found = true;
            break;
        }
    if (!found)
        return m_pressureColumn == 0
                   ? refuse(fault, out, "", "no pressure after the time", true)
                   : refuse(fault, out, columnName(m_pressureColumn, "pressure"),
                            "the line has no column " + std::to_string(m_pressureColumn), true);
    const char* const columnEnd = column.data() + column.size();
    if (withPressure || plainNumberEnd(column.data(), columnEnd) != columnEnd) {
        const char* after = nullptr;
        const NumberRead read = readNumber(column.data(), columnEnd, out.pressure, after);
        if (read != NumberRead::Ok || after != columnEnd)
            return refuse(fault, out, columnName(index, "pressure"),
                          column.empty()                   ? "the column is empty"
                          : read == NumberRead::OutOfRange ? "the pressure is beyond the range "
                                                             "of numbers"
                                                           : shownText(column) + " is not a number",
                          true);
    }
    columns.next(column);  // the separator after the pressure counts for decimal commas too
    if (columns.mixed()) { // refused also before the data begin: it reads as data otherwise
        fault.field.clear();
        fault.problem = shownText(line) + " separates its columns by different marks (commas, "
                                          "semicolons, blanks): decimal commas are not read";
        return false;
    }

    if (!m_dataBegun) {
        m_dataBegun = true;
        m_form = form;
        m_slashed = form == TimeForm::Clock && !m_clock.yearFirst;
        if (m_pressureColumn == 0)
            m_pressureColumn = index;
    }
    out.kind = DataLine::Kind::Data;
    out.timeText = timeText;
    if (form == TimeForm::Number) {
        out.time = number;
        return true;
    }
    if (m_clock.yearFirst == m_slashed) {
        fault.field = columnName(1, "date and time");
        fault.problem = shownText(timeText) + " is not written as the dates before it (" +
                        (m_slashed ? "day and month first" : "year first") + ")";
        return false;
    }
    std::int64_t micros = 0;
    std::string problem;
    if (!clockMicros(m_clock, m_order, micros, problem)) {
        m_needsOrder = !m_clock.yearFirst && m_order == DateOrder::Unknown;
        fault.field = columnName(1, "date and time");
        fault.problem = shownText(timeText) + ": " + problem;
        return false;
    }
    out.time = static_cast<double>(micros);
    return true;
}

const char* DataLineReader::quickLine(const char* p, const char* end, char lineBreak,
                                      DataLine& out) {
    if (!m_dataBegun)
        return nullptr;
    const char* q = nullptr;
    if (m_form == TimeForm::Number) {
        if (!plainDecimal(p, end, out.time, q))
            return nullptr;
    } else {
        q = readClockFields(p, end, m_clock);
        if (!q || m_clock.yearFirst == m_slashed ||
            (!m_clock.yearFirst && m_order == DateOrder::Unknown))
            return nullptr;
        std::int64_t time = 0;
        std::string unused; // a date or time that does not exist goes to `read`, which says why
        if (m_clock.year != m_dayYear || m_clock.first != m_dayFirst ||
            m_clock.second != m_daySecond || m_clock.yearFirst != m_dayYearFirst) {
            if (!clockDayMicros(m_clock, m_order, m_dayMicros, unused))
                return nullptr;
            m_dayYear = m_clock.year;
            m_dayFirst = m_clock.first;
            m_daySecond = m_clock.second;
            m_dayYearFirst = m_clock.yearFirst;
        }
        if (!clockTimeOfDayMicros(m_clock, time, unused))
            return nullptr;
        out.time = static_cast<double>(m_dayMicros + time);
    }
    out.kind = DataLine::Kind::Data;
    out.timeText = std::string_view(p, std::size_t(q - p));
    const auto separator = [end](const char*& s) {
        while (s < end && isBlank(*s))
            ++s;
        char kind = ' ';
        if (s < end && (*s == ',' || *s == ';')) {
            kind = *s++;
            while (s < end && isBlank(*s))
                ++s;
        }
        return kind;
    };
    char kind = 0;
    for (int index = 2;; ++index) {
        const char* s = q;
        const char k = separator(s);
        if (s == q || s == end || (kind != 0 && k != kind))
            return nullptr;
        kind = k;
        if (index == m_pressureColumn) {
            q = plainNumberEnd(s, end);
            if (!q)
                return nullptr;
            break;
        }
        q = s;
        while (q < end && !endsColumn(*q) && *q != lineBreak && *q != '\r')
            ++q;
        if (q == s)
            return nullptr;
    }
    // After the pressure: the line break, or a separator of the same kind.
    const char* s = q;
    const char k = separator(s);
    const bool lineEnds =
        s < end && (*s == lineBreak || (*s == '\r' && s + 1 < end && s[1] == lineBreak));
    if (!lineEnds && (s == q || k != kind))
        return nullptr;
    const auto* found = static_cast<const char*>(std::memchr(s, lineBreak, std::size_t(end - s)));
    return found ? found + 1 : nullptr;
}

bool readMomentAs(std::string_view text, TimeForm form, bool slashedDates, DateOrder order,
                  double& moment, bool& isNumber, std::string& problem) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    const char* const end = text.data() + text.size();
    ClockFields fields;
    const char* q = readClockFields(text.data(), end, fields);
    if (q == end) {
        isNumber = false;
        if (form != TimeForm::Clock) {
            problem = shownText(text) + " is a date and time, but the file's times are "
                                        "numbers: give the start in the file's time unit";
            return false;
        }
        if (!fields.yearFirst && !slashedDates) {
            problem = shownText(text) + " is not written as the file writes its dates "
                                        "(year first)";
            return false;
        }
        std::int64_t micros = 0;
        if (!clockMicros(fields, order, micros, problem)) {
            problem = shownText(text) + ": " + problem;
            return false;
        }
        moment = static_cast<double>(micros);
        return true;
    }
    isNumber = true;
    if (columnNumber(text, moment))
        return true;
    problem = shownText(text) +
              (form == TimeForm::Clock
                   ? " is neither a date and time nor a number of hours since the first reading"
                   : " is not a number");
    return false;
}

} // namespace zorvekan
