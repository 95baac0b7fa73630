// SPDX-License-Identifier: MIT
#include "core/pseudopressure.h"

#include "core/checked_math.h"
#include "core/hall_yarborough.h"

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kBasePressure = 14.7; // psia
constexpr double kGridStep = 50.0;     // psi

// p / (mu_g * z): half the integrand of m(p).
double integrand(AnalysisState& s, double p) {
    const double z = GasZFactor(s, p);
    const GasFvfAndViscosity g = GasViscosityAndFvf(s, p, z);
    return divide(p, g.viscosity * z);
}

} // namespace

double GasZFactor(AnalysisState& s, double p) {
    const double rankine = s.ReservoirTemperature + 460.0;
    const double gravity = s.GasGravity;
    const double tpc = 167.0 + 316.67 * gravity;
    const double ppc = 702.5 - 50.0 * gravity;
    const double t = divide(tpc, rankine); // reciprocal reduced temperature
    const double ppr = divide(p, ppc);
    const HallYarboroughCoefficients c = hallYarboroughCoefficients(t);
    s.OilFvf = c.b;
    return hallYarboroughZ(c, t, ppr, p);
}

GasFvfAndViscosity GasViscosityAndFvf(AnalysisState& s, double p, double z) {
    const double rankine = s.ReservoirTemperature + 460.0;
    const double ma = 28.8 * s.GasGravity;
    const double k =
        divide((9.4 + 0.02 * ma) * std::pow(rankine, 1.5), 209.0 + 19.0 * ma + rankine);
    const double x = 3.5 + divide(986.0, rankine) + 0.01 * ma;
    const double y = 2.4 - 0.2 * x;
    const double bg = divide(5.035 * z * rankine, p);
    const double density = divide(0.00752 * ma, bg);
    const double viscosity = finite(1e-4 * k * std::exp(x * std::pow(density, y)), "gas viscosity");
    s.OilViscosity = viscosity;
    return {bg, viscosity};
}

void ComputePseudopressures(AnalysisState& s) {
    const int n = s.TestPointCount;
    for (int i = 1; i <= n; ++i)
        s.WorkPressure[i] = s.TestPressure[i];
    s.WorkPressure[0] = s.StartPressure;

    // Integrate from the lowest pressure of the test: the flowing pressure at
    // shut-in (index 0) for a buildup or falloff, the last point for a drawdown.
    int first = 0, last = n, step = 1;
    if (s.ShutInFlag != 1) {
        first = n;
        last = 0;
        step = -1;
    }

    // Grid from the base pressure up to p_k.
    const double pk = s.WorkPressure[first];
    s.GridPressure[1] = kBasePressure;
    s.GridIntegrand[1] = integrand(s, kBasePressure);
    double sum = 0.0;
    int lastPass = 1;
    for (int i = 2; i <= kGridPoints; ++i) {
        lastPass = i;
        s.GridPressure[i] = s.GridPressure[i - 1] + kGridStep;
        if (s.GridPressure[i] >= pk)
            break;
        s.GridIntegrand[i] = integrand(s, s.GridPressure[i]);
        sum += (s.GridIntegrand[i] + s.GridIntegrand[i - 1]) *
               (s.GridPressure[i] - s.GridPressure[i - 1]);
    }
    const int g = lastPass - 1;

    BoundedArray<double, kMaxTestPoints + 1> m;
    s.PointIntegrand[first] = integrand(s, pk);
    m[first] = sum + (s.PointIntegrand[first] + s.GridIntegrand[g]) * (pk - s.GridPressure[g]);

    // Along the data, point to point; a falling pressure simply subtracts.
    for (int j = first + step; j != last + step; j += step) {
        const double p = s.WorkPressure[j];
        s.PointIntegrand[j] = integrand(s, p);
        m[j] = m[j - step] +
               (s.PointIntegrand[j] + s.PointIntegrand[j - step]) * (p - s.WorkPressure[j - step]);
    }

    for (int j = 0; j <= n; ++j)
        s.TestPseudoPressure[j] = finite(m[j] / 1000000.0, "pseudopressure");
    s.StartPseudoPressure = s.TestPseudoPressure[0];
}

} // namespace zorvekan
