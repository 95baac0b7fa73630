// SPDX-License-Identifier: MIT
// Import of a real gauge record: a million lines of pairs must stay within 10 times of
// counting the same file's lines (wc -l), a million lines of dates and times with a
// temperature column within 20 times and under 0.5 s, and the memory an import needs
// must not grow with the file: BM_ImportPeakMemory reports the peak resident memory of
// the process after importing the file named by ZORVEKAN_IMPORT_BENCH_FILE (a gauge
// record of a gigabyte must stay under 100 MB), or the million-line file when it is not
// set.
#include "input/import_survey.h"
#include "input/importer.h"
#include "input/log_time_selection.h"
#include "input/test_file.h"

#include <benchmark/benchmark.h>
#include <date/date.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace zorvekan;

// A buildup sampled every 0.36 s for 100 h: "time<TAB>pressure", a header line.
const std::string& gaugeFile() {
    static const std::string path = [] {
        const auto dir = std::filesystem::temp_directory_path() / "zorvekan_import_bench";
        std::filesystem::create_directories(dir);
        const std::string file = (dir / "gauge_1M.txt").string();
        std::ofstream out(file, std::ios::binary);
        out << "Time (h)\tPressure (psia)\n";
        char line[64];
        for (int i = 1; i <= 1000000; ++i) {
            const double t = i * 1e-4;
            const double p = 3000 + 60 * std::log10(1 + t) + 500 * (1 - std::exp(-t / 0.05));
            const int n = std::snprintf(line, sizeof line, "%.4f\t%.2f\n", t, p);
            out.write(line, n);
        }
        return file;
    }();
    return path;
}

// The same buildup as a gauge exports it: a header block, then a date and time to the
// millisecond, the pressure and the temperature, a reading every 0.36 s from midnight on
// 28 February 2024 (across the leap day and the end of the month).
const std::string& clockTimeFile() {
    static const std::string path = [] {
        const auto dir = std::filesystem::temp_directory_path() / "zorvekan_import_bench";
        std::filesystem::create_directories(dir);
        const std::string file = (dir / "gauge_clock_1M.csv").string();
        std::ofstream out(file, std::ios::binary);
        out << "Gauge 4471, example well A-1\nDate Time,Pressure (psia),Temperature (degF)\n";
        const auto first = date::sys_days{date::year{2024} / 2 / 28};
        char line[96];
        for (int i = 0; i < 1000000; ++i) {
            const auto at = first + std::chrono::milliseconds{i * 360LL};
            const double t = i * 1e-4;
            const double p = 3000 + 60 * std::log10(1 + t) + 500 * (1 - std::exp(-t / 0.05));
            const int n = std::snprintf(line, sizeof line, ",%.2f,%.2f\n", p, 205 + 0.001 * t);
            out << date::format("%Y-%m-%d %H:%M:%S", at);
            out.write(line, n);
        }
        return file;
    }();
    return path;
}

void countLines(benchmark::State& state, const std::string& file) {
    std::vector<char> buffer(1 << 20);
    for (auto _ : state) {
        const int fd = ::open(file.c_str(), O_RDONLY);
        long long lines = 0;
        for (ssize_t got; (got = ::read(fd, buffer.data(), buffer.size())) > 0;)
            for (const char *p = buffer.data(), *end = p + got;
                 (p = static_cast<const char*>(std::memchr(p, '\n', std::size_t(end - p)))) !=
                 nullptr;
                 ++p)
                ++lines;
        ::close(fd);
        benchmark::DoNotOptimize(lines);
    }
}

// A million clock-time readings, shut in after the first hour.
void BM_ImportClockTimeMillionLines(benchmark::State& state) {
    const std::string& file = clockTimeFile();
    ImportOptions options;
    options.start = "2024-02-28 01:00:00";
    for (auto _ : state) {
        AnalysisState s;
        const ImportResult r = importTestFile(s, file, options);
        if (!r.ok || s.TestPointCount != 500)
            state.SkipWithError("import failed");
        benchmark::DoNotOptimize(s.TestTime[500]);
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file)));
    state.SetItemsProcessed(state.iterations() * 1000000);
}
BENCHMARK(BM_ImportClockTimeMillionLines)->Unit(benchmark::kMillisecond);

