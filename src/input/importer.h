// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "input/text_file.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorvekan {

// Import of test data: time/pressure pairs, one pair a line, from a gauge or a
// spreadsheet export. The rules:
//   - the two numbers are separated by a comma, a semicolon, a tab or blanks
//     (blanks around a comma or semicolon are allowed); the decimal mark is a point;
//   - blank lines, comment lines (first non-blank character #, ; or ', or the
//     characters //) and header lines (lines before the first pair that do not begin
//     with a number) are skipped and counted; any other line is an error;
//   - times are in the test-time unit of the input screen: minutes are divided by 60;
//   - a pair at time 0 is the start of the test: its pressure is the start pressure
//     and it is not a test point (as the time-0 row of entry); a negative time is an
//     error;
//   - more than 500 pairs are reduced to 500 by logTimeSelection.

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

// Called now and then during a long import with the fraction of the file read
// (0 to 1), so a screen can show progress and keep repainting; returning false
// cancels the import (the state is left untouched).
using ImportProgress = std::function<bool(double fraction)>;

struct ImportedPairs {
    std::vector<double> time;     // hours, in file order
    std::vector<double> pressure; // psia
    ImportSummary summary;
};

enum class ParseStatus { Ok, Failed, Cancelled };

// Reads every pair of the text by the rules above (no reduction yet). On failure
// `error` names the line and what was wrong.
ParseStatus parseImportText(std::string_view text, const std::string& name, bool minutes,
                            ImportedPairs& pairs, FileError& error,
                            const ImportProgress& progress = {});

// The points kept when n times are reduced to `keep` (n > keep >= 2) so that the
// test keeps its shape on a log-time axis: the first and last points are kept;
// from each kept point the next one is the first point at least 1/r of the
// remaining log-time span later, r being the number of points still to choose
// (so the spacing is even in log time); where the data are sparser than that
// spacing (early wellbore-storage data) every point is kept and the spacing of the
// rest shrinks accordingly; a point is never taken so late that too few remain.
// Exactly `keep` indices, ascending. Times must be above 0. With n <= keep, all.
std::vector<std::size_t> logTimeSelection(std::span<const double> time, std::size_t keep);

struct ImportResult {
    bool ok = false;
    bool cancelled = false;
    FileError error;
    ImportSummary summary;
    std::optional<std::string> startPressureText; // psin's new text, "#####.#"
};

// Import into the state: on success TestTime, TestPressure and TestPointCount hold
// the pairs kept, and a time-0 pair has set the start pressure through the psin box
// rule (the screen shows startPressureText). A failed or cancelled import leaves
// the state untouched.
ImportResult importTestData(AnalysisState& s, std::string_view text, const std::string& name,
                            const ImportProgress& progress = {});

// importTestData on the contents of `path`.
ImportResult importTestFile(AnalysisState& s, const std::string& path,
                            const ImportProgress& progress = {});

} // namespace zorvekan
