// SPDX-License-Identifier: MIT
#pragma once

#include "core/canvas.h"
#include "core/plot_frame.h"

#include <vector>

namespace zorvekan {

// The picture of the start-up screen: the log-log diagnostic plot of a buildup in a
// well with wellbore storage and skin in an infinite reservoir (CD e^2s = 1e4), the
// pressure change in blue and the Bourdet derivative in red, with the unit-slope and
// radial-flow guides. Both axes hold whole decades of the same length (1/6 of the
// axis width), time T = tD/CD from 1e-2 to 1e4, values from 1e-2 upward.

inline constexpr UserWindow kSplashWindow{-8, 68, 116, -78};

struct DiagnosticPoint {
    double logTime;       // log10 T
    double logPressure;   // log10 pD
    double logDerivative; // log10 (T dpD/dT)
};

// The curve every 0.05 log cycle, from the storage-and-skin solution.
std::vector<DiagnosticPoint> splashDiagnosticCurve();

// Draws the axes with decade ticks, the guides, the two series and their captions.
void drawSplashPicture(Canvas& c);

} // namespace zorvekan
