// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// Formation water (brine) properties by McCain's set of correlations: McCain, W.D. Jr.
// (1990), "The Properties of Petroleum Fluids", 2nd ed., PennWell, and McCain (1991),
// "Reservoir-Fluid Property Correlations - State of the Art", SPERE (May) 266-272.

struct WaterInput {
    double temperature = 0; // deg F
    double pressure = 0;    // psia
    double salinity = 0;    // NaCl, weight percent of the brine
};

struct WaterProperties {
    double fvf = 0;             // RB/STB
    double solutionGas = 0;     // scf/STB of methane dissolved at saturation
    double compressibility = 0; // 1/psi, brine without free gas
    double viscosity = 0;       // cp
    double density = 0;         // lb/cu ft at p and T
    std::vector<std::string> rangeNotes;
};

enum class SalinityUnit { Ppm, Percent };

// Weight percent NaCl from parts per million (ppm / 10^4) or from percent.
double salinityPercent(double value, SalinityUnit unit);

// Why the water properties cannot be computed from these inputs, or nothing.
std::optional<std::string> waterInputProblem(const WaterInput& in);

WaterProperties waterProperties(const WaterInput& in);

} // namespace zorvekan
