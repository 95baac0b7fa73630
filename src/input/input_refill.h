// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "input/input_rules.h"

#include <string>
#include <string_view>
#include <vector>

namespace zorvekan {

struct BoxText {
    PropertyBox box;
    std::string text;
};

// What the input screen shows after a test file is opened. The screen sets these
// with its change signals blocked: the state already holds what their change rules
// store (re-applying them changes nothing).
struct InputRefill {
    std::string title;
    std::string_view testType; // item of kTestTypes
    bool oil = false, gas = false, water = false;
    std::string_view gasAnalysis;  // item of kGasAnalysisModes
    std::string_view rateTimeUnit; // item of kRateTimeUnits
    std::string_view testTimeUnit; // item of kTestTimeUnits
    std::vector<BoxText> boxes;    // the refilled property boxes, in the order applied
    bool undersaturated = false;   // the GOR rule found no free gas: clear the gas box,
                                   // show "Undersaturated Condition"
};

// The property boxes a test file carries for a fluid code, in refill order: the
// boxes of record 3a, those of record 2 (gas in m(p)), those of record 3b (two or
// more phases) with the solution GOR last, so its rule sees the rate history.
std::vector<PropertyBox> fileCarriedBoxes(int fluidCode);

// Refills the input screen from the state as Open does: each box the file carries
// gets Format(typedValue, refill mask) and that text goes through the box's change
// rule (applyPropertyText), so the stored values are those of the displayed text,
// in the box's typed unit (porosity in %, rw in inches, ct in microsips). Returns
// the texts and list choices for the screen.
InputRefill refillInputScreen(AnalysisState& s);

// The input screen showing the state exactly as it stands, as after a recovery:
// each box the file carries shows its typed value to 15 significant digits (empty
// for 0) and no change rule runs, so nothing in the state is rounded to a mask.
InputRefill refillExactly(const AnalysisState& s);

} // namespace zorvekan
