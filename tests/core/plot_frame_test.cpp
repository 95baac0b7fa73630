// SPDX-License-Identifier: MIT
#include "../support/recording_canvas.h"
#include "core/checked_math.h"
#include "core/plot_frame.h"
#include "core/runtime_error.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace zorvekan {
namespace {

using testing::RecordingCanvas;

// Plot units and device pixels must map both ways, with y growing upward when the
// height is negative: a click must land where the point was drawn. A square window
// uses the smaller factor for both axes and is centred, so a log-log decade is as long
// up as across on a wide or a tall surface.
TEST(PlotFrame, UserToDeviceAndBack) {
    struct Row {
        UserWindow window;
        double width, height; // device
        double x, y, px, py;
    };
    const UserWindow square = kStorageWindow; // -25, 65, 130 x -80
    const Row rows[] = {
        {kSemilogWindow, 650, 400, -20, 65, 0, 0}, // 5 px per unit
        {kSemilogWindow, 650, 400, 0, 0, 100, 325},
        {kSemilogWindow, 650, 400, 100, 60, 600, 25},
        {kSemilogWindow, 650, 400, 110, -15, 650, 400},
        {square, 1300, 400, -25, 65, 325, 0}, // 5 px per unit, 325 px free each side
        {square, 1300, 400, 105, -15, 975, 400},
        {square, 260, 800, -25, 65, 0, 320}, // 2 px per unit, 320 px free above and below
        {square, 260, 800, 0, 0, 50, 450},
    };
    for (const Row& r : rows) {
        const PlotFrame frame(r.window, r.width, r.height);
        EXPECT_DOUBLE_EQ(frame.toDeviceX(r.x), r.px);
        EXPECT_DOUBLE_EQ(frame.toDeviceY(r.y), r.py);
        EXPECT_DOUBLE_EQ(frame.toUserX(r.px), r.x);
        EXPECT_DOUBLE_EQ(frame.toUserY(r.py), r.y);
    }
}

// The power-of-ten tick rule: q = 10 is accepted, a range of exactly 1 has no ticks,
// no tick at the base itself.
TEST(LinearTicks, PowerOfTenStep) {
    struct Row {
        double min, max, step;
        std::vector<double> values;
    };
    const Row rows[] = {
        {0, 10, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}},
        {2412.5, 2600, 100, {2500}},
        {2350, 2990, 100, {2400, 2500, 2600, 2700, 2800, 2900}},
        {0.5, 1.5, 10000, {}}, // range exactly 1
        {1.2, 4.7, 1, {2, 3, 4}},
        {-3.5, 2, 1, {-3, -2, -1, 0, 1}},          // Int rounds toward minus infinity
        {0, 250000, 10000, {10000, 20000, 30000}}, // falls through to 10^4
    };
    for (const auto& r : rows) {
        const LinearTicks t = linearTicks(r.min, r.max);
        EXPECT_EQ(t.step, r.step) << r.min << ".." << r.max;
        if (r.min == 0 && r.max == 250000)
            EXPECT_EQ(t.values.size(), 25u);
        else
            EXPECT_EQ(t.values, r.values) << r.min << ".." << r.max;
    }
}

// The tick base is a 16-bit integer: pressures above 32767 psi overflow it, a
// limit of the frame that must be reported, not wrapped.
TEST(LinearTicks, BaseOverflowIsAFault) {
    EXPECT_THROW(linearTicks(40000, 40500), RuntimeError);
    EXPECT_NO_THROW(linearTicks(32000, 32500));
    EXPECT_THROW(axisScale(60, 5, 5), RuntimeError); // equal extremes
}

// Whole decades: a minimum already on a decade gets its first tick one decade up;
// the last tick may lie beyond the axis end.
TEST(DecadeTicks, WholeDecadesAboveTheMinimum) {
    EXPECT_EQ(decadeTicks(-2.3, 1.4), (std::vector<int>{-2, -1, 0, 1}));
    EXPECT_EQ(decadeTicks(0.0, 2.5), (std::vector<int>{1, 2, 3}));
    EXPECT_EQ(decadeTicks(1.0, 3.0), (std::vector<int>{2, 3, 4}));
}

// A superposition axis of a test whose last rate is tiny spans millions of decades: it
// must be refused at once, not drawn label by label for minutes.
TEST(DecadeTicks, MoreThanThirtyDecadesIsRefused) {
    EXPECT_EQ(decadeTicks(-15, 15).size(), 31u);
    EXPECT_THROW(decadeTicks(-15, 15.5), RuntimeError);
    EXPECT_THROW(decadeTicks(-9e6, 0.7), RuntimeError);
}

// Storage plot: one scale for both axes; y data spanning more than 0.6 of the x
// decades set it, and then the x axis ends short of 100.
TEST(SquareLogScale, SameDecadeLengthOnBothAxes) {
    EXPECT_DOUBLE_EQ(squareLogScale(-3, 2, 0, 2), 20.0);  // 5 decades across
    EXPECT_DOUBLE_EQ(squareLogScale(-3, 2, -1, 3), 15.0); // 4 > 0.6*5 decades of y
    EXPECT_LT(squareLogScale(-3, 2, -1, 3) * 5, 100.0);
    EXPECT_DOUBLE_EQ(squareLogScale(0, 5, 0, 3), 20.0); // exactly 0.6: x rules
}

// Tick labels are number-to-text with the leading blank, placed below x ticks and
// left of y ticks; the superposition plot labels decades by exponent.
TEST(FrameDrawing, TickLabelsAndPositions) {
    RecordingCanvas c;
    drawLogXTicks(c, -1.5, 1.2, 100 / 2.7);
    ASSERT_EQ(c.texts.size(), 3u);
    EXPECT_EQ(c.texts[0].text, " .1");
    EXPECT_EQ(c.texts[2].text, " 10");
    EXPECT_NEAR(c.texts[0].x, 100 / 2.7 * 0.5 - 2, 1e-12);
    EXPECT_EQ(c.texts[0].y, -2);
    c.clear();
    drawLogXTicks(c, -1.5, 1.2, 10, true);
    EXPECT_EQ(c.texts[0].text, "-1");
    c.clear();
    drawLinearYTicks(c, 2412.5, 2600, 60 / 187.5, -14);
    ASSERT_EQ(c.texts.size(), 1u);
    EXPECT_EQ(c.texts[0].text, " 2500");
    EXPECT_EQ(c.texts[0].x, -14);
    EXPECT_NEAR(c.texts[0].y, 60 / 187.5 * 87.5 + 2, 1e-12);
    c.clear();
    // The title once written downwards from (x, 48) to (x, 15) stands turned, centred.
    drawVerticalText(c, "Pressure psi", -18, 51, 3);
    ASSERT_EQ(c.texts.size(), 1u);
    EXPECT_TRUE(c.texts[0].vertical);
    EXPECT_EQ(c.texts[0].x, -18);
    EXPECT_DOUBLE_EQ(c.texts[0].y, 31.5);
}

} // namespace
} // namespace zorvekan
