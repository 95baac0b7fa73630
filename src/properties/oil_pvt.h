// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// Black-oil properties by the published correlations of the correlation list
// (OilCorrelation 0..8). Units: psia, deg F, scf/STB, RB/STB, 1/psi, cp, lb/cu ft.
// Where the authors of a correlation published no formula for a property, one named
// standard is used instead, and oilStandardsUsed() says which.

enum class OilCorrelationCode {
    Standing = 0,
    VazquezBeggs = 1,
    Glaso = 2,
    AlMarhoun = 3,
    PetroskyFarshad = 4,
    DoklaOsman = 5,
    FarshadColombia = 6,
    ObomanuOkpobiri = 7,
    KartoatmodjoSchmidt = 8,
};

// The correlation of a stored OilCorrelation code; codes outside 0..8 have none.
std::optional<OilCorrelationCode> oilCorrelation(int code);

struct OilInput {
    double api = 0;         // stock-tank oil gravity, deg API
    double gasGravity = 0;  // separator gas gravity, air = 1 (taken at 100 psig)
    double temperature = 0; // reservoir temperature, deg F
    double pressure = 0;    // psia
    double gor = 0;         // solution GOR at the bubble point, scf/STB (used when > 0)
    double bubblePoint = 0; // psia, used when no GOR is given
};

struct OilProperties {
    std::optional<double> bubblePoint; // psia; none when the GOR puts it below 0
    double gorAtBubblePoint = 0;       // scf/STB, the input GOR when one is given
    double gor = 0;                    // solution GOR at p
    double fvfAtBubblePoint = 0;       // RB/STB
    double fvf = 0;                    // RB/STB at p
    bool undersaturated = false;       // p at or above the bubble point
    // Undersaturated isothermal compressibility (1/psi) at p; set only above the
    // bubble point (below it the calculator adds the liberated gas, which needs Bg).
    std::optional<double> compressibility;
    double deadViscosity = 0;            // cp, gas-free oil at T
    double bubblePointViscosity = 0;     // cp, gas-saturated oil at the bubble point
    double viscosity = 0;                // cp at p
    double density = 0;                  // lb/cu ft at p
    std::vector<std::string> rangeNotes; // inputs outside the correlation's data
};

// Everything the calculator shows for the oil. The inputs must have been checked by
// oilInputProblem(); an arithmetic fault left after that is a RuntimeError.
OilProperties oilProperties(OilCorrelationCode c, const OilInput& in);

// Why the oil properties cannot be computed from these inputs, or nothing.
std::optional<std::string> oilInputProblem(const OilInput& in);

// Saturated oil compressibility below the bubble point (McCain 1990):
// co = -(1/Bo) dBo/dp + (Bg/Bo) dRs/dp, Bg in RB/scf, by central differences of
// +-5 psi on the correlation's Rs(p) and Bo(Rs). 1/psi.
double saturatedOilCompressibility(OilCorrelationCode c, const OilInput& in, double gasFvfRbPerMcf);

// The standards used beside the authors' own formulas, for the "Correlation Selected"
// column ("viscosity Beggs-Robinson, co Vazquez-Beggs"); empty when the authors
// published every property.
std::string oilStandardsUsed(OilCorrelationCode c);

// Solution GOR at p (scf/STB) and the bubble point of a GOR (psia) by the chosen
// correlation's own pair of formulas, as the calculator uses them.
double solutionGor(OilCorrelationCode c, const OilInput& in, double pressure);
double bubblePointPressure(OilCorrelationCode c, const OilInput& in, double gor);

// Reservoir oil density from the mass of stock-tank oil and dissolved gas in Bo
// reservoir barrels (Standing 1977): (62.4 go + 0.0136 Rs gg) / Bo, lb/cu ft.
double oilDensity(double api, double gasGravity, double gor, double fvf);

// Oil specific gravity from deg API: 141.5 / (131.5 + API).
double oilSpecificGravity(double api);

} // namespace zorvekan
