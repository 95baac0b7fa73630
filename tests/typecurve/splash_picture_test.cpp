// SPDX-License-Identifier: MIT
#include "../support/recording_canvas.h"
#include "typecurve/splash_picture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace zorvekan {
namespace {

// The start-up picture is a diagnostic plot an engineer will read: it must start on
// the unit slope (pure storage, pD = T), end on the radial-flow derivative of 0.5,
// and show the storage hump in between.
TEST(SplashPicture, StorageHumpAndRadialFlow) {
    const auto curve = splashDiagnosticCurve();
    ASSERT_EQ(curve.size(), 121u);
    const DiagnosticPoint& first = curve.front();
    const DiagnosticPoint& last = curve.back();
    EXPECT_NEAR(first.logTime, -2.0, 1e-12);
    EXPECT_NEAR(last.logTime, 4.0, 1e-12);
    EXPECT_NEAR(first.logPressure, first.logTime, 0.01);
    EXPECT_NEAR(first.logDerivative, first.logTime, 0.01);
    EXPECT_NEAR(last.logDerivative, std::log10(0.5), 0.02);
    const auto hump = std::max_element(curve.begin(), curve.end(), [](auto& a, auto& b) {
        return a.logDerivative < b.logDerivative;
    });
    EXPECT_GT(hump->logDerivative, std::log10(1.5));
    EXPECT_GT(hump->logTime, first.logTime);
    EXPECT_LT(hump->logTime, last.logTime);
    for (const DiagnosticPoint& p : curve)
        EXPECT_GE(p.logPressure + 1e-9, p.logDerivative); // semilog rise never outruns dp
}

// Both series are drawn in their plot colours inside the axis box, one dot per point,
// and the early points sit on the drawn unit-slope guide.
TEST(SplashPicture, DrawsBothSeriesInTheBox) {
    testing::RecordingCanvas c;
    drawSplashPicture(c);
    EXPECT_EQ(c.dotsIn(kDataBlue), 121);
    EXPECT_EQ(c.dotsIn(kDerivativeRed), 121);
    for (const auto& d : c.dots) {
        EXPECT_GE(d.x, 0.0);
        EXPECT_LE(d.x, 100.0 + 1e-9);
        EXPECT_GE(d.y, -0.5);
        EXPECT_LE(d.y, 60.0);
    }
    EXPECT_NEAR(c.dots[0].x, c.dots[0].y, 0.2);
    EXPECT_NE(c.findText("pressure change"), nullptr);
    EXPECT_NE(c.findText("derivative"), nullptr);
    EXPECT_EQ(c.left, kSplashWindow.left);
    EXPECT_LT(c.height, 0.0);
}

} // namespace
} // namespace zorvekan
