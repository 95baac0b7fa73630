// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/straight_line.h"
#include "input/entry_rules.h"
#include "input/test_file.h"
#include "semilog/semilog_plots.h"
#include "semilog/storage_picks.h"

#include "../support/recording_canvas.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

using testing::RecordingCanvas;

// A 40-point oil buildup after 100 h of production: storage, then a semilog line of
// 50 psi per cycle from 2000 psia.
AnalysisState buildup() {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.ShutInFlag = 1;
    s.StartPressure = 2000;
    s.ProducingTime = 100;
    s.FlowRate = 300;
    s.OilFvf = 1.2;
    s.RateCount = 1;
    s.RateTime[1] = 100;
    s.Rate[1] = 300;
    s.TestPointCount = 40;
    for (int i = 1; i <= 40; ++i) {
        const double dt = std::pow(10.0, -2 + 4.0 * (i - 1) / 39);
        s.TestTime[i] = dt;
        s.TestPressure[i] = 2400 - 50 * std::log10((100 + dt) / dt);
    }
    PrepareAnalysisData(s);
    return s;
}

// Titles per test kind: a buildup drawn as superposition keeps its pressure title;
// flowing rate-normalised plots read dp/q or dp/dq; m(p) carries "(1E6)"; the flow
// plots name the pressure they plot, written upwards. Every semilog point is drawn in
// blue inside the axis box, and the log-log plot draws every change in blue and every
// derivative in red. A wrong title or a point outside the box misleads the engineer.
TEST(SemilogPlot, TitlesAndPointsPerKind) {
    struct Row {
        std::int16_t fluid, shutIn, rates, kind;
        const char *semiTitle, *semiX, *semiY, *storX, *storY;
    };
    const char* equivalent = "Equiv. Adj. Time, hrs.";
    const Row rows[] = {
        {kOil, 1, 1, kSemilogPlot, "Semilog Plot", "(t+dt)/dt", "Pressure psi", equivalent,
         "dp, dp'"},
        {kOil, 1, 1, kSuperpositionPlot, "Superposition Plot", "Summation log term", "Pressure psi",
         equivalent, "dp, dp'"},
        {kOil, 0, 1, kSemilogPlot, "Semilog Plot", "Time, hrs.", "Pressure psi", "Time, hrs.",
         "dp, dp'"},
        {kGasPseudopressure, 1, 1, kSemilogPlot, "Semilog Plot", "(t+dt)/dt", "m(p) (1E6)",
         equivalent, "dm(p), d m(p)' (1E6)"},
        {kOil, 0, 2, kSemilogPlot, "Semilog Plot", "Equiv. Adj. Test Time", "dp/dq", equivalent,
         "dp/dq, dp'/dq"},
        {kGasPseudopressure, 0, 2, kSuperpositionPlot, "Superposition Plot", "Summation log term",
         "d m(p)/q (1E6)", equivalent, "dm(p)/dq, dm(p)'/dq (1E6)"},
    };
    for (const Row& r : rows) {
        SCOPED_TRACE(r.semiY);
        AnalysisState k = buildup();
        k.FluidFlags = r.fluid;
        k.ShutInFlag = r.shutIn;
        k.RateCount = r.rates;
        k.SemilogPlotKind = r.kind;
        k.ProducingTime = r.shutIn ? 100 : 0;
        k.TestPseudoPressure = k.TestPressure;
        RecordingCanvas semi, stor, qtr;
        DrawSemilogPlot(semi, k);
        DrawStoragePlot(stor, k);
        DrawBilinearFlowPlot(qtr, k, {0, 1000});
        for (auto [canvas, title] : {std::pair{&semi, r.semiTitle},
                                     {&semi, r.semiX},
                                     {&semi, r.semiY},
                                     {&stor, r.storX},
                                     {&stor, r.storY}})
            ASSERT_NE(canvas->findText(title), nullptr) << title;
        EXPECT_TRUE(semi.findText(r.semiY)->vertical);
        const char* bilinear = r.fluid == kOil ? "Pressure psi" : "m(p) (1E6)";
        ASSERT_NE(qtr.findText(bilinear), nullptr);
        EXPECT_TRUE(qtr.findText(bilinear)->vertical);
        EXPECT_EQ(semi.dotsIn(kDataBlue), k.PointCount);
        for (const auto& d : semi.dots) {
            EXPECT_TRUE(d.x > -1e-9 && d.x < 100 + 1e-9 && d.y > -1e-9 && d.y < 60 + 1e-9);
        }
        EXPECT_EQ(stor.dotsIn(kDataBlue), 40);
        EXPECT_EQ(stor.dotsIn(kDerivativeRed), k.DerivativeCount);
    }
}

