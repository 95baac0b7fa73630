// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/canvas.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

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

// The fitted model on a plot: a line through its points (plot units) in dark orange, width 2,
// dashed for its derivative, with what lies outside the axis box left out (drawn before the
// data, whose dots stay visible on it); and "Regression" in the same colour at (x, y) to say
// what the line is.
void drawFittedLine(Canvas& c, const std::vector<std::array<double, 2>>& points, bool dashed);
void drawFittedLegend(Canvas& c, double x, double y);

// The log-log plot of a prepared fitted curve: its pressure change solid and its derivative
// dashed, each point at `at(log10 time, log10 value)`, and the legend at (x, y).
void drawFittedLogLog(Canvas& c, const AnalysisState& fitted,
                      const std::function<std::array<double, 2>(double, double)>& at, double x,
                      double y);

} // namespace zorvekan
