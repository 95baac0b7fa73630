// SPDX-License-Identifier: MIT
#include "input/import_survey.h"
#include "input/importer.h"
#include "input/log_time_selection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace zorvekan {
namespace {

ImportResult import(AnalysisState& s, const std::string& text, const ImportOptions& options = {}) {
    return importTestData(s, text, "gauge.txt", options);
}

ImportOptions startAt(const char* start, DateOrder order = DateOrder::Unknown, int column = 0) {
    ImportOptions o;
    if (start)
        o.start = start;
    o.dateOrder = order;
    o.pressureColumn = column;
    return o;
}

ImportOptions column(int n) {
    return startAt(nullptr, DateOrder::Unknown, n);
}

ImportOptions order(DateOrder d) {
    return startAt(nullptr, d);
}

const std::string kQuarterHours = "2024-03-01 12:00:00,3000\n2024-03-01 12:10:00,3005\n"
                                  "2024-03-01 12:20:00,3010\n2024-03-01 12:40:00,3020\n";

// Every time format, both date orders, column choices and starts of the analysed
// period: the points are hours since the start, worked by hand from the clock (a day is
// 24 h, 2024 is a leap year, 2023 is not), the start pressure is the reading at or last
// before the start. A wrong calendar, a day/month swap, a column off by one, a start
// taken from the wrong side of a reading or minutes not turned into hours all show here.
TEST(Import, ReadsEveryFormatColumnAndStart) {
    struct Case {
        const char* what;
        std::string text;
        ImportOptions options;
        bool minutes;
        std::vector<double> hours, pressures;
        std::optional<double> start;
        long long skipped;
    };
    const DateOrder dmy = DateOrder::DayMonthYear, mdy = DateOrder::MonthDayYear;
    const Case cases[] = {
        {"year first, blanks between columns",
         "2024-03-01 12:00:00 3000.5\n2024-03-01 12:30:00 3010.25\n",
         {},
         false,
         {0.5},
         {3010.25},
         3000.5,
         0},
        {"year first with T, across midnight",
         "2024-03-01T23:45:00,3000\n2024-03-02T00:15:00,3010\n",
         {},
         false,
         {0.5},
         {3010},
         3000,
         0},
        {"day first, told by day 28, across the end of February of a leap year",
         "Date,P\n28/02/2024 23:00:00;3000\n29/02/2024 23:00:00;3010\n01/03/2024 01:00:00;3020\n",
         {},
         false,
         {24, 26},
         {3010, 3020},
         3000,
         1},
        {"month first, told by day 28, in a year without 29 February",
         "02/28/2023 23:00:00,3000\n03/01/2023 01:00:00,3010\n",
         {},
         false,
         {2},
         {3010},
         3000,
         0},
        {"no day above 12, read day/month/year as stated",
         "01/03/2024 12:00:00,3000\n02/03/2024 12:00:00,3100\n",
         order(dmy),
         false,
         {24},
         {3100},
         3000,
         0},
        {"no day above 12, read month/day/year as stated (3 January to 3 February)",
         "01/03/2024 12:00:00,3000\n02/03/2024 12:00:00,3100\n",
         order(mdy),
         false,
         {744},
         {3100},
         3000,
         0},
        {"fractions of a second, kept to the microsecond",
         "2024-03-01 12:00:00.25,1\n2024-03-01 12:00:01.75,2\n2024-03-01 12:00:02.123456789,3\n",
         {},
         false,
         {1.5 / 3600, 1.873456 / 3600},
         {2, 3},
         1,
         0},
        {"a 12-hour clock across New Year",
         "12/31/2024 11:59:30 PM,1\n01/01/2025 12:00:30 AM,2\n",
         {},
         false,
         {1.0 / 60},
         {2},
         1,
         0},
        {"date and time in two columns, temperature after the pressure",
         "2024-03-01,12:00:00,3000,180.5\n2024-03-01,12:06:00,3001,181\n",
         {},
         false,
         {0.1},
         {3001},
         3000,
         0},
        {"three columns, pressure chosen in column 3",
         "0\t180\t3000\n1\t181\t3010\n",
         column(3),
         false,
         {1},
         {3010},
         3000,
         0},
        {"four columns behind a header block, pressure chosen in column 4",
         "Well A-7\nGauge 4471 serial 22\nTime;T;Q;P\n0.5;1;2;3000\n2;1;2;3050\n",
         column(4),
         false,
         {0.5, 2},
         {3000, 3050},
         std::nullopt,
         3},
        {"the first numeric column after a text column",
         "2024-03-01 12:00:00, OK, 3000\n2024-03-01 13:00:00, OK, 3100\n",
         {},
         false,
         {1},
         {3100},
         3000,
         0},
        {"start as a clock time between two readings",
         kQuarterHours,
         startAt("2024-03-01 12:15:00"),
         false,
         {5.0 / 60, 25.0 / 60},
         {3010, 3020},
         3005,
         0},
        {"start as hours since the first reading",
         kQuarterHours,
         startAt("0.25"),
         false,
         {5.0 / 60, 25.0 / 60},
         {3010, 3020},
         3005,
         0},
        {"start before the first reading",
         kQuarterHours,
         startAt("2024-03-01 11:00:00"),
         false,
         {1, 7.0 / 6, 8.0 / 6, 10.0 / 6},
         {3000, 3005, 3010, 3020},
         std::nullopt,
         0},
        {"start in the file's minutes, negative times before it",
         "-10,2990\n0,3000\n10,3005\n20,3010\n",
         startAt("10"),
         true,
         {10.0 / 60},
         {3010},
         3005,
         0},
        {"a first pair at time 0 in minutes, behind a byte-order mark",
         "\xEF\xBB\xBF"
         "0,3000.5\r\n30,2900\r\n90,2950\r\n",
         {},
         true,
         {0.5, 1.5},
         {2900, 2950},
         3000.5,
         0},
    };
    for (const Case& c : cases) {
        AnalysisState s;
        s.TestTimeUnit = c.minutes ? 1 : 0;
        s.StartPressure = 1234;
        const ImportResult r = import(s, c.text, c.options);
        ASSERT_TRUE(r.ok) << c.what << ": " << r.error.message();
        ASSERT_EQ(s.TestPointCount, static_cast<int>(c.hours.size())) << c.what;
        for (std::size_t k = 0; k < c.hours.size(); ++k) {
            EXPECT_DOUBLE_EQ(s.TestTime[k + 1], c.hours[k]) << c.what << " point " << k + 1;
            EXPECT_EQ(s.TestPressure[k + 1], c.pressures[k]) << c.what << " point " << k + 1;
        }
        EXPECT_EQ(r.summary.startPressure, c.start) << c.what;
        EXPECT_EQ(s.StartPressure, c.start ? std::round(*c.start * 10) / 10 : 1234.0) << c.what;
        EXPECT_EQ(r.summary.skippedLines(), c.skipped) << c.what;
    }
}

// Gauge and spreadsheet exports separate time and pressure in every way there is;
// each must give the same pair, and Windows line ends must not reach the numbers.
TEST(Import, AcceptsEverySeparator) {
    for (const char* line :
         {"1.5,2000.25", "1.5;2000.25", "1.5\t2000.25", "1.5   2000.25", "  1.5 , 2000.25  ",
          "1.5 ;\t2000.25", "1.5,2000.25,\r", "+1.5,2.00025E3", "15e-1 2000.25;;"}) {
        AnalysisState s;
        const ImportResult r = import(s, std::string(line) + "\n");
        ASSERT_TRUE(r.ok) << line << ": " << r.error.message();
        EXPECT_EQ(s.TestPointCount, 1) << line;
        EXPECT_EQ(s.TestTime[1], 1.5) << line;
        EXPECT_EQ(s.TestPressure[1], 2000.25) << line;
    }
}

// Gauge numbers take a fast path; it must give exactly the double the general
// parser gives, also at its edges (2^53, 19 digits, 22 decimals, a leading zero run).
TEST(Import, FastNumbersEqualTheGeneralParser) {
    for (const char* number :
         {"0.1", "2534.56", "-0.0125", "9007199254740993", "9007199254740992", "123456789012345678",
          "1234567890123456789012", "0.3333333333333333", "0.0000000000000000000001",
          "0.00000000000000000000001", "000000000000000000001.5", "1.", ".5", "4.35e1", "7E-3"}) {
        AnalysisState s;
        const double expected = std::strtod(number, nullptr);
        std::string text = std::string("1E300,") + number + "\n";
        if (expected > 0)
            text = std::string(number) + ",1\n" + text;
        const ImportResult r = import(s, text);
        ASSERT_TRUE(r.ok) << number << ": " << r.error.message();
        EXPECT_EQ(s.TestPressure[s.TestPointCount], expected) << number;
        if (expected > 0) {
            EXPECT_EQ(s.TestTime[1], expected) << number;
        }
    }
}

// Files that contradict their date order, dates and times that do not exist, readings
// out of order, pressures that are not numbers, decimal commas, a start that cannot be
// read or leaves nothing, and files that are not text stop the import at their line
// and column; nothing of the file reaches the test (a time-0 pair in the middle once
// replaced the start pressure silently).
TEST(Import, BadFilesAreRefusedAndChangeNothing) {
    using namespace std::string_literals;
    struct Case {
        std::string text;
        ImportOptions options;
        int line;
        const char* field;
        const char* problem;
    };
    const Case cases[] = {
        {"13/03/2024 12:00:00,1\n14/03/2024 12:00:00,2\n", order(DateOrder::MonthDayYear), 1,
         "column 1 (date and time)", "there is no month 13 (read month/day/year)"},
        {"13/03/2024 12:00:00,1\n03/14/2024 12:00:00,2\n",
         {},
         2,
         "column 1 (date and time)",
         "there is no month 14 (read day/month/year)"},
        {"2024-03-01 12:00:00,1\n29/02/2064 20:00:32.24,3\n",
         {},
         2,
         "column 1 (date and time)",
         "is not written as the dates before it (year first)"},
        {"Start\n01/03/2024 12:00:00,1\n02/03/2024 12:00:00,2\n",
         {},
         2,
         "column 1 (date and time)",
         "no day above 12 tells whether"},
        {"2023-02-28 10:00:00,1\n2023-02-29 10:00:00,2\n",
         {},
         2,
         "column 1 (date and time)",
         "February 2023 has no day 29"},
        {"2024-03-01 12:00:00,1\n2024-03-01 25:00:00,2\n",
         {},
         2,
         "column 1 (date and time)",
         "no time of day 25:00:00"},
        {"2024-03-01 12:00:00,1\n2024-03-01 11:59:59,2\n",
         {},
         2,
         "column 1 (date and time)",
         "is earlier than the time of line 1: times must not decrease"},
        {"2024-03-01 12:00:00,1\n5,2\n",
         {},
         2,
         "column 1 (date and time)",
         "\"5,2\" does not begin with a date and time"},
        {"0,180,3000\n1,181\n", column(3), 2, "column 3 (pressure)", "the line has no column 3"},
        {"0,1,3000\n1,,3010\n", column(2), 2, "column 2 (pressure)", "the column is empty"},
        {"1,2000\n2,abc\n", {}, 2, "column 2 (pressure)", "\"abc\" is not a number"},
        {"1,2000\n2\n", {}, 2, "column 2 (pressure)", "the line has no column 2"},
        {"1,5;2000,3\n", {}, 1, "", "decimal commas are not read"},
        {"1;2000,3\n", {}, 1, "", "decimal commas are not read"},
        {"1,2000\nend of data\n", {}, 2, "column 1 (time)", "does not begin with a time"},
        {"-1,2000\n", {}, 1, "column 1 (time)", "the time is negative"},
        {"1e999,2000\n", {}, 1, "column 1 (time)", "time is beyond the range"},
        {"0,3000\n1,2950\n0,3010\n2,2990\n", {}, 3, "", "a reading at time 0 after other"},
        {"1,2950\n2,2960\n1.5,2955\n",
         {},
         3,
         "",
         "the time 1.5 is earlier than the time of line 2 (2): times must not decrease"},
        {kQuarterHours, startAt("yesterday"), 1, "start", "neither a date and time nor a number"},
        {"0,3000\n1,3010\n", startAt("2024-03-01 12:00:00"), 1, "start",
         "is a date and time, but the file's times are numbers"},
        {kQuarterHours, startAt("01/03/2024 12:15:00"), 1, "start",
         "not written as the file writes its dates"},
        {kQuarterHours, startAt("2024-03-01 12:40:00"), 0, "",
         "no readings after the start 2024-03-01 12:40:00"},
        {"Time,Pressure\n# nothing yet\n", {}, 0, "", "no time/pressure pairs found"},
        {"0,3000\n", {}, 0, "", "no time/pressure pairs after the pair at time 0"},
        {"", {}, 0, "", "no time/pressure pairs found"},
        {"0,3000\n1,29\x00"
         "50\n"s,
         {},
         2,
         "",
         "a NUL byte at column 5"},
        {"\x7f"
         "ELF\x02\x01\x01\n\x00\x00\x00"s,
         {},
         2,
         "",
         "a NUL byte at column 1"},
        {"\xFF\xFE"
         "1\0,\0"
         "2\0\n\0"s,
         {},
         0,
         "",
         "written in UTF-16 (little-endian)"},
    };
    for (const Case& c : cases) {
        AnalysisState s;
        s.TestPointCount = 1;
        s.TestTime[1] = 7;
        s.StartPressure = 1234;
        const ImportResult r = import(s, c.text, c.options);
        ASSERT_FALSE(r.ok) << c.text;
        EXPECT_EQ(r.error.file, "gauge.txt");
        EXPECT_EQ(r.error.line, c.line) << c.text << r.error.message();
        EXPECT_NE(r.error.field.find(c.field), std::string::npos) << r.error.message();
        EXPECT_NE(r.error.message().find(c.problem), std::string::npos) << r.error.message();
        EXPECT_EQ(s.TestPointCount, 1);
        EXPECT_EQ(s.TestTime[1], 7.0);
        EXPECT_EQ(s.StartPressure, 1234.0);
    }
    // A named pipe once blocked Import for ever, /dev/zero was read until memory ran out.
    const std::string fifo =
        (std::filesystem::temp_directory_path() / ("zorvekan_pipe_" + std::to_string(::getpid())))
            .string();
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const auto& [path, problem] :
         {std::pair<std::string, const char*>{fifo, "is a named pipe"},
          {"/dev/zero", "is a device"}}) {
        AnalysisState s;
        const ImportResult r = importTestFile(s, path);
        EXPECT_FALSE(r.ok);
        EXPECT_EQ(r.error.message().find(path + ": " + problem), 0u) << r.error.message();
    }
    std::filesystem::remove(fifo);
}

