// SPDX-License-Identifier: MIT
#include "core/rate_history.h"

#include "core/checked_math.h"

namespace zorvekan {

namespace {

int typedCount(const AnalysisState& s) {
    const int n = s.RateCount;
    if (n < 0 || n > kMaxRates)
        throw RuntimeError(Fault::SubscriptOutOfRange,
                           "rate count " + std::to_string(n) + " outside 0..25");
    return n;
}

} // namespace

double AnalysisRates::weight(int j, int n) const {
    return divide(rate[j] - rate[j - 1], rate[n]);
}

int AnalysisRates::stepAt(double t) const {
    for (int j = 1; j < count; ++j)
        if (end[j] >= t)
            return j;
    return count;
}

double normalisingRate(const AnalysisState& s, int j) {
    if (s.FluidFlags == kGasWater)
        return s.GasFvf * s.GasRate[j] + s.WaterFvf * s.WaterRate[j];
    return s.Rate[j];
}

int lastFlowingStep(const AnalysisState& s) {
    const int n = typedCount(s);
    if (s.ShutInFlag != 1)
        return n;
    for (int j = n; j >= 1; --j)
        if (normalisingRate(s, j) != 0.0)
            return j;
    return n;
}

AnalysisRates analysisRates(const AnalysisState& s) {
    AnalysisRates r;
    const int last = lastFlowingStep(s);
    double elapsed = 0.0;
    for (int j = 1; j <= last; ++j) {
        elapsed += s.RateTime[j];
        const double q = normalisingRate(s, j);
        if (r.count == 0 || q != r.rate[r.count])
            ++r.count;
        r.rate[r.count] = q;
        r.end[r.count] = elapsed;
        r.typed[r.count] = static_cast<std::int16_t>(j);
    }
    return r;
}

} // namespace zorvekan
