// SPDX-License-Identifier: MIT
#include "input/input_screen_rules.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

// The check boxes shown after a file is opened must give back the same fluid code.
TEST(FluidChoice, RoundTripsEveryCode) {
    for (std::int16_t code = 0; code <= 7; ++code) {
        const FluidChoice f = fluidChoiceOf(code);
        AnalysisState s;
        s.FluidFlags = 99;
        applyFluidChoice(s, f);
        EXPECT_EQ(s.FluidFlags, code);
    }
    AnalysisState s;
    s.FluidFlags = 4;
    applyFluidChoice(s, {}); // nothing checked leaves the code
    EXPECT_EQ(s.FluidFlags, 4);
}

// The navigation goes by the first four characters: a shorter or other text opens
// nothing.
TEST(Navigation, ScreenByPrefix) {
    EXPECT_EQ(navigationScreen("Semilog Analysis"), "kv1");
    EXPECT_EQ(navigationScreen("Type Curve Analysis"), "kv2");
    EXPECT_EQ(navigationScreen("Show/Edit Test Data"), "inpsho");
    EXPECT_EQ(navigationScreen("Skin Factor Evaluation"), "skin");
    EXPECT_FALSE(navigationScreen("Sem"));
}

// The summaries are what the engineer checks the derived q and tp against; a zero
// must read as a number.
TEST(InputTexts, SummariesAndRadius) {
    AnalysisState s;
    EXPECT_EQ(rateSummary(s), "No rates entered");
    EXPECT_EQ(testPointSummary(s), "No test points entered");
    EXPECT_EQ(drainageRadiusText(s), "");
    s.RateCount = 1;
    s.FlowRate = 2500;
    s.ProducingTime = 72.5;
    s.FluidFlags = kGasPressure;
    EXPECT_EQ(rateSummary(s), "1 rate, q = 2500. MCF/day, tp = 72.5 hrs.");
    s.ProducingTime = 0; // a drawdown: a bare "." would read as a missing value
    s.FlowRate = 0.25;
    EXPECT_EQ(rateSummary(s), "1 rate, q = 0.3 MCF/day, tp = 0. hrs.");
    s.TestPointCount = 1;
    EXPECT_EQ(testPointSummary(s), "1 test point");
    EXPECT_FALSE(analysisListAvailable(AnalysisState{}));
    EXPECT_TRUE(analysisListAvailable(s));
    s.DrainageRadius = 744.7296;
    EXPECT_EQ(drainageRadiusText(s), "744.73");
}

} // namespace
} // namespace zorvekan