// What Import shows before it imports a gauge record: the header block, the columns
// with their titles, the order the dates show, and the largest rise and fall with the
// time of the reading before each (the shut-in and the start of flow). A survey that
// took the jump's own reading, or a title off by one column, would propose a wrong start.
TEST(ImportSurvey, FindsLayoutOrderAndLargestJumps) {
    const std::string text = "Gauge 4471\n"
                             "Date Time,Pressure (psia),Temperature (F)\n"
                             "# static\n"
                             "01/03/2024 06:00:00,4000.0,200.0\n"
                             "01/03/2024 07:00:00,3500.0,201.0\n" // flow starts: fall of 500
                             "01/03/2024 08:00:00,3450.0,202.5\n"
                             "15/03/2024 08:00:00,3400.0,202.0\n"
                             "15/03/2024 08:00:05,3700.0,201.0\n" // shut in: rise of 300
                             "15/03/2024 09:00:00,3750.0,200.0\n";
    LineReader lines;
    lines.openText(text, "gauge.csv");
    const ImportSurvey survey = surveyImport(lines);
    ASSERT_TRUE(survey.ok) << survey.error.message();
    EXPECT_FALSE(survey.plainPairs());
    EXPECT_EQ(survey.headerLines, 2);
    EXPECT_EQ(survey.firstDataLine, 4);
    EXPECT_EQ(survey.dataLines, 6);
    EXPECT_EQ(survey.firstTime, "01/03/2024 06:00:00");
    EXPECT_EQ(survey.shownDateOrder(), DateOrder::DayMonthYear);
    EXPECT_EQ(survey.dayFirstLine, 7);
    ASSERT_EQ(survey.columns.size(), 2u);
    EXPECT_EQ(survey.defaultPressureColumn, 2);
    EXPECT_EQ(survey.column(2)->title, "Pressure (psia)");
    EXPECT_EQ(survey.column(3)->title, "Temperature (F)");
    EXPECT_EQ(survey.column(2)->largestRise, 300);
    EXPECT_EQ(survey.column(2)->riseTime, "15/03/2024 08:00:00");
    EXPECT_EQ(survey.column(2)->largestFall, 500);
    EXPECT_EQ(survey.column(2)->fallTime, "01/03/2024 06:00:00");
    EXPECT_EQ(survey.preview.size(), 8u);
    EXPECT_EQ(survey.preview[3].second, "01/03/2024 06:00:00,4000.0,200.0");
}

