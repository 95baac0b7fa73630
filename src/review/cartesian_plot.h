// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/canvas.h"
#include "core/straight_line.h"

#include <string>

namespace zorvekan {

// The Cartesian plot of the test data screen: pressure (m(p) for a gas test in
// pseudopressure) against the test time on linear axes, time from 0, in the common
// frame (axis box 100 x 60, power-of-ten ticks), and the picks of a drawdown's
// pseudosteady-state analysis.

// Plot units per hour (xs) and per psi or m(p) unit (ys), and the largest test time.
struct CartesianScales {
    double xs = 0, ys = 0;
    double tmax = 0;
};

// The plotted ordinate of test point i: TestPressure, or TestPseudoPressure when gas is
// analysed in pseudopressure.
double cartesianOrdinate(const AnalysisState& s, int i);

// Finds PlotPressureMax and PlotPressureMin over the points and returns the scales
// xs = 100 / tmax, ys = 60 / (max - min). No points, a largest time of 0 and equal
// extremes (one point, or every pressure the same) are division-by-zero faults.
CartesianScales cartesianScales(AnalysisState& s);

// The ordinate title as one line ("Pressure psi", or "m(p) (1E6)").
std::string cartesianYTitle(const AnalysisState& s);

// "Cartesian Plot" on cart (window -20, 70, 130, -80): ranges and scales, title at
// (20, 70), axes, time ticks from 0 and ordinate ticks by the power-of-ten rule (labels
// at x = -14), the points in blue, "Time, hrs." at (50, -5) and the ordinate title
// turned upright at x = -18.
CartesianScales DrawCartesianPlot(Canvas& c, AnalysisState& s);

// The points alone in blue (after a rubber band wipes some).
void drawCartesianPoints(Canvas& c, const AnalysisState& s, const CartesianScales& scales);

// "End of Transient" at the click (x, y): a green tick (x, y-8)-(x, y+6) and
// "<-- Transient" at (x-10, y-8); EndOfTransientTime = x / xs (hours; negative left of
// the axis).
void markEndOfTransient(Canvas& c, AnalysisState& s, const CartesianScales& scales, double x,
                        double y);

// "Start PSS" at the click: a purple tick and "Pseudosteady State -->" at (x-10, y+10);
// StartPssValue = PlotPressureMin + y / ys, the ordinate value at the clicked height (not
// a time), which is what its reader expects.
void markStartOfPss(Canvas& c, AnalysisState& s, const CartesianScales& scales, double x, double y);

struct PssResult {
    double slope = 0;      // m, psi/hr (m(p) units/hr for gas in pseudopressure)
    double poreVolume = 0; // Vp, bbl
    double area = 0;       // A, ft^2
    double radius = 0;     // re, ft
    std::string line;      // "Drainage radius = " re "####." " ft."
};

// Drainage radius of a pseudosteady-state line picked on the plot (ends in plot units):
//   m  = ((y2 - y1)/(x2 - x1)) * xs/ys,
//   Vp = 0.0418 * q * B / (|m| * ct)  (bbl; q = FlowRate, B = OilFvf whatever the fluid),
//   A  = 5.615 * Vp / (h * phi),  re = sqrt(A / 3.141593).
// In pseudosteady state dp/dt = -0.23395 q B / (ct phi h A), so the line's direction and
// the order of its ends do not matter. Two ends at the same time, a horizontal line, and
// a missing ct, h or phi are division-by-zero faults. Stores re in PssDrainageRadius.
PssResult pssDrainageRadius(AnalysisState& s, const StraightLine& line,
                            const CartesianScales& scales);

// The same from two points in data units (hours, psi or m(p)), through the plot's own
// scales, as a pick on those points gives it.
PssResult pssDrainageRadiusThrough(AnalysisState& s, double t1, double p1, double t2, double p2);

} // namespace zorvekan
