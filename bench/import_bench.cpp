// SPDX-License-Identifier: MIT
// Import of a real gauge record: a million lines must take well under 0.3 s and stay
// within 15 times of counting the same file's lines (wc -l); the test file is small.
#include "input/importer.h"
#include "input/test_file.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>

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
    const std::string& file = gaugeFile();
    for (auto _ : state) {
        FileContents contents;
        FileError error;
        contents.open(file, error);
        const std::string_view text = contents.text();
        long long lines = 0;
        for (const char *p = text.data(), *end = p + text.size();
             (p = static_cast<const char*>(std::memchr(p, '\n', end - p))) != nullptr; ++p)
            ++lines;
        benchmark::DoNotOptimize(lines);
    }
}
BENCHMARK(BM_CountLinesOfTheSameFile)->Unit(benchmark::kMillisecond);

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
