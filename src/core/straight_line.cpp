// SPDX-License-Identifier: MIT
#include "core/straight_line.h"

#include "core/checked_math.h"
#include "core/plot_frame.h"

#include <algorithm>
#include <limits>

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

void drawLineAcrossBox(Canvas& c, const StraightLine& line, Rgb colour) {
    // Liang-Barsky: the part of x1 + t*dx, y1 + t*dy (any t) inside the box.
    const double dx = line.x2 - line.x1, dy = line.y2 - line.y1;
    double t0 = -std::numeric_limits<double>::infinity();
    double t1 = std::numeric_limits<double>::infinity();
    bool inside = dx != 0 || dy != 0;
    auto edge = [&](double p, double q) { // keeps p*t <= q
        if (p == 0)
            inside = inside && q >= 0;
        else if (p < 0)
            t0 = std::max(t0, q / p);
        else
            t1 = std::min(t1, q / p);
    };
    edge(-dx, line.x1);
    edge(dx, kAxisWidth - line.x1);
    edge(-dy, line.y1);
    edge(dy, kAxisHeight - line.y1);
    if (!inside || t0 > t1) {
        drawStraightLine(c, line, colour);
        return;
    }
    StraightLine across = line;
    across.x1 = line.x1 + t0 * dx;
    across.y1 = line.y1 + t0 * dy;
    across.x2 = line.x1 + t1 * dx;
    across.y2 = line.y1 + t1 * dy;
    drawStraightLine(c, across, colour);
}

void cancelLine(StraightLine& line) {
    if (line.clickState == 1) {
        line.clickState = 0;
        line.bandState = 0;
    }
}

double lineSlope(const StraightLine& line, double xScale, double yScale) {
    return divide(line.y2 - line.y1, line.x2 - line.x1) * divide(xScale, yScale);
}

double lineIntercept(const StraightLine& line, double slope, double xMin, double xScale,
                     double yMin, double yScale) {
    return (yMin + divide(line.y2, yScale)) - slope * (xMin + divide(line.x2, xScale));
}

} // namespace zorvekan
