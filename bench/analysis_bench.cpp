// SPDX-License-Identifier: MIT
// The preparation runs on every navigation and every change of derivative spacing;
// it has to be imperceptible (gas in pseudopressure, 500 points: well under 1 ms).
#include "core/analysis_data.h"
#include "core/derivative.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

using namespace zorvekan;

// A 500-point buildup, log-spaced from 0.001 h to 100 h, with storage and a
// semilog straight line (the shape of a real gauge record).
AnalysisState buildup(int fluid) {
    AnalysisState s;
    s.FluidFlags = static_cast<std::int16_t>(fluid);
    s.ShutInFlag = 1;
    s.StartPressure = 2000;
    s.ProducingTime = 72;
    s.RateCount = 1;
    s.RateTime[1] = 72;
    s.Rate[1] = 800;
    s.ReservoirTemperature = 200;
    s.GasGravity = 0.7;
    s.TestPointCount = 500;
    for (int i = 1; i <= 500; ++i) {
        const double t = std::pow(10.0, -3.0 + 5.0 * (i - 1) / 499.0);
        const double storage = 1.0 - std::exp(-t / 0.05);
        s.TestTime[i] = t;
        s.TestPressure[i] = 2000 + storage * (600 + 60 * std::log10(1 + t));
    }
    return s;
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
