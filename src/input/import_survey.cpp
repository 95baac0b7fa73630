// SPDX-License-Identifier: MIT
#include "input/import_survey.h"

#include <algorithm>

namespace zorvekan {

namespace {

constexpr std::size_t kShownLength = 200; // characters of a previewed line

// The titles of a header line whose columns are separated by tabs, semicolons or
// commas (blanks also stand inside titles, "Pressure (psia)").
std::vector<std::string> headerTitles(const std::string& header) {
    const char mark = header.find('\t') != std::string::npos  ? '\t'
                      : header.find(';') != std::string::npos ? ';'
                      : header.find(',') != std::string::npos ? ','
                                                              : '\0';
    std::vector<std::string> titles;
    if (mark == '\0')
        return titles;
    for (std::size_t from = 0;;) {
        const std::size_t to = std::min(header.find(mark, from), header.size());
        std::string title = header.substr(from, to - from);
        title.erase(0, title.find_first_not_of(" \t\""));
        title.erase(title.find_last_not_of(" \t\"") + 1);
        titles.push_back(std::move(title));
        if (to == header.size())
            return titles;
        from = to + 1;
    }
}

// A reading's column value and where it stood, for the jump to the next one.
struct Previous {
    bool seen = false;
    double value = 0;
    long long offset = 0, line = 0;
    long long riseOffset = -1, fallOffset = -1;
};

class Surveyor {
public:
    Surveyor(LineReader& lines, ImportSurvey& survey) : m_lines(lines), m_s(survey) {}

    void line(std::string_view text) {
        const long long number = m_lines.lineNumber();
        if (number <= ImportSurvey::kHeadLines)
            m_s.preview.emplace_back(number, std::string(text.substr(0, kShownLength)));
        const char* p = text.data();
        const char* const end = p + text.size();
        const LineStart start = lineStart(p, end);
        if (start == LineStart::Blank || start == LineStart::Comment)
            return;
        const bool data = readTime(p, end) && readColumns();
        if (!data) {
            if (m_s.firstDataLine == 0) {
                ++m_s.headerLines;
                m_lastHeader.assign(text.substr(0, kShownLength));
            }
            return;
        }
        if (m_s.firstDataLine == 0)
            firstData(number);
        ++m_s.dataLines;
        if (number > ImportSurvey::kHeadLines && m_s.dataLines <= ImportSurvey::kFirstDataLines)
            m_s.preview.emplace_back(number, std::string(text.substr(0, kShownLength)));
        if (m_form == TimeForm::Clock && !m_clock.yearFirst) {
            if (m_clock.first > 12 && m_s.dayFirstLine == 0)
                m_s.dayFirstLine = number;
            if (m_clock.second > 12 && m_s.monthFirstLine == 0)
                m_s.monthFirstLine = number;
        }
        trackJumps(m_lines.offsetOf(text), number);
    }

    // The time before each largest jump, read back from its line.
    void finish() {
        for (std::size_t c = 0; c < m_s.columns.size() && c < m_previous.size(); ++c) {
            m_s.columns[c].riseTime = timeAt(m_previous[c].riseOffset);
            m_s.columns[c].fallTime = timeAt(m_previous[c].fallOffset);
        }
    }

private:
    bool readTime(const char*& p, const char* end) {
        const char* q = nullptr;
        TimeForm form = TimeForm::Unknown;
        if (m_form != TimeForm::Number && (q = readClockFields(p, end, m_clock)) != nullptr) {
            form = TimeForm::Clock;
        } else if (m_form != TimeForm::Clock) {
            double number = 0;
            if (readNumber(p, end, number, q) == NumberRead::Ok)
                form = TimeForm::Number;
            else
                q = nullptr;
        }
        if (!q || (q < end && *q != ' ' && *q != '\t' && *q != ',' && *q != ';'))
            return false;
        m_lineForm = form;
        m_timeText = std::string_view(p, std::size_t(q - p));
        m_rest = std::string_view(q, std::size_t(end - q));
        return true;
    }

    bool readColumns() {
        ColumnCursor columns(m_rest.data(), m_rest.data() + m_rest.size());
        m_values.clear();
        bool anyNumber = false;
        std::string_view column;
        while (m_values.size() < ImportSurvey::kMostColumns && columns.next(column)) {
            double v = 0;
            const bool numeric = columnNumber(column, v);
            m_values.push_back({numeric, v, column});
            anyNumber = anyNumber || numeric;
        }
        return anyNumber;
    }

    void firstData(long long number) {
        m_form = m_lineForm;
        m_s.timeForm = m_form;
        m_s.slashedDates = m_form == TimeForm::Clock && !m_clock.yearFirst;
        m_s.firstDataLine = number;
        m_s.firstTime.assign(m_timeText);
        const std::vector<std::string> titles = headerTitles(m_lastHeader);
        const bool titled = titles.size() == m_values.size() + 1;
        for (std::size_t c = 0; c < m_values.size(); ++c) {
            SurveyedColumn column;
            column.firstValue.assign(m_values[c].text.substr(0, 40));
            column.numeric = m_values[c].numeric;
            if (titled)
                column.title = titles[c + 1];
            if (column.numeric && m_s.defaultPressureColumn == 0)
                m_s.defaultPressureColumn = static_cast<int>(c) + 2;
            m_s.columns.push_back(std::move(column));
        }
    }

