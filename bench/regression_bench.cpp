// SPDX-License-Identifier: MIT
// Refining a match by regression runs the model through the whole rate history at every step
// of the search: a 500-point buildup after three rates, fitted from a start 30 % off, must take
// under a second (median) with four parameters (k, skin, C, p*). The model is read from
// tables of its dimensionless response (ResponseTable), rebuilt only when the shape changes.
#include "core/analysis_data.h"
#include "regression/well_fit.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace {

using namespace zorvekan;
using P = ModelParameter;

constexpr Formation kFormation{40, 0.15, 0.8, 12e-6, 0.35};

// 500 points log-spaced over 0.001..200 h of shut-in after 24, 48 and 72 h at three rates,
// with 0.05 psi of gauge noise.
AnalysisState buildupAfterThreeRates(WellModelKind model, const ParameterValues& truth) {
    AnalysisState s;
    s.ShutInFlag = 1;
    s.FluidFlags = kOil;
    s.Thickness = kFormation.thickness;
    s.Porosity = kFormation.porosity;
    s.OilViscosity = kFormation.viscosity;
    s.OilFvf = 1.2;
    s.TotalCompressibility = kFormation.compressibility;
    s.WellboreRadius = kFormation.wellRadius;
    const double rates[] = {300, 500, 400}, hours[] = {24, 48, 72};
    for (int j = 0; j < 3; ++j) {
        s.Rate[j + 1] = rates[j];
        s.RateTime[j + 1] = hours[j];
    }
    s.RateCount = 3;
    s.FlowRate = 400;
    s.ProducingTime = 144;
    const DimensionlessWell well = dimensionlessWell(model, kFormation, truth);
    const double perHour =
        timeGroupPerHour(kFormation, at(truth, P::Permeability), at(truth, P::Storage));
    const double unit = 141.2 * 1.2 * 0.8 / (at(truth, P::Permeability) * 40);
    const auto pressure = [&](double dt) {
        const double starts[] = {0, 24, 72, 144}, changes[] = {300, 200, -100, -400};
        double drop = 0;
        for (int j = 0; j < 4; ++j)
            if (144 + dt > starts[j])
                drop += changes[j] * well.pressure(perHour * (144 + dt - starts[j]));
        return 5000 - unit * drop;
    };
    s.StartPressure = pressure(0);
    std::mt19937 random(7);
    std::normal_distribution<double> gauge(0.0, 0.05);
    for (int i = 1; i <= 500; ++i) {
        const double dt = 0.001 * std::pow(2e5, (i - 1) / 499.0);
        s.TestTime[i] = dt;
        s.TestPressure[i] = pressure(dt) + gauge(random);
    }
    s.TestPointCount = 500;
    PrepareAnalysisData(s);
    return s;
}

void fitFromThirtyPercentOff(benchmark::State& state, WellModelKind model,
                             const ParameterValues& truth) {
    const AnalysisState s = buildupAfterThreeRates(model, truth);
    FitRequest request;
    request.model = model;
    int n = 0;
    for (ModelParameter p : modelParameters(model))
        request.start[static_cast<std::size_t>(p)] = at(truth, p) * (n++ % 2 == 0 ? 1.3 : 0.7);
    for (auto _ : state) {
        const FitOutcome outcome = fitWellModel(s, request);
        if (!outcome.result)
            state.SkipWithError(outcome.message.c_str());
        benchmark::DoNotOptimize(outcome);
    }
}

// Homogeneous reservoir: k, skin, C and p*.
void BM_FitRadialBuildup500Points(benchmark::State& state) {
    fitFromThirtyPercentOff(state, WellModelKind::Radial, {25, 4, 0.01, 0, 0, 0, 0});
}
BENCHMARK(BM_FitRadialBuildup500Points)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

// Double porosity: six parameters, a Bessel function pair in every Laplace evaluation.
void BM_FitDualPorosityBuildup500Points(benchmark::State& state) {
    fitFromThirtyPercentOff(state, WellModelKind::DualPss, {80, -1, 0.01, 0, 0, 0.05, 5e-7});
}
BENCHMARK(BM_FitDualPorosityBuildup500Points)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->ReportAggregatesOnly(true);

} // namespace
