// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "properties/calculator_gas.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// "Calculate PVT Properties": the gas part first (its calls, its B left in OilFvf and
// its failure exactly as the gas routines define them), then the oil by the chosen
// OilCorrelation, the water, the formation compressibility and the total
// compressibility. Result lines are made here so the command line prints what the
// calculator shows.

struct PropertyInputs {
    double gasGravity = 0;  // air = 1
    double temperature = 0; // deg F
    double pressure = 0;    // psia
    double api = 0;         // oil gravity; no oil properties while 0
    double gor = 0;         // solution GOR at the bubble point, scf/STB
    double bubblePoint = 0; // psia, used when no GOR is given
    double salinity = 0;    // weight percent NaCl
    double porosity = 0;    // fraction
    double oilSaturation = 0, waterSaturation = 0, gasSaturation = 0; // fractions
    std::string formation = "Hall";                                   // Forch text
    std::string rockClass;                                            // Rocks text
};

// The properties "Copy to Input" can carry to the input screen.
struct PhaseValues {
    std::optional<double> oilFvf, oilViscosity;     // RB/STB, cp
    std::optional<double> gasFvf, gasViscosity;     // RB/MCF, cp
    std::optional<double> waterFvf, waterViscosity; // RB/STB, cp
    std::optional<double> totalCompressibility;     // 1/psi
};

struct PropertyCalculation {
    CalculatorGasOutcome gas; // a fatal z-factor failure stops everything after it
    std::vector<std::string> oilLines, waterLines, rockLines;
    std::vector<std::string> notes; // why a part was not computed, for the message box
    std::string oilStandards;       // standards beside the oil authors' formulas (column)
    std::string formationRemark;    // for the "Correlation Selected" column
    PhaseValues values;
};

PropertyCalculation calculateProperties(AnalysisState& s, const PropertyInputs& in);

// ct = So co + Sw cw + Sg cg + cf (1/psi); none unless every term whose saturation is
// above 0 is known and cf is.
std::optional<double> totalCompressibility(const PropertyInputs& in, std::optional<double> co,
                                           std::optional<double> cw, std::optional<double> cg,
                                           std::optional<double> cf);

// One input-screen box and the text "Copy to Input" types into it.
struct BoxValue {
    std::string objectName;
    std::string text;
};

// The boxes the fluid code shows for the phases' FVF, viscosity and the total
// compressibility, each with its computed value in the box's refill mask: the
// principal phase in boin/muin (oil, else water, else gas; gas alone in
// pseudopressure has no FVF box), gas beside a liquid in bgin/mgin, water beside
// another phase in bwin/mwin, ct in microsips in ctin. Values not computed are left
// out and named in `missing`.
std::vector<BoxValue> inputBoxValues(std::int16_t fluidFlags, const PhaseValues& v,
                                     std::vector<std::string>& missing);

} // namespace zorvekan
