// SPDX-License-Identifier: MIT
#pragma once

#include "input/clock_time.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvekan {

// How an import file writes its times: numbers (elapsed time in the test-time unit)
// or dates with a time of day.
enum class TimeForm { Unknown, Number, Clock };

// The columns of a line after its time: separated by blanks or tabs, or by one comma or
// semicolon with blanks around it; two commas in a row leave an empty column between.
class ColumnCursor {
public:
    ColumnCursor(const char* p, const char* end) : m_p(p), m_end(end) {}

    // The next column; false at the end of the line.
    bool next(std::string_view& column);
    // True once two columns were separated by different marks (a comma, a semicolon,
    // blanks): the sign of decimal commas ("1,5;2000,3"), which are not read.
    bool mixed() const { return m_mixed; }

private:
    const char* m_p;
    const char* m_end;
    char m_kind = 0;
    bool m_mixed = false;
};

// A decimal number at p ("12", "-1.5", ".5", "1E-3", a leading "+"), without "inf",
// "nan" or hexadecimal; `after` is set past it.
enum class NumberRead { Ok, NotANumber, OutOfRange };
NumberRead readNumber(const char* p, const char* end, double& value, const char*& after);

// True when the whole of `column` is a number (readNumber); `value` is set.
bool columnNumber(std::string_view column, double& value);

// A moment written as a file of that time form writes its times: a number, or a date
// and time (dates with slashes only in a file of such dates, read in `order`); false with
// `problem` when it is neither, or is a date and time where the file's times are
// numbers. `isNumber` tells which it was; a date and time is in microseconds since 1970.
bool readMomentAs(std::string_view text, TimeForm form, bool slashedDates, DateOrder order,
                  double& moment, bool& isNumber, std::string& problem);

// One line of an import file.
struct DataLine {
    enum class Kind { Blank, Comment, Header, Data } kind = Kind::Blank;
    // The time: as written for numbers, microseconds since 1970 (an exact integer) for
    // dates and times.
    double time = 0;
    double pressure = 0;       // psia, read only when asked for
    std::string_view timeText; // the time column as written
};

// Why a line was refused: the column ("column 3 (pressure)"; empty for the line as a
// whole) and what was wrong with it.
struct LineFault {
    std::string field;
    std::string problem;
};

// Reads the lines of an import file:
//   - blank lines and comment lines (first non-blank character #, ; or ', or //);
//   - data lines: a time in column 1 (a number, or a date and time: readClockFields),
//     and a pressure in the pressure column, counted from 1 with the time (or the date
//     and time) as column 1. Other columns are not read. With no pressure column
//     given, it is the first column after the time that holds a number on the first
//     data line. The first data line also fixes the time form for the rest;
//   - header lines: before the first data line, any line that is not data.
// After the first data line, a line that is none of these is refused.
class DataLineReader {
public:
    DataLineReader(DateOrder order, int pressureColumn)
        : m_order(order), m_pressureColumn(pressureColumn) {}

    // False with `fault` set when the line is refused. Without `withPressure` the
    // pressure is checked but, when it is a plain decimal, not computed. A header line
    // with a time but no pressure in the pressure column sets `fault` too.
    bool read(std::string_view line, DataLine& out, LineFault& fault, bool withPressure = true);

    // The common data line, read as `read` reads it but in the same sweep that finds its
    // end, once the data have begun: the time, then plain columns up to a plain-decimal
    // pressure, separated by one kind of mark, then the line break. Returns the start of
    // the next line with the time set (the pressure checked, not computed), or null for
    // any other line, which then goes to `read`.
    const char* quickLine(const char* p, const char* end, char lineBreak, DataLine& out);

    TimeForm form() const { return m_form; }
    int pressureColumn() const { return m_pressureColumn; }
    bool dataBegun() const { return m_dataBegun; }
    // The dates have slashes (01/03/2024), so their order of day and month matters.
    bool slashedDates() const { return m_slashed; }
    // A date with slashes was read while the order of day and month was not known.
    bool needsDateOrder() const { return m_needsOrder; }
    DateOrder order() const { return m_order; }

    // A moment written as this file writes its times (once data have begun): a number,
    // or a date and time in the file's own date order; false with `problem` when it is
    // neither, or is a date and time in a file of numbers. `isNumber` tells which.
    bool readMoment(std::string_view text, double& moment, bool& isNumber,
                    std::string& problem) const {
        return readMomentAs(text, m_form, m_slashed, m_order, moment, isNumber, problem);
    }

private:
    // Refuses a line, or before the first data line takes it as a header line; a header
    // line whose time was read keeps the fault, for a file in which no line is data.
    bool refuse(LineFault& fault, DataLine& out, std::string field, std::string problem,
                bool timeRead = false);
    bool readTime(const char* p, const char* end, DataLine& out, LineFault& fault);

    DateOrder m_order;
    int m_pressureColumn;
    TimeForm m_form = TimeForm::Unknown;
    bool m_dataBegun = false;
    bool m_slashed = false;
    bool m_needsOrder = false;
    ClockFields m_clock;
    // The last date converted: the readings of one day share its first moment.
    int m_dayYear = -1, m_dayFirst = 0, m_daySecond = 0;
    bool m_dayYearFirst = false;
    std::int64_t m_dayMicros = 0;
};

// A line shown in a message: quoted, cut after 40 characters.
std::string shownText(std::string_view text);

// What a line begins with, blanks skipped (p is moved past them): a number is a digit,
// or a sign or a point before one ("-.5").
enum class LineStart { Blank, Comment, Number, Other };
LineStart lineStart(const char*& p, const char* end);

} // namespace zorvekan
