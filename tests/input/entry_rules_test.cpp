// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

AnalysisState entering(int mode) {
    AnalysisState s;
    s.DatinMode = static_cast<std::int16_t>(mode);
    s.EntryCounter = 1;
    s.FluidFlags = kOil;
    s.OilFvf = 1.2;
    return s;
}

void row(AnalysisState& s, const char* a, const char* b, const char* c = " ", const char* d = " ") {
    storeEntryRow(s, {a, b, c, d});
}

// One rate of 500 STB/day for 48 h before a buildup: q = 500, tp = 48 h.
TEST(FinishRates, SingleRate) {
    AnalysisState s = entering(1);
    s.ShutInFlag = 1;
    row(s, "48", "500");
    finishEntry(s);
    EXPECT_EQ(s.RateCount, 1);
    EXPECT_EQ(s.FlowRate, 500.0);
    EXPECT_EQ(s.ProducingTime, 48.0);
    EXPECT_EQ(s.DerivativeSpan, 0.2);
}

// Two oil rates (200 STB/day for 10 h, then 100 STB/day for 20 h, Bo 1.2) before a
// buildup: tp = (10*1.2*200 + 20*1.2*100) / (1.2*100) = 40 h; the same history in a
// drawdown has no producing time.
TEST(FinishRates, EquivalentProducingTime) {
    AnalysisState s = entering(1);
    s.ShutInFlag = 1;
    s.RateTimeUnit = 1; // days
    row(s, "0.41666666666666667", "200");
    row(s, "0.83333333333333333", "100");
    finishEntry(s);
    EXPECT_NEAR(s.RateTime[1], 10.0, 1e-12);
    EXPECT_EQ(s.FlowRate, 100.0);
    EXPECT_NEAR(s.ProducingTime, 40.0, 1e-12);
    s.ShutInFlag = 0;
    deriveFlowRateAndProducingTime(s);
    EXPECT_EQ(s.ProducingTime, 0.0);
}

// With free gas and water beside the oil, every phase's reservoir volume counts and
// a negative free gas rate counts as none.
TEST(FinishRates, MultiphaseReservoirVolumes) {
    AnalysisState s = entering(1);
    s.ShutInFlag = 1;
    s.FluidFlags = kOilGasWater;
    s.GasFvf = 0.8;
    s.WaterFvf = 1.0;
    s.SolutionGor = 0.5;
    row(s, "10", "100", "30", "20"); // free gas 30 - 50 < 0: none
    row(s, "20", "100", "80", "10"); // free gas 30 MCF/day
    finishEntry(s);
    const double volume =
        (10 * 1.2 * 100 + 10 * 1.0 * 20) + (20 * 1.2 * 100 + 20 * 0.8 * 30 + 20 * 1.0 * 10);
    const double lastRate = 1.2 * 100 + 1.0 * 10 + 0.8 * 30;
    EXPECT_NEAR(s.ProducingTime, volume / lastRate, 1e-12);
}

// Test points typed in minutes are stored in hours; a row at time 0 is the start of
// the test: its pressure becomes the start pressure and it is not counted.
TEST(TestPoints, MinutesAndTheStartRow) {
    AnalysisState s = entering(0);
    s.TestTimeUnit = 1;
    const RowOutcome start = storeEntryRow(s, {"0", "3000", " ", " "});
    EXPECT_EQ(s.StartPressure, 3000.0);
    EXPECT_EQ(start.startPressureText, std::string("3000."));
    EXPECT_EQ(s.EntryCounter, 1);
    row(s, "60", "2500");
    row(s, "120", "2450");
    finishEntry(s);
    EXPECT_EQ(s.TestPointCount, 2);
    EXPECT_EQ(s.TestTime[1], 1.0);
    EXPECT_EQ(s.TestTime[2], 2.0);
    EXPECT_EQ(s.TestPressure[2], 2450.0);
}

// The arrays end at 500 points and 25 rates: the next row gets the limit message,
// spelled exactly as the program always has, and nothing is stored past the end.
TEST(Limits, MessagesAndNothingStored) {
    EXPECT_EQ(testPointLimitMessage(), "Maximum of  500Test Points Allowed");
    EXPECT_EQ(rateLimitMessage(), "Maximum of  25 Rates Allowed");
    AnalysisState s = entering(0);
    s.EntryCounter = 501;
    const RowOutcome points = storeEntryRow(s, {"1", "2000", " ", " "});
    EXPECT_FALSE(points.stored);
    EXPECT_EQ(points.message, testPointLimitMessage());
    EXPECT_EQ(s.EntryCounter, 501);
    AnalysisState r = entering(1);
    r.EntryCounter = 26;
    const RowOutcome rates = storeEntryRow(r, {"1", "100", " ", " "});
    EXPECT_EQ(rates.message, rateLimitMessage());
    EXPECT_EQ(r.EntryCounter, 26);
}

// The entry screen shows only the boxes of the flowing phases, with their captions.
TEST(Layout, BoxesPerModeAndFluid) {
    AnalysisState s = entering(0);
    EntryLayout l = entryLayout(s);
    EXPECT_EQ(l.heading, "Enter Well Test Values");
    EXPECT_EQ(l.boxes[0].label, "Time           hrs.");
    EXPECT_EQ(l.boxes[1].label, "Pressure    psia");
    EXPECT_FALSE(l.boxes[2].visible);
    s.DatinMode = 1;
    s.RateTimeUnit = 1;
    s.FluidFlags = kGasWater;
    l = entryLayout(s);
    EXPECT_EQ(l.heading, "Enter Rates and Flow Duration");
    EXPECT_EQ(l.boxes[0].label, "Duration     days");
    EXPECT_FALSE(l.boxes[1].visible);
    EXPECT_TRUE(l.boxes[2].visible);
    EXPECT_TRUE(l.boxes[3].visible);
    s.FluidFlags = kGasPressure;
    EXPECT_EQ(entryLayout(s).boxes[1].label, "Gas Rate MCF/day");
    s.FluidFlags = kWater;
    EXPECT_EQ(entryLayout(s).boxes[1].label, "Wtr Rate STB/day");
    s.FluidFlags = kOilGas;
    l = entryLayout(s);
    EXPECT_EQ(l.boxes[1].label, "Oil Rate STB/day");
    EXPECT_TRUE(l.boxes[2].visible);
    EXPECT_FALSE(l.boxes[3].visible);
}

} // namespace
} // namespace zorvekan
