// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

// Turns the raw test points and the rate history into every series the plots use.
// Resets the plot extremes, converts gas pressures to pseudopressure when gas is
// analysed in m(p) (and temperature and gravity are known), computes the time
// functions, pressure changes and derivative, and builds the semilog series of the
// current SemilogPlotKind. Run before every analysis screen is shown and whenever
// the semilog plot kind changes.
void PrepareAnalysisData(AnalysisState& s);

// Time function, pressure change and their logarithms for every test point, the
// log-log plot extremes, then the derivative (ComputeDerivative). Used alone when
// only the derivative spacing changed.
//
// The rate history is taken as the analyses see it (AnalysisRates: normalising
// rates, steps of one rate joined, a shut-in's trailing zero-rate steps dropped).
// Single-rate path (tp > 0, or one rate): te = tp*t/(tp + t) (Agarwal equivalent
// time; t itself when tp = 0) and dp = |p0 - p|; for a stepped drawdown taken this
// way the change is from the pressure of the last point lying exactly on a rate
// change before it (p0 until there is one), in entry order.
// Multi-rate path (tp = 0 and two or more rates, a variable-rate drawdown): inside
// rate step j the time is the multi-rate equivalent time
//   te = (t - t_(j-1)) * prod_(m<j) ((t_(j-1) - t_(m-1)) / (t - t_(m-1)))^((q_m - q_(m-1)) / dq_j)
// with dq_j = q_(j-1) - q_j, and the change is normalised, dp = |(p_ref - p) / dq_j|,
// p_ref being the last pressure of the previous step. The points are then sorted by
// te. A te below 1e-6, or beyond the range of a double (two nearly equal rates),
// after the first step abandons this path for the single-rate one.
void ComputeTimeFunctions(AnalysisState& s);

// Resets the plot extremes to their starting values (any real datum replaces them).
void ResetPlotRanges(AnalysisState& s);

} // namespace zorvekan
