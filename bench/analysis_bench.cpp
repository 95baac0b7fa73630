// SPDX-License-Identifier: MIT
// The preparation runs on every navigation and every change of derivative spacing;
// it has to be imperceptible (gas in pseudopressure, 500 points: well under 1 ms).
#include "core/analysis_data.h"
#include "core/derivative.h"
#include "synthetic_buildup.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace zorvekan;

AnalysisState buildup(int fluid) {
    return bench::syntheticBuildup(fluid);
}

void BM_PrepareOil500(benchmark::State& state) {
    AnalysisState s = buildup(kOil);
    for (auto _ : state) {
        PrepareAnalysisData(s);
        benchmark::DoNotOptimize(s.DerivativeCount);
    }
}
BENCHMARK(BM_PrepareOil500)->Unit(benchmark::kMicrosecond);

void BM_PrepareGasPseudopressure500(benchmark::State& state) {
    AnalysisState s = buildup(kGasPseudopressure);
    for (auto _ : state) {
        PrepareAnalysisData(s);
        benchmark::DoNotOptimize(s.StartPseudoPressure);
    }
}
BENCHMARK(BM_PrepareGasPseudopressure500)->Unit(benchmark::kMicrosecond);

void BM_Derivative500(benchmark::State& state) {
    AnalysisState s = buildup(kOil);
    PrepareAnalysisData(s);
    for (auto _ : state) {
        ComputeDerivative(s);
        benchmark::DoNotOptimize(s.DerivativeCount);
    }
}
BENCHMARK(BM_Derivative500)->Unit(benchmark::kMicrosecond);

} // namespace
