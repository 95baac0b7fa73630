// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/runtime_error.h"

#include <string>

namespace zorvekan {

// Where a fault arose: preparing the analysis series from the test points (and the
// gas gravity of m(p)), or analysing them with the rates and properties.
enum class FaultStage { Preparation, Analysis };

// The inputs of the test that explain a run-time fault, in the words of the input
// screen, so the engineer knows which box to correct:
//   division by zero, logarithm of 0:  "no rate entered for this drawdown",
//                                       "Net Pay is 0", "test point 3 has the start pressure"
//   logarithm of a negative number:     "Net Pay is −73", "test point 2 has a negative time"
// Only inputs that cause that kind of fault at that stage are named (a zero net pay
// divides, a zero FVF makes k and its logarithm 0), and only boxes the fluid code
// uses. Empty when no input explains the fault.
std::string faultCause(const AnalysisState& s, const RuntimeError& e, FaultStage stage);

// The fault's own text, then its cause when one is found: "Division by zero: Net Pay is 0".
std::string faultMessage(const AnalysisState& s, const RuntimeError& e, FaultStage stage);

} // namespace zorvekan
