// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

// The semilog surface's series for the current SemilogPlotKind, over the rate
// history as the analyses see it (AnalysisRates: q_j the normalising rates, t_j the
// ends of the steps, t_0 = 0, q_0 = 0), with tp the producing time, p0 the start
// pressure (m(p) in 1E6 psi^2/cp when gas is analysed in pseudopressure) and n the
// last flowing step:
//   shut-in, semilog:          x = log10((tp + dt)/dt)  (Horner ratio),  y = p
//   flowing, one rate:         x = log10(t),                           y = p
//   flowing, multi-rate:       x = log10(te) (prepared equivalent time), y = dp/dq (prepared)
//   flowing, superposition:    for t in step N (t_(N-1) < t <= t_N, the last step open),
//                              x = sum_(j<=N) ((q_j - q_(j-1))/q_N) log10(t - t_(j-1)),
//                              y = (p0 - p)/q_N, (p - p0)/q_N for an injector
//                              (Odeh and Jones: every step then lies on one line)
//   shut-in, superposition:    x = sum_(j<=n) ((q_j - q_(j-1))/q_n) log10((t_n - t_(j-1) + dt)/dt),
//                              y = p (the intercept at x = 0 is p*)
// A point whose logarithm argument in the summation is below 1e-5 h (at a rate
// change), or that lies in a flowing step of zero rate, is left out. Fills SemilogX,
// SemilogY, SemilogTime and PointCount and widens the semilog extremes over the
// points kept.
void BuildSemilogSeries(AnalysisState& s);

// Summation term of a shut-in time dt after the rate history (the superposition x of
// a buildup or falloff).
double shutInSummation(const AnalysisState& s, double dt);

// Summation term of a flowing time t within the rate history, normalised by the rate
// of its step; false when t lies at or before the first step, within 1e-5 h after a
// rate change or in a step of zero rate.
bool flowingSummation(const AnalysisState& s, double t, double& sum);

// True when the semilog plot shows a rate-normalised change (a flowing test drawn
// as superposition, or a multi-rate flowing test on the semilog plot).
bool semilogIsRateNormalised(const AnalysisState& s);

} // namespace zorvekan
