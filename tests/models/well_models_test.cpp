// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "models/well_models.h"
#include "typecurve/curve_parameters.h"

#include "../support/raised.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>

namespace zorvekan {
namespace {

using std::numbers::pi;

// ln 4 - gamma: the constant of the semilog line, 0.80907 to five places.
const double kSemilogConstant = std::log(4.0) - std::numbers::egamma;

// The storage hump's peak by golden-section search on log10 T.
std::pair<double, double> derivativePeak(double cde2s) {
    const double g = (std::sqrt(5.0) - 1.0) / 2.0;
    double lo = -1.0, hi = 3.0;
    const auto f = [&](double x) { return radialStorageDerivative(cde2s, std::pow(10.0, x)); };
    double a = hi - g * (hi - lo), b = lo + g * (hi - lo);
    double fa = f(a), fb = f(b);
    while (hi - lo > 1e-4) {
        if (fa > fb) {
            hi = b, b = a, fb = fa, a = hi - g * (hi - lo), fa = f(a);
        } else {
            lo = a, a = b, fa = fb, b = lo + g * (hi - lo), fb = f(b);
        }
    }
    return {std::pow(10.0, 0.5 * (lo + hi)), f(0.5 * (lo + hi))};
}

// Storage unit slope: a branch-cut integral with a wrong weight or a window that misses
// the small-u end no longer gives pD = T and T pD' = T at early time.
TEST(RadialStorage, UnitSlopeAtEarlyTime) {
    for (const double c : kSinglePorosityCDe2s) {
        const WellResponse r = radialStorageResponse(c, 1e-6);
        EXPECT_NEAR(r.pressure / 1e-6, 1.0, 0.005) << "CDe2s " << c;
        EXPECT_NEAR(r.derivative / 1e-6, 1.0, 0.005) << "CDe2s " << c;
    }
    // pD/T at T = 0.1, where storage is already giving way to the formation, within one
    // unit of the last published digit.
    struct Row {
        double cde2s, ratio, tolerance;
    };
    for (const Row row : {Row{0.3, 0.676, 1e-3}, Row{1, 0.788, 1e-3}, Row{1e4, 0.984, 1e-3},
                          Row{1e60, 0.9993, 1e-4}})
        EXPECT_NEAR(radialStoragePressure(row.cde2s, 0.1) / 0.1, row.ratio, row.tolerance)
            << "CDe2s " << row.cde2s;
}

// Radial flow: the late-time semilog line pD = 0.5 (ln T + ln 4 - gamma + ln CDe2s) and the
// derivative 0.5; a lost factor or constant in the late-time end of the integral shows.
TEST(RadialStorage, SemilogLineAtLateTime) {
    for (const double c : {1.0, 1e4, 1e60}) {
        const WellResponse r = radialStorageResponse(c, 1e10);
        EXPECT_NEAR(r.pressure, 0.5 * (std::log(1e10) + kSemilogConstant + std::log(c)), 1e-6);
        EXPECT_NEAR(r.derivative, 0.5, 1e-6);
    }
    // Still approaching the line at the right edge of the chart, T = 1e4.
    struct Row {
        double cde2s, pressureExcess, derivative;
    };
    for (const Row row :
         {Row{0.3, 0.0004, 0.4997}, Row{1e4, -0.00096, 0.5009}, Row{1e60, -0.0075, 0.5075}}) {
        const WellResponse r = radialStorageResponse(row.cde2s, 1e4);
        EXPECT_NEAR(r.pressure - 0.5 * (std::log(1e4) + 0.80907 + std::log(row.cde2s)),
                    row.pressureExcess, 1e-4);
        EXPECT_NEAR(r.derivative, row.derivative, 1e-4);
    }
}

// The storage hump: its height (to 1e-3) and place (to 1.2 %, the published values have
// three digits) for every curve with one. A step too coarse for the
// sharp minimum of D(u) (the hump is about 1/ln C wide in ln u) moves the peaks of the
// large-CDe2s curves by percents.
TEST(RadialStorage, DerivativeHumpHeightAndPlace) {
    struct Row {
        double cde2s, peak, at;
    };
    const Row rows[] = {{1, 0.521, 15.5},    {3, 0.645, 5.71},    {10, 0.834, 4.73},
                        {1e2, 1.254, 5.05},  {1e3, 1.699, 5.97},  {1e4, 2.148, 7.05},
                        {1e6, 3.041, 9.35},  {1e8, 3.926, 11.7},  {1e10, 4.805, 14.1},
                        {1e15, 6.984, 19.9}, {1e20, 9.148, 25.8}, {1e30, 13.45, 37.5},
                        {1e40, 17.74, 49.1}, {1e50, 22.01, 60.7}, {1e60, 26.28, 72.3}};
    for (const Row row : rows) {
        const auto [at, peak] = derivativePeak(row.cde2s);
        EXPECT_NEAR(peak / row.peak, 1.0, 1e-3) << "CDe2s " << row.cde2s;
        EXPECT_NEAR(at / row.at, 1.0, 0.012) << "CDe2s " << row.cde2s;
    }
}

// CDe2s = 0.3 has no hump: its derivative rises to 0.5 without overshooting.
TEST(RadialStorage, SmallestCurveRisesMonotonically) {
    double previous = 0.0;
    for (double x = -1.0; x <= 4.0; x += 0.125) {
        const double d = radialStorageDerivative(0.3, std::pow(10.0, x));
        EXPECT_GT(d, previous) << "x " << x;
        EXPECT_LT(d, 0.5) << "x " << x;
        previous = d;
    }
}

// Linear flow from the fracture: pD = sqrt(pi tDxf), derivative half of it, for every
// reservoir size. A wrong image sum or a fracture read at the wrong point shows here first.
TEST(Fracture, HalfSlopeAtEarlyTime) {
    for (const double a : kFractureXeOverXf)
        for (const double t : {1e-4, 1e-3}) {
            const WellResponse r = fractureResponse(a, t);
            EXPECT_NEAR(r.pressure / std::sqrt(pi * t), 1.0, 1e-5) << "xe/xf " << a;
            EXPECT_NEAR(r.derivative / (0.5 * std::sqrt(pi * t)), 1.0, 1e-5) << "xe/xf " << a;
        }
}

// Pseudo-steady state in the closed square: derivative = 2 pi tDA (unit slope) and
// pD - 2 pi tDA = K(a), for the 0.732 device and the uniform-flux well. K carries both the
// early image integral and the late eigenfunction sums, so it checks the whole path.
TEST(Fracture, PseudoSteadyStateConstant) {
    struct Row {
        double a, device, uniformFlux;
    };
    const Row rows[] = {{1, 0.52360, 0.52360},  {1.5, 0.65637, 0.84821}, {2, 0.86673, 1.10910},
                        {3, 1.22087, 1.49589},  {5, 1.70660, 1.99730},   {7, 2.03630, 2.33120},
                        {10, 2.38939, 2.68651}, {15, 2.79296, 3.09125}};
    for (const Row row : rows) {
        const double t = 8.0 * row.a * row.a; // tDA = 2
        const double pss = pi * t / (2.0 * row.a * row.a);
        const WellResponse r = fractureResponse(row.a, t);
        EXPECT_NEAR(r.derivative / pss, 1.0, 1e-9) << "xe/xf " << row.a;
        EXPECT_NEAR(r.pressure - pss, row.device, 1e-5) << "xe/xf " << row.a;
        EXPECT_NEAR(fracturePressure(row.a, t, 0.0) - pss, row.uniformFlux, 1e-5)
            << "xe/xf " << row.a;
    }
}

// When the boundaries are felt: the derivative stays within 1 % of the infinite curve until
// about the tabulated time and then leaves it, and reaches the unit slope within 1 % at
// about the tabulated start of pseudo-steady state (both bracketed within 10 %).
TEST(Fracture, DepartureAndStartOfPseudoSteadyState) {
    struct Row {
        double a, leaves, pssFrom;
    };
    const Row rows[] = {{1, 0.0068, 0.54}, {1.5, 0.13, 1.23}, {2, 0.41, 2.3}, {3, 1.26, 5.4},
                        {5, 4.0, 15},      {7, 8.1, 30},      {10, 16.6, 62}, {15, 38, 138}};
    const auto offInfinite = [](double a, double t) {
        return std::abs(fractureDerivative(a, t) / fractureDerivative(kInfiniteReservoir, t) - 1);
    };
    const auto offPss = [](double a, double t) {
        return std::abs(fractureDerivative(a, t) / (pi * t / (2.0 * a * a)) - 1.0);
    };
    for (const Row row : rows) {
        EXPECT_LT(offInfinite(row.a, 0.9 * row.leaves), 0.01) << "xe/xf " << row.a;
        EXPECT_GT(offInfinite(row.a, 1.1 * row.leaves), 0.01) << "xe/xf " << row.a;
        EXPECT_GT(offPss(row.a, 0.9 * row.pssFrom), 0.01) << "xe/xf " << row.a;
        EXPECT_LT(offPss(row.a, 1.1 * row.pssFrom), 0.01) << "xe/xf " << row.a;
    }
}

// The infinite reservoir: the 0.732 device's published pD values, its pseudo-radial line
// 0.5 (ln tDxf + 2.2106) and the derivative 0.5.
TEST(Fracture, InfiniteReservoir) {
    struct Row {
        double t, pressure;
    };
    const Row rows[] = {{0.001, 0.05605}, {0.01, 0.1765}, {0.03, 0.2955}, {0.1, 0.4945},
                        {0.3, 0.7692},    {1, 1.2031},    {3, 1.6895},    {10, 2.2674},
                        {100, 3.4090},    {1000, 4.5593}};
    for (const Row row : rows)
        EXPECT_NEAR(fracturePressure(kInfiniteReservoir, row.t), row.pressure, 6e-5)
            << "tDxf " << row.t;
    const WellResponse late = fractureResponse(kInfiniteReservoir, 1e6);
    EXPECT_NEAR(late.pressure, 0.5 * (std::log(1e6) + 2.2106), 1e-4);
    EXPECT_NEAR(late.derivative, 0.5, 1e-6);
}

// Early time is integrated with images and late time with eigenfunctions, switching at
// tDxf = (xe/xf)^2: pD and its derivative must not jump there.
TEST(Fracture, NoJumpWhereImagesGiveWayToEigenfunctions) {
    for (const double a : {1.0, 1.5, 3.0, 15.0}) {
        const double t = a * a;
        const WellResponse before = fractureResponse(a, t * (1 - 1e-12));
        const WellResponse after = fractureResponse(a, t * (1 + 1e-12));
        EXPECT_NEAR(before.pressure, after.pressure, 1e-10) << "xe/xf " << a;
        EXPECT_NEAR(before.derivative, after.derivative, 1e-10) << "xe/xf " << a;
    }
}

// The plateau R = K0(r)/(r K1(r)) of each pressure transition curve, and its logarithmic
// form 0.5 (ln(1/lambda') + 0.23186) for small lambda'.
TEST(DualPorosity, PressurePlateaus) {
    const double plateaus[] = {1.455, 2.463, 3.578, 4.722, 7.024, 9.326,
                               11.63, 17.39, 23.14, 34.65, 46.17, 57.68};
    for (std::size_t k = 0; k < kTransitionLambdaE2s.size(); ++k) {
        const double lambda = kTransitionLambdaE2s[k];
        const double r = dualPorosityPlateau(lambda);
        EXPECT_NEAR(r / plateaus[k], 1.0, 4e-4) << "lambda e^-2s " << lambda;
        if (lambda <= 1e-4) {
            EXPECT_NEAR(r / (0.5 * (std::log(1 / lambda) + 0.23186)), 1.0, 3e-4);
        }
        // Unit slope first, the plateau last.
        EXPECT_NEAR(dualPorosityTransitionPressure(lambda, 1e-4 * r) / (1e-4 * r), 1.0, 1e-4);
        EXPECT_NEAR(dualPorosityTransitionPressure(lambda, 50 * r) / r, 1.0, 1e-12);
    }
}

// Derivative transitions: 0.5/e at T = 1/P1 (y = -0.7353) and 0.5 (1 - 1/e) at T = 1/P2
// (y = -0.5002); the log form of the descending curve agrees with the direct one and stays
// finite where e^(-P1 T) underflows.
TEST(DualPorosity, DerivativeTransitions) {
    for (const double p1 : kDescendingP1) {
        EXPECT_NEAR(std::log10(dualPorosityDescendingDerivative(p1, 1 / p1)), -0.7353, 1e-4);
        EXPECT_NEAR(dualPorosityLogDescendingDerivative(p1, 1 / p1), -0.7353, 1e-4);
        EXPECT_NEAR(dualPorosityLogDescendingDerivative(p1, 7 / p1),
                    std::log10(dualPorosityDescendingDerivative(p1, 7 / p1)), 1e-12);
    }
    for (const double p2 : kAscendingP2)
        EXPECT_NEAR(std::log10(dualPorosityAscendingDerivative(p2, 1 / p2)), -0.5002, 1e-4);
    EXPECT_NEAR(dualPorosityLogDescendingDerivative(0.1, 1e5), std::log10(0.5) - 1e4 / std::log(10),
                1e-9);
    // Their sum is 0.5 before and after the transition.
    EXPECT_NEAR(warrenRootDerivative(0.01, 0.0001, 1e-3), 0.5, 1e-5);
    EXPECT_NEAR(warrenRootDerivative(0.01, 0.0001, 1e6), 0.5, 1e-12);
}

// The whole double-porosity well: with omega = 1 it is the single-porosity well (an error in
// the Laplace form or the Stehfest weights shows at once), and once storage has ended its
// derivative (central difference in ln T) is the sum of the two transition halves with
// P1 = lambda' CDe2s / (omega (1 - omega)) = 1E-3 and P2 = lambda' CDe2s / (1 - omega) = 1E-4.
TEST(DualPorosity, WholeWellLimits) {
    for (const double t : {0.01, 1.0, 100.0, 1e4})
        EXPECT_NEAR(dualPorosityStoragePressure(1000, 9e-8, 1.0, t) /
                        radialStoragePressure(1000, t),
                    1.0, 1e-5)
            << t;
    for (const double t : {3e3, 1e4, 1e5}) {
        const double h = 0.02;
        const double d = (dualPorosityStoragePressure(1000, 9e-8, 0.1, t * std::exp(h)) -
                          dualPorosityStoragePressure(1000, 9e-8, 0.1, t * std::exp(-h))) /
                         (2 * h);
        EXPECT_NEAR(d / warrenRootDerivative(1e-3, 1e-4, t), 1.0, 5e-3) << t;
    }
    EXPECT_EQ(
        testing::raised([] { return dualPorosityStoragePressure(1000, 9e-8, 0.0, 1.0); }).fault,
        Fault::InvalidArgument);
}

// Arguments outside a model's domain are run-time faults, never NaN.
TEST(WellModels, ArgumentsOutsideTheDomainAreFaults) {
    const std::function<double()> calls[] = {
        [] { return radialStoragePressure(0.0, 1.0); },
        [] { return radialStoragePressure(1.0, -1.0); },
        [] { return radialStoragePressure(1e60, 1e20); }, // beyond the tabulated window
        [] { return radialStorageDerivative(1.0, std::nan("")); },
        [] { return fracturePressure(0.5, 1.0); },
        [] { return fracturePressure(2.0, 0.0); },
        [] { return fractureDerivative(2.0, 1.0, 1.0); },
        [] { return dualPorosityPlateau(0.0); },
        [] { return dualPorosityTransitionPressure(1e-3, -1.0); },
        [] { return dualPorosityAscendingDerivative(-0.1, 1.0); },
    };
    for (const auto& call : calls) {
        const testing::Raised r = testing::raised(call);
        EXPECT_EQ(r.fault, Fault::InvalidArgument) << r.message;
    }
}

} // namespace
} // namespace zorvekan
