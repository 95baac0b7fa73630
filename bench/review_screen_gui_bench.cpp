// SPDX-License-Identifier: MIT
// The test data screen redraws after every correction: its three grids refilled and
// the Cartesian plot drawn again with 500 points should take less than a frame (16 ms),
// and a rubber-band move on the plot under 2 ms.
#include "app/Program.h"
#include "core/ui/FileDialogService.h"
#include "core/ui/MessageService.h"
#include "core/ui/PlotSurface.h"
#include "review/cartesian_plot.h"
#include "review/data_grids.h"
#include "review/ui/TestDataScreen.h"
#include "synthetic_buildup.h"

#include <QApplication>
#include <benchmark/benchmark.h>

namespace {

using namespace zorvekan;

// One accepted value at 500 points: the state written, the grids refilled, the plot
// redrawn, as OK in the edit frame does.
void BM_CorrectionRedraw500(benchmark::State& state) {
    AnalysisState s = bench::syntheticBuildup(kOil);
    DialogMessageService messages;
    PlatformFileDialogService files;
    PrinterPrintService printer;
    Program program(s, messages, files, printer, [](int) {});
    auto* screen =
        qobject_cast<TestDataScreen*>(program.screens().window(QStringLiteral("inpsho")));
    screen->resize(1280, 800);
    double p = 2500;
    for (auto _ : state) {
        p = p > 2600 ? 2500 : p + 1;
        acceptCellEdit(s, DataGrid::TestPoints, 200, 1, p);
        screen->beforeShow();
    }
}
BENCHMARK(BM_CorrectionRedraw500)->Unit(benchmark::kMillisecond);

// One mouse move with the first end of the PSS line placed.
void BM_CartesianRubberBand500(benchmark::State& state) {
    AnalysisState s = bench::syntheticBuildup(kOil);
    PlotSurface cart;
    cart.resize(700, 560);
    const CartesianScales scales = DrawCartesianPlot(cart, s);
    StraightLine line;
    lineMouseDown(line, 10, 10);
    double x = 20;
    for (auto _ : state) {
        x = x > 95 ? 20 : x + 0.5;
        lineMouseMove(line, cart, x, 40, [&] { drawCartesianPoints(cart, s, scales); });
    }
}
BENCHMARK(BM_CartesianRubberBand500)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
