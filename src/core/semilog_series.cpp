// SPDX-License-Identifier: MIT
#include "core/semilog_series.h"

#include "core/checked_math.h"

#include <algorithm>

namespace zorvekan {

namespace {

// Times closer than this to the start of a rate step have no usable logarithm.
constexpr double kMinSummationTime = 1e-5;

double lastRate(const AnalysisState& s) {
    return s.Rate[s.RateCount];
}

double plottedPressure(const AnalysisState& s, int i) {
    return usesPseudopressure(s) ? s.TestPseudoPressure[i] : s.TestPressure[i];
}

double plottedStartPressure(const AnalysisState& s) {
    return usesPseudopressure(s) ? s.StartPseudoPressure : s.StartPressure;
}

// Rate weight (q_j - q_(j-1)) / q_n of step j.
double stepWeight(const AnalysisState& s, int j) {
    const double previous = j == 1 ? 0.0 : s.Rate[j - 1];
    return divide(s.Rate[j] - previous, lastRate(s));
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
    const auto& ct = s.CumulativeTime;
    const int n = s.RateCount;
    double sum = 0.0;
    for (int j = 1; j <= n; ++j)
        sum += stepWeight(s, j) * Log10(divide(ct[n] - ct[j - 1] + dt, dt));
    return sum;
}

bool flowingSummation(const AnalysisState& s, double t, double& sum) {
    const auto& ct = s.CumulativeTime;
    sum = 0.0;
    bool begun = false;
    for (int j = 1; j <= s.RateCount; ++j) {
        const double elapsed = t - ct[j - 1];
        if (elapsed <= 0.0)
            break;
        if (elapsed < kMinSummationTime)
            return false;
        sum += stepWeight(s, j) * Log10(elapsed);
        begun = true;
    }
    return begun;
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
        const double q = lastRate(s);
        const double p0 = plottedStartPressure(s);
        for (int i = 1; i <= n; ++i) {
            double x = 0.0;
            if (!flowingSummation(s, s.TestTime[i], x))
                continue;
            addPoint(s, x, divide(p0 - plottedPressure(s, i), q), s.TestTime[i]);
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
