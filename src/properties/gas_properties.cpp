// SPDX-License-Identifier: MIT
#include "properties/gas_properties.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/hall_yarborough.h"
#include "core/result_line.h"

#include <cmath>

namespace zorvekan {

namespace {

struct PseudoCritical {
    double temperature; // deg R
    double pressure;    // psia
};

PseudoCritical pseudoCritical(double gravity, bool dryGas) {
    const double g2 = gravity * gravity;
    if (dryGas)
        return {168.0 + 325.0 * gravity - 12.5 * g2, 677.0 + 15.0 * gravity - 37.5 * g2};
    return {187.0 + 330.0 * gravity - 71.5 * g2, 706.0 - 51.7 * gravity - 11.1 * g2};
}

} // namespace

ZFactorResult ZFactor(AnalysisState& s, double gravity, double temperatureF, double pressure) {
    const PseudoCritical pc = pseudoCritical(gravity, s.GasKind == 1);
    const double rankine = temperatureF + 460.0;
    const double tpr = divide(rankine, pc.temperature);
    ZFactorResult r;
    if (!(tpr >= 1.0)) {
        r.failure = ZFactorFailure::ReducedTemperatureBelowOne;
        return r;
    }
    const double t = 1.0 / tpr;
    const HallYarboroughCoefficients c = hallYarboroughCoefficients(t);
    s.OilFvf = c.b;
    const double ppr = divide(pressure, pc.pressure);
    if (!(ppr <= 20.5)) {
        r.failure = ZFactorFailure::ReducedPressureAbove20_5;
        return r;
    }
    r.z = hallYarboroughZ(c, t, ppr, pressure);
    r.bg = divide(5.035 * r.z * rankine, pressure);
    return r;
}

std::optional<double> GasCompressibility(double p, double z, double zMinus, double zPlus,
                                         double dp) {
    if (!(z > 0))
        return std::nullopt;
    return divide(1.0, p) - divide(zPlus - zMinus, dp * z);
}

double GasViscosity(double gravity, double temperatureF, double bg) {
    const double rankine = temperatureF + 460.0;
    const double ma = 28.9 * gravity;
    const double k =
        divide((9.4 + 0.02 * ma) * std::pow(rankine, 1.5), 209.0 + 19.0 * ma + rankine);
    const double x = 3.5 + divide(986.0, rankine) + 0.01 * ma;
    const double y = 2.4 - 0.2 * x;
    const double density = bg != 0.0 ? 0.00752 * ma / bg : 1.0;
    return finite(0.0001 * k * std::exp(x * std::pow(density, y)), "gas viscosity");
}

std::optional<double> GasDensity(double gravity, double bg) {
    if (!(bg > 0))
        return std::nullopt;
    return 13.56 * gravity / bg;
}

GasCalculation CalculateGasProperties(AnalysisState& s, double gravity, double temperatureF,
                                      double pressure) {
    GasCalculation g;
    const ZFactorResult at = ZFactor(s, gravity, temperatureF, pressure);
    g.failure = at.failure;
    if (at.failure != ZFactorFailure::None)
        return g;
    g.z = at.z;
    g.bg = at.bg;
    g.viscosity = GasViscosity(gravity, temperatureF, at.bg);
    // Neighbouring z values for the compressibility; their failure codes are not used.
    const ZFactorResult below = ZFactor(s, gravity, temperatureF, pressure - 5.0);
    const ZFactorResult above = ZFactor(s, gravity, temperatureF, pressure + 5.0);
    g.compressibility = GasCompressibility(pressure, at.z, below.z, above.z);
    g.density = GasDensity(gravity, at.bg);
    return g;
}

std::string zFactorFailureMessage(ZFactorFailure failure) {
    switch (failure) {
    case ZFactorFailure::ReducedTemperatureBelowOne:
        return "pTr<1: z-factor Routine FAILS";
    case ZFactorFailure::ReducedPressureAbove20_5:
        return "pPr>20.5: z-factor Routine FAILS";
    case ZFactorFailure::None:
        break;
    }
    return {};
}

std::vector<std::string> gasResultLines(const GasCalculation& g) {
    std::vector<std::string> lines;
    lines.push_back(resultLine("Gas Z-Factor =", Format(g.z, "#.###")));
    lines.push_back(resultLine("Gas FVF =", Format(g.bg, "##.###"), " RB/MCF"));
    if (g.compressibility)
        lines.push_back(resultLine(
            "Gas Compressibility =", Format(*g.compressibility * 1e6, "####.#"), " microsips"));
    lines.push_back(resultLine("Gas Viscosity =", Format(g.viscosity, "#.###"), " cp"));
    if (g.density)
        lines.push_back(resultLine("Gas Density =", Format(*g.density, "####.##"), " lb/cu ft"));
    return lines;
}

} // namespace zorvekan
