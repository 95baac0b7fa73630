// SPDX-License-Identifier: MIT
// The semilog screen must follow the engineer's hand: a full redraw of its plots with
// 500 points under 16 ms (one frame), a rubber-band mouse move under 2 ms, and a test
// whose superposition axis spans millions of decades refused well under a second.
#include "core/analysis_data.h"
#include "core/runtime_error.h"
#include "core/straight_line.h"
#include "core/ui/PlotSurface.h"
#include "input/entry_rules.h"
#include "input/test_file.h"
#include "semilog/semilog_plots.h"
#include "synthetic_buildup.h"

#include <QApplication>
#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace zorvekan;

AnalysisState buildup500() {
    AnalysisState s = bench::syntheticBuildup(kOil);
    PrepareAnalysisData(s);
    return s;
}

// Storage and semilog plots together, as the screen redraws them on activation, a
// spacing change or "Redraw".
void BM_FullRedraw500(benchmark::State& state) {
    AnalysisState s = buildup500();
    PlotSurface semi, stor;
    semi.resize(520, 340);
    stor.resize(520, 340);
    for (auto _ : state) {
        DrawStoragePlot(stor, s);
        benchmark::DoNotOptimize(DrawSemilogPlot(semi, s));
        benchmark::DoNotOptimize(stor.picture()); // painted, as the screen shows them
        benchmark::DoNotOptimize(semi.picture());
    }
}
BENCHMARK(BM_FullRedraw500)->Unit(benchmark::kMillisecond);

// One mouse move with the first end of a line placed: erase the old band, draw the new
// one, redraw the 500 points the erasing line may have wiped.
void BM_RubberBandMove500(benchmark::State& state) {
    AnalysisState s = buildup500();
    PlotSurface semi;
    semi.resize(520, 340);
    const PlotScales scales = DrawSemilogPlot(semi, s);
    StraightLine line;
    lineMouseDown(line, 10, 10);
    double x = 20;
    for (auto _ : state) {
        x = x > 95 ? 20 : x + 0.5;
        lineMouseMove(line, semi, x, 40, [&] { drawSemilogPoints(semi, s, scales); });
        benchmark::DoNotOptimize(semi.picture());
    }
}
BENCHMARK(BM_RubberBandMove500)->Unit(benchmark::kMillisecond);

// The two-rate example with its last rate cut to 1E-5 STB/day: the superposition
// summation term spans about 9E7 log cycles. Drawing both plots ends in the run-time
// error that refuses the axis.
void BM_TinyLastRateRefused(benchmark::State& state) {
    AnalysisState s;
    if (!openTestFile(s, SOURCE_DIR "/examples/two-rate-drawdown.zvt").ok) {
        state.SkipWithError("example missing");
        return;
    }
    s.Rate[2] = 1e-5;
    deriveFlowRateAndProducingTime(s);
    s.SemilogPlotKind = kSuperpositionPlot;
    PrepareAnalysisData(s);
    PlotSurface semi, stor;
    semi.resize(520, 340);
    stor.resize(520, 340);
    for (auto _ : state) {
        try {
            DrawStoragePlot(stor, s);
            DrawSemilogPlot(semi, s);
            state.SkipWithError("the axis was drawn");
        } catch (const RuntimeError&) {
        }
        benchmark::DoNotOptimize(semi.picture());
    }
}
BENCHMARK(BM_TinyLastRateRefused)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
