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
struct UserWindow {
    double left, top, width, height;
};

inline constexpr UserWindow kSemilogWindow{-20, 65, 130, -80};    // semi
inline constexpr UserWindow kStorageWindow{-25, 65, 130, -80};    // Stor
inline constexpr UserWindow kLinearFlowWindow{-20, 65, 130, -80}; // sqrslp
inline constexpr UserWindow kBilinearWindow{-30, 65, 150, -80};   // qtrslp
inline constexpr UserWindow kCartesianWindow{-20, 70, 130, -80};  // cart

inline constexpr double kAxisWidth = 100.0;
inline constexpr double kAxisHeight = 60.0;

// Maps plot units to device pixels of a surface and back; a pure value type.
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
    double m_deviceWidth, m_deviceHeight;
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

// Whole-decade ticks of a log axis held in log10 units: e = Int(k + min) for
// k = 1..Int(max - min + 1); the last may lie beyond the axis end and is kept.
std::vector<int> decadeTicks(double min, double max);

// One scale for both log axes of the storage plot so a decade has the same length
// on each: 100/xr, or 60/yr when yr > 0.6*xr.
double squareLogScale(double xMin, double xMax, double yMin, double yMax);

// From a click to data: min + u/scale on a linear axis, 10^(min + u/scale) on a log one.
double linearValueAt(double u, double min, double scale);
double logValueAt(double u, double min, double scale);

// ---- drawing the frame ----

// Starts a redraw: clear, pen width 1, black, the user window, title at (20, top).
void beginPlot(Canvas& c, const UserWindow& window, std::string_view title);

// The y axis (0,0)-(0,60) and the x axis (0,0)-(100,0) in black.
void drawAxes(Canvas& c);

// Tick marks and labels (number-to-text); linear ticks from their rule, log ticks at
// whole decades labelled 10^e (or e itself when `labelExponent`). Tick lines are 2
// units long across the axis; x labels at (x - 2, -2), y labels at (labelX, y + 2).
void drawLinearXTicks(Canvas& c, double min, double max, double scale);
void drawLinearYTicks(Canvas& c, double min, double max, double scale, double labelX);
void drawLogXTicks(Canvas& c, double min, double max, double scale, bool labelExponent = false);
void drawLogYTicks(Canvas& c, double min, double max, double scale, double labelX);

// Writes an axis title downwards, one character a line: the i-th character
// (1-based) at (x, yTop - step*i).
void drawVerticalText(Canvas& c, std::string_view text, double x, double yTop, double step);

// Green mark of a flow-regime pick: a vertical line (x, y-4)-(x, y+4) with its text at
// (x - 14, y - 6); `erase` draws it in near-white instead, which is how a replaced
// mark is removed.
void drawPickMark(Canvas& c, double x, double y, std::string_view label, bool erase = false);

} // namespace zorvekan
