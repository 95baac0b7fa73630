// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"

#include "core/checked_math.h"
#include "core/derivative.h"
#include "core/pseudopressure.h"
#include "core/rate_history.h"
#include "core/semilog_series.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zorvekan {

namespace {

// Multi-rate equivalent times below this mean the superposition has broken down
// (a rate history inconsistent with the data); the single-rate treatment is used.
constexpr double kMinEquivalentTime = 1e-6;

double pressureOf(const AnalysisState& s, int i) {
    return usesPseudopressure(s) ? s.TestPseudoPressure[i] : s.TestPressure[i];
}

double startPressureOf(const AnalysisState& s) {
    return usesPseudopressure(s) ? s.StartPseudoPressure : s.StartPressure;
}

int pointCount(const AnalysisState& s) {
    const int n = s.TestPointCount;
    if (n < 0 || n > kMaxTestPoints)
        throw RuntimeError(Fault::SubscriptOutOfRange,
                           "test point count " + std::to_string(n) + " outside 0..500");
    return n;
}

void cumulativeTimes(AnalysisState& s) {
    s.CumulativeTime[0] = 0.0;
    for (int j = 1; j <= s.RateCount; ++j)
        s.CumulativeTime[j] = s.CumulativeTime[j - 1] + s.RateTime[j];
}

void singleRatePath(AnalysisState& s, int n) {
    const double tp = s.ProducingTime;
    const double p0 = startPressureOf(s);
    const bool steppedDrawdown = s.ShutInFlag == 0 && s.RateCount >= 2;
    const AnalysisRates rates = analysisRates(s);
    // The change of a stepped drawdown is taken from the pressure at the start of the
    // rate step the point falls in: a point lying exactly on a rate change is measured
    // from the previous reference and becomes the reference of the points after it.
    double reference = p0;
    for (int i = 1; i <= n; ++i) {
        const double t = s.TestTime[i];
        const double p = pressureOf(s, i);
        s.TimeFunction[i] = tp > 0 ? divide(tp * t, tp + t) : t;
        s.LogTime[i] = Log10(s.TimeFunction[i]);
        s.DeltaP[i] = std::fabs(p0 - p);
        if (steppedDrawdown) {
            s.DeltaP[i] = std::fabs(reference - p);
            const int j = rates.stepAt(t);
            if (j < rates.count && rates.end[j] == t)
                reference = p;
        }
        s.LogDeltaP[i] = Log10(s.DeltaP[i]);
    }
}

// Equivalent time of a point at t inside rate step j >= 2 (see the header); false
// when the product leaves the range of a double (two nearly equal rates make the
// exponents huge), which the caller treats like a superposition that broke down.
bool multiRateEquivalentTime(const AnalysisRates& r, int j, double t, double& time) {
    const double rateChange = r.rate[j - 1] - r.rate[j];
    double product = 1.0;
    for (int m = 1; m <= j - 1; ++m) {
        const double ratio = divide(r.end[j - 1] - r.end[m - 1], t - r.end[m - 1]);
        const double exponent = divide(r.rate[m] - r.rate[m - 1], rateChange);
        product *= std::pow(ratio, exponent);
        if (!std::isfinite(product))
            return false;
    }
    time = (t - r.end[j - 1]) * product;
    return std::isfinite(time);
}

// Returns false when the superposition breaks down and the single-rate path must be used.
bool multiRatePath(AnalysisState& s, int n) {
    const AnalysisRates r = analysisRates(s);
    double reference = startPressureOf(s);
    for (int j = 1; j <= r.count; ++j) {
        const double rateChange = r.rate[j - 1] - r.rate[j];
        const bool lastStep = j == r.count; // the last step is open-ended
        int lastBeforeEnd = 0;
        for (int i = 1; i <= n; ++i) {
            const double t = s.TestTime[i];
            if (t > r.end[j] && !lastStep)
                break;
            if (t <= r.end[j])
                lastBeforeEnd = i;
            if (t <= r.end[j - 1])
                continue;
            s.TimeFunction[i] = t;
            if (j >= 2 && (!multiRateEquivalentTime(r, j, t, s.TimeFunction[i]) ||
                           s.TimeFunction[i] < kMinEquivalentTime))
                return false;
            s.DeltaP[i] = std::fabs(divide(reference - pressureOf(s, i), rateChange));
        }
        if (lastBeforeEnd > 0)
            reference = pressureOf(s, lastBeforeEnd);
    }
    return true;
}

// Exchange sort of the prepared points by time function; the raw test arrays keep
// their entry order.
void sortByTimeFunction(AnalysisState& s, int n) {
    for (int i = 1; i < n; ++i)
        for (int j = i + 1; j <= n; ++j)
            if (s.TimeFunction[j] < s.TimeFunction[i]) {
                std::swap(s.TimeFunction[i], s.TimeFunction[j]);
                std::swap(s.DeltaP[i], s.DeltaP[j]);
                std::swap(s.SourceIndex[i], s.SourceIndex[j]);
            }
    for (int i = 1; i <= n; ++i) {
        s.LogTime[i] = Log10(s.TimeFunction[i]);
        s.LogDeltaP[i] = Log10(s.DeltaP[i]);
    }
}

void storageExtremes(AnalysisState& s, int n) {
    for (int i = 1; i <= n; ++i) {
        s.StorageXMin = std::min(s.StorageXMin, s.LogTime[i]);
        s.StorageXMax = std::max(s.StorageXMax, s.LogTime[i]);
        s.StorageYMin = std::min(s.StorageYMin, s.LogDeltaP[i]);
        s.StorageYMax = std::max(s.StorageYMax, s.LogDeltaP[i]);
    }
}

} // namespace

void ResetPlotRanges(AnalysisState& s) {
    s.StorageXMax = s.StorageYMax = 0.0;
    s.SemilogXMax = s.SemilogYMax = 0.0;
    s.PlotPressureMax = 0.0;
    s.StorageXMin = s.StorageYMin = 100.0;
    s.SemilogXMin = 100.0;
    s.PlotPressureMin = 100000.0;
    s.SemilogYMin = 1000000.0;
}

void ComputeTimeFunctions(AnalysisState& s) {
    const int n = pointCount(s);
    cumulativeTimes(s);
    for (int i = 1; i <= n; ++i)
        s.SourceIndex[i] = static_cast<std::int16_t>(i);
    const bool multiRate = s.ProducingTime == 0.0 && s.RateCount >= 2;
    if (multiRate && multiRatePath(s, n))
        sortByTimeFunction(s, n);
    else
        singleRatePath(s, n);
    storageExtremes(s, n);
    ComputeDerivative(s);
}

void PrepareAnalysisData(AnalysisState& s) {
    ResetPlotRanges(s);
    if (s.ReservoirTemperature > 0 && s.GasGravity > 0 && usesPseudopressure(s))
        ComputePseudopressures(s);
    ComputeTimeFunctions(s);
    BuildSemilogSeries(s);
}

} // namespace zorvekan
