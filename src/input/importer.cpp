// SPDX-License-Identifier: MIT
#include "input/importer.h"

#include "core/display_mask.h"
#include "input/import_survey.h"
#include "input/input_rules.h"
#include "input/log_time_selection.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string.h> // memrchr

namespace zorvekan {

namespace {

constexpr double kCountShare = 0.3; // of the work: the counting pass, then selection
constexpr long long kLinesPerReport = 1 << 16;
constexpr const char* kFileChanged = "the file changed while it was imported; import it again";

std::string numberText(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.15g", v);
    return text;
}

std::string timeField(TimeForm form) {
    return form == TimeForm::Clock ? "column 1 (date and time)" : "column 1 (time)";
}

// Reports the progress of the passes, each report beyond the one before; false when
// the engineer cancelled (the result says so).
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

bool fail(ImportResult& result, long long line, LineFault fault) {
    result.error.line = static_cast<int>(std::min<long long>(line, 2147483647));
    result.error.field = std::move(fault.field);
    result.error.problem = std::move(fault.problem);
    return false;
}

// The start of the analysed period and the hours since it. A record of numbers
// without a start keeps its own time 0; a record of dates starts at its first reading.
class StartRule {
public:
    StartRule(const ImportOptions& options, bool minutes)
        : m_text(options.start), m_minutes(minutes) {}

    // At the first data line, once the time form is known.
    bool begin(const DataLineReader& reader, const DataLine& first, LineFault& fault) {
        const bool clock = reader.form() == TimeForm::Clock;
        m_perHour = clock ? kMicrosPerHour : m_minutes ? 60.0 : 1.0;
        m_fileZero = !m_text && !clock;
        m_start = clock ? first.time : 0.0;
        if (!m_text)
            return true;
        bool isNumber = false;
        double moment = 0;
        if (!reader.readMoment(*m_text, moment, isNumber, fault.problem)) {
            fault.field = "start";
            return false;
        }
        m_start = clock && isNumber ? first.time + std::round(moment * kMicrosPerHour) : moment;
        if (!std::isfinite(m_start) || std::fabs(m_start) > 1e300) {
            fault.field = "start";
            fault.problem = "the start " + *m_text + " is beyond the range of times";
            return false;
        }
        return true;
    }

    // Whether a reading `hours` after the start lies at or before it (and may give the
    // start pressure); a reading too close after it for its hours to differ from 0 lies
    // at it.
    bool atOrBefore(double time, double hours, bool first) const {
        return m_fileZero ? first && time == 0 : !(hours > 0);
    }
    double hours(double time) const { return (time - m_start) / m_perHour; }
    bool fileZero() const { return m_fileZero; }

private:
    std::optional<std::string> m_text;
    bool m_minutes;
    bool m_fileZero = false;
    double m_start = 0;
    double m_perHour = 1;
};

// What the first pass finds.
struct ReadingCount {
    long long after = 0;  // readings after the start
    double lastHours = 1; // of the last reading, since the start
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

// The first pass: the number of readings after the start and the hours of the last
// one, so the second pass can select without holding readings. Lines are read one by
// one up to the first reading after the start; from there on, lines are classed by
// their first character alone (the second pass checks each), and a block in which
// every line begins with a digit, as nearly all of a gauge record does, is counted at
// once.
class ReadingCounter {
public:
    ReadingCounter(LineReader& lines, DataLineReader& reader, StartRule& start)
        : m_lines(lines), m_reader(reader), m_start(start) {}