// Worked by hand for times 1..10 reduced to 4: from t = 1 the next point is the
// first at or above 10^(1/3) = 2.15 (t = 3); from t = 3 the first at or above
// sqrt(3*10) = 5.48 (t = 6); then the last. Fewer points than asked come back whole.
TEST(LogTimeSelection, HandWorkedCase) {
    const std::vector<double> t = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
    EXPECT_EQ(logTimeSelection(t, 4), (std::vector<std::size_t>{0, 2, 5, 9}));
    EXPECT_EQ(logTimeSelection(t, 10).size(), 10u);
    EXPECT_EQ(logTimeSelection(t, 20).size(), 10u);
}

// A gauge sampling every second for 72 h holds 259,200 points, almost all of them
// late. The 500 kept must include the first and last, be distinct and ascending,
// keep every early point while the samples are sparser than the log spacing (the
// wellbore-storage data), and then spread evenly in log time.
TEST(LogTimeSelection, KeepsEarlyDataAndEvenLogSpacing) {
    std::vector<double> t;
    for (int i = 1; i <= 72 * 3600; ++i)
        t.push_back(i / 3600.0);
    const std::vector<std::size_t> kept = logTimeSelection(t, 500);
    ASSERT_EQ(kept.size(), 500u);
    EXPECT_EQ(kept.front(), 0u);
    EXPECT_EQ(kept.back(), t.size() - 1);
    for (std::size_t k = 1; k < kept.size(); ++k)
        ASSERT_LT(kept[k - 1], kept[k]);
    // The first samples are a whole second apart, more than the log spacing: kept.
    for (std::size_t k = 0; k < 10; ++k)
        EXPECT_EQ(kept[k], k);
    // In the second half of the kept points the log-time steps are even: the ideal
    // step of the remaining span, within the one-second resolution of the data.
    const double ideal = std::log10(t[kept.back()] / t[kept[250]]) / 249.0;
    for (std::size_t k = 251; k < kept.size(); ++k) {
        const double step = std::log10(t[kept[k]] / t[kept[k - 1]]);
        EXPECT_NEAR(step, ideal, 0.002) << k;
    }
}

