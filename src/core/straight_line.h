// SPDX-License-Identifier: MIT
#pragma once

#include "core/canvas.h"

#include <functional>

namespace zorvekan {

// A straight line picked with two clicks, with a rubber band following the mouse
// between them. The ends are kept in plot units (not data units), so the line can be
// drawn again after the plot is resized.
struct StraightLine {
    double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
    int clickState = 0; // 0 waiting for the first end, 1 first end placed
    int bandState = 0;  // 1 first end placed and no band drawn yet, 2 a band is on the plot
    bool complete = false;
};

enum class LineClick { FirstEnd, Completed };

// First click stores (x1, y1); the second stores (x2, y2) and completes the line, even
// if the mouse never moved in between.
LineClick lineMouseDown(StraightLine& line, double x, double y);

// While the first end is placed: erase the previous band by drawing it in white, draw
// the new band in black to (x, y), then redraw the data points (the white line may
// have wiped some). Does nothing before the first click.
void lineMouseMove(StraightLine& line, Canvas& c, double x, double y,
                   const std::function<void()>& redrawPoints);

// Draws the picked line from its stored ends in the given colour, then returns the
// pen to black.
void drawStraightLine(Canvas& c, const StraightLine& line, Rgb colour = kBlack);

// The picked line as the engineer checks it: extended through its two ends across the
// whole axis box (x 0..100, y 0..60) and cut at the box's edges; the stored ends stay
// as clicked. A line that misses the box is drawn between its ends.
void drawLineAcrossBox(Canvas& c, const StraightLine& line, Rgb colour);

// Gives up a line whose first end is placed: waiting for a first end again.
void cancelLine(StraightLine& line);

// Slope of the line in data units: ((y2 - y1)/(x2 - x1)) * xScale / yScale, and its
// value at data x = 0: (yMin + y2/yScale) - slope*(xMin + x2/xScale). A vertical line is
// a division-by-zero fault.
double lineSlope(const StraightLine& line, double xScale, double yScale);
double lineIntercept(const StraightLine& line, double slope, double xMin, double xScale,
                     double yMin, double yScale);

} // namespace zorvekan
