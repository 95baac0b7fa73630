// SPDX-License-Identifier: MIT
// A click with "Select Type Curve" reads the family again and tests every segment of every
// block: under 5 ms on the largest family (ONETYPE, 32 blocks of 60 points), so the pick
// answers at once.
#include "typecurve/library_file.h"
#include "typecurve/type_curve_plot.h"

#include <benchmark/benchmark.h>

namespace {

using namespace zorvekan;

// A click in the crowded middle of the family, where many segments straddle X.
void BM_HitTestOneType(benchmark::State& state) {
    const LibraryLocation library{SOURCE_DIR "/data", ""};
    const TypeCurveGrid g = typeCurveGrid(kSinglePorosityModel);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            hitTestCurve(library.of(LibraryFile::OneType), LibraryFile::OneType, g, 50, 30));
}
BENCHMARK(BM_HitTestOneType)->Unit(benchmark::kMillisecond);

// The transition picks of the dual-porosity match read TWOTYPE (25 blocks).
void BM_HitTestTransitions(benchmark::State& state) {
    const LibraryLocation library{SOURCE_DIR "/data", ""};
    const TypeCurveGrid g = typeCurveGrid(kDualPorosityModel);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            hitTestCurve(library.of(LibraryFile::TwoType), LibraryFile::TwoType, g, 70, 20, 13));
}
BENCHMARK(BM_HitTestTransitions)->Unit(benchmark::kMillisecond);

} // namespace
