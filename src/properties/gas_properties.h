// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// Gas properties of the property calculator at one pressure and temperature.

enum class ZFactorFailure {
    None = 0,
    ReducedTemperatureBelowOne = 1,
    ReducedPressureAbove20_5 = 2
};

struct ZFactorResult {
    ZFactorFailure failure = ZFactorFailure::None;
    double z = 0;  // valid when failure is None
    double bg = 0; // RB/MCF, valid when failure is None
};

// Pseudo-critical properties by the gas kind (GasKind 1 dry, otherwise wet):
//   dry: Tpc = 168 + 325g - 12.5g^2, Ppc = 677 + 15g - 37.5g^2
//   wet: Tpc = 187 + 330g - 71.5g^2, Ppc = 706 - 51.7g - 11.1g^2
// then the Hall-Yarborough z (valid for Tpr >= 1 and Ppr <= 20.5) and
// Bg = 5.035*z*(T + 460)/p. Stores the Hall-Yarborough B in s.OilFvf once Tpr is
// accepted, as every reader of OilFvf after a property calculation expects.
ZFactorResult ZFactor(AnalysisState& s, double gravity, double temperatureF, double pressure);

// cg = 1/p - (z(p+5) - z(p-5)) / (dp*z), dp = 10 psi (1/psi); no value unless z > 0.
std::optional<double> GasCompressibility(double p, double z, double zMinus, double zPlus,
                                         double dp = 10.0);

// Lee-Gonzalez-Eakin viscosity (cp) with Ma = 28.9*g; the density is
// 0.00752*Ma/Bg g/cc, or 1 g/cc when Bg is 0.
double GasViscosity(double gravity, double temperatureF, double bg);

// Gas density 13.56*g/Bg (lb/cu ft); no value unless Bg > 0.
std::optional<double> GasDensity(double gravity, double bg);

// Everything "Calculate PVT Properties" computes for the gas, in its calling order.
struct GasCalculation {
    ZFactorFailure failure = ZFactorFailure::None;
    double z = 0, bg = 0, viscosity = 0;
    std::optional<double> compressibility; // 1/psi
    std::optional<double> density;         // lb/cu ft
};

// Runs the calculator's gas part (only meaningful for gravity > 0). On a z failure at
// p the other values are not computed; failures at p - 5 and p + 5 are ignored.
GasCalculation CalculateGasProperties(AnalysisState& s, double gravity, double temperatureF,
                                      double pressure);

// "pTr<1: z-factor Routine FAILS" / "pPr>20.5: z-factor Routine FAILS".
std::string zFactorFailureMessage(ZFactorFailure failure);

// The calculator's gas result lines with their display masks:
// z "#.###", Bg "##.###", cg in microsips "####.#", viscosity "#.###", density "####.##".
std::vector<std::string> gasResultLines(const GasCalculation& g);

} // namespace zorvekan