// A last rate of 1E-5 after 300 STB/day makes the superposition axis span about 9E7
// log cycles: the plot is refused at once instead of drawing a label a decade.
TEST(SemilogPlot, TinyLastRateIsRefused) {
    AnalysisState s;
    ASSERT_TRUE(openTestFile(s, SOURCE_DIR "/examples/two-rate-drawdown.zvt").ok);
    s.Rate[2] = 1e-5;
    deriveFlowRateAndProducingTime(s);
    s.SemilogPlotKind = kSuperpositionPlot;
    PrepareAnalysisData(s);
    RecordingCanvas c;
    EXPECT_THROW(DrawSemilogPlot(c, s), RuntimeError);
    EXPECT_LT(c.texts.size(), 5u);
}

// A click on the log-log plot gives back the time and change drawn there, and the
// buildup's equivalent time is turned back into shut-in time; a unit-slope point
// gives C = q*B*dt/(24*dp). (The order of two half-slope picks is checked on the
// semilog screen.)
TEST(StoragePicks, ClickToTimeAndStorage) {
    AnalysisState s = buildup();
    RecordingCanvas c;
    DrawStoragePlot(c, s);
    const int i = 10;
    const double x = s.StorageScale * (s.LogTime[i] - s.StorageXMin);
    const double y = s.StorageScale * (s.LogDeltaP[i] - s.StorageYMin);
    const StorageClick click = storagePointAt(s, x, y);
    EXPECT_NEAR(click.plottedTime, s.TimeFunction[i], 1e-9 * s.TimeFunction[i]);
    EXPECT_NEAR(click.time, s.TestTime[i], 1e-9 * s.TestTime[i]);
    EXPECT_NEAR(click.deltaP, s.DeltaP[i], 1e-9 * s.DeltaP[i]);
    EXPECT_NEAR(wellboreStorageAt(s, click), 300 * 1.2 * s.TestTime[i] / (24 * s.DeltaP[i]), 1e-9);
    // A flowing multi-rate plot is already per unit rate: no q.
    s.ShutInFlag = 0;
    s.RateCount = 2;
    EXPECT_NEAR(wellboreStorageAt(s, {1, 1, 2}), 1.2 / 48.0, 1e-15);
}

// Linear-flow plot: only points strictly inside the interval, x = sqrt(t); the slope
// and the intercept read back the line drawn through two of them.
TEST(FlowPlots, LinearFlowSlopeAndIntercept) {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.StartPressure = 3000;
    s.RateCount = 1;
    s.RateTime[1] = 50;
    s.Rate[1] = 100;
    s.TestPointCount = 20;
    for (int i = 1; i <= 20; ++i) {
        s.TestTime[i] = 0.05 * i;
        s.TestPressure[i] = 3000 - 40 * std::sqrt(0.05 * i) - 5; // falling, 40 psi/sqrt(h)
    }
    PrepareAnalysisData(s);
    RecordingCanvas c;
    const TimeInterval interval{0.1, 0.8};
    const FlowPlotFrame f = DrawLinearFlowPlot(c, s, interval);
    EXPECT_EQ(f.pointCount, 13); // 0.15 .. 0.75: both bounds excluded
    EXPECT_EQ(c.dotsIn(kDataBlue), 13);
    EXPECT_NE(c.findText("Linear Flow Plot"), nullptr);
    EXPECT_NE(c.findText("Square Root time"), nullptr);
    StraightLine line;
    auto at = [&](int i) {
        return std::pair{f.scales.x * (std::sqrt(s.TestTime[i]) - f.xMin),
                         f.scales.y * (s.TestPressure[i] - f.yMin)};
    };
    lineMouseDown(line, at(4).first, at(4).second);
    lineMouseDown(line, at(14).first, at(14).second);
    const double m = lineSlope(line, f.scales.x, f.scales.y);
    EXPECT_NEAR(m, -40, 1e-9);
    // The intercept is computed with |m| even for a falling line (kept so).
    const double b = lineIntercept(line, std::fabs(m), f.xMin, f.scales.x, f.yMin, f.scales.y);
    EXPECT_NEAR(b, s.TestPressure[14] - 40 * std::sqrt(s.TestTime[14]), 1e-9);
}

