// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/semilog_series.h"

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <utility>
#include <vector>

namespace zorvekan {
namespace {

void setPoints(AnalysisState& s, std::initializer_list<std::pair<double, double>> points) {
    int i = 0;
    for (const auto& [t, p] : points) {
        ++i;
        s.TestTime[i] = t;
        s.TestPressure[i] = p;
    }
    s.TestPointCount = static_cast<std::int16_t>(i);
}

void setRates(AnalysisState& s, std::initializer_list<std::pair<double, double>> steps) {
    int j = 0;
    for (const auto& [duration, rate] : steps) {
        ++j;
        s.RateTime[j] = duration;
        s.Rate[j] = rate;
    }
    s.RateCount = static_cast<std::int16_t>(j);
}

// An oil test from p0 with the given rate steps (duration, rate) and points (t, p).
AnalysisState oilTest(int shutIn, double p0, std::initializer_list<std::pair<double, double>> rates,
                      std::initializer_list<std::pair<double, double>> points) {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.ShutInFlag = static_cast<std::int16_t>(shutIn);
    s.StartPressure = p0;
    setRates(s, rates);
    setPoints(s, points);
    return s;
}

// A buildup after 24 h at 500 STB/day from a flowing 2000 psia.
AnalysisState buildup24() {
    AnalysisState s = oilTest(1, 2000, {{24, 500}}, {{24, 2600}, {1, 2400}, {8, 2550}});
    s.ProducingTime = 24;
    return s;
}

// Two rates (100 then 200 STB/day, the first lasting 10 h, the second 20 h) in a
// drawdown from 3000 psia, the classic hand-worked superposition case.
AnalysisState twoRateDrawdown() {
    // The second-step points are entered out of time order on purpose.
    return oilTest(0, 3000, {{10, 100}, {20, 200}},
                   {{5, 2900}, {25, 2700}, {15, 2750}, {40, 2650}});
}

// The time and change each point is plotted at, worked by hand: Agarwal's equivalent
// time tp*dt/(tp+dt) for a buildup, elapsed time for a single-rate drawdown, and for
// the two rates the superposition time (t - 10) * t / 10 (exponent (q1 - q0)/(q1 - q2)
// = -1) with each change from the pressure at its step's start divided by the step's
// rate change, sorted by time (the raw arrays keep entry order). A wrong form
// misplaces every point of the log-log plot.
TEST(TimeFunctions, HandWorkedHistories) {
    struct Row {
        AnalysisState s;
        std::vector<std::pair<double, double>> expected; // time function, change
    };
    Row rows[] = {
        {buildup24(), {{12, 600}, {24.0 / 25, 400}, {6, 550}}}, // one rate: entry order
        {oilTest(0, 3000, {{48, 300}}, {{0.5, 2950}, {2, 2900}}), {{0.5, 50}, {2, 100}}},
        {twoRateDrawdown(),
         {{5, 1.0},                     // step 1: t, |3000 - 2900| / 100
          {(15 - 10) * 15 / 10.0, 1.5}, // step 2 from p_ref = 2900: |2900 - 2750| / 100
          {(25 - 10) * 25 / 10.0, 2.0},
          {(40 - 10) * 40 / 10.0, 2.5}}}, // after the last step: still the last step
    };
    for (Row& row : rows) {
        AnalysisState& s = row.s;
        ComputeTimeFunctions(s);
        for (std::size_t k = 0; k < row.expected.size(); ++k) {
            const int i = static_cast<int>(k) + 1;
            EXPECT_NEAR(s.TimeFunction[i], row.expected[k].first, 1e-12) << i;
            EXPECT_NEAR(s.DeltaP[i], row.expected[k].second, 1e-12) << i;
            EXPECT_DOUBLE_EQ(s.LogTime[i], Log10(s.TimeFunction[i]));
            EXPECT_DOUBLE_EQ(s.LogDeltaP[i], Log10(s.DeltaP[i]));
        }
    }
    EXPECT_DOUBLE_EQ(rows[2].s.TestTime[2], 25.0);
    EXPECT_DOUBLE_EQ(rows[2].s.CumulativeTime[2], 30.0);
}

// A superposition time below 1e-6 h means the history does not fit the data: the
// whole computation must fall back to the single-rate treatment, in entry order. A
// point lying exactly on the rate change keeps its change from p0 (not a zero change
// and a logarithm of zero) and is the reference of the points after the change.
TEST(TimeFunctions, FallbackToSingleRate) {
    AnalysisState s = oilTest(0, 3000, {{10, 100}, {20, 200}},
                              {{5, 2900}, {10, 2850}, {10.00000001, 2849}, {20, 2700}});
    ComputeTimeFunctions(s);
    const double fromReference[] = {100, 150, 1, 150};
    for (int i = 1; i <= 4; ++i) {
        EXPECT_DOUBLE_EQ(s.TimeFunction[i], s.TestTime[i]) << i;
        EXPECT_DOUBLE_EQ(s.DeltaP[i], fromReference[i - 1]) << i;
    }
}

// Rate histories as engineers type them: two steps of one rate are one step, and a
// shut-in typed as a last step of zero rate is the shut-in itself; each must give the
// series of the history it stands for (not a division by zero). Two nearly equal
// rates, whose multi-rate time overflows, take the single-rate treatment.
TEST(TimeFunctions, TypedHistoriesAreTheirRateChanges) {
    const std::initializer_list<std::pair<double, double>> points = {
        {5, 2900}, {15, 2850}, {25, 2750}, {40, 2650}};
    struct Row {
        int shutIn;
        std::initializer_list<std::pair<double, double>> typed, meant;
    };
    const Row rows[] = {
        {0, {{10, 100}, {10, 100}, {20, 200}}, {{20, 100}, {20, 200}}},
        {1, {{10, 100}, {20, 200}, {48, 0}}, {{10, 100}, {20, 200}}},
    };
    for (const Row& row : rows) {
        for (const SemilogKind kind : {kSemilogPlot, kSuperpositionPlot}) {
            AnalysisState typed = oilTest(row.shutIn, 3000, row.typed, points);
            AnalysisState meant = oilTest(row.shutIn, 3000, row.meant, points);
            for (AnalysisState* s : {&typed, &meant}) {
                s->ProducingTime = row.shutIn ? 25 : 0;
                s->SemilogPlotKind = kind;
                PrepareAnalysisData(*s);
            }
            EXPECT_EQ(typed.TimeFunction, meant.TimeFunction) << row.shutIn << kind;
            EXPECT_EQ(typed.DeltaP, meant.DeltaP) << row.shutIn << kind;
            EXPECT_EQ(typed.SemilogX, meant.SemilogX) << row.shutIn << kind;
            EXPECT_EQ(typed.SemilogY, meant.SemilogY) << row.shutIn << kind;
        }
    }
    AnalysisState s = oilTest(0, 3000, {{20, 100}, {20, 100.0000001}}, points);
    ComputeTimeFunctions(s);
    for (int i = 1; i <= 4; ++i)
        EXPECT_DOUBLE_EQ(s.TimeFunction[i], s.TestTime[i]) << i;
}

// A time of zero or a pressure equal to the start pressure has no logarithm: the
// preparation must stop with a fault, not carry -infinity into the plots.
TEST(TimeFunctions, NonPositiveValuesAreFaults) {
    AnalysisState s = oilTest(0, 3000, {{10, 100}}, {{1, 3000}});
    EXPECT_THROW(ComputeTimeFunctions(s), RuntimeError);
    setPoints(s, {{0, 2900}});
    EXPECT_THROW(ComputeTimeFunctions(s), RuntimeError);
    s.TestPointCount = 501;
    EXPECT_THROW(ComputeTimeFunctions(s), RuntimeError);
}

// Each plot kind has its own x and y; a wrong series gives a wrong slope and with it
// wrong permeability and skin.
TEST(SemilogSeries, HornerRatioForBuildup) {
    AnalysisState s = buildup24();
    PrepareAnalysisData(s);
    ASSERT_EQ(s.PointCount, 3);
    EXPECT_DOUBLE_EQ(s.SemilogX[1], Log10(48.0 / 24.0));
    EXPECT_DOUBLE_EQ(s.SemilogX[2], Log10(25.0));
    EXPECT_DOUBLE_EQ(s.SemilogY[3], 2550.0);
    EXPECT_DOUBLE_EQ(s.SemilogXMin, Log10(2.0));
    EXPECT_DOUBLE_EQ(s.SemilogXMax, Log10(25.0));
    EXPECT_DOUBLE_EQ(s.SemilogYMin, 2400.0);
    EXPECT_DOUBLE_EQ(s.SemilogYMax, 2600.0);
}

// Flowing multi-rate test on the semilog plot: log of the equivalent time against the
// rate-normalised change; in the superposition kind: the summation term against
// (p0 - p)/q_N, both normalised by the rate q_N of the point's own step.
TEST(SemilogSeries, FlowingMultiRateKinds) {
    AnalysisState s = twoRateDrawdown();
    s.SemilogPlotKind = kSemilogPlot;
    PrepareAnalysisData(s);
    ASSERT_EQ(s.PointCount, 4);
    EXPECT_DOUBLE_EQ(s.SemilogX[2], Log10(7.5));
    EXPECT_DOUBLE_EQ(s.SemilogY[2], 1.5);
    EXPECT_TRUE(semilogIsRateNormalised(s));

    s.SemilogPlotKind = kSuperpositionPlot;
    PrepareAnalysisData(s);
    ASSERT_EQ(s.PointCount, 4);
    // Raw order: t = 5 in the first step (weight 1, q1 = 100), then 25, 15, 40 in the
    // second (weights q1/q2 = 0.5 and (q2 - q1)/q2 = 0.5).
    EXPECT_DOUBLE_EQ(s.SemilogX[1], Log10(5.0));
    EXPECT_DOUBLE_EQ(s.SemilogY[1], (3000.0 - 2900.0) / 100.0);
    EXPECT_NEAR(s.SemilogX[3], 0.5 * Log10(15.0) + 0.5 * Log10(5.0), 1e-15);
    EXPECT_DOUBLE_EQ(s.SemilogY[3], (3000.0 - 2750.0) / 200.0);
    EXPECT_DOUBLE_EQ(s.SemilogTime[2], 25.0);
}

// A point a hair after a rate change has log(t - t_j) near -infinity and must be
// left off the superposition plot rather than stretch its axis by decades.
TEST(SemilogSeries, PointsAtARateChangeAreLeftOut) {
    AnalysisState s = twoRateDrawdown();
    s.SemilogPlotKind = kSuperpositionPlot;
    s.TestTime[2] = 10.000005;
    ComputeTimeFunctions(s);
    BuildSemilogSeries(s);
    EXPECT_EQ(s.PointCount, 3);
    double sum = 0;
    EXPECT_TRUE(flowingSummation(s, 10.0, sum)); // exactly at the change: first step only
    EXPECT_DOUBLE_EQ(sum, 1.0);
    EXPECT_FALSE(flowingSummation(s, 0.0, sum));
}

// The extremes start from values any datum replaces, and a second preparation
// starts from them again (a stale extreme would squash the plot).
TEST(PlotRanges, ResetAndWidenedByTheData) {
    AnalysisState s = twoRateDrawdown();
    s.SemilogXMin = -50;
    s.StorageYMax = 99;
    PrepareAnalysisData(s);
    EXPECT_DOUBLE_EQ(s.StorageXMin, Log10(5.0));
    EXPECT_DOUBLE_EQ(s.StorageXMax, Log10(120.0));
    EXPECT_DOUBLE_EQ(s.StorageYMax, Log10(2.5));
    EXPECT_LE(s.StorageYMin, 0.0); // log10(1.0) or a lower derivative
    EXPECT_GT(s.SemilogXMin, -50);
}

} // namespace
} // namespace zorvekan
