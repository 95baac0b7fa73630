// SPDX-License-Identifier: MIT
#include "core/pseudopressure.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

AnalysisState gasTest(int shutIn) {
    AnalysisState s;
    s.FluidFlags = kGasPseudopressure;
    s.ShutInFlag = static_cast<std::int16_t>(shutIn);
    s.ReservoirTemperature = 200.0;
    s.GasGravity = 0.7;
    return s;
}

// The integrand p/(mu*z) of the gas in s at p.
double integrand(AnalysisState& s, double p) {
    const double z = GasZFactor(s, p);
    return p / (GasViscosityAndFvf(s, p, z).viscosity * z);
}

// 2*integral of p/(mu*z) from 14.7 psia to p by composite Simpson on a fine grid,
// independent of the program's 50-psi trapezoids; in psi^2/cp.
double referencePseudopressure(AnalysisState& s, double p) {
    const int n = 4000;
    const double h = (p - 14.7) / n;
    auto f = [&](double x) { return integrand(s, x); };
    double sum = f(14.7) + f(p);
    for (int i = 1; i < n; ++i)
        sum += (i % 2 ? 4.0 : 2.0) * f(14.7 + i * h);
    return 2.0 * sum * h / 3.0;
}

// The pseudopressure of every point of a buildup and a drawdown agrees with an
// independent integration of 2p/(mu*z). Gauge data lie a few psi to a few tens of psi
// apart; there the program's trapezoids (50-psi grid, then point to point) are
// accurate to better than 1e-4 of m(p).
TEST(Pseudopressure, AgreesWithIndependentIntegration) {
    for (int shutIn : {1, 0}) {
        AnalysisState s = gasTest(shutIn);
        const int n = 20;
        s.TestPointCount = n;
        for (int i = 1; i <= n; ++i)
            s.TestPressure[i] = shutIn ? 1500.0 + 25.0 * i : 3000.0 - 25.0 * i;
        s.StartPressure = shutIn ? 1500.0 : 3000.0;
        ComputePseudopressures(s);
        for (int i = 0; i <= n; ++i) {
            const double p = i == 0 ? s.StartPressure : s.TestPressure[i];
            const double expected = referencePseudopressure(s, p) / 1e6;
            EXPECT_NEAR(s.TestPseudoPressure[i], expected, 1e-4 * expected)
                << "shut-in " << shutIn << " p " << p;
        }
        EXPECT_EQ(s.StartPseudoPressure, s.TestPseudoPressure[0]);
    }
}

// Along the data each step is one trapezoid, however wide: a 500-psi jump adds
// exactly (f(p1) + f(p2)) * (p2 - p1), which reads m(p) about 0.2 % low at 2000 psia
// (f is concave). A later falling pressure subtracts in the same way.
TEST(Pseudopressure, DataStepsAreSingleTrapezoids) {
    AnalysisState s = gasTest(1);
    s.StartPressure = 1500.0;
    s.TestPointCount = 2;
    s.TestPressure[1] = 2000.0;
    s.TestPressure[2] = 1900.0;
    ComputePseudopressures(s);
    const double step = (s.PointIntegrand[0] + s.PointIntegrand[1]) * 500.0 / 1e6;
    EXPECT_NEAR(s.TestPseudoPressure[1] - s.TestPseudoPressure[0], step, 1e-9);
    const double back = (s.PointIntegrand[1] + s.PointIntegrand[2]) * -100.0 / 1e6;
    EXPECT_NEAR(s.TestPseudoPressure[2] - s.TestPseudoPressure[1], back, 1e-9);
    const double reference = referencePseudopressure(s, 2000.0) / 1e6;
    EXPECT_NEAR(s.TestPseudoPressure[1] / reference, 0.998, 0.001);
}

// At or below 64.7 psia the grid stops at once and m is the single trapezoid from
// the base pressure: (f(p) + f(14.7)) * (p - 14.7).
TEST(Pseudopressure, LowPressureIsOneTrapezoid) {
    AnalysisState s = gasTest(1);
    s.StartPressure = 60.0;
    s.TestPointCount = 0;
    ComputePseudopressures(s);
    AnalysisState probe = gasTest(1);
    const double trapezoid = (integrand(probe, 60.0) + integrand(probe, 14.7)) * (60.0 - 14.7);
    EXPECT_NEAR(s.StartPseudoPressure * 1e6, trapezoid, 1e-9);
    EXPECT_DOUBLE_EQ(s.GridPressure[1], 14.7);
}

// Above 14,964.7 psia the grid is exhausted and the last 50-psi interval is counted
// twice; results computed with the program have always carried that excess, which
// is the trapezoid of the interval 14,914.7..14,964.7.
TEST(Pseudopressure, DoubleCountAboveTheGrid) {
    AnalysisState s = gasTest(1);
    s.StartPressure = 15200.0;
    s.TestPointCount = 0;
    ComputePseudopressures(s);
    const double excess = (s.GridIntegrand[300] + s.GridIntegrand[299]) * 50.0;
    const double reference = referencePseudopressure(s, 15200.0);
    EXPECT_NEAR(s.StartPseudoPressure * 1e6 - reference, excess, 2e-4 * reference);
    EXPECT_GT(excess, 1e-3 * reference);
}

// The integration leaves the Hall-Yarborough B and the gas viscosity of the last
// pressure evaluated in OilFvf and OilViscosity, which other screens then read.
TEST(Pseudopressure, LeavesLastPropertiesInTheOilFields) {
    AnalysisState s = gasTest(0);
    s.OilFvf = 1.25;
    s.OilViscosity = 0.8;
    s.StartPressure = 3000;
    s.TestPointCount = 2;
    s.TestPressure[1] = 2800;
    s.TestPressure[2] = 2500;
    ComputePseudopressures(s);
    // A drawdown integrates from the last point back to the start: p0 is evaluated last.
    AnalysisState probe = gasTest(0);
    const double z = GasZFactor(probe, 3000.0);
    const double mu = GasViscosityAndFvf(probe, 3000.0, z).viscosity;
    EXPECT_DOUBLE_EQ(s.OilFvf, probe.OilFvf);
    EXPECT_DOUBLE_EQ(s.OilViscosity, mu);
    EXPECT_NE(s.OilFvf, 1.25);
}

} // namespace
} // namespace zorvekan
