// SPDX-License-Identifier: MIT
// The preparation runs on every navigation and every change of derivative spacing;
// it has to be imperceptible (gas in pseudopressure, 500 points: well under 1 ms).
#include "core/analysis_data.h"
#include "core/derivative.h"
#include "semilog/semilog_results.h"
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

// The results of a line on a gas buildup in m(p), average pressures converted back to
// psia through their 51-row table: they are printed at the second click of the line.
void BM_SemilogResultsGasBuildup500(benchmark::State& state) {
    AnalysisState s = buildup(kGasPseudopressure);
    s.FlowRate = 800;
    s.Thickness = 50;
    s.Porosity = 0.15;
    s.TotalCompressibility = 2e-4;
    s.WellboreRadius = 0.3;
    s.DrainageArea = 40 * 43560.0;
    PrepareAnalysisData(s);
    SemilogInputs in;
    in.scales.x = 100 / (s.SemilogXMax - s.SemilogXMin);
    in.scales.y = 60 / (s.SemilogYMax - s.SemilogYMin);
    lineMouseDown(in.line, 10, 50);
    lineMouseDown(in.line, 40, 30);
    for (auto _ : state) {
        const SemilogResults r = ComputeSemilogResults(s, in);
        benchmark::DoNotOptimize(r.lines.size());
    }
}
BENCHMARK(BM_SemilogResultsGasBuildup500)->Unit(benchmark::kMicrosecond);

} // namespace
