// SPDX-License-Identifier: MIT
#include "core/plot_frame.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/runtime_error.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zorvekan {

PlotFrame::PlotFrame(UserWindow window, double deviceWidth, double deviceHeight)
    : m_window(window), m_factorX(deviceWidth / window.width),
      m_factorY(deviceHeight / window.height), m_offsetX(0), m_offsetY(0) {
    if (!window.square)
        return;
    const double factor = std::min(std::fabs(m_factorX), std::fabs(m_factorY));
    m_factorX = std::copysign(factor, m_factorX);
    m_factorY = std::copysign(factor, m_factorY);
    m_offsetX = (deviceWidth - std::fabs(window.width) * factor) / 2;
    m_offsetY = (deviceHeight - std::fabs(window.height) * factor) / 2;
}

double PlotFrame::toDeviceX(double x) const {
    return m_offsetX + (x - m_window.left) * m_factorX;
}

double PlotFrame::toDeviceY(double y) const {
    return m_offsetY + (y - m_window.top) * m_factorY;
}

double PlotFrame::toUserX(double px) const {
    return m_window.left + (px - m_offsetX) / m_factorX;
}

double PlotFrame::toUserY(double py) const {
    return m_window.top + (py - m_offsetY) / m_factorY;
}

bool clipToAxisBox(double& x1, double& y1, double& x2, double& y2) {
    const double dx = x2 - x1, dy = y2 - y1;
    double t0 = 0, t1 = 1;
    const std::array<std::pair<double, double>, 4> edges = {
        std::pair{-dx, x1}, {dx, kAxisWidth - x1}, {-dy, y1}, {dy, kAxisHeight - y1}};
    for (const auto& [p, q] : edges) {
        if (p == 0) {
            if (q < 0)
                return false;
            continue;
        }
        const double r = q / p;
        if (p < 0)
            t0 = std::max(t0, r);
        else
            t1 = std::min(t1, r);
        if (t0 > t1)
            return false;
    }
    const double ax = x1, ay = y1;
    x1 = ax + t0 * dx, y1 = ay + t0 * dy;
    x2 = ax + t1 * dx, y2 = ay + t1 * dy;
    return true;
}

double axisScale(double length, double min, double max) {
    return divide(length, max - min);
}

LinearTicks linearTicks(double min, double max) {
    LinearTicks t;
    double q = 0;
    for (int n = 0; n <= 4; ++n) {
        t.step = std::pow(10.0, n);
        q = (max - min) / t.step;
        if (q > 1 && q <= 10)
            break;
    }
    t.base = toInt16(t.step * basicInt(min / t.step));
    if (q >= 32768) // the tick counter is a 16-bit integer as well
        throw RuntimeError(Fault::Overflow, "too many ticks on a linear axis");
    for (int k = 1; k <= q; ++k)
        t.values.push_back(t.base + k * t.step);
    return t;
}

void requireDecades(double min, double max, std::string_view axis) {
    const double span = max - min;
    if (span <= kMaxDecades || span != span) // NaN: no data, drawn as before
        return;
    throw RuntimeError(Fault::Overflow, "the " + std::string(axis) + " spans " +
                                            Format(span, "#.0E-00") +
                                            " log cycles; a plot shows at most 30");
}

std::vector<int> decadeTicks(double min, double max) {
    requireDecades(min, max, "log axis");
    std::vector<int> decades;
    const double count = basicInt(max - min + 1);
    for (int k = 1; k <= count; ++k)
        decades.push_back(static_cast<int>(basicInt(k + min)));
    return decades;
}

double squareLogScale(double xMin, double xMax, double yMin, double yMax) {
    const double xr = xMax - xMin;
    const double yr = yMax - yMin;
    double scale = divide(kAxisWidth, xr);
    if (yr > 0.6 * xr)
        scale = divide(kAxisHeight, yr);
    return scale;
}

double logValueAt(double u, double min, double scale) {
    return finite(std::pow(10.0, min + divide(u, scale)), "time or pressure at the click");
}

void beginPlot(Canvas& c, const UserWindow& window, std::string_view title) {
    c.clear();
    c.setPenWidth(1);
    c.setPenColor(kBlack);
    c.setDashed(false);
    c.setUserWindow(window.left, window.top, window.width, window.height);
    c.setSquareUnits(window.square);
    c.text(20, window.top, title);
}

void drawAxes(Canvas& c) {
    c.setPenColor(kBlack);
    c.line(0, 0, 0, kAxisHeight);
    c.line(0, 0, kAxisWidth, 0);
}

namespace {
void xTick(Canvas& c, double x, const std::string& label) {
    c.line(x, -1, x, 1);
    c.tickLabel(x - 2, -2, label);
}

void yTick(Canvas& c, double y, double labelX, const std::string& label) {
    c.line(-1, y, 1, y);
    c.tickLabel(labelX, y + 2, label);
}
} // namespace

void drawLinearXTicks(Canvas& c, double min, double max, double scale) {
    for (double v : linearTicks(min, max).values)
        xTick(c, scale * (v - min), Str(v));
}

void drawLinearYTicks(Canvas& c, double min, double max, double scale, double labelX) {
    for (double v : linearTicks(min, max).values)
        yTick(c, scale * (v - min), labelX, Str(v));
}

void drawLogXTicks(Canvas& c, double min, double max, double scale, bool labelExponent) {
    for (int e : decadeTicks(min, max))
        xTick(c, scale * (e - min), labelExponent ? Str(e) : Str(std::pow(10.0, e)));
}

void drawLogYTicks(Canvas& c, double min, double max, double scale, double labelX) {
    for (int e : decadeTicks(min, max))
        yTick(c, scale * (e - min), labelX, Str(std::pow(10.0, e)));
}

void drawYAxisTitle(Canvas& c, std::string_view text, double x, double y) {
    c.verticalText(x, y, text);
}

void drawVerticalText(Canvas& c, std::string_view text, double x, double yTop, double step) {
    // The column of characters ran from yTop - step down to yTop - step*n.
    const double n = static_cast<double>(text.size());
    drawYAxisTitle(c, text, x, yTop - step * (n + 1) / 2);
}

void drawPickMark(Canvas& c, double x, double y, std::string_view label, bool erase) {
    c.setPenColor(erase ? kNearWhite : kMarkGreen);
    c.line(x, y - 4, x, y + 4);
    c.text(x - 14, y - 6, label);
    c.setPenColor(kBlack);
}

} // namespace zorvekan
