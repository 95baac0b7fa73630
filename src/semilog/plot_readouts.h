// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "semilog/semilog_plots.h"

#include <string>

namespace zorvekan {

// What the cursor points at on each plot of the semilog screen, in data units, for the
// status line: times in hours, pressures in psia, m(p) in 1E6 psi2/cp, changes as
// plotted. Empty where the position stands for no value (before a Horner ratio of 1,
// at a time of 0 or less).

// Semilog or superposition plot: the Horner ratio and shut-in time, the time or
// equivalent time, or the summation term; then the pressure or plotted change.
std::string semilogReadout(const AnalysisState& s, const PlotScales& scales, double x, double y);

// Log-log plot: the plotted time (and the shut-in time it stands for when there is a
// producing time) and the change.
std::string storageReadout(const AnalysisState& s, double x, double y);

// Linear- or bilinear-flow plot: the time back from sqrt(t) or t^(1/4), and the pressure.
std::string flowReadout(const AnalysisState& s, const FlowPlotFrame& f, double x, double y);

// A readout number with about four significant digits ("12.35", "0.001234", "1.2E-05").
std::string readoutNumber(double v);

} // namespace zorvekan