    bool count(Progress& progress, ReadingCount& count, ImportResult& result) {
        DataLine line;
        LineFault fault;
        for (std::string_view text; m_after == 0 && m_lines.next(text);) {
            if (!m_reader.read(text, line, fault, false))
                return fail(result, m_lines.lineNumber(), std::move(fault));
            if ((m_lines.lineNumber() % kLinesPerReport) == 0 &&
                !progress.go(kCountShare * m_lines.fraction(), result))
                return false;
            if (line.kind != DataLine::Kind::Data)
                continue;
            const bool first = !m_seenData;
            m_seenData = true;
            if (first && !m_start.begin(m_reader, line, fault))
                return fail(result, m_lines.lineNumber(), std::move(fault));
            if (!m_start.atOrBefore(line.time, m_start.hours(line.time), first)) {
                m_after = 1;
                m_last = m_lines.offsetOf(text);
            }
        }
        for (std::string_view block; m_after > 0 && !(block = m_lines.completeLines()).empty();) {
            m_lines.consume(block, countBlock(block));
            if (!progress.go(kCountShare * m_lines.fraction(), result))
                return false;
        }
        for (std::string_view text; m_lines.next(text);) // a last line without a line break
            classify(text);
        if (m_lines.failed()) {
            result.error = m_lines.error();
            return false;
        }
        count.after = m_after;
        // A last line that is not a reading is refused by the second pass, before this matters.
        std::string last;
        if (m_after > 0 && m_lines.lineAt(m_last, last) &&
            m_reader.read(last, line, fault, false) && line.kind == DataLine::Kind::Data &&
            m_start.hours(line.time) > 0)
            count.lastHours = m_start.hours(line.time);
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
        if (digitStarts == breaks) {
            m_after += static_cast<long long>(breaks);
            const void* before = ::memrchr(b, lineBreak, n - 1);
            const char* lastLine = before ? static_cast<const char*>(before) + 1 : block.data();
            m_last = m_lines.offsetOf(std::string_view(lastLine, 0));
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
        if (lineStart(p, p + line.size()) != LineStart::Number)
            return;
        ++m_after;
        m_last = m_lines.offsetOf(line);
    }

    LineReader& m_lines;
    DataLineReader& m_reader;
    StartRule& m_start;
    bool m_seenData = false;
    long long m_after = 0;
    long long m_last = 0; // where the last line that begins with a number starts
};

// The second pass: every line checked, the readings after the start selected as they
// come, the last one at or before the start kept for the start pressure.
class SelectingPass {
public:
    SelectingPass(const ReadingCount& count, DataLineReader& reader, StartRule& start,
                  ImportResult& result)
        : m_count(count), m_reader(reader), m_start(start), m_result(result),
          m_selector(static_cast<std::size_t>(count.after), count.lastHours, kMaxTestPoints) {}

    // The lines of a block from completeLines, the first of them numbered `first`: the
    // common data lines read in one sweep, the others by line. Returns the number of
    // lines, or -1 when one was refused (the result says why).
    long long block(std::string_view block, long long first, char lineBreak) {
        const char* p = block.data();
        const char* const end = p + block.size();
        long long number = first;
        for (; p < end; ++number) {
            const char* begin = p;
            if (const char* next = m_reader.quickLine(p, end, lineBreak, m_line)) {
                p = next;
                std::string_view text(begin, std::size_t(next - 1 - begin));
                if (lineBreak == '\n' && !text.empty() && text.back() == '\r')
                    text.remove_suffix(1);
                if (!data(text, number))
                    return -1;
            } else if (!line(nextLineIn(p, end, lineBreak), number)) {
                return -1;
            }
        }
        return number - first;
    }

    // Any line; false when it is refused (the result says why).
    bool line(std::string_view line, long long number) {
        if (!m_reader.read(line, m_line, m_fault, false))
            return fail(m_result, number, std::move(m_fault));
        return data(line, number);
    }

