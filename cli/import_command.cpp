// SPDX-License-Identifier: MIT
// zorvekan-cli import: the test points Import would keep from a file of pairs.
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
    return line;
}

int runImport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {}, {"minutes"});
    if (o.positional().size() != 1)
        throw UsageError{o.positional().empty()
                             ? "missing file of time/pressure pairs"
                             : "one file expected, got " + std::to_string(o.positional().size())};
    AnalysisState s;
    s.TestTimeUnit = o.has("minutes") ? 1 : 0;
    const ImportResult r = importTestFile(s, o.positional().front());
    if (!r.ok) {
        err << r.error.message() << '\n';
        return kExitFailure;
    }
    std::string text = "i,TestTime,TestPressure\n";
    for (int i = 1; i <= s.TestPointCount; ++i)
        text += std::to_string(i) + ',' + fullPrecision(s.TestTime[i]) + ',' +
                fullPrecision(s.TestPressure[i]) + '\n';
    out << text;
    err << summaryLine(r.summary, s) << '\n';
    return kExitOk;
}

const Registration registration{
    Command{"import", "the test points Import keeps from a file of time/pressure pairs",
            "FILE [--minutes]\n\n"
            "Reads FILE as the input screen's Import does and prints the test points it would\n"
            "keep, as CSV with the header i,TestTime,TestPressure (times in hours, 17 significant\n"
            "digits), and a summary line on stderr: the pairs in the file, whether they were\n"
            "reduced to 500, the lines skipped, and the start pressure a pair at time 0 gave.\n\n"
            "One pair a line, time then pressure, separated by a comma, a semicolon, a tab or\n"
            "blanks. Blank lines, comment lines (starting with #, ;, ' or //) and header lines\n"
            "before the first pair are skipped. More than 500 pairs are reduced to 500 spread\n"
            "evenly in log time, keeping the first and last.\n\n"
            "  --minutes    the times are in minutes (Test Times: min.); default hours\n\n"
            "A file that cannot be imported prints its file, line and fault and exits with 1.\n",
            runImport}};

} // namespace

} // namespace zorvekan::cli
