// SPDX-License-Identifier: MIT
#include "typecurve/splash_picture.h"

#include "core/checked_math.h"
#include "models/well_models.h"

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kStorageSkinGroup = 1e4; // CD e^2s: a damaged well with a clear hump
constexpr double kFirstDecade = -2.0;     // both axes start at 1e-2
constexpr double kDecades = 6.0;          // time axis 1e-2 .. 1e4
constexpr double kStep = 0.05;            // log cycles between points
constexpr double kScale = kAxisWidth / kDecades;

double plotX(double logTime) {
    return kScale * (logTime - kFirstDecade);
}
double plotY(double logValue) {
    return kScale * (logValue - kFirstDecade);
}

void drawDecadeTicks(Canvas& c) {
    for (int k = 1; k <= static_cast<int>(kDecades); ++k) {
        const double x = kScale * k;
        c.line(x, -1, x, 1);
    }
    for (int k = 1; kScale * k <= kAxisHeight; ++k) {
        const double y = kScale * k;
        c.line(-1, y, 1, y);
    }
}

void drawGuides(Canvas& c) {
    c.setDashed(true);
    c.setPenColor({150, 150, 150});
    // Unit slope pD = T through the origin of both axes, up to the top of the box.
    c.line(0, 0, kAxisHeight, kAxisHeight);
    c.text(38, 52, "unit slope");
    // Radial flow: derivative 0.5.
    const double radial = plotY(Log10(0.5));
    c.line(0, radial, kAxisWidth, radial);
    c.text(70, radial - 2, "radial flow");
    c.setDashed(false);
}

} // namespace

std::vector<DiagnosticPoint> splashDiagnosticCurve() {
    std::vector<DiagnosticPoint> curve;
    const int count = static_cast<int>(std::lround(kDecades / kStep));
    for (int i = 0; i <= count; ++i) {
        const double logTime = kFirstDecade + kStep * i;
        const WellResponse r = radialStorageResponse(kStorageSkinGroup, std::pow(10.0, logTime));
        curve.push_back({logTime, Log10(r.pressure), Log10(r.derivative)});
    }
    return curve;
}

void drawSplashPicture(Canvas& c) {
    beginPlot(c, kSplashWindow, "");
    drawAxes(c);
    drawDecadeTicks(c);
    drawGuides(c);
    c.setPenWidth(3);
    for (const DiagnosticPoint& p : splashDiagnosticCurve()) {
        c.setPenColor(kDataBlue);
        c.dot(plotX(p.logTime), plotY(p.logPressure));
        c.setPenColor(kDerivativeRed);
        c.dot(plotX(p.logTime), plotY(p.logDerivative));
    }
    c.setPenWidth(1);
    c.setPenColor(kDataBlue);
    c.text(4, 66, "pressure change");
    c.setPenColor(kDerivativeRed);
    c.text(4, 61, "derivative");
    c.setPenColor(kBlack);
    c.text(40, -3, "shut-in time");
}

} // namespace zorvekan
