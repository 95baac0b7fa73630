// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/file_error.h"
#include "input/line_reader.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// Import of test data: time/pressure pairs, one pair a line, from a gauge or a
// spreadsheet export. The rules:
//   - the two numbers are separated by a comma, a semicolon, a tab or blanks
//     (blanks around a comma or semicolon are allowed); the decimal mark is a point;
//   - blank lines, comment lines (first non-blank character #, ; or ', or the
//     characters //) and header lines (lines before the first pair that do not begin
//     with a number) are skipped and counted; any other line is an error;
//   - times are in the test-time unit of the input screen: minutes are divided by 60;
//   - a first pair at time 0 is the start of the test: its pressure is the start
//     pressure and it is not a test point (as the time-0 row of entry); a pair at
//     time 0 after other pairs, a negative time and a time earlier than the one
//     before are errors;
//   - more than 500 pairs are reduced to 500 by LogTimeSelector;
//   - the file is text: see LineReader for the encodings and bytes it refuses.

// The captions of the import notice (datct).
inline constexpr const char* kImportNoticeHeading = "Importing Test Data";
inline constexpr const char* kImportNoticeCount = "No. of Test Data Pairs:";
inline constexpr const char* kImportNoticeResizing =
    "Too Many Test Data Pairs:               Resizing";
inline constexpr const char* kImportNoticeAccept = "Accept Data";

struct ImportSummary {
    long long pairsInFile = 0; // pairs read, the time-0 pair not counted
    int pairsKept = 0;         // test points stored (pairsInFile, or 500 when resized)
    bool resized = false;      // more than 500 pairs were reduced to 500
    long long blankLines = 0;
    long long commentLines = 0;
    long long headerLines = 0;
    std::optional<double> startPressure; // the pressure of a pair at time 0

    long long skippedLines() const { return blankLines + commentLines + headerLines; }
};

// Called now and then during a long import with the fraction of the work done
// (0 to 1), so a screen can show progress and keep repainting; returning false
// cancels the import (the state is left untouched).
using ImportProgress = std::function<bool(double fraction)>;

// One line of an import file read by the rules above.
struct PairLine {
    enum class Kind { Blank, Comment, Header, Pair } kind = Kind::Blank;
    double time = 0;     // as written (minutes not yet turned into hours)
    double pressure = 0; // psia
};

// Reads the lines of an import file one by one; a line that is none of the kinds
// above is refused with the reason.
class PairLineReader {
public:
    // False with `problem` set when the line is neither a pair nor skippable. Without
    // `withPressure` the pressure is checked but, when it is a plain decimal, not
    // computed (out.pressure is then unset): a pass that keeps few pairs saves the work.
    bool read(std::string_view line, PairLine& out, std::string& problem, bool withPressure = true);

    // The common line "time<separator>pressure<line break>" of plain decimals with a
    // time above 0, read as `read` reads it but in the same sweep that finds its end:
    // the start of the next line, the time set (the pressure checked, not computed).
    // Null for any other line, which then goes to `read`.
    const char* quickPair(const char* p, const char* end, char lineBreak, double& time);

private:
    bool m_dataBegun = false;
};

struct ImportResult {
    bool ok = false;
    bool cancelled = false;
    FileError error;
    ImportSummary summary;
    std::optional<std::string> startPressureText; // psin's new text, "#####.#"
};

// Import into the state from the lines of `lines`, in two passes (count, then
// select): on success TestTime, TestPressure and TestPointCount hold the pairs kept,
// and a time-0 pair has set the start pressure through the psin box rule (the screen
// shows startPressureText). A failed or cancelled import leaves the state untouched.
// Memory does not depend on the size of the file.
ImportResult importLines(AnalysisState& s, LineReader& lines, const ImportProgress& progress = {});

// importLines on text held in memory.
ImportResult importTestData(AnalysisState& s, std::string_view text, const std::string& name,
                            const ImportProgress& progress = {});

// importLines on the file at `path`.
ImportResult importTestFile(AnalysisState& s, const std::string& path,
                            const ImportProgress& progress = {});

} // namespace zorvekan