void BM_CountLinesOfTheClockTimeFile(benchmark::State& state) {
    countLines(state, clockTimeFile());
}
BENCHMARK(BM_CountLinesOfTheClockTimeFile)->Unit(benchmark::kMillisecond);

// The desktop program's survey of the same file before its import dialog.
void BM_SurveyClockTimeMillionLines(benchmark::State& state) {
    const std::string& file = clockTimeFile();
    for (auto _ : state) {
        const ImportSurvey survey = surveyImportFile(file);
        if (!survey.ok)
            state.SkipWithError("survey failed");
        benchmark::DoNotOptimize(survey.columns.size());
    }
}
BENCHMARK(BM_SurveyClockTimeMillionLines)->Unit(benchmark::kMillisecond);

void BM_ImportMillionLines(benchmark::State& state) {
    const std::string& file = gaugeFile();
    for (auto _ : state) {
        AnalysisState s;
        const ImportResult r = importTestFile(s, file);
        if (!r.ok || s.TestPointCount != 500)
            state.SkipWithError("import failed");
        benchmark::DoNotOptimize(s.TestTime[500]);
    }
    state.SetBytesProcessed(state.iterations() *
                            static_cast<std::int64_t>(std::filesystem::file_size(file)));
    state.SetItemsProcessed(state.iterations() * 1000000);
}
BENCHMARK(BM_ImportMillionLines)->Unit(benchmark::kMillisecond);

// The yardstick: counting the lines of the same file, as wc -l does.
void BM_CountLinesOfTheSameFile(benchmark::State& state) {
    countLines(state, gaugeFile());
}
BENCHMARK(BM_CountLinesOfTheSameFile)->Unit(benchmark::kMillisecond);

// The peak resident memory of the whole process once a file has been imported: the
// pairs are not held, so it stays the same for a file of a gigabyte.
void BM_ImportPeakMemory(benchmark::State& state) {
    const char* named = std::getenv("ZORVEKAN_IMPORT_BENCH_FILE");
    const std::string file = named ? named : gaugeFile();
    for (auto _ : state) {
        AnalysisState s;
        const ImportResult r = importTestFile(s, file);
        if (!r.ok)
            state.SkipWithError(r.error.message().c_str());
        benchmark::DoNotOptimize(s.TestTime[1]);
    }
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    state.counters["file_MB"] = static_cast<double>(std::filesystem::file_size(file)) / 1e6;
    state.counters["peak_rss_MB"] = static_cast<double>(usage.ru_maxrss) / 1024.0;
}
BENCHMARK(BM_ImportPeakMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

// Reducing a million times to 500 in log time, apart from reading them.
void BM_LogTimeSelection(benchmark::State& state) {
    std::vector<double> t(1000000);
    for (std::size_t i = 0; i < t.size(); ++i)
        t[i] = (i + 1) * 1e-4;
    for (auto _ : state)
        benchmark::DoNotOptimize(logTimeSelection(t, 500));
}
BENCHMARK(BM_LogTimeSelection)->Unit(benchmark::kMicrosecond);

// Opening an example test file: parse, refill of the boxes, producing time.
void BM_OpenExample(benchmark::State& state) {
    const std::string file = std::string(SOURCE_DIR) + "/examples/two-rate-drawdown.zvt";
    for (auto _ : state) {
        AnalysisState s;
        if (!openTestFile(s, file).ok)
            state.SkipWithError("open failed");
        benchmark::DoNotOptimize(s.TestPointCount);
    }
}
BENCHMARK(BM_OpenExample)->Unit(benchmark::kMicrosecond);

} // namespace
