// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

// The rate history as the analyses use it. The typed steps stay as the engineer
// entered them (the test file and the grids show those); the analyses see
//  - each step's normalising rate: the principal rate of the test (oil, or the one
//    phase that flows), or for gas and water, which have no oil, the total
//    reservoir rate Bg*qg + Bw*qw in RB/day (Perrine);
//  - consecutive steps of the same normalising rate as one step (a rate change of
//    zero is no rate change);
//  - in a shut-in test, no trailing zero-rate steps: a history typed with the
//    shut-in as its last step ends with the last flowing step.
struct AnalysisRates {
    int count = 0;  // steps 1..count
    RateArray rate; // q_j, q_0 = 0
    RateArray end;  // t_j, end of step j from the start of the history (t_0 = 0), hours
    BoundedArray<std::int16_t, kMaxRates + 1> typed; // the last typed step step j stands for

    // (q_j - q_(j-1)) / q_n: the weight of step j in a superposition normalised by the
    // rate q_n of step n.
    double weight(int j, int n) const;
    // The step a flowing time t lies in: the first whose end is at or after t, the
    // last (open-ended) step for later times; 0 when there are no steps.
    int stepAt(double t) const;
};

AnalysisRates analysisRates(const AnalysisState& s);

// Normalising rate of typed step j (see above).
double normalisingRate(const AnalysisState& s, int j);

// The typed step whose rates are "the last rate" of the test: the last step, or in a
// shut-in test the last step with a non-zero rate (RateCount when none has one).
int lastFlowingStep(const AnalysisState& s);

} // namespace zorvekan
