// SPDX-License-Identifier: MIT
#include "input/importer.h"

#include "core/display_mask.h"
#include "input/input_rules.h"
#include "input/log_time_selection.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string.h> // memrchr

namespace zorvekan {

namespace {

constexpr double kCountShare = 0.3; // of the work: the counting pass, then selection
constexpr const char* kFileChanged = "the file changed while it was imported; import it again";

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool startsNumber(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

const char* skipBlanks(const char* p, const char* end) {
    while (p < end && isBlank(*p))
        ++p;
    return p;
}

enum class NumberRead { Ok, NotANumber, OutOfRange };

constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                   1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                   1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

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

// A decimal number at p ("12", "-1.5", ".5", "1E-3", a leading "+"); `after` is set
// past it. Text such as "inf", "nan" or "0x1F" is not read as a number.
NumberRead readNumber(const char* p, const char* end, double& value, const char*& after) {
    if (p < end && *p == '+')
        ++p;
    const char* digits = p < end && *p == '-' ? p + 1 : p;
    if (digits >= end || !startsNumber(*digits))
        return NumberRead::NotANumber;
    if (plainDecimal(p, end, value, after))
        return NumberRead::Ok;
    const auto [ptr, ec] = std::from_chars(p, end, value);
    after = ptr;
    if (ec == std::errc::result_out_of_range)
        return NumberRead::OutOfRange;
    return ec == std::errc() ? NumberRead::Ok : NumberRead::NotANumber;
}

bool isComment(const char* p, const char* end) {
    return *p == '#' || *p == ';' || *p == '\'' || (*p == '/' && p + 1 < end && p[1] == '/');
}

std::string shownLine(const char* p, const char* end) {
    constexpr std::ptrdiff_t kMax = 40;
    std::string s(p, static_cast<std::size_t>(std::min(end - p, kMax)));
    if (end - p > kMax)
        s += "...";
    return "\"" + s + "\"";
}

enum class LineStart { Blank, Comment, Number, Other };

// What a line begins with, blanks skipped: a number is a digit, or a sign or a
// point before one ("-.5"). Both passes class lines by this alone, so they count
// the same pairs.
LineStart lineStart(const char*& p, const char* end) {
    p = skipBlanks(p, end);
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

std::string numberText(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", v);
    return text;
}

// Reports the progress of both passes, once a block of the file, each report beyond
// the one before; false when the engineer cancelled (the result says so).
class Progress {
public:
    explicit Progress(const ImportProgress& report) : m_report(report) {}

    bool go(double fraction, ImportResult& result) {
        if (!m_report || fraction <= m_reported)
            return true;
        m_reported = fraction;
        if (m_report(fraction))
            return true;
        result.cancelled = true;
        result.error.problem = "import cancelled";
        return false;
    }

private:
    const ImportProgress& m_report;
    double m_reported = 0;
};

ImportResult failure(ImportResult& result, long long line, std::string problem) {
    result.error.line = static_cast<int>(std::min<long long>(line, 2147483647));
    result.error.problem = std::move(problem);
    return result;
}

// What the first pass finds.
struct PairCount {
    long long pairs = 0; // without a first pair at time 0
    double lastTime = 1; // of the last pair, in hours
};

// The next line of a block from completeLines, without its line break.
std::string_view nextLineIn(const char*& p, const char* end, char lineBreak) {
    const auto* found = static_cast<const char*>(std::memchr(p, lineBreak, std::size_t(end - p)));
    const char* stop = found ? found : end;
    std::string_view line(p, std::size_t(stop - p));
    if (lineBreak == '\n' && !line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    p = found ? found + 1 : end;
    return line;
}

// The first pass: the number of pairs (without a first pair at time 0) and the time
// of the last one, in hours, so the second pass can select without holding pairs.
// Lines are classed by their first character alone; a block in which every line
// begins with a digit, as nearly all of a gauge record does, is counted at once.
class PairCounter {
public:
    explicit PairCounter(LineReader& lines) : m_lines(lines) {}

    bool count(bool minutes, Progress& progress, PairCount& count, ImportResult& result) {
        for (std::string_view block; !(block = m_lines.completeLines()).empty();) {
            const long long lines = countBlock(block);
            m_lines.consume(block, lines);
            if (!progress.go(kCountShare * m_lines.fraction(), result))
                return false;
        }
        for (std::string_view line; m_lines.next(line);) // a last line without a line break
            classify(line);
        if (m_lines.failed()) {
            result.error = m_lines.error();
            return false;
        }
        count.pairs = m_numberLines - (m_startsAtZero ? 1 : 0);
        // A last line that is not a pair is refused by the second pass, before this matters.
        std::string last;
        double t = 0;
        if (m_numberLines > 0 && m_lines.lineAt(m_lastPair, last)) {
            const char* p = last.data();
            const char* const end = p + last.size();
            lineStart(p, end);
            if (readNumber(p, end, t, p) == NumberRead::Ok && t > 0)
                count.lastTime = minutes ? t / 60.0 : t;
        }
        return true;
    }

private:
    long long countBlock(std::string_view block) {
        const auto* b = reinterpret_cast<const unsigned char*>(block.data());
        const std::size_t n = block.size();
        const auto lineBreak = static_cast<unsigned char>(m_lines.lineBreak());
        std::size_t breaks = 1, digitStarts = static_cast<unsigned char>(b[0] - '0') < 10;
        // In runs of 255 bytes, so that the compiler's vectorised sums fit in bytes.
        for (std::size_t run = 0; run + 1 < n; run += 255) {
            const std::size_t stop = std::min(run + 255, n - 1);
            unsigned char runBreaks = 0, runDigitStarts = 0;
            for (std::size_t i = run; i < stop; ++i) {
                const bool isBreak = b[i] == lineBreak;
                runBreaks += isBreak;
                runDigitStarts += isBreak & (static_cast<unsigned char>(b[i + 1] - '0') < 10);
            }
            breaks += runBreaks;
            digitStarts += runDigitStarts;
        }
        if (digitStarts == breaks && m_numberLines > 0) {
            m_numberLines += static_cast<long long>(breaks);
            const void* before = ::memrchr(b, lineBreak, n - 1);
            const char* lastLine = before ? static_cast<const char*>(before) + 1 : block.data();
            m_lastPair = m_lines.offsetOf(std::string_view(lastLine, 0));
        } else {
            const char* p = block.data();
            const char* const end = p + n;
            while (p < end)
                classify(nextLineIn(p, end, m_lines.lineBreak()));
        }
        return static_cast<long long>(breaks);
    }

    void classify(std::string_view line) {
        const char* p = line.data();
        const char* const end = p + line.size();
        if (lineStart(p, end) != LineStart::Number)
            return;
        if (m_numberLines++ == 0) {
            double t = 0;
            m_startsAtZero = readNumber(p, end, t, p) == NumberRead::Ok && t == 0;
        }
        m_lastPair = m_lines.offsetOf(line);
    }

    LineReader& m_lines;
    long long m_numberLines = 0;
    bool m_startsAtZero = false;
    long long m_lastPair = 0; // where the last line that begins with a number starts
};

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

} // namespace

const char* PairLineReader::quickPair(const char* p, const char* end, char lineBreak,
                                      double& time) {
    const char* q = p;
    if (!plainDecimal(p, end, time, q) || !(time > 0))
        return nullptr;
    const char* s = skipBlanks(q, end);
    if (s < end && (*s == ',' || *s == ';'))
        s = skipBlanks(s + 1, end);
    if (s == q)
        return nullptr;
    const char* r = plainNumberEnd(s, end);
    if (!r)
        return nullptr;
    while (r < end && (isBlank(*r) || *r == ',' || *r == ';'))
        ++r;
    if (lineBreak == '\n' && r < end && *r == '\r')
        ++r;
    if (r == end || *r != lineBreak)
        return nullptr;
    m_dataBegun = true;
    return r + 1;
}

bool PairLineReader::read(std::string_view line, PairLine& out, std::string& problem,
                          bool withPressure) {
    const char* p = line.data();
    const char* const end = p + line.size();
    switch (lineStart(p, end)) {
    case LineStart::Blank:
        out.kind = PairLine::Kind::Blank;
        return true;
    case LineStart::Comment:
        out.kind = PairLine::Kind::Comment;
        return true;
    case LineStart::Other:
        out.kind = PairLine::Kind::Header;
        if (!m_dataBegun)
            return true;
        problem = shownLine(p, end) + " is not a time/pressure pair";
        return false;
    case LineStart::Number:
        break;
    }
    m_dataBegun = true;
    out.kind = PairLine::Kind::Pair;
    const char* q = p;
    const NumberRead first = readNumber(p, end, out.time, q);
    if (first != NumberRead::Ok) {
        problem = first == NumberRead::OutOfRange
                      ? "the time is beyond the range of numbers"
                      : shownLine(p, end) + " is not a time/pressure pair";
        return false;
    }
    const char* s = skipBlanks(q, end);
    if (s < end && (*s == ',' || *s == ';'))
        s = skipBlanks(s + 1, end);
    if (s == end) {
        problem = shownLine(p, end) + " has a time but no pressure";
        return false;
    }
    if (s == q) {
        problem = shownLine(p, end) + " is not a time/pressure pair";
        return false;
    }
    const char* plainEnd = withPressure ? nullptr : plainNumberEnd(s, end);
    const NumberRead second = plainEnd ? NumberRead::Ok : readNumber(s, end, out.pressure, q);
    if (plainEnd)
        q = plainEnd;
    if (second != NumberRead::Ok) {
        problem = second == NumberRead::OutOfRange ? "the pressure is beyond the range of numbers"
                                                   : shownLine(s, end) + " is not a pressure";
        return false;
    }
    // Empty columns after the pair (a spreadsheet's trailing commas) are allowed.
    while (q < end && (isBlank(*q) || *q == ',' || *q == ';'))
        ++q;
    if (q != end) {
        problem = shownLine(p, end) + " has more than a time and a pressure (one pair a line)";
        return false;
    }
    return true;
}

namespace {

// The second pass: every line checked, the pairs selected as they come.
class SelectingPass {
public:
    SelectingPass(const PairCount& count, bool minutes, ImportResult& result)
        : m_count(count), m_minutes(minutes), m_result(result),
          m_selector(static_cast<std::size_t>(count.pairs), count.lastTime, kMaxTestPoints) {}

    // Any line; false when it is refused (the result says why).
    bool line(std::string_view line, long long number) {
        ImportSummary& summary = m_result.summary;
        if (!m_reader.read(line, m_pair, m_problem, false))
            return fail(number, m_problem);
        switch (m_pair.kind) {
        case PairLine::Kind::Blank:
            ++summary.blankLines;
            return true;
        case PairLine::Kind::Comment:
            ++summary.commentLines;
            return true;
        case PairLine::Kind::Header:
            ++summary.headerLines;
            return true;
        case PairLine::Kind::Pair:
            break;
        }
        if (m_pair.time < 0)
            return fail(number, "the time is negative");
        if (m_pair.time == 0 && (summary.pairsInFile > 0 || summary.startPressure))
            return fail(number, "a pair at time 0 after other pairs: only the first pair may be "
                                "the start of the test");
        if (m_pair.time > 0)
            return pair(m_pair.time, number, line);
        if (!m_reader.read(line, m_pair, m_problem)) // the start pressure, computed now
            return fail(number, m_problem);
        summary.startPressure = m_pair.pressure;
        return true;
    }

    // A pair line with its time above 0, as written; the pressure is read only when
    // the pair is kept.
    bool pair(double written, long long number, std::string_view line) {
        ImportSummary& summary = m_result.summary;
        const double t = m_minutes ? written / 60.0 : written;
        if (summary.pairsInFile > 0 && t < m_previous)
            return fail(number, "the time " + numberText(written) +
                                    " is earlier than the time of line " +
                                    std::to_string(m_previousLine) + " (" +
                                    numberText(m_minutes ? m_previous * 60.0 : m_previous) +
                                    "): times must not decrease");
        if (summary.pairsInFile == m_count.pairs)
            return fail(number, kFileChanged);
        ++summary.pairsInFile;
        m_previous = t;
        m_previousLine = number;
        if (!m_selector.keep(t))
            return true;
        if (!m_reader.read(line, m_pair, m_problem))
            return fail(number, m_problem);
        m_time[m_kept] = t;
        m_pressure[m_kept] = m_pair.pressure;
        ++m_kept;
        return true;
    }

    PairLineReader& reader() { return m_reader; }
    std::size_t kept() const { return m_kept; }
    double time(std::size_t k) const { return m_time[k]; }
    double pressure(std::size_t k) const { return m_pressure[k]; }

private:
    bool fail(long long number, std::string problem) {
        failure(m_result, number, std::move(problem));
        return false;
    }

    const PairCount& m_count;
    bool m_minutes;
    ImportResult& m_result;
    LogTimeSelector m_selector;
    PairLineReader m_reader;
    PairLine m_pair;
    std::string m_problem;
    double m_previous = 0;
    long long m_previousLine = 0;
    std::array<double, kMaxTestPoints> m_time{}, m_pressure{};
    std::size_t m_kept = 0;
};

// The lines of a block: the common pair lines read in one sweep, the others by line.
// Returns the number of lines, or -1 when one was refused.
long long selectBlock(SelectingPass& pass, std::string_view block, long long firstNumber,
                      char lineBreak) {
    const char* p = block.data();
    const char* const end = p + block.size();
    long long number = firstNumber;
    for (; p < end; ++number) {
        const char* begin = p;
        double time = 0;
        if (const char* next = pass.reader().quickPair(p, end, lineBreak, time)) {
            p = next;
            std::string_view line(begin, std::size_t(next - 1 - begin));
            if (lineBreak == '\n' && !line.empty() && line.back() == '\r')
                line.remove_suffix(1);
            if (!pass.pair(time, number, line))
                return -1;
        } else if (!pass.line(nextLineIn(p, end, lineBreak), number)) {
            return -1;
        }
    }
    return number - firstNumber;
}

} // namespace

ImportResult importLines(AnalysisState& s, LineReader& lines, const ImportProgress& report) {
    ImportResult result;
    Progress progress(report);
    result.error.file = lines.name();
    const bool minutes = s.TestTimeUnit == 1;
    PairCount count;
    if (!PairCounter(lines).count(minutes, progress, count, result))
        return result;
    if (!lines.rewind()) {
        result.error = lines.error();
        return result;
    }

    SelectingPass pass(count, minutes, result);
    for (std::string_view block; !(block = lines.completeLines()).empty();) {
        const long long count = selectBlock(pass, block, lines.lineNumber() + 1, lines.lineBreak());
        if (count < 0)
            return result;
        lines.consume(block, count);
        if (!progress.go(kCountShare + (1 - kCountShare) * lines.fraction(), result))
            return result;
    }
    for (std::string_view line; lines.next(line);) // a last line without a line break
        if (!pass.line(line, lines.lineNumber()))
            return result;
    if (lines.failed()) {
        result.error = lines.error();
        return result;
    }
    ImportSummary& summary = result.summary;
    if (summary.pairsInFile != count.pairs)
        return failure(result, 0, kFileChanged);
    if (summary.pairsInFile == 0)
        return failure(result, 0,
                       summary.startPressure
                           ? "no time/pressure pairs after the pair at time 0: nothing to import"
                           : "no time/pressure pairs found: nothing to import");
    progress.go(1.0, result);

    // Nothing below can fail: the state changes only now.
    summary.pairsKept = static_cast<int>(pass.kept());
    summary.resized = summary.pairsInFile > summary.pairsKept;
    for (std::size_t k = 0; k < pass.kept(); ++k) {
        s.TestTime[k + 1] = pass.time(k);
        s.TestPressure[k + 1] = pass.pressure(k);
    }
    s.TestPointCount = static_cast<std::int16_t>(pass.kept());
    if (summary.startPressure) {
        result.startPressureText = Format(*summary.startPressure, "#####.#");
        applyPropertyText(s, PropertyBox::StartPressure, *result.startPressureText);
    }
    result.ok = true;
    return result;
}

ImportResult importTestData(AnalysisState& s, std::string_view text, const std::string& name,
                            const ImportProgress& progress) {
    LineReader lines;
    lines.openText(text, name);
    return importLines(s, lines, progress);
}

ImportResult importTestFile(AnalysisState& s, const std::string& path,
                            const ImportProgress& progress) {
    LineReader lines;
    ImportResult result;
    if (!lines.open(path, result.error))
        return result;
    return importLines(s, lines, progress);
}

} // namespace zorvekan
