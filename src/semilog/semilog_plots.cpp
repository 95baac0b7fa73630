// SPDX-License-Identifier: MIT
#include "semilog/semilog_plots.h"

#include "core/checked_math.h"
#include "core/fitted_curve.h"
#include "core/plot_frame.h"
#include "core/runtime_error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <vector>

namespace zorvekan {

namespace {

constexpr const char* kPressureTitle = "Pressure psi";
constexpr const char* kMillions = "(1E6)";

void requirePoints(int count, const char* what) {
    if (count < 1)
        throw RuntimeError(Fault::NoData, what);
}

// The y title of a pressure-like axis; m(p) is plotted in millions of psi^2/cp.
std::string pressureTitle(const AnalysisState& s, const char* pressure, const char* pseudo) {
    if (!usesPseudopressure(s))
        return pressure;
    return std::string(pseudo) + " " + kMillions;
}

void drawSemilogYTitle(Canvas& c, const AnalysisState& s) {
    std::string title;
    if (s.ShutInFlag == 0 && s.SemilogPlotKind == kSuperpositionPlot)
        title = pressureTitle(s, "dp/q", "d m(p)/q");
    else if (s.ShutInFlag == 0 && s.RateCount >= 2)
        title = pressureTitle(s, "dp/dq", "d m(p)/dq");
    else
        title = pressureTitle(s, kPressureTitle, "m(p)");
    drawYAxisTitle(c, title, -18);
}

// The change and its derivative share the axis: both names in one title.
void drawStorageYTitle(Canvas& c, const AnalysisState& s) {
    const bool perRate = s.ShutInFlag == 0 && s.RateCount >= 2;
    const std::string title = perRate ? pressureTitle(s, "dp/dq, dp'/dq", "dm(p)/dq, dm(p)'/dq")
                                      : pressureTitle(s, "dp, dp'", "dm(p), d m(p)'");
    drawYAxisTitle(c, title, -23);
}

double flowPlotPressure(const AnalysisState& s, int prepared) {
    const int raw = s.SourceIndex[prepared];
    return usesPseudopressure(s) ? s.TestPseudoPressure[raw] : s.TestPressure[raw];
}

bool insideInterval(double t, const TimeInterval& interval) {
    return t > interval.lower && t < interval.upper;
}

FlowPlotFrame drawFlowPlot(Canvas& c, const AnalysisState& s, const TimeInterval& interval,
                           double exponent) {
    const bool linear = exponent == 0.5;
    const FlowPlotFrame f = flowPlotFrame(s, interval, exponent);
    const UserWindow& window = linear ? kLinearFlowWindow : kBilinearWindow;
    const double yLabelX = linear ? -14 : -18;
    const double yTitleX = linear ? -18 : -28;
    beginPlot(c, window, linear ? "Linear Flow Plot" : "Bilinear Flow Plot");
    drawAxes(c);
    drawLinearXTicks(c, f.xMin, f.xMax, f.scales.x);
    drawLinearYTicks(c, f.yMin, f.yMax, f.scales.y, yLabelX);
    drawFlowPoints(c, s, interval, f);
    c.setPenColor(kBlack);
    c.text(40, -8, linear ? "Square Root time" : "Quarter Root time");
    drawYAxisTitle(c, pressureTitle(s, kPressureTitle, "m(p)"), yTitleX);
    return f;
}

} // namespace

std::string semilogXTitle(const AnalysisState& s) {
    if (s.SemilogPlotKind == kSuperpositionPlot)
        return "Summation log term";
    if (s.ShutInFlag == 1)
        return "(t+dt)/dt";
    return s.RateCount >= 2 ? "Equiv. Adj. Test Time" : "Time, hrs.";
}

std::string storageXTitle(const AnalysisState& s) {
    if ((s.ShutInFlag == 0 && s.RateCount > 1) || s.ProducingTime > 0)
        return "Equiv. Adj. Time, hrs.";
    return "Time, hrs.";
}

void drawSemilogPoints(Canvas& c, const AnalysisState& s, const PlotScales& scales) {
    // The model of the last regression under the points, redrawn with them when a rubber
    // band wipes the plot.
    if (const std::optional<AnalysisState> fitted = preparedFittedCurve(s)) {
        std::vector<std::array<double, 2>> line;
        for (int i = 1; i <= fitted->PointCount; ++i)
            line.push_back({scales.x * (fitted->SemilogX[i] - s.SemilogXMin),
                            scales.y * (fitted->SemilogY[i] - s.SemilogYMin)});
        drawFittedLine(c, line, false);
        drawFittedLegend(c, 82, 65);
    }
    c.setPenWidth(2);
    c.setPenColor(kDataBlue);
    for (int i = 1; i <= s.PointCount; ++i)
        c.dot(scales.x * (s.SemilogX[i] - s.SemilogXMin),
              scales.y * (s.SemilogY[i] - s.SemilogYMin));
}

PlotScales DrawSemilogPlot(Canvas& c, const AnalysisState& s) {
    requirePoints(s.PointCount, "no test points on the semilog plot");
    const bool superposition = s.SemilogPlotKind == kSuperpositionPlot;
    beginPlot(c, kSemilogWindow, superposition ? "Superposition Plot" : "Semilog Plot");
    drawAxes(c);
    requireDecades(s.SemilogXMin, s.SemilogXMax,
                   superposition ? "summation term axis" : "semilog time axis");
    PlotScales scales;
    scales.x = axisScale(kAxisWidth, s.SemilogXMin, s.SemilogXMax);
    scales.y = axisScale(kAxisHeight, s.SemilogYMin, s.SemilogYMax);
    drawLogXTicks(c, s.SemilogXMin, s.SemilogXMax, scales.x, superposition);
    drawLinearYTicks(c, s.SemilogYMin, s.SemilogYMax, scales.y, -14);
    drawSemilogPoints(c, s, scales);
    c.setPenColor(kBlack);
    c.text(40, -8, semilogXTitle(s));
    drawSemilogYTitle(c, s);
    return scales;
}

void drawStoredTransientMark(Canvas& c, const AnalysisState& s, const PlotScales& scales) {
    if (!(s.ShutInFlag == 0 && s.RateCount == 1 && s.EndOfTransientTime > 0))
        return;
    const double x = scales.x * (Log10(s.EndOfTransientTime) - s.SemilogXMin);
    c.setPenColor(kMarkGreen);
    c.line(x, 31, x, 39);
    c.text(x - 14, 45, "<-- Transient");
    c.setPenColor(kBlack);
}

void DrawStoragePlot(Canvas& c, AnalysisState& s) {
    requirePoints(s.TestPointCount, "no test points on the log-log plot");
    beginPlot(c, kStorageWindow, "Storage (Log-Log) Plot");
    drawAxes(c);
    requireDecades(s.StorageXMin, s.StorageXMax, "log-log time axis");
    requireDecades(s.StorageYMin, s.StorageYMax, "log-log pressure-change axis");
    s.StorageScale = squareLogScale(s.StorageXMin, s.StorageXMax, s.StorageYMin, s.StorageYMax);
    const double k = s.StorageScale;
    drawLogXTicks(c, s.StorageXMin, s.StorageXMax, k);
    drawLogYTicks(c, s.StorageYMin, s.StorageYMax, k, -10);
    if (const std::optional<AnalysisState> fitted = preparedFittedCurve(s))
        drawFittedLogLog(
            c, *fitted,
            [&](double x, double y) {
                return std::array<double, 2>{k * (x - s.StorageXMin), k * (y - s.StorageYMin)};
            },
            82, 65);
    c.setPenWidth(2);
    c.setPenColor(kDataBlue);
    for (int i = 1; i <= s.TestPointCount; ++i)
        c.dot(k * (s.LogTime[i] - s.StorageXMin), k * (s.LogDeltaP[i] - s.StorageYMin));
    c.setPenColor(kDerivativeRed);
    for (int j = 1; j <= s.DerivativeCount; ++j)
        c.dot(k * (s.DerivativeLogTime[j] - s.StorageXMin),
              k * (s.LogDerivative[j] - s.StorageYMin));
    c.setPenColor(kBlack);
    c.text(30, -8, storageXTitle(s));
    drawStorageYTitle(c, s);
}

FlowPlotFrame flowPlotFrame(const AnalysisState& s, const TimeInterval& interval, double exponent) {
    FlowPlotFrame f;
    f.exponent = exponent;
    for (int i = 1; i <= s.TestPointCount; ++i) {
        const double t = s.TimeFunction[i];
        if (!insideInterval(t, interval))
            continue;
        const double x = std::pow(t, exponent);
        const double y = flowPlotPressure(s, i);
        if (f.pointCount++ == 0) {
            f.xMin = f.xMax = x;
            f.yMin = f.yMax = y;
        }
        f.xMin = std::min(f.xMin, x);
        f.xMax = std::max(f.xMax, x);
        f.yMin = std::min(f.yMin, y);
        f.yMax = std::max(f.yMax, y);
    }
    requirePoints(f.pointCount, "no test points inside the selected time interval");
    f.scales.x = axisScale(kAxisWidth, f.xMin, f.xMax);
    f.scales.y = axisScale(kAxisHeight, f.yMin, f.yMax);
    return f;
}

void drawFlowPoints(Canvas& c, const AnalysisState& s, const TimeInterval& interval,
                    const FlowPlotFrame& f) {
    c.setPenWidth(2);
    c.setPenColor(kDataBlue);
    for (int i = 1; i <= s.TestPointCount; ++i) {
        const double t = s.TimeFunction[i];
        if (insideInterval(t, interval))
            c.dot(f.scales.x * (std::pow(t, f.exponent) - f.xMin),
                  f.scales.y * (flowPlotPressure(s, i) - f.yMin));
    }
}

FlowPlotFrame DrawLinearFlowPlot(Canvas& c, const AnalysisState& s, const TimeInterval& interval) {
    return drawFlowPlot(c, s, interval, 0.5);
}

FlowPlotFrame DrawBilinearFlowPlot(Canvas& c, const AnalysisState& s,
                                   const TimeInterval& interval) {
    return drawFlowPlot(c, s, interval, 0.25);
}

} // namespace zorvekan