    std::size_t kept() const { return m_kept; }
    double time(std::size_t k) const { return m_time[k]; }
    double pressure(std::size_t k) const { return m_pressure[k]; }
    long long atOrBefore() const { return m_atOrBefore; }
    const std::optional<double>& startPressure() const { return m_startPressure; }
    const std::string& firstTime() const { return m_firstTime; }
    // The first header line whose time was read but not its pressure: for a file in
    // which no line is data, it says why (a pressure column beyond the file's columns).
    long long nearMissLine() const { return m_nearMissLine; }
    const LineFault& nearMiss() const { return m_nearMiss; }

private:
    // A line read into m_line.
    bool data(std::string_view line, long long number) {
        ImportSummary& summary = m_result.summary;
        switch (m_line.kind) {
        case DataLine::Kind::Blank:
            ++summary.blankLines;
            return true;
        case DataLine::Kind::Comment:
            ++summary.commentLines;
            return true;
        case DataLine::Kind::Header:
            ++summary.headerLines;
            if (!m_fault.problem.empty() && m_nearMissLine == 0) {
                m_nearMissLine = number;
                m_nearMiss = m_fault;
            }
            m_fault.problem.clear();
            return true;
        case DataLine::Kind::Data:
            break;
        }
        const bool first = m_previousLine == 0;
        if (first && !begin(number))
            return false;
        const double t = m_line.time;
        if (m_start.fileZero() && t < 0)
            return refuse(number, "the time is negative");
        if (m_start.fileZero() && t == 0 && !first)
            return refuse(number, "a reading at time 0 after other readings: only the first "
                                  "one may be the start of the test");
        if (!first && t < m_previous)
            return refuse(number, earlierText());
        m_previous = t;
        m_previousLine = number;
        const double hours = m_start.hours(t);
        if (m_start.atOrBefore(t, hours, first)) {
            if (!m_reader.read(line, m_line, m_fault)) // the pressure, computed now
                return fail(m_result, number, std::move(m_fault));
            m_startPressure = m_line.pressure;
            ++m_atOrBefore;
            return true;
        }
        return reading(number, line, hours);
    }

    bool begin(long long number) {
        m_firstTime.assign(m_line.timeText);
        return m_start.begin(m_reader, m_line, m_fault) ||
               fail(m_result, number, std::move(m_fault));
    }

    // A reading after the start; its pressure is read only when it is kept.
    bool reading(long long number, std::string_view line, double hours) {
        ImportSummary& summary = m_result.summary;
        if (summary.pairsInFile == m_count.after)
            return refuse(number, kFileChanged);
        ++summary.pairsInFile;
        if (!(hours > 0) || !std::isfinite(hours))
            return refuse(number, "the time " + std::string(m_line.timeText) +
                                      " cannot be told apart from the start, or is too far "
                                      "from it");
        if (!m_selector.keep(hours))
            return true;
        if (!m_reader.read(line, m_line, m_fault))
            return fail(m_result, number, std::move(m_fault));
        m_time[m_kept] = hours;
        m_pressure[m_kept] = m_line.pressure;
        ++m_kept;
        return true;
    }

    std::string earlierText() const {
        const std::string previous =
            m_reader.form() == TimeForm::Number ? " (" + numberText(m_previous) + ")" : "";
        return "the time " + std::string(m_line.timeText) + " is earlier than the time of line " +
               std::to_string(m_previousLine) + previous + ": times must not decrease";
    }

    bool refuse(long long number, std::string problem) {
        return fail(m_result, number, LineFault{timeField(m_reader.form()), std::move(problem)});
    }

