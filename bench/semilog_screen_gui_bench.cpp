// SPDX-License-Identifier: MIT
// The semilog screen must follow the engineer's hand: a full redraw of its plots with
// 500 points under 16 ms (one frame), a rubber-band mouse move under 2 ms.
#include "core/analysis_data.h"
#include "core/straight_line.h"
#include "core/ui/PlotSurface.h"
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
    }
}
BENCHMARK(BM_RubberBandMove500)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
