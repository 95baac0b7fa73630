// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "properties/gas_properties.h"

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// The gas part of "Calculate PVT Properties" as the property calculator runs it.
struct CalculatorGasOutcome {
    std::vector<std::string> lines;       // z, Bg, cg, viscosity, density with their masks
    std::optional<std::string> note;      // shown in the message box when nothing is computed
    std::optional<std::string> fatal;     // z-factor failure: shown, then the program ends
    std::optional<GasCalculation> values; // the numbers behind the lines, when computed
};

// Gas properties at p (psia) and T (deg F) only for a gravity above 0; otherwise a note
// and no result. The z-factor routine stores its B in OilFvf (CalculateGasProperties).
CalculatorGasOutcome calculateGasPart(AnalysisState& s, double gravity, double temperatureF,
                                      double pressure);

// The "Correlation Selected" lines before the engineer chooses: the correlations the
// stored codes stand for (Standing and wet gas at start).
std::string selectedOilCorrelation(const AnalysisState& s);
std::string selectedGasKind(const AnalysisState& s);

} // namespace zorvekan