    const ReadingCount& m_count;
    DataLineReader& m_reader;
    StartRule& m_start;
    ImportResult& m_result;
    LogTimeSelector m_selector;
    DataLine m_line;
    LineFault m_fault;
    double m_previous = 0;
    long long m_previousLine = 0;
    long long m_atOrBefore = 0;
    std::optional<double> m_startPressure;
    std::string m_firstTime;
    long long m_nearMissLine = 0;
    LineFault m_nearMiss;
    std::array<double, kMaxTestPoints> m_time{}, m_pressure{};
    std::size_t m_kept = 0;
};

// The first pass, with the order of day and month told from the file first when its
// dates have slashes and the order was not stated. Returns the order used.
bool countReadings(LineReader& lines, const ImportOptions& options, bool minutes,
                   Progress& progress, ReadingCount& count, DateOrder& order,
                   ImportResult& result) {
    order = options.dateOrder;
    {
        DataLineReader reader(order, options.pressureColumn);
        StartRule start(options, minutes);
        if (ReadingCounter(lines, reader, start).count(progress, count, result))
            return true;
        if (!reader.needsDateOrder())
            return false;
    }
    // The dates have slashes and their order was not stated: the first date that shows
    // it tells it; a later one that contradicts it is refused by its line.
    const FileError unknown = result.error;
    if (!lines.rewind()) {
        result.error = lines.error();
        return false;
    }
    bool cancelled = false;
    order = firstShownDateOrder(
        lines, [&](double f) { return progress.go(kCountShare * f, result); }, cancelled);
    if (cancelled)
        return false;
    if (lines.failed()) {
        result.error = lines.error();
        return false;
    }
    if (order == DateOrder::Unknown) {
        result.error = unknown;
        result.error.problem = "no day above 12 tells whether the dates are day/month/year or "
                               "month/day/year: state the order";
        return false;
    }
    if (!lines.rewind()) {
        result.error = lines.error();
        return false;
    }
    result.error = FileError{lines.name(), 0, {}, {}};
    DataLineReader reader(order, options.pressureColumn);
    StartRule start(options, minutes);
    return ReadingCounter(lines, reader, start).count(progress, count, result);
}

std::string trimmed(const std::string& text) {
    const std::size_t from = text.find_first_not_of(" \t");
    return from == std::string::npos ? std::string()
                                     : text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

} // namespace

std::string importColumnsText(const ImportSummary& m) {
    std::string time = m.timeForm == TimeForm::Clock ? "date and time"
                       : m.minutes                   ? "minutes"
                                                     : "hours";
    if (m.timeForm == TimeForm::Clock && m.dateOrder != DateOrder::Unknown)
        time += std::string(", ") + dateOrderName(m.dateOrder);
    return "Time from column 1 (" + time + "), pressure from column " +
           std::to_string(m.pressureColumn) + ".";
}

std::string importStartText(const ImportSummary& m) {
    if (!m.startGiven)
        return m.timeForm == TimeForm::Clock ? "Start at the first reading, " + m.start + "." : "";
    if (!m.startPressure)
        return "Start " + m.start +
               ": no reading at or before it, the start pressure is unchanged.";
    return "Start " + m.start +
           ": readings before it skipped: " + std::to_string(m.readingsBeforeStart) + ".";
}

ImportResult importLines(AnalysisState& s, LineReader& lines, const ImportOptions& options,
                         const ImportProgress& report) {
    ImportResult result;
    Progress progress(report);
    result.error.file = lines.name();
    const bool minutes = s.TestTimeUnit == 1;
    ReadingCount count;
    DateOrder order = DateOrder::Unknown;
    if (!countReadings(lines, options, minutes, progress, count, order, result))
        return result;
    if (!lines.rewind()) {
        result.error = lines.error();
        return result;
    }

    DataLineReader reader(order, options.pressureColumn);
    StartRule start(options, minutes);
    SelectingPass pass(count, reader, start, result);
    for (std::string_view block; !(block = lines.completeLines()).empty();) {
        const long long count = pass.block(block, lines.lineNumber() + 1, lines.lineBreak());
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
    summary.timeForm = reader.form();
    summary.dateOrder = reader.slashedDates() ? order : DateOrder::Unknown;
    summary.minutes = minutes && reader.form() == TimeForm::Number;
    summary.pressureColumn = reader.pressureColumn();
    summary.startGiven = options.start.has_value();
    summary.start = options.start ? trimmed(*options.start) : pass.firstTime();
    summary.startPressure = pass.startPressure();
    summary.readingsBeforeStart = pass.atOrBefore() - (pass.startPressure() ? 1 : 0);
    if (summary.pairsInFile != count.after) {
        result.error.problem = kFileChanged;
        return result;
    }
    if (!reader.dataBegun() && pass.nearMissLine() > 0) {
        LineFault fault = pass.nearMiss();
        fault.problem += " (no line has a time and a pressure: nothing to import)";
        fail(result, pass.nearMissLine(), std::move(fault));
        return result;
    }
    if (summary.pairsInFile == 0) {
        result.error.problem =
            !reader.dataBegun() ? "no time/pressure pairs found: nothing to import"
            : summary.startGiven
                ? "no readings after the start " + summary.start + ": nothing to import"
            : start.fileZero() ? "no time/pressure pairs after the pair at time 0: nothing to "
                                 "import"
                               : "no readings after the first one: nothing to import";
        return result;
    }
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
                            const ImportOptions& options, const ImportProgress& progress) {
    LineReader lines;
    lines.openText(text, name);
    return importLines(s, lines, options, progress);
}

ImportResult importTestFile(AnalysisState& s, const std::string& path, const ImportOptions& options,
                            const ImportProgress& progress) {
    LineReader lines;
    ImportResult result;
    if (!lines.open(path, result.error))
        return result;
    return importLines(s, lines, options, progress);
}

} // namespace zorvekan
