// SPDX-License-Identifier: MIT
#include "input/importer.h"

#include "core/display_mask.h"
#include "input/input_rules.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace zorvekan {

namespace {

constexpr std::size_t kProgressBytes = std::size_t{1} << 20; // report about every megabyte

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

class PairParser {
public:
    PairParser(const std::string& name, bool minutes, ImportedPairs& pairs, FileError& error)
        : m_minutes(minutes), m_pairs(pairs), m_error(error) {
        m_error.file = name;
    }

    // One line without its line break; false on an error.
    bool line(const char* p, const char* end, long long number) {
        if (p < end && end[-1] == '\r')
            --end;
        p = skipBlanks(p, end);
        if (p == end) {
            ++m_pairs.summary.blankLines;
            return true;
        }
        if (isComment(p, end)) {
            ++m_pairs.summary.commentLines;
            return true;
        }
        double t = 0, pressure = 0;
        const char* q = p;
        const NumberRead first = readNumber(p, end, t, q);
        if (first == NumberRead::NotANumber && !m_dataBegun) {
            ++m_pairs.summary.headerLines;
            return true;
        }
        if (first != NumberRead::Ok)
            return fail(number, first == NumberRead::OutOfRange
                                    ? "the time is beyond the range of numbers"
                                    : shownLine(p, end) + " is not a time/pressure pair");
        m_dataBegun = true;
        const char* s = skipBlanks(q, end);
        if (s < end && (*s == ',' || *s == ';'))
            s = skipBlanks(s + 1, end);
        if (s == end)
            return fail(number, shownLine(p, end) + " has a time but no pressure");
        if (s == q)
            return fail(number, shownLine(p, end) + " is not a time/pressure pair");
        const NumberRead second = readNumber(s, end, pressure, q);
        if (second != NumberRead::Ok)
            return fail(number, second == NumberRead::OutOfRange
                                    ? "the pressure is beyond the range of numbers"
                                    : shownLine(s, end) + " is not a pressure");
        // Empty columns after the pair (a spreadsheet's trailing commas) are allowed.
        while (q < end && (isBlank(*q) || *q == ',' || *q == ';'))
            ++q;
        if (q != end)
            return fail(number, shownLine(p, end) +
                                    " has more than a time and a pressure (one pair a line)");
        return store(t, pressure, number);
    }

    // The common line, "time<sep>pressure" with plain decimals and a positive time,
    // read in the same pass that finds its end; returns false (having read nothing)
    // for anything else, which line() then handles.
    bool quickLine(const char* p, const char* end, char breakChar, const char*& next) {
        double t = 0, pressure = 0;
        const char* q = p;
        if (!plainDecimal(p, end, t, q) || !(t > 0))
            return false;
        const char* s = skipBlanks(q, end);
        if (s < end && (*s == ',' || *s == ';'))
            s = skipBlanks(s + 1, end);
        if (s == q || !plainDecimal(s, end, pressure, s))
            return false;
        if (breakChar == '\n' && s < end && *s == '\r')
            ++s;
        if (s < end && *s != breakChar)
            return false;
        next = s < end ? s + 1 : end;
        m_dataBegun = true;
        m_pairs.time.push_back(m_minutes ? t / 60.0 : t);
        m_pairs.pressure.push_back(pressure);
        ++m_pairs.summary.pairsInFile;
        return true;
    }

    bool finish() {
        if (m_pairs.summary.pairsInFile > 0)
            return true;
        return fail(0, m_pairs.summary.startPressure
                           ? "no time/pressure pairs after the pair at time 0: nothing to import"
                           : "no time/pressure pairs found: nothing to import");
    }

private:
    bool store(double t, double pressure, long long number) {
        if (t < 0)
            return fail(number, "the time is negative");
        if (t == 0) {
            m_pairs.summary.startPressure = pressure; // the start of the test, not a point
            return true;
        }
        m_pairs.time.push_back(m_minutes ? t / 60.0 : t);
        m_pairs.pressure.push_back(pressure);
        ++m_pairs.summary.pairsInFile;
        return true;
    }

    bool fail(long long number, std::string problem) {
        m_error.line = static_cast<int>(std::min<long long>(number, 2147483647));
        m_error.problem = std::move(problem);
        return false;
    }

    bool m_minutes;
    bool m_dataBegun = false;
    ImportedPairs& m_pairs;
    FileError& m_error;
};

} // namespace

