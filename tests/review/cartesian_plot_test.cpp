// SPDX-License-Identifier: MIT
#include "review/cartesian_plot.h"

#include "../support/pss_drawdown.h"
#include "../support/raised.h"
#include "../support/recording_canvas.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace zorvekan {
namespace {

using testing::kAcre;
using testing::pssDrawdown;
using testing::raised;
using testing::RecordingCanvas;

// The drainage radius by hand: a line through two points of a pseudosteady-state
// decline gives back the radius sqrt(A/pi) of the known drainage area, whatever the
// direction of the line and the order of the clicks, and for gas from the slope of
// m(p). The program's 0.0418 (against 0.23395/5.615 = 0.041665) makes it 0.16 % larger.
TEST(PssDrainageRadius, GivesTheRadiusOfAKnownPoreVolume) {
    struct Row {
        double acres;
        bool gas;
        int first, second; // the test points the line is clicked through, in order
    } rows[] = {{40, false, 10, 40},
                {40, false, 40, 10},
                {640, false, 5, 45},
                {160, true, 12, 30},
                {160, true, 30, 12}};
    for (const Row& row : rows) {
        AnalysisState s = pssDrawdown(row.acres, row.gas);
        RecordingCanvas c;
        const CartesianScales sc = DrawCartesianPlot(c, s);
        StraightLine line;
        for (int i : {row.first, row.second})
            lineMouseDown(line, sc.xs * s.TestTime[i],
                          sc.ys * (cartesianOrdinate(s, i) - s.PlotPressureMin));
        const PssResult r = pssDrainageRadius(s, line, sc);
        const double expected = std::sqrt(row.acres * kAcre / std::numbers::pi);
        EXPECT_NEAR(r.radius / expected, 1.0016, 0.0005) << row.acres << " acres";
        EXPECT_EQ(s.PssDrainageRadius, r.radius);
    }
    AnalysisState s = pssDrawdown(40, false);
    EXPECT_EQ(pssDrainageRadiusThrough(s, 10, s.TestPressure[10], 40, s.TestPressure[40]).line,
              "Drainage radius = 746. ft.");
}

// Division by zero is a reported fault, never a crash or an infinite radius: a vertical
// line, a horizontal line, a single point, a flat record, no compressibility.
TEST(PssDrainageRadius, DivisionsByZeroAreFaults) {
    struct Row {
        const char* what;
        double t1, p1, t2, p2;
        int points;
        bool flat;
        double ct;
    } rows[] = {{"same time", 20, 3850, 20, 3800, 50, false, 1e-5},
                {"horizontal", 10, 3850, 40, 3850, 50, false, 1e-5},
                {"one point", 10, 3850, 40, 3800, 1, false, 1e-5},
                {"flat record", 10, 3850, 40, 3800, 50, true, 1e-5},
                {"no ct", 10, 3850, 40, 3800, 50, false, 0}};
    for (const Row& row : rows) {
        AnalysisState s = pssDrawdown(40, false);
        s.TestPointCount = static_cast<std::int16_t>(row.points);
        s.TotalCompressibility = row.ct;
        if (row.flat)
            for (int i = 1; i <= 50; ++i)
                s.TestPressure[i] = 3900;
        s.PssDrainageRadius = 123;
        const auto fault = [&] { pssDrainageRadiusThrough(s, row.t1, row.p1, row.t2, row.p2); };
        EXPECT_EQ(raised(fault).fault, Fault::DivisionByZero) << row.what;
        EXPECT_EQ(s.PssDrainageRadius, 123) << row.what;
    }
}

// The plot in the common frame: time from 0 and the ordinate from its smallest value
// fill the box, pressure written downwards or m(p) with its unit; the picks read back
// the time and the ordinate value of the clicked point.
TEST(CartesianPlot, FramePointsAndPicks) {
    for (bool gas : {false, true}) {
        AnalysisState s = pssDrawdown(40, gas);
        RecordingCanvas c;
        const CartesianScales sc = DrawCartesianPlot(c, s);
        EXPECT_EQ(c.findText("Cartesian Plot")->x, 20);
        EXPECT_EQ(c.findText("Time, hrs.")->y, -5);
        ASSERT_EQ(c.dotsIn(kDataBlue), 50);
        EXPECT_NEAR(c.dots.back().x, 100, 1e-9); // the last point, the lowest
        EXPECT_NEAR(c.dots.back().y, 0, 1e-9);
        EXPECT_NEAR(c.dots.front().y, 60, 1e-9);
        EXPECT_NE(c.findText(gas ? "m(p) (1E6)" : "Pressure psi"), nullptr);
        const double y10 = sc.ys * (cartesianOrdinate(s, 10) - s.PlotPressureMin);
        markEndOfTransient(c, s, sc, sc.xs * 10, y10);
        EXPECT_DOUBLE_EQ(s.EndOfTransientTime, 10);
        EXPECT_EQ(c.findText("<-- Transient")->colour, kMarkGreen);
        markStartOfPss(c, s, sc, sc.xs * 10, y10);
        EXPECT_NEAR(s.StartPssValue, cartesianOrdinate(s, 10), 1e-9);
        EXPECT_EQ(c.lines.back().colour, kPurple);
    }
}

} // namespace
} // namespace zorvekan
