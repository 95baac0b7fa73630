// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

// Logarithmic pressure derivative t*d(dp)/dt of the prepared (time-sorted) series,
// with partners j < i < r chosen as the nearest points at least L = DerivativeSpan
// log cycles away on either side:
//   D_i = t_i * (w_R * (dp_r - dp_i)/|t_i - t_r| + w_L * (dp_i - dp_j)/|t_j - t_i|),
//   w_L = (X_r - X_i)/(X_r - X_j), w_R = (X_i - X_j)/(X_r - X_j), X = log10 t.
// The computation stops at the first point with no right partner (the tail closer
// than L to the last point has no derivative); points with D <= 0 are dropped.
// Writes DerivativeCount, DerivativeLogTime, LogDerivative, and lowers StorageYMin
// to the smallest log derivative so the log-log plot never clips it.
void ComputeDerivative(AnalysisState& s);

} // namespace zorvekan
