// SPDX-License-Identifier: MIT
#include "core/semilog_series.h"

#include "core/checked_math.h"
#include "core/rate_history.h"

#include <algorithm>

namespace zorvekan {

namespace {

// Times closer than this to the start of a rate step have no usable logarithm.
constexpr double kMinSummationTime = 1e-5;

double plottedPressure(const AnalysisState& s, int i) {
    return usesPseudopressure(s) ? s.TestPseudoPressure[i] : s.TestPressure[i];
}

double plottedStartPressure(const AnalysisState& s) {
    return usesPseudopressure(s) ? s.StartPseudoPressure : s.StartPressure;
}

// Summation term of a flowing time t over the steps begun before it, normalised by
// the rate of the step t lies in (returned in `rate`); false when t lies at or before
// the start of the history, within 1e-5 h after a rate change, or in a step without
// flow (whose change has no rate to be divided by).
bool flowingTerm(const AnalysisRates& r, double t, double& sum, double& rate) {
    sum = 0.0;
    const int n = r.stepAt(t);
    if (n < 1 || !(t > 0.0))
        return false;
    rate = r.rate[n];
    if (rate == 0.0)
        return false;
    for (int j = 1; j <= n; ++j) {
        const double elapsed = t - r.end[j - 1];
        if (elapsed < kMinSummationTime)
            return false;
        sum += r.weight(j, n) * Log10(elapsed);
    }
    return true;
}

void addPoint(AnalysisState& s, double x, double y, double time) {
    const int k = ++s.PointCount;
    s.SemilogX[k] = x;
    s.SemilogY[k] = y;
    s.SemilogTime[k] = time;
    s.SemilogXMin = std::min(s.SemilogXMin, x);
    s.SemilogXMax = std::max(s.SemilogXMax, x);
    s.SemilogYMin = std::min(s.SemilogYMin, y);
    s.SemilogYMax = std::max(s.SemilogYMax, y);
}

} // namespace

double shutInSummation(const AnalysisState& s, double dt) {
    const AnalysisRates r = analysisRates(s);
    const int n = r.count;
    double sum = 0.0;
    for (int j = 1; j <= n; ++j)
        sum += r.weight(j, n) * Log10(divide(r.end[n] - r.end[j - 1] + dt, dt));
    return sum;
}

bool flowingSummation(const AnalysisState& s, double t, double& sum) {
    double rate = 0.0;
    return flowingTerm(analysisRates(s), t, sum, rate);
}

bool semilogIsRateNormalised(const AnalysisState& s) {
    if (s.ShutInFlag != 0)
        return false;
    return s.SemilogPlotKind == kSuperpositionPlot || s.RateCount >= 2;
}

void BuildSemilogSeries(AnalysisState& s) {
    const int n = s.TestPointCount;
    s.PointCount = 0;
    const bool superposition = s.SemilogPlotKind == kSuperpositionPlot;
    const bool shutIn = s.ShutInFlag != 0;

    if (shutIn) {
        for (int i = 1; i <= n; ++i) {
            const double dt = s.TestTime[i];
            if (superposition && dt < kMinSummationTime)
                continue;
            const double x =
                superposition ? shutInSummation(s, dt) : Log10(divide(s.ProducingTime + dt, dt));
            addPoint(s, x, plottedPressure(s, i), dt);
        }
        return;
    }
    if (superposition) {
        // The change per unit of the rate then flowing, with the sign that makes it
        // positive for a producer and for an injector alike.
        const AnalysisRates r = analysisRates(s);
        const double p0 = plottedStartPressure(s);
        const double sign = s.InjectionFlag == 1 ? -1.0 : 1.0;
        for (int i = 1; i <= n; ++i) {
            double x = 0.0, q = 0.0;
            if (!flowingTerm(r, s.TestTime[i], x, q))
                continue;
            addPoint(s, x, divide(sign * (p0 - plottedPressure(s, i)), q), s.TestTime[i]);
        }
        return;
    }
    if (s.RateCount >= 2) {
        for (int i = 1; i <= n; ++i)
            addPoint(s, s.LogTime[i], s.DeltaP[i], s.TimeFunction[i]);
        return;
    }
    for (int i = 1; i <= n; ++i)
        addPoint(s, Log10(s.TestTime[i]), plottedPressure(s, i), s.TestTime[i]);
}

} // namespace zorvekan
