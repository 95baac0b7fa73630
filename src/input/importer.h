// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/file_error.h"
#include "input/data_line.h"
#include "input/line_reader.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// Import of test data from a gauge or spreadsheet export, read by DataLineReader:
//   - a header block of any length before the first data line is skipped and counted,
//     as are blank and comment lines anywhere;
//   - the time in column 1 is a number in the test-time unit of the input screen
//     (minutes are divided by 60) or a date and time (readClockFields; dates with
//     slashes in the order of ImportOptions, or in the one the file shows);
//   - the pressure is read from the chosen column; the others are not read;
//   - times must not decrease;
//   - the start of the analysed period: readings before it are skipped, the reading at
//     it (or the last one before it) gives the start pressure, as the time-0 row of
//     entry does, and the times after it become hours since it. Without a start, a
//     record of dates and times starts at its first reading; a record of numbers keeps
//     its own time 0: a first reading at time 0 gives the start pressure, a reading at
//     time 0 after others and a negative time are refused;
//   - more than 500 readings after the start are reduced to 500 by LogTimeSelector;
//   - the file is text: see LineReader for the encodings and bytes it refuses.

// The captions of the import notice (datct).
inline constexpr const char* kImportNoticeHeading = "Importing Test Data";
inline constexpr const char* kImportNoticeCount = "No. of Test Data Pairs:";
inline constexpr const char* kImportNoticeResizing =
    "Too Many Test Data Pairs:               Resizing";
inline constexpr const char* kImportNoticeAccept = "Accept Data";

// What the engineer tells Import about a file.
struct ImportOptions {
    // The start of the analysed period (the shut-in, or the rate change that starts
    // the period): a date and time written as the file writes them, or a number in the
    // file's own time base (its time unit for a file of numbers, hours since the first
    // reading for a file of dates). None: see above.
    std::optional<std::string> start;
    // The order of day and month of dates with slashes; Unknown: told from the file
    // (a day above 12), and a file that cannot tell is refused.
    DateOrder dateOrder = DateOrder::Unknown;
    // Counted from 1, the time (or date and time) being column 1; 0: the first column
    // after the time that holds a number on the first data line.
    int pressureColumn = 0;
};

struct ImportSummary {
    long long pairsInFile = 0; // readings after the start: the test points before reduction
    int pairsKept = 0;         // test points stored (pairsInFile, or 500 when resized)
    bool resized = false;      // more than 500 readings were reduced to 500
    long long blankLines = 0;
    long long commentLines = 0;
    long long headerLines = 0;
    long long readingsBeforeStart = 0; // skipped, the one that gave the start pressure not counted
    std::optional<double> startPressure; // of the reading at or last before the start
    TimeForm timeForm = TimeForm::Unknown;
    DateOrder dateOrder = DateOrder::Unknown; // of dates with slashes
    bool minutes = false;                     // numeric times were in minutes
    int pressureColumn = 0;
    // The start as given, or the first reading's time for a record of dates without one.
    std::string start;
    bool startGiven = false;

    long long skippedLines() const { return blankLines + commentLines + headerLines; }
};

// The line of the import notice (and of zorvekan-cli import) that says which columns
// were read: "Time from column 1 (date and time, day/month/year), pressure from column 3."
std::string importColumnsText(const ImportSummary& summary);
// The line that says where the analysed period starts, empty for a record of numbers
// without a start: "Start 02/03/2024 19:00:00: 4320 readings before it skipped."
std::string importStartText(const ImportSummary& summary);

// Called now and then during a long import with the fraction of the work done
// (0 to 1), so a screen can show progress and keep repainting; returning false
// cancels the import (the state is left untouched).
using ImportProgress = std::function<bool(double fraction)>;

struct ImportResult {
    bool ok = false;
    bool cancelled = false;
    FileError error;
    ImportSummary summary;
    std::optional<std::string> startPressureText; // psin's new text, "#####.#"
};

// Import into the state from the lines of `lines`, in two passes (count, then
// select; a third one first when the order of day and month must be told from the
// file): on success TestTime, TestPressure and TestPointCount hold the readings
// kept, and a start reading has set the start pressure through the psin box rule
// (the screen shows startPressureText). A failed or cancelled import leaves the
// state untouched. Memory does not depend on the size of the file.
ImportResult importLines(AnalysisState& s, LineReader& lines, const ImportOptions& options = {},
                         const ImportProgress& progress = {});

// importLines on text held in memory.
ImportResult importTestData(AnalysisState& s, std::string_view text, const std::string& name,
                            const ImportOptions& options = {}, const ImportProgress& progress = {});

// importLines on the file at `path`.
ImportResult importTestFile(AnalysisState& s, const std::string& path,
                            const ImportOptions& options = {}, const ImportProgress& progress = {});

} // namespace zorvekan
