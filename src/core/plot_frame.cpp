// SPDX-License-Identifier: MIT
#include "core/plot_frame.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/runtime_error.h"

#include <cmath>

namespace zorvekan {

PlotFrame::PlotFrame(UserWindow window, double deviceWidth, double deviceHeight)
    : m_window(window), m_deviceWidth(deviceWidth), m_deviceHeight(deviceHeight) {}

double PlotFrame::toDeviceX(double x) const {
    return (x - m_window.left) * m_deviceWidth / m_window.width;
}

double PlotFrame::toDeviceY(double y) const {
    return (y - m_window.top) * m_deviceHeight / m_window.height;
}

double PlotFrame::toUserX(double px) const {
    return m_window.left + px * m_window.width / m_deviceWidth;
}

double PlotFrame::toUserY(double py) const {
    return m_window.top + py * m_window.height / m_deviceHeight;
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

std::vector<int> decadeTicks(double min, double max) {
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

double linearValueAt(double u, double min, double scale) {
    return min + divide(u, scale);
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
    c.text(x - 2, -2, label);
}

void yTick(Canvas& c, double y, double labelX, const std::string& label) {
    c.line(-1, y, 1, y);
    c.text(labelX, y + 2, label);
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

void drawVerticalText(Canvas& c, std::string_view text, double x, double yTop, double step) {
    for (std::size_t i = 0; i < text.size(); ++i)
        c.text(x, yTop - step * static_cast<double>(i + 1), text.substr(i, 1));
}

void drawPickMark(Canvas& c, double x, double y, std::string_view label, bool erase) {
    c.setPenColor(erase ? kNearWhite : kMarkGreen);
    c.line(x, y - 4, x, y + 4);
    c.text(x - 14, y - 6, label);
    c.setPenColor(kBlack);
}

} // namespace zorvekan
