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

namespace zorvekan {

namespace {

constexpr long long kProgressLines = 1 << 14; // a look at the progress every 16384 lines
constexpr double kCountShare = 0.3;           // of the work: the counting pass, then selection
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

bool cancelled(const ImportProgress& progress, double fraction, ImportResult& result) {
    if (!progress || progress(fraction))
        return false;
    result.cancelled = true;
    result.error.problem = "import cancelled";
    return true;
}

ImportResult failure(ImportResult& result, long long line, std::string problem) {
    result.error.line = static_cast<int>(std::min<long long>(line, 2147483647));
    result.error.problem = std::move(problem);
    return result;
}

// The first pass: the number of pairs (without a first pair at time 0) and the time
// of the last one, in hours, so the second pass can select without holding pairs.
struct PairCount {
    long long pairs = 0;
    double lastTime = 1;
};

bool countPairs(LineReader& lines, bool minutes, const ImportProgress& progress, PairCount& count,
                ImportResult& result) {
    long long numberLines = 0;
    bool startsAtZero = false;
    std::string lastPair;
    std::string_view line;
    while (lines.next(line)) {
        const char* p = line.data();
        const char* const end = p + line.size();
        if (lineStart(p, end) == LineStart::Number) {
            if (numberLines++ == 0) {
                double t = 0;
                startsAtZero = readNumber(p, end, t, p) == NumberRead::Ok && t == 0;
            }
            lastPair.assign(line);
        }
        if (lines.lineNumber() % kProgressLines == 0 &&
            cancelled(progress, kCountShare * lines.fraction(), result))
            return false;
    }
    if (lines.failed()) {
        result.error = lines.error();
        return false;
    }
    count.pairs = numberLines - (startsAtZero ? 1 : 0);
    // A last line that is not a pair is refused by the second pass, before this matters.
    double t = 0;
    const char* p = lastPair.data();
    if (readNumber(p, p + lastPair.size(), t, p) == NumberRead::Ok && t > 0)
        count.lastTime = minutes ? t / 60.0 : t;
    return true;
}

} // namespace

bool PairLineReader::read(std::string_view line, PairLine& out, std::string& problem) {
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
    const NumberRead second = readNumber(s, end, out.pressure, q);
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

ImportResult importLines(AnalysisState& s, LineReader& lines, const ImportProgress& progress) {
    ImportResult result;
    result.error.file = lines.name();
    const bool minutes = s.TestTimeUnit == 1;
    PairCount count;
    if (!countPairs(lines, minutes, progress, count, result))
        return result;
    if (!lines.rewind()) {
        result.error = lines.error();
        return result;
    }

    LogTimeSelector selector(static_cast<std::size_t>(count.pairs), count.lastTime, kMaxTestPoints);
    std::array<double, kMaxTestPoints> keptTime{}, keptPressure{};
    int kept = 0;
    ImportSummary& summary = result.summary;
    PairLineReader reader;
    PairLine pair;
    std::string problem;
    double previous = 0;
    long long previousLine = 0;
    std::string_view line;
    while (lines.next(line)) {
        const long long number = lines.lineNumber();
        if (!reader.read(line, pair, problem))
            return failure(result, number, problem);
        if (pair.kind == PairLine::Kind::Blank)
            ++summary.blankLines;
        else if (pair.kind == PairLine::Kind::Comment)
            ++summary.commentLines;
        else if (pair.kind == PairLine::Kind::Header)
            ++summary.headerLines;
        else if (pair.time < 0)
            return failure(result, number, "the time is negative");
        else if (pair.time == 0 && (summary.pairsInFile > 0 || summary.startPressure))
            return failure(result, number,
                           "a pair at time 0 after other pairs: only the first pair may be the "
                           "start of the test");
        else if (pair.time == 0)
            summary.startPressure = pair.pressure;
        else {
            const double t = minutes ? pair.time / 60.0 : pair.time;
            if (summary.pairsInFile > 0 && t < previous)
                return failure(result, number,
                               "the time " + numberText(pair.time) +
                                   " is earlier than the time of line " +
                                   std::to_string(previousLine) + " (" +
                                   numberText(minutes ? previous * 60.0 : previous) +
                                   "): times must not decrease");
            if (summary.pairsInFile == count.pairs)
                return failure(result, number, kFileChanged);
            ++summary.pairsInFile;
            previous = t;
            previousLine = number;
            if (selector.keep(t)) {
                keptTime[static_cast<std::size_t>(kept)] = t;
                keptPressure[static_cast<std::size_t>(kept)] = pair.pressure;
                ++kept;
            }
        }
        if (number % kProgressLines == 0 &&
            cancelled(progress, kCountShare + (1 - kCountShare) * lines.fraction(), result))
            return result;
    }
    if (lines.failed()) {
        result.error = lines.error();
        return result;
    }
    if (summary.pairsInFile != count.pairs)
        return failure(result, 0, kFileChanged);
    if (summary.pairsInFile == 0)
        return failure(result, 0,
                       summary.startPressure
                           ? "no time/pressure pairs after the pair at time 0: nothing to import"
                           : "no time/pressure pairs found: nothing to import");
    if (progress)
        progress(1.0);

    // Nothing below can fail: the state changes only now.
    summary.pairsKept = kept;
    summary.resized = summary.pairsInFile > kept;
    for (int k = 0; k < kept; ++k) {
        s.TestTime[k + 1] = keptTime[static_cast<std::size_t>(k)];
        s.TestPressure[k + 1] = keptPressure[static_cast<std::size_t>(k)];
    }
    s.TestPointCount = static_cast<std::int16_t>(kept);
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
