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

// The text a box is refilled with: every digit the test file holds (15 significant),
// through a display mask of BASIC's kind, fixed ("95.11", "50.", ".5") from 1E-4 to
// below 1E15 and in exponent form ("1.5E-05") outside, as the file writes numbers.
// Its Val is the value itself for any number of at most 15 significant digits.
std::string refillText(double typed);

// Refills the input screen from the state as Open does: each box the file carries
// gets refillText(typedValue) and that text goes through the box's change rule
// (applyPropertyText), in the box's typed unit (porosity in %, rw in inches, ct in
// microsips). The stored values are what the file holds. Returns the texts and list
// choices for the screen.
InputRefill refillInputScreen(AnalysisState& s);

} // namespace zorvekan
