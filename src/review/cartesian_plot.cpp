// SPDX-License-Identifier: MIT
#include "review/cartesian_plot.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/plot_frame.h"
#include "core/result_line.h"
#include "core/runtime_error.h"

#include <algorithm>
#include <cmath>

namespace zorvekan {

namespace {

constexpr const char* kPressureTitle = "Pressure psi";
constexpr double kPssConstant = 0.0418; // bbl/day per (psi/hr * 1/psi), of Vp = 0.0418 q B/(m ct)
constexpr double kBarrelCubicFeet = 5.615; // ft^3 per bbl
constexpr double kPi = 3.141593;

} // namespace

double cartesianOrdinate(const AnalysisState& s, int i) {
    return usesPseudopressure(s) ? s.TestPseudoPressure[i] : s.TestPressure[i];
}

CartesianScales cartesianScales(AnalysisState& s) {
    const int n = s.TestPointCount;
    if (n < 1)
        throw RuntimeError(Fault::NoData, "no test points on the Cartesian plot");
    double tmax = 0;
    s.PlotPressureMax = s.PlotPressureMin = cartesianOrdinate(s, 1);
    for (int i = 1; i <= n; ++i) {
        const double p = cartesianOrdinate(s, i);
        s.PlotPressureMax = std::max(s.PlotPressureMax, p);
        s.PlotPressureMin = std::min(s.PlotPressureMin, p);
        tmax = std::max(tmax, s.TestTime[i]);
    }
    if (!(tmax > 0))
        throw RuntimeError(Fault::DivisionByZero,
                           "the Cartesian plot needs a test time above 0 for its time scale");
    if (s.PlotPressureMax == s.PlotPressureMin)
        throw RuntimeError(Fault::DivisionByZero,
                           "every plotted pressure is the same (one point, or a flat record): "
                           "the Cartesian plot has no pressure scale");
    return {axisScale(kAxisWidth, 0, tmax),
            axisScale(kAxisHeight, s.PlotPressureMin, s.PlotPressureMax), tmax};
}

std::string cartesianYTitle(const AnalysisState& s) {
    return usesPseudopressure(s) ? "m(p) (1E6)" : kPressureTitle;
}

CartesianScales DrawCartesianPlot(Canvas& c, AnalysisState& s) {
    const CartesianScales scales = cartesianScales(s);
    beginPlot(c, kCartesianWindow, "Cartesian Plot");
    drawAxes(c);
    drawLinearXTicks(c, 0, scales.tmax, scales.xs);
    drawLinearYTicks(c, s.PlotPressureMin, s.PlotPressureMax, scales.ys, -14);
    c.text(50, -5, "Time, hrs.");
    drawYAxisTitle(c, cartesianYTitle(s), -18);
    drawCartesianPoints(c, s, scales);
    c.setPenColor(kBlack);
    c.setPenWidth(1);
    return scales;
}

void drawCartesianPoints(Canvas& c, const AnalysisState& s, const CartesianScales& scales) {
    c.setPenWidth(2);
    c.setPenColor(kDataBlue);
    for (int i = 1; i <= s.TestPointCount; ++i)
        c.dot(scales.xs * s.TestTime[i], scales.ys * (cartesianOrdinate(s, i) - s.PlotPressureMin));
}

void markEndOfTransient(Canvas& c, AnalysisState& s, const CartesianScales& scales, double x,
                        double y) {
    s.EndOfTransientTime = divide(x, scales.xs);
    c.setPenWidth(1);
    c.setPenColor(kMarkGreen);
    c.line(x, y - 8, x, y + 6);
    c.text(x - 10, y - 8, "<-- Transient");
    c.setPenColor(kBlack);
}

void markStartOfPss(Canvas& c, AnalysisState& s, const CartesianScales& scales, double x,
                    double y) {
    s.StartPssValue = s.PlotPressureMin + divide(y, scales.ys);
    c.setPenWidth(1);
    c.setPenColor(kPurple);
    c.line(x, y - 8, x, y + 6);
    c.text(x - 10, y + 10, "Pseudosteady State -->");
    c.setPenColor(kBlack);
}

PssResult pssDrainageRadius(AnalysisState& s, const StraightLine& line,
                            const CartesianScales& scales) {
    if (line.x2 == line.x1)
        throw RuntimeError(Fault::DivisionByZero,
                           "both ends of the pseudosteady-state line are at the same time");
    PssResult r;
    r.slope = lineSlope(line, scales.xs, scales.ys);
    if (r.slope == 0)
        throw RuntimeError(Fault::DivisionByZero,
                           "the pseudosteady-state line is horizontal: no pressure decline");
    r.poreVolume =
        divide(kPssConstant * s.FlowRate * s.OilFvf, std::fabs(r.slope) * s.TotalCompressibility);
    r.area = divide(kBarrelCubicFeet * r.poreVolume, s.Thickness * s.Porosity);
    r.radius = squareRoot(r.area / kPi);
    r.line = resultLine("Drainage radius =", Format(r.radius, "####."), " ft.");
    s.PssDrainageRadius = r.radius;
    return r;
}

PssResult pssDrainageRadiusThrough(AnalysisState& s, double t1, double p1, double t2, double p2) {
    const CartesianScales scales = cartesianScales(s);
    StraightLine line;
    lineMouseDown(line, scales.xs * t1, scales.ys * (p1 - s.PlotPressureMin));
    lineMouseDown(line, scales.xs * t2, scales.ys * (p2 - s.PlotPressureMin));
    return pssDrainageRadius(s, line, scales);
}

} // namespace zorvekan