// No point inside the interval is reported, not drawn with an infinite scale.
TEST(FlowPlots, EmptyIntervalIsAFault) {
    AnalysisState s = buildup();
    RecordingCanvas c;
    EXPECT_THROW(DrawBilinearFlowPlot(c, s, {1000, 2000}), RuntimeError);
}

// The rubber band: the second click ends the line even without a move; a move erases
// the previous band in white before drawing the new one and redraws the points.
TEST(StraightLine, RubberBand) {
    StraightLine line;
    RecordingCanvas c;
    int redraws = 0;
    lineMouseMove(line, c, 5, 5, [&] { ++redraws; });
    EXPECT_TRUE(c.lines.empty());
    EXPECT_EQ(lineMouseDown(line, 10, 20), LineClick::FirstEnd);
    lineMouseMove(line, c, 30, 40, [&] { ++redraws; });
    lineMouseMove(line, c, 50, 45, [&] { ++redraws; });
    ASSERT_EQ(c.lines.size(), 3u);
    EXPECT_EQ(c.lines[1].colour, kWhite);
    EXPECT_EQ(c.lines[1].x2, 30);
    EXPECT_EQ(c.lines[2].colour, kBlack);
    EXPECT_EQ(redraws, 2);
    EXPECT_EQ(lineMouseDown(line, 60, 50), LineClick::Completed);
    EXPECT_TRUE(line.complete);
    EXPECT_EQ(line.x2, 60);
    StraightLine quick;
    lineMouseDown(quick, 1, 1);
    EXPECT_EQ(lineMouseDown(quick, 1, 9), LineClick::Completed);
    EXPECT_THROW(lineSlope(quick, 1, 1), RuntimeError); // vertical line
}

// The checked line runs across the whole axis box through the two clicked ends and
// stops at the box; a line clicked outside the box is drawn between its ends. A line
// cut short or run past the box would hide where the data leave it.
TEST(StraightLine, AcrossTheAxisBox) {
    const double rows[][8] = {
        // clicked x1, y1, x2, y2; then drawn, from left to right
        {10, 10, 20, 20, 0, 0, 60, 60},       // leaves by the top
        {80, 30, 20, 30, 0, 30, 100, 30},     // clicked right to left, level
        {40, 50, 60, 40, 20, 60, 100, 20},    // falling, enters at the top
        {150, 80, 160, 80, 150, 80, 160, 80}, // misses the box: as clicked
    };
    for (const auto& r : rows) {
        StraightLine line;
        lineMouseDown(line, r[0], r[1]);
        lineMouseDown(line, r[2], r[3]);
        RecordingCanvas c;
        drawLineAcrossBox(c, line, kDerivativeRed);
        ASSERT_EQ(c.lines.size(), 1u);
        auto l = c.lines[0];
        if (l.x1 > l.x2)
            l = {l.x2, l.y2, l.x1, l.y1, l.colour, l.width, l.dashed};
        EXPECT_EQ(l.colour, kDerivativeRed);
        const double drawn[] = {l.x1, l.y1, l.x2, l.y2};
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(drawn[i], r[4 + i], 1e-9) << r[0] << " " << i;
    }
}

} // namespace
} // namespace zorvekan
