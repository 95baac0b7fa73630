// SPDX-License-Identifier: MIT
#include "core/straight_line.h"

#include "core/checked_math.h"

namespace zorvekan {

LineClick lineMouseDown(StraightLine& line, double x, double y) {
    if (line.clickState == 0) {
        line.x1 = x;
        line.y1 = y;
        line.clickState = 1;
        line.bandState = 1;
        line.complete = false;
        return LineClick::FirstEnd;
    }
    line.x2 = x;
    line.y2 = y;
    line.clickState = 0;
    line.complete = true;
    return LineClick::Completed;
}

void lineMouseMove(StraightLine& line, Canvas& c, double x, double y,
                   const std::function<void()>& redrawPoints) {
    if (line.clickState != 1)
        return;
    c.beginTransient();
    c.setPenWidth(1);
    if (line.bandState == 2) {
        c.setPenColor(kWhite);
        c.line(line.x1, line.y1, line.x2, line.y2);
    }
    line.bandState = 2;
    line.x2 = x;
    line.y2 = y;
    c.setPenColor(kBlack);
    c.line(line.x1, line.y1, line.x2, line.y2);
    if (redrawPoints)
        redrawPoints();
    c.setPenColor(kBlack);
    c.setPenWidth(1);
    c.endTransient();
}

void drawStraightLine(Canvas& c, const StraightLine& line, Rgb colour) {
    c.setPenWidth(1);
    c.setPenColor(colour);
    c.line(line.x1, line.y1, line.x2, line.y2);
    c.setPenColor(kBlack);
}

double lineSlope(const StraightLine& line, double xScale, double yScale) {
    return divide(line.y2 - line.y1, line.x2 - line.x1) * divide(xScale, yScale);
}

double lineIntercept(const StraightLine& line, double slope, double xMin, double xScale,
                     double yMin, double yScale) {
    return (yMin + divide(line.y2, yScale)) - slope * (xMin + divide(line.x2, xScale));
}

} // namespace zorvekan
