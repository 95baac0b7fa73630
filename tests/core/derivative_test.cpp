// SPDX-License-Identifier: MIT
#include "core/checked_math.h"
#include "core/derivative.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace zorvekan {
namespace {

// Prepared series of n points log-spaced `step` cycles apart from 10^x0 hours,
// with the pressure change given as a function of time.
AnalysisState series(int n, double x0, double step, const std::function<double(double)>& dp) {
    AnalysisState s;
    s.TestPointCount = static_cast<std::int16_t>(n);
    s.StorageYMin = 100;
    for (int i = 1; i <= n; ++i) {
        const double t = std::pow(10.0, x0 + (i - 1) * step);
        s.TimeFunction[i] = t;
        s.LogTime[i] = Log10(t);
        s.DeltaP[i] = dp(t);
        s.LogDeltaP[i] = Log10(s.DeltaP[i]);
    }
    return s;
}

// Radial flow: a semilog straight line dp = m*log10(t) + b has the derivative
// t*d(dp)/dt = m/ln(10) = m/2.303 at every point. The slopes are secants in linear
// time, which read a semilog line high by a fixed amount that grows with the spacing:
// 0.2 % for partners 0.05 cycles away, 1.7 % for 0.2 cycles. The derivative must be
// the same at every point (a flat radial-flow stabilisation).
TEST(Derivative, SemilogLineGivesConstantDerivative) {
    struct Row {
        double step, span, tolerance;
    };
    const double m = 75.0;
    const double exact = m / std::log(10.0);
    for (const Row row : {Row{0.05, 0.045, 0.003}, Row{0.1, 0.19, 0.018}}) {
        AnalysisState s =
            series(41, -1.0, row.step, [&](double t) { return m * std::log10(t) + 300.0; });
        s.DerivativeSpan = row.span;
        ComputeDerivative(s);
        ASSERT_GT(s.DerivativeCount, 30);
        const double first = std::pow(10.0, s.LogDerivative[1]);
        for (int k = 1; k <= s.DerivativeCount; ++k) {
            const double d = std::pow(10.0, s.LogDerivative[k]);
            EXPECT_NEAR(d, exact, row.tolerance * exact) << "at log t " << s.DerivativeLogTime[k];
            EXPECT_NEAR(d, first, 1e-9 * first);
        }
    }
}

// Wellbore storage: dp = C*t (unit slope) has derivative t*C = dp exactly, whatever
// the spacing — both one-sided slopes equal C.
TEST(Derivative, UnitSlopeGivesDerivativeEqualToChange) {
    AnalysisState s = series(30, -3.0, 0.1, [](double t) { return 250.0 * t; });
    s.DerivativeSpan = 0.25;
    ComputeDerivative(s);
    ASSERT_GT(s.DerivativeCount, 0);
    for (int k = 1; k <= s.DerivativeCount; ++k)
        EXPECT_NEAR(s.LogDerivative[k], s.DerivativeLogTime[k] + std::log10(250.0), 1e-12);
}

// Partner choice: each derivative uses the nearest points at least L log cycles away
// on both sides, so the points closer than L to either end get none; a stale count
// must not survive.
TEST(Derivative, PartnersAtLeastTheSpacingAway) {
    struct Row {
        int n;
        double step, span;
        int count;
        double first, last; // log times of the first and last derivative points
    };
    const Row rows[] = {
        {10, 0.05, 0.095, 6, 0.10, 0.35}, // two steps away: points 3..8
        {12, 0.1, 0.45, 2, 0.5, 0.6},     // i - 5 >= 1 and i + 5 <= 12: points 6, 7
        {2, 0.5, 0.05, 0, 0, 0},          // too few points: none
    };
    for (const Row& r : rows) {
        AnalysisState s = series(r.n, 0.0, r.step, [](double t) { return 10.0 * t; });
        s.DerivativeSpan = r.span;
        s.DerivativeCount = 17;
        ComputeDerivative(s);
        ASSERT_EQ(s.DerivativeCount, r.count) << r.n;
        if (r.count > 0) {
            EXPECT_NEAR(s.DerivativeLogTime[1], r.first, 1e-12);
            EXPECT_NEAR(s.DerivativeLogTime[r.count], r.last, 1e-12);
        }
    }
}

// A flat change gives D = 0 and a falling change D < 0: such points are dropped
// (no logarithm of a non-positive derivative), and the next accepted point takes
// their slot.
TEST(Derivative, NonPositiveDerivativesAreDropped) {
    AnalysisState s = series(6, 0.0, 0.1, [](double) { return 100.0; });
    s.DeltaP[5] = 120.0;
    s.DeltaP[6] = 80.0;
    s.DerivativeSpan = 0.05;
    ComputeDerivative(s);
    // Points 2 and 3 are flat (D = 0); point 4 rises towards 5 (kept); point 5 rises
    // by 20 psi on its left but falls by 40 psi on its right, so D < 0.
    for (int k = 1; k <= s.DerivativeCount; ++k)
        EXPECT_TRUE(std::isfinite(s.LogDerivative[k]));
    EXPECT_EQ(s.DerivativeCount, 1);
    EXPECT_NEAR(s.DerivativeLogTime[1], 0.3, 1e-12);
}

// The log-log plot's lower bound follows the smallest derivative so it is never
// clipped; a derivative above the data does not move it.
TEST(Derivative, LowersTheStorageMinimum) {
    AnalysisState s = series(20, 0.0, 0.1, [](double t) { return 100.0 + 10.0 * std::log10(t); });
    s.StorageYMin = 2.0;
    s.DerivativeSpan = 0.2;
    ComputeDerivative(s);
    double smallest = 100;
    for (int k = 1; k <= s.DerivativeCount; ++k)
        smallest = std::min(smallest, s.LogDerivative[k]);
    EXPECT_DOUBLE_EQ(s.StorageYMin, smallest);
    EXPECT_LT(s.StorageYMin, 1.0);
}

// With L = 0 two equal times would be partners: the division by a zero time
// difference must be reported, not produce infinity.
TEST(Derivative, EqualTimesWithZeroSpacingAreAFault) {
    AnalysisState s = series(4, 0.0, 0.1, [](double t) { return 10 * t; });
    s.TimeFunction[3] = s.TimeFunction[2];
    s.LogTime[3] = s.LogTime[2];
    s.DerivativeSpan = 0.0;
    EXPECT_THROW(ComputeDerivative(s), RuntimeError);
}

} // namespace
} // namespace zorvekan