    void trackJumps(long long offset, long long number) {
        if (m_values.size() > m_s.columns.size())
            m_s.columns.resize(m_values.size());
        if (m_previous.size() < m_values.size())
            m_previous.resize(m_values.size());
        for (std::size_t c = 0; c < m_values.size(); ++c) {
            if (!m_values[c].numeric)
                continue;
            Previous& before = m_previous[c];
            SurveyedColumn& column = m_s.columns[c];
            const double v = m_values[c].value;
            if (before.seen) {
                if (v - before.value > column.largestRise) {
                    column.largestRise = v - before.value;
                    column.riseLine = before.line;
                    before.riseOffset = before.offset;
                }
                if (before.value - v > column.largestFall) {
                    column.largestFall = before.value - v;
                    column.fallLine = before.line;
                    before.fallOffset = before.offset;
                }
            }
            before = {true, v, offset, number, before.riseOffset, before.fallOffset};
        }
    }

    std::string timeAt(long long offset) {
        std::string text;
        if (offset < 0 || !m_lines.lineAt(offset, text))
            return {};
        const char* p = text.data();
        const char* const end = p + text.size();
        lineStart(p, end);
        return readTime(p, end) ? std::string(m_timeText) : std::string();
    }

    struct Value {
        bool numeric;
        double value;
        std::string_view text;
    };

    LineReader& m_lines;
    ImportSurvey& m_s;
    TimeForm m_form = TimeForm::Unknown;
    TimeForm m_lineForm = TimeForm::Unknown;
    ClockFields m_clock;
    std::string_view m_timeText, m_rest;
    std::vector<Value> m_values;
    std::vector<Previous> m_previous;
    std::string m_lastHeader;
};

} // namespace

DateOrder ImportSurvey::shownDateOrder() const {
    if (contradictoryDates())
        return DateOrder::Unknown;
    if (dayFirstLine > 0)
        return DateOrder::DayMonthYear;
    if (monthFirstLine > 0)
        return DateOrder::MonthDayYear;
    return DateOrder::Unknown;
}

const SurveyedColumn* ImportSurvey::column(int index) const {
    if (index < 2 || static_cast<std::size_t>(index - 2) >= columns.size())
        return nullptr;
    return &columns[static_cast<std::size_t>(index - 2)];
}

ImportSurvey surveyImport(LineReader& lines, const std::function<bool(double)>& progress) {
    ImportSurvey survey;
    survey.error.file = lines.name();
    Surveyor surveyor(lines, survey);
    long long count = 0;
    for (std::string_view line; lines.next(line);) {
        surveyor.line(line);
        if ((++count & 0xFFFF) == 0 && progress && !progress(lines.fraction())) {
            survey.cancelled = true;
            survey.error.problem = "import cancelled";
            return survey;
        }
    }
    if (lines.failed()) {
        survey.error = lines.error();
        return survey;
    }
    surveyor.finish();
    if (survey.firstDataLine == 0) {
        survey.error.problem = "no time/pressure readings found: nothing to import";
        return survey;
    }
    survey.ok = true;
    return survey;
}

ImportSurvey surveyImportFile(const std::string& path,
                              const std::function<bool(double)>& progress) {
    LineReader lines;
    ImportSurvey survey;
    if (!lines.open(path, survey.error))
        return survey;
    return surveyImport(lines, progress);
}

FileError dateOrderContradiction(const ImportSurvey& survey) {
    FileError error;
    error.file = survey.error.file;
    error.line = static_cast<int>(std::max(survey.dayFirstLine, survey.monthFirstLine));
    error.field = "column 1 (date and time)";
    error.problem = "the dates contradict each other: line " + std::to_string(survey.dayFirstLine) +
                    " has a day above 12 first (day/month/year), line " +
                    std::to_string(survey.monthFirstLine) + " has it second (month/day/year)";
    return error;
}

DateOrder firstShownDateOrder(LineReader& lines, const std::function<bool(double)>& progress,
                              bool& cancelled) {
    cancelled = false;
    ClockFields f;
    long long count = 0;
    for (std::string_view line; lines.next(line);) {
        const char* p = line.data();
        const char* const end = p + line.size();
        if (lineStart(p, end) == LineStart::Number && readClockFields(p, end, f) && !f.yearFirst) {
            if (f.first > 12)
                return DateOrder::DayMonthYear;
            if (f.second > 12)
                return DateOrder::MonthDayYear;
        }
        if ((++count & 0xFFFF) == 0 && progress && !progress(lines.fraction())) {
            cancelled = true;
            break;
        }
    }
    return DateOrder::Unknown;
}

} // namespace zorvekan
