// SPDX-License-Identifier: MIT
// The type-curve picture is drawn afresh on every shift, pick, spacing change and resize:
// a full redraw (the largest family read from its file, 500 data points and their
// derivative, the picked curve and the labels) under 10 ms.
#include "core/analysis_data.h"
#include "core/ui/PlotSurface.h"
#include "synthetic_buildup.h"
#include "typecurve/type_curve_plot.h"

#include <QApplication>
#include <benchmark/benchmark.h>

namespace {

using namespace zorvekan;

void redraw(benchmark::State& state, int model) {
    AnalysisState s = bench::syntheticBuildup(kOil);
    PrepareAnalysisData(s);
    const LibraryLocation library{SOURCE_DIR "/data", ""};
    TypeCurveView view;
    view.model = model;
    view.placement = initialPlacement(s, model);
    view.selectedCurve = 7;
    PlotSurface tcrv;
    tcrv.resize(960, 620);
    for (auto _ : state)
        DrawTypeCurves(tcrv, s, library, view);
}

void BM_RedrawSinglePorosity500(benchmark::State& state) {
    redraw(state, kSinglePorosityModel);
}
BENCHMARK(BM_RedrawSinglePorosity500)->Unit(benchmark::kMillisecond);

void BM_RedrawFracture500(benchmark::State& state) {
    redraw(state, kVerticalFractureModel);
}
BENCHMARK(BM_RedrawFracture500)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