ParseStatus parseImportText(std::string_view text, const std::string& name, bool minutes,
                            ImportedPairs& pairs, FileError& error,
                            const ImportProgress& progress) {
    pairs = ImportedPairs{};
    // Gauge lines are rarely shorter than 14 characters ("0.0125\t2534.6\n").
    pairs.time.reserve(text.size() / 14 + 16);
    pairs.pressure.reserve(text.size() / 14 + 16);
    PairParser parser(name, minutes, pairs, error);
    // Lines end with LF or CRLF; a file with none but CR (old Macintosh) ends them with CR.
    const char breakChar = text.find('\n') == std::string_view::npos ? '\r' : '\n';
    const char* p = text.data();
    const char* const end = p + text.size();
    const char* nextReport = p + kProgressBytes;
    long long number = 0;
    while (p < end) {
        ++number;
        const char* next = p;
        if (!parser.quickLine(p, end, breakChar, next)) {
            const void* found = std::memchr(p, breakChar, static_cast<std::size_t>(end - p));
            const char* eol = found ? static_cast<const char*>(found) : end;
            if (!parser.line(p, eol, number))
                return ParseStatus::Failed;
            next = eol < end ? eol + 1 : end;
        }
        p = next;
        if (progress && p >= nextReport) {
            nextReport = p + kProgressBytes;
            if (!progress(static_cast<double>(p - text.data()) /
                          static_cast<double>(text.size()))) {
                error = FileError{name, 0, {}, "import cancelled"};
                return ParseStatus::Cancelled;
            }
        }
    }
    if (!parser.finish())
        return ParseStatus::Failed;
    if (progress)
        progress(1.0);
    return ParseStatus::Ok;
}

std::vector<std::size_t> logTimeSelection(std::span<const double> time, std::size_t keep) {
    const std::size_t n = time.size();
    std::vector<std::size_t> kept;
    if (n <= keep || keep < 2) {
        for (std::size_t i = 0; i < std::min(n, keep); ++i)
            kept.push_back(i);
        return kept;
    }
    kept.reserve(keep);
    kept.push_back(0);
    const double lnLast = std::log(time[n - 1]);
    std::size_t last = 0;
    while (kept.size() < keep - 1) {
        const std::size_t remaining = keep - kept.size(); // still to choose, last point included
        const double lnFrom = std::log(time[last]);
        const double threshold =
            std::exp(lnFrom + (lnLast - lnFrom) / static_cast<double>(remaining));
        const std::size_t latest = n - remaining; // leaves one point for each still to choose
        std::size_t j = last + 1;
        while (j < latest && time[j] < threshold)
            ++j;
        kept.push_back(j);
        last = j;
    }
    kept.push_back(n - 1);
    return kept;
}

ImportResult importTestData(AnalysisState& s, std::string_view text, const std::string& name,
                            const ImportProgress& progress) {
    ImportResult result;
    ImportedPairs pairs;
    const ParseStatus status =
        parseImportText(text, name, s.TestTimeUnit == 1, pairs, result.error, progress);
    result.cancelled = status == ParseStatus::Cancelled;
    if (status != ParseStatus::Ok)
        return result;
    const std::vector<std::size_t> kept = logTimeSelection(pairs.time, kMaxTestPoints);
    result.summary = pairs.summary;
    result.summary.pairsKept = static_cast<int>(kept.size());
    result.summary.resized = pairs.time.size() > kept.size();
    // Nothing below can fail: the state changes only now.
    for (std::size_t k = 0; k < kept.size(); ++k) {
        s.TestTime[k + 1] = pairs.time[kept[k]];
        s.TestPressure[k + 1] = pairs.pressure[kept[k]];
    }
    s.TestPointCount = static_cast<std::int16_t>(kept.size());
    if (pairs.summary.startPressure) {
        result.startPressureText = Format(*pairs.summary.startPressure, "#####.#");
        applyPropertyText(s, PropertyBox::StartPressure, *result.startPressureText);
    }
    result.ok = true;
    return result;
}

ImportResult importTestFile(AnalysisState& s, const std::string& path,
                            const ImportProgress& progress) {
    ImportResult result;
    FileContents contents;
    if (!contents.open(path, result.error))
        return result;
    return importTestData(s, contents.text(), path, progress);
}

} // namespace zorvekan
