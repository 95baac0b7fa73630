// SPDX-License-Identifier: MIT
#include "core/derivative.h"

#include "core/checked_math.h"

#include <cmath>

namespace zorvekan {

namespace {

// Nearest index left of i at least `span` log cycles away, or 0 when none.
int leftPartner(const AnalysisState& s, int i, double span) {
    for (int j = i - 1; j >= 1; --j)
        if (std::fabs(s.LogTime[i] - s.LogTime[j]) >= span)
            return j;
    return 0;
}

// Nearest index right of i at least `span` log cycles away, or 0 when none.
int rightPartner(const AnalysisState& s, int i, int n, double span) {
    for (int r = i + 1; r <= n; ++r)
        if (std::fabs(s.LogTime[r] - s.LogTime[i]) >= span)
            return r;
    return 0;
}

double weightedDerivative(const AnalysisState& s, int j, int i, int r) {
    const auto& x = s.LogTime;
    const auto& t = s.TimeFunction;
    const auto& dp = s.DeltaP;
    const double spanLeft = x[i] - x[j];
    const double spanRight = x[r] - x[i];
    const double span = x[r] - x[j];
    const double weightLeft = divide(spanRight, span);
    const double weightRight = divide(spanLeft, span);
    const double slopeLeft = divide(dp[i] - dp[j], std::fabs(t[j] - t[i]));
    const double slopeRight = divide(dp[r] - dp[i], std::fabs(t[i] - t[r]));
    return finite(t[i] * (slopeRight * weightRight + slopeLeft * weightLeft), "derivative");
}

} // namespace

void ComputeDerivative(AnalysisState& s) {
    const int n = s.TestPointCount;
    const double span = s.DerivativeSpan;
    s.DerivativeCount = 0;
    for (int i = 2; i <= n - 1; ++i) {
        const int j = leftPartner(s, i, span);
        if (j == 0)
            continue;
        const int r = rightPartner(s, i, n, span);
        if (r == 0)
            break;
        const double d = weightedDerivative(s, j, i, r);
        if (d <= 0)
            continue;
        const int c = ++s.DerivativeCount;
        s.DerivativeLogTime[c] = s.LogTime[i];
        s.LogDerivative[c] = Log10(d);
    }
    for (int k = 1; k <= s.DerivativeCount; ++k)
        if (s.LogDerivative[k] < s.StorageYMin)
            s.StorageYMin = s.LogDerivative[k];
}

} // namespace zorvekan
