// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_error.h"
#include "input/data_line.h"
#include "input/line_reader.h"

#include <functional>
#include <string>
#include <vector>

namespace zorvekan {

// One column after the time, as a survey of the file found it.
struct SurveyedColumn {
    std::string title;      // from the header line above the data, when its columns line up
    std::string firstValue; // on the first data line
    bool numeric = false;   // on the first data line
    // The largest rise and fall between two readings in a row, and the time (as
    // written) and line of the reading before each: a shut-in or the start of a flow.
    double largestRise = 0, largestFall = 0;
    std::string riseTime, fallTime;
    long long riseLine = 0, fallLine = 0;
};

// What one pass over an import file shows before anything is imported: the first
// lines, the time form and columns, the order of day and month the dates show, and
// the largest pressure jumps. Memory does not grow with the file: only the first
// lines are kept.
struct ImportSurvey {
    static constexpr int kHeadLines = 8;      // the first lines of the file
    static constexpr int kFirstDataLines = 4; // and the first data lines, when later
    static constexpr int kMostColumns = 32;   // columns surveyed

    bool ok = false;
    bool cancelled = false;
    FileError error; // a file that cannot be read as text

    std::vector<std::pair<long long, std::string>> preview; // line number and text
    long long headerLines =
        0; // lines before the first data line, blank and comment lines not counted
    long long firstDataLine = 0;
    long long dataLines = 0;
    TimeForm timeForm = TimeForm::Unknown;
    bool slashedDates = false;
    std::string firstTime; // of the first reading, as written
    // The first line with a date whose first (second) number is above 12, so that it
    // must be the day: the file is day/month/year (month/day/year). 0 when none.
    long long dayFirstLine = 0, monthFirstLine = 0;
    std::vector<SurveyedColumn> columns; // columns 2, 3, ...
    int defaultPressureColumn = 0;       // the first numeric column after the time

    // True for the plain time/pressure pairs Import has always read: numbers, two columns.
    bool plainPairs() const { return timeForm == TimeForm::Number && columns.size() <= 1; }
    // The order of day and month the dates show; Unknown when none shows it (or both).
    DateOrder shownDateOrder() const;
    // Lines that show both orders: a file that contradicts itself.
    bool contradictoryDates() const { return dayFirstLine > 0 && monthFirstLine > 0; }
    const SurveyedColumn* column(int index) const; // counted from 1; null when not surveyed
};

ImportSurvey surveyImport(LineReader& lines, const std::function<bool(double)>& progress = {});
ImportSurvey surveyImportFile(const std::string& path,
                              const std::function<bool(double)>& progress = {});

// The refusal of a file whose dates contradict each other (contradictoryDates): one
// line has a day above 12 first, another second.
FileError dateOrderContradiction(const ImportSurvey& survey);

// The order of day and month the first date that shows it tells (a number above 12),
// read from the start of the file up to it; Unknown when no date shows it, or when the
// pass was cancelled (`cancelled` is then set) or the file could not be read.
DateOrder firstShownDateOrder(LineReader& lines, const std::function<bool(double)>& progress,
                              bool& cancelled);

} // namespace zorvekan
