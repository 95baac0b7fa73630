// SPDX-License-Identifier: MIT
#pragma once

#include "core/canvas.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zorvekan {

// The user coordinate system of a plot surface: left and top edge, width and height
// in plot units (a negative height makes y grow upward). The axis box of every plot
// spans x 0..100 and y 0..60; the margins hold the labels.
// A square window maps a plot unit to the same number of pixels across and up, so a
// log-log plot keeps its decades square (slopes of 1, 1/2 and 1/4 look true) on any
// surface; the window is then fitted inside the surface and centred in it.
struct UserWindow {
    double left, top, width, height;
    bool square = false;
};

inline constexpr UserWindow kSemilogWindow{-20, 65, 130, -80};       // semi
inline constexpr UserWindow kStorageWindow{-25, 65, 130, -80, true}; // Stor, log-log
inline constexpr UserWindow kLinearFlowWindow{-20, 65, 130, -80};    // sqrslp
inline constexpr UserWindow kBilinearWindow{-30, 65, 150, -80};      // qtrslp
inline constexpr UserWindow kCartesianWindow{-20, 70, 130, -80};     // cart

inline constexpr double kAxisWidth = 100.0;
inline constexpr double kAxisHeight = 60.0;

// Maps plot units to device pixels of a surface and back; a pure value type. A plain
// window fills the surface, each axis with its own factor; a square one uses the
// smaller factor for both and is centred.
class PlotFrame {
public:
    PlotFrame(UserWindow window, double deviceWidth, double deviceHeight);

    double toDeviceX(double x) const;
    double toDeviceY(double y) const;
    double toUserX(double px) const;
    double toUserY(double py) const;
    const UserWindow& window() const { return m_window; }

private:
    UserWindow m_window;
    double m_factorX, m_factorY; // device pixels per plot unit
    double m_offsetX, m_offsetY; // device position of the window's top-left corner
};

// ---- axis rules shared by every plot ----

// Plot units per data unit of a linear axis: length / (max - min). Equal extremes
// are a division-by-zero fault.
double axisScale(double length, double min, double max);

// The power-of-ten tick rule of a linear axis: the first step 10^n (n = 0..4) that
// divides the range into more than 1 and at most 10 steps, else 10^4; ticks at
// base + k*step for k = 1.. while k <= range/step, base = step*Int(min/step) held
// as a 16-bit integer (a base beyond +-32767 is an overflow fault). A range of
// exactly 1 therefore has no ticks.
struct LinearTicks {
    double step = 0;
    std::int16_t base = 0;
    std::vector<double> values;
};
LinearTicks linearTicks(double min, double max);

// The most decades a log axis shows. A superposition axis of a test whose last rate is
// tiny spans millions; one label a decade would then take minutes and gigabytes, so
// such an axis is refused at once with a run-time error that says why.
inline constexpr double kMaxDecades = 30;
void requireDecades(double min, double max, std::string_view axis);

// Whole-decade ticks of a log axis held in log10 units: e = Int(k + min) for
// k = 1..Int(max - min + 1); the last may lie beyond the axis end and is kept.
// More than kMaxDecades is an overflow fault.
std::vector<int> decadeTicks(double min, double max);

// One scale for both log axes of the storage plot so a decade has the same length
// on each: 100/xr, or 60/yr when yr > 0.6*xr.
double squareLogScale(double xMin, double xMax, double yMin, double yMax);

// From a click to data on a log axis: 10^(min + u/scale).
double logValueAt(double u, double min, double scale);

// Liang-Barsky: the part of the segment (x1, y1)-(x2, y2) inside the axis box (0..100 by
// 0..60), written back into its ends; false when none of it is.
bool clipToAxisBox(double& x1, double& y1, double& x2, double& y2);

// ---- drawing the frame ----

// Starts a redraw: clear, pen width 1, black, the user window, title at (20, top).
void beginPlot(Canvas& c, const UserWindow& window, std::string_view title);

// The y axis (0,0)-(0,60) and the x axis (0,0)-(100,0) in black.
void drawAxes(Canvas& c);

// Tick marks and labels (number-to-text); linear ticks from their rule, log ticks at
// whole decades labelled 10^e (or e itself when `labelExponent`). Tick lines are 2
// units long across the axis; x labels at (x - 2, -2), y labels at (labelX, y + 2),
// drawn as tick labels (a surface keeps them whole and drops one that would cover
// another).
void drawLinearXTicks(Canvas& c, double min, double max, double scale);
void drawLinearYTicks(Canvas& c, double min, double max, double scale, double labelX);
void drawLogXTicks(Canvas& c, double min, double max, double scale, bool labelExponent = false);
void drawLogYTicks(Canvas& c, double min, double max, double scale, double labelX);

// The title of a vertical axis, turned to read upwards, its left edge at x and centred
// on y (the middle of the axis box by default).
void drawYAxisTitle(Canvas& c, std::string_view text, double x, double y = kAxisHeight / 2);

// An axis title placed where it once stood written downwards one character a line
// (the i-th character at (x, yTop - step*i)): now turned, centred on that column.
void drawVerticalText(Canvas& c, std::string_view text, double x, double yTop, double step);

// Green mark of a flow-regime pick: a vertical line (x, y-4)-(x, y+4) with its text at
// (x - 14, y - 6); `erase` draws it in near-white instead, which is how a replaced
// mark is removed.
void drawPickMark(Canvas& c, double x, double y, std::string_view label, bool erase = false);

} // namespace zorvekan
