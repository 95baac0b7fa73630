// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <cstdint>
#include <optional>

namespace zorvekan {

// A fingerprint of the test a regression is fitted to: its points, rate history, test kind,
// fluid code, start pressure, producing time, and the temperature and gravity its m(p) comes
// from. Any edit of these gives another value (FNV-1a over their bytes).
std::uint64_t testFingerprint(const AnalysisState& s);

// The fitted curve of the last regression prepared as the data are: a copy of the state whose
// test points are the curve's times and pressures, with its time function, pressure change,
// derivative and semilog series. Nothing when the state holds no curve, when the curve was
// fitted to another test (or the test has been edited since), or when the curve's pressure
// change reaches 0 and has no logarithm.
std::optional<AnalysisState> preparedFittedCurve(const AnalysisState& s);

} // namespace zorvekan