// A clock-time record of 200,000 one-second readings over two midnights, shut in six
// hours after its first reading: the 21,600 readings before are skipped, the one at the
// shut-in gives the start pressure, and the points kept in two passes over the file
// (one to count, one to select) are exactly those the log-time selection keeps from
// all the hours since the shut-in held at once, also when the file is read in blocks
// that end in the middle of lines.
TEST(Import, ReducesALongClockRecordSinceItsStart) {
    constexpr int kReadings = 200000, kShutIn = 6 * 3600;
    std::string text = "Gauge 4471\r\nDate Time,P (psia),T (F)\r\n";
    std::vector<double> hours, pressures;
    const char* const kDays[] = {"2024-02-28", "2024-02-29", "2024-03-01"};
    char line[96], pressure[32];
    for (int i = 0; i < kReadings; ++i) {
        std::snprintf(pressure, sizeof pressure, "%.2f", 3000 + i * 0.01);
        const int n = std::snprintf(line, sizeof line, "%s %02d:%02d:%02d,%s,201.5\r\n",
                                    kDays[i / 86400], i / 3600 % 24, i / 60 % 60, i % 60, pressure);
        text.append(line, static_cast<std::size_t>(n));
        if (i > kShutIn) {
            hours.push_back((i - kShutIn) / 3600.0);
            pressures.push_back(std::strtod(pressure, nullptr));
        }
    }
    const std::string file =
        (std::filesystem::temp_directory_path() / ("zorvekan_gauge_" + std::to_string(::getpid())))
            .string();
    std::ofstream(file, std::ios::binary) << text;
    ASSERT_GT(text.size(), 3 * LineReader::kBlock);
    const ImportOptions options = startAt("2024-02-28 06:00:00");
    AnalysisState fromMemory, fromFile;
    const ImportResult r = import(fromMemory, text, options);
    ASSERT_TRUE(r.ok) << r.error.message();
    ASSERT_TRUE(importTestFile(fromFile, file, options).ok);
    std::filesystem::remove(file);
    EXPECT_TRUE(r.summary.resized);
    EXPECT_EQ(r.summary.pairsInFile, static_cast<long long>(hours.size()));
    EXPECT_EQ(r.summary.readingsBeforeStart, kShutIn);
    EXPECT_EQ(r.summary.startPressure, 3216.0); // 3000 + 21600 * 0.01
    ASSERT_EQ(fromMemory.TestPointCount, 500);
    ASSERT_EQ(fromFile.TestPointCount, 500);
    const std::vector<std::size_t> kept = logTimeSelection(hours, 500);
    for (int k = 1; k <= 500; ++k) {
        EXPECT_EQ(fromMemory.TestTime[k], hours[kept[k - 1]]) << k;
        EXPECT_EQ(fromMemory.TestPressure[k], pressures[kept[k - 1]]) << k;
        EXPECT_EQ(fromFile.TestTime[k], fromMemory.TestTime[k]) << k;
        EXPECT_EQ(fromFile.TestPressure[k], fromMemory.TestPressure[k]) << k;
    }
}

// A long import reports its progress, ending at the whole file; a cancelled one
// leaves the test as it was.
TEST(Import, ReportsProgressAndCanBeCancelled) {
    std::string text;
    for (int i = 1; i <= 300000; ++i)
        text += std::to_string(i) + ".25\t2500.125\n";
    std::vector<double> seen;
    AnalysisState s;
    ASSERT_TRUE(importTestData(s, text, "big.txt", {}, [&](double f) {
                    seen.push_back(f);
                    return true;
                }).ok);
    ASSERT_GE(seen.size(), 3u);
    for (std::size_t k = 1; k < seen.size(); ++k)
        EXPECT_GT(seen[k], seen[k - 1]);
    EXPECT_EQ(seen.back(), 1.0);
    s.TestPointCount = 3;
    const ImportResult r = importTestData(s, text, "big.txt", {}, [](double f) { return f < 0.3; });
    EXPECT_TRUE(!r.ok && r.cancelled);
    EXPECT_EQ(s.TestPointCount, 3);
}

} // namespace
} // namespace zorvekan
