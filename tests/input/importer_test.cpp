// SPDX-License-Identifier: MIT
#include "input/importer.h"
#include "input/log_time_selection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace zorvekan {
namespace {

ImportResult import(AnalysisState& s, const std::string& text) {
    return importTestData(s, text, "gauge.txt");
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

// Lines that are neither a pair nor skippable, pairs out of order and files that
// are not text stop the import at their line, with what was wrong; nothing of the
// file reaches the test (a time-0 pair in the middle once replaced the start
// pressure silently).
TEST(Import, BadFilesAreRefusedAndChangeNothing) {
    using namespace std::string_literals;
    struct Case {
        std::string text;
        int line;
        const char* problem;
    };
    const Case cases[] = {
        {"1,2000\n2,abc\n", 2, "\"abc\" is not a pressure"},
        {"1,2000\n2\n", 2, "has a time but no pressure"},
        {"1,2000,45.5\n", 1, "more than a time and a pressure"},
        {"1,5;2000,3\n", 1, "more than a time and a pressure"}, // decimal commas
        {"1,2000\nend of data\n", 2, "is not a time/pressure pair"},
        {"-1,2000\n", 1, "the time is negative"},
        {"1e999,2000\n", 1, "time is beyond the range"},
        {"2024-05-01 gauge\n1,2000\n", 1, "is not a time/pressure pair"},
        {"0,3000\n1,2950\n0,3010\n2,2990\n", 3, "a pair at time 0 after other pairs"},
        {"0,3000\n0,3001\n1,2950\n", 2, "a pair at time 0 after other pairs"},
        {"1,2950\n2,2960\n1.5,2955\n", 3,
         "the time 1.5 is earlier than the time of line 2 (2): times must not decrease"},
        {"Time,Pressure\n# nothing yet\n", 0, "no time/pressure pairs found"},
        {"0,3000\n", 0, "no time/pressure pairs after the pair at time 0"},
        {"", 0, "no time/pressure pairs found"},
        {"0,3000\n1,29\x00"
         "50\n"s,
         2, "a NUL byte at column 5"},
        {"\x7f"
         "ELF\x02\x01\x01\n\x00\x00\x00"s,
         2, "a NUL byte at column 1"},
        {"\xFF\xFE"
         "1\0,\0"
         "2\0\n\0"s,
         0, "written in UTF-16 (little-endian)"},
    };
    for (const Case& c : cases) {
        AnalysisState s;
        s.TestPointCount = 1;
        s.TestTime[1] = 7;
        s.StartPressure = 1234;
        const ImportResult r = import(s, c.text);
        ASSERT_FALSE(r.ok) << c.text;
        EXPECT_EQ(r.error.file, "gauge.txt");
        EXPECT_EQ(r.error.line, c.line) << c.text;
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

// A UTF-8 byte-order mark is not a header line: the time-0 pair behind it still gives
// the start pressure, and no line is counted as skipped.
TEST(Import, ByteOrderMarkIsSkipped) {
    AnalysisState s;
    const ImportResult r = import(s, "\xEF\xBB\xBF"
                                     "0,3000.5\r\n0.5,2900\r\n1,2950\r\n");
    ASSERT_TRUE(r.ok) << r.error.message();
    EXPECT_EQ(s.StartPressure, 3000.5);
    EXPECT_EQ(s.TestPointCount, 2);
    EXPECT_EQ(s.TestTime[1], 0.5);
    EXPECT_EQ(r.summary.skippedLines(), 0);
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

// More than 500 pairs are reduced to 500 and say so; the notice counts the pairs in
// the file. The points kept in two passes over a file (one to count, one to select)
// are exactly those the selection keeps from all pairs held at once, also when the
// file is read in blocks that end in the middle of lines.
TEST(Import, ResizesToFiveHundred) {
    std::string text = "t,p\r\n";
    std::vector<double> times;
    for (int i = 1; i <= 200000; ++i) {
        const std::string time = std::to_string(i * 0.01);
        times.push_back(std::stod(time));
        text += time + "," + std::to_string(3000 - i * 0.001) + "\r\n";
    }
    const std::string file =
        (std::filesystem::temp_directory_path() / ("zorvekan_gauge_" + std::to_string(::getpid())))
            .string();
    std::ofstream(file, std::ios::binary) << text;
    ASSERT_GT(text.size(), 3 * LineReader::kBlock);
    AnalysisState fromMemory, fromFile;
    const ImportResult r = import(fromMemory, text);
    ASSERT_TRUE(r.ok);
    ASSERT_TRUE(importTestFile(fromFile, file).ok);
    std::filesystem::remove(file);
    EXPECT_TRUE(r.summary.resized);
    EXPECT_EQ(r.summary.pairsInFile, 200000);
    EXPECT_EQ(r.summary.pairsKept, 500);
    ASSERT_EQ(fromMemory.TestPointCount, 500);
    ASSERT_EQ(fromFile.TestPointCount, 500);
    const std::vector<std::size_t> kept = logTimeSelection(times, 500);
    for (int k = 1; k <= 500; ++k) {
        EXPECT_EQ(fromMemory.TestTime[k], times[kept[k - 1]]) << k;
        EXPECT_EQ(fromFile.TestTime[k], fromMemory.TestTime[k]) << k;
        EXPECT_EQ(fromFile.TestPressure[k], fromMemory.TestPressure[k]) << k;
    }
    EXPECT_DOUBLE_EQ(fromFile.TestTime[500], 2000.0);
    EXPECT_DOUBLE_EQ(fromFile.TestPressure[500], 2800.0);
}

// A long import reports its progress, ending at the whole file; a cancelled one
// leaves the test as it was.
TEST(Import, ReportsProgressAndCanBeCancelled) {
    std::string text;
    for (int i = 1; i <= 300000; ++i)
        text += std::to_string(i) + ".25\t2500.125\n";
    std::vector<double> seen;
    AnalysisState s;
    ASSERT_TRUE(importTestData(s, text, "big.txt", [&](double f) {
                    seen.push_back(f);
                    return true;
                }).ok);
    ASSERT_GE(seen.size(), 3u);
    for (std::size_t k = 1; k < seen.size(); ++k)
        EXPECT_GT(seen[k], seen[k - 1]);
    EXPECT_EQ(seen.back(), 1.0);
    s.TestPointCount = 3;
    const ImportResult r = importTestData(s, text, "big.txt", [](double f) { return f < 0.3; });
    EXPECT_TRUE(!r.ok && r.cancelled);
    EXPECT_EQ(s.TestPointCount, 3);
}

} // namespace
} // namespace zorvekan
