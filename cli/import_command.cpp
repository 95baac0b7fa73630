// SPDX-License-Identifier: MIT
// zorvekan-cli import: the test points Import would keep from a gauge or pairs file.
#include "command.h"

#include "core/analysis_state.h"
#include "input/importer.h"

#include <cstdio>
#include <ostream>

namespace zorvekan::cli {

namespace {

std::string summaryLine(const ImportSummary& m, const AnalysisState& s) {
    std::string line = std::string(kImportNoticeCount) + " " + std::to_string(m.pairsInFile);
    if (m.resized)
        line += "; " + std::string(kImportNoticeResizing) + " to " + std::to_string(m.pairsKept);
    line += "; lines skipped: " + std::to_string(m.skippedLines()) + " (" +
            std::to_string(m.headerLines) + " header, " + std::to_string(m.commentLines) +
            " comment, " + std::to_string(m.blankLines) + " blank)";
    if (m.startPressure)
        line += "; start pressure " + fullPrecision(s.StartPressure) + " psia";
    line += '\n' + importColumnsText(m);
    if (const std::string start = importStartText(m); !start.empty())
        line += '\n' + start;
    return line;
}

ImportOptions importOptions(const Options& o) {
    ImportOptions options;
    options.start = o.value("start");
    if (const auto order = o.value("date-order")) {
        if (*order == "dmy")
            options.dateOrder = DateOrder::DayMonthYear;
        else if (*order == "mdy")
            options.dateOrder = DateOrder::MonthDayYear;
        else
            throw UsageError{"--date-order is dmy or mdy, not " + *order};
    }
    if (const auto column = o.optionalNumber("pressure-column")) {
        if (*column < 2 || *column > 1000 || *column != static_cast<int>(*column))
            throw UsageError{"--pressure-column is a whole number from 2 (column 1 is the time)"};
        options.pressureColumn = static_cast<int>(*column);
    }
    return options;
}

int runImport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"start", "date-order", "pressure-column"}, {"minutes"});
    if (o.positional().size() != 1)
        throw UsageError{o.positional().empty()
                             ? "missing file of time/pressure readings"
                             : "one file expected, got " + std::to_string(o.positional().size())};
    const ImportOptions options = importOptions(o);
    AnalysisState s;
    s.TestTimeUnit = o.has("minutes") ? 1 : 0;
    const ImportResult r = importTestFile(s, o.positional().front(), options);
    if (!r.ok) {
        err << r.error.message() << '\n';
        return kExitFailure;
    }
    std::string text = "i,TestTime,TestPressure\n";
    if (r.summary.startPressure)
        text += "0,0," + fullPrecision(s.StartPressure) + '\n';
    for (int i = 1; i <= s.TestPointCount; ++i)
        text += std::to_string(i) + ',' + fullPrecision(s.TestTime[i]) + ',' +
                fullPrecision(s.TestPressure[i]) + '\n';
    out << text;
    err << summaryLine(r.summary, s) << '\n';
    return kExitOk;
}

const Registration registration{
    Command{"import", "the test points Import keeps from a gauge record or time/pressure pairs",
            "FILE [--start WHEN] [--date-order dmy|mdy] [--pressure-column N] [--minutes]\n\n"
            "Reads FILE as the input screen's Import does and prints what it would keep, as\n"
            "CSV with the header i,TestTime,TestPressure: row 0 with time 0 and the start\n"
            "pressure when a reading gave one, then the test points (times in hours since the\n"
            "start, 17 significant digits). A summary goes to stderr: the readings after the\n"
            "start, whether they were reduced to 500, the lines skipped, the columns read and\n"
            "the start.\n\n"
            "One reading a line: the time in column 1, either a number (hours, or minutes with\n"
            "--minutes) or a date and time (2024-03-01 12:00:00, 2024-03-01T12:00:00,\n"
            "01/03/2024 12:00:00, fractions of a second allowed), then the other columns,\n"
            "separated by a comma, a semicolon, a tab or blanks; the decimal mark is a point.\n"
            "Header lines before the first reading, blank lines and comment lines (starting\n"
            "with #, ;, ' or //) are skipped. Times must not decrease. More than 500 readings\n"
            "are reduced to 500 spread evenly in log time, keeping the first and last.\n\n"
            "  --start WHEN           the start of the analysed period (the shut-in): a date\n"
            "                         and time written as in the file, or a number in the\n"
            "                         file's time base (its unit for numeric times, hours since\n"
            "                         the first reading for dates). Readings before it are\n"
            "                         skipped, the one at it (or last before it) gives the\n"
            "                         start pressure. Default: the first reading of a record of\n"
            "                         dates; time 0 of a record of numbers\n"
            "  --date-order dmy|mdy   the order of day and month of dates with slashes; by\n"
            "                         default a day above 12 in the file tells it\n"
            "  --pressure-column N    the pressure column, counted from 1 with the time as\n"
            "                         column 1; default the first numeric column after it (2)\n"
            "  --minutes              numeric times are in minutes (Test Times: min.)\n\n"
            "A file that cannot be imported prints its file, line, column and fault and exits\n"
            "with 1.\n",
            runImport}};

} // namespace

} // namespace zorvekan::cli
