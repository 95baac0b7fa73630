// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "semilog/semilog_results.h"

#include <string>
#include <vector>

namespace zorvekan {

// The lines that let the engineer check the semilog straight line by hand, printed
// after its results: "Slope =" |m| per log cycle; "p* =" the line at x = 0 of a
// shut-in test (infinite shut-in time); "P1hr =" the line at one hour (shut-in time
// on a buildup or falloff, elapsed or equivalent time on a drawdown); "Dp Skin =" the
// pressure drop across the skin, 0.87 |m| s. Values are in the plotted unit: psi,
// m(p) in 1E6 psi2/cp, or per unit rate on a rate-normalised plot; p* in psia.
std::vector<std::string> semilogLineCheck(AnalysisState& s, const SemilogResults& r);

// The unit of the semilog plot's y: "psi", "(1E6) psi2/cp", with "/(STB/D)" or
// "/(MCF/D)" on a rate-normalised plot.
std::string semilogPlottedUnit(const AnalysisState& s);

} // namespace zorvekan
