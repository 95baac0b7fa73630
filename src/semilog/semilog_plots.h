// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/canvas.h"

#include <string>

namespace zorvekan {

// The four plots of the semilog analysis screen, drawn in the common frame (axis box
// 100 x 60, ticks, titles) onto any canvas.

// Plot units per data unit of a plot with two linear-or-log axes.
struct PlotScales {
    double x = 0, y = 0;
};

// Semilog or superposition plot of the prepared semilog series: x = log10 of the
// Horner ratio, of the time or the equivalent time, or the summation term itself;
// y the pressure, m(p), or the rate-normalised change. Returns its scales.
PlotScales DrawSemilogPlot(Canvas& c, const AnalysisState& s);

// The data points of the semilog plot alone (redrawn after a rubber band wipes some).
void drawSemilogPoints(Canvas& c, const AnalysisState& s, const PlotScales& scales);

// The stored end-of-transient time of a single-rate flowing test, marked on the
// semilog plot when the screen comes to the front: green line (x, 31)-(x, 39) and
// "<-- Transient" at (x - 14, 45). Nothing for other tests or when no time is stored.
void drawStoredTransientMark(Canvas& c, const AnalysisState& s, const PlotScales& scales);

// Storage (log-log) plot: pressure change in blue and derivative in red against the
// log-log time, one scale for both axes (written to StorageScale).
void DrawStoragePlot(Canvas& c, AnalysisState& s);

// Axis titles chosen by test kind (exposed for the printed legend and the tests).
std::string semilogXTitle(const AnalysisState& s);
std::string storageXTitle(const AnalysisState& s);

// A time interval picked on the storage plot, in the plotted (log-log) time.
struct TimeInterval {
    double lower = 0, upper = 0;
};

// Extremes and scales of a linear-flow (exponent 0.5) or bilinear-flow (0.25) plot.
struct FlowPlotFrame {
    double exponent = 0.5;
    double xMin = 0, xMax = 0, yMin = 0, yMax = 0;
    PlotScales scales;
    int pointCount = 0;
};

// The points of the interval (lower < t < upper, t the prepared time function) as
// x = t^exponent against the pressure or m(p) of the raw test point.
FlowPlotFrame flowPlotFrame(const AnalysisState& s, const TimeInterval& interval, double exponent);

// "Linear Flow Plot" on sqrslp and "Bilinear Flow Plot" on qtrslp.
FlowPlotFrame DrawLinearFlowPlot(Canvas& c, const AnalysisState& s, const TimeInterval& interval);
FlowPlotFrame DrawBilinearFlowPlot(Canvas& c, const AnalysisState& s, const TimeInterval& interval);
void drawFlowPoints(Canvas& c, const AnalysisState& s, const TimeInterval& interval,
                    const FlowPlotFrame& frame);

} // namespace zorvekan
