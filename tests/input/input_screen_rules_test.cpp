// SPDX-License-Identifier: MIT
#include "input/input_screen_rules.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

using B = PropertyBox;

bool visible(const InputBoxVisibility& v, B b) {
    return v.box[static_cast<std::size_t>(b)];
}

// Each fluid code shows the boxes its phases need and no other: gas in m(p) needs
// gravity and temperature, a second phase its FVF and viscosity, oil with gas the GOR.
TEST(InputBoxVisibility, ByFluidChoice) {
    struct Row {
        FluidChoice f;
        std::vector<B> shown, hidden;
        const char* fvfLabel;
    };
    const std::vector<Row> rows = {
        {{false, true, false, true},
         {B::GasGravity, B::Temperature, B::Viscosity, B::Compressibility},
         {B::Fvf, B::GasFvf, B::SolutionGor, B::WaterFvf},
         "   FVF    RVB/MCF"},
        {{false, true, false, false},
         {B::Fvf, B::Viscosity},
         {B::GasGravity, B::Temperature, B::GasFvf},
         "   FVF    RVB/MCF"},
        {{true, false, false, true},
         {B::Fvf, B::Viscosity, B::NetPay, B::StartPressure},
         {B::GasFvf, B::WaterFvf, B::SolutionGor, B::GasGravity},
         "   FVF    RVB/STB"},
        {{true, true, false, true},
         {B::Fvf, B::GasFvf, B::GasViscosity, B::SolutionGor},
         {B::WaterFvf, B::WaterViscosity, B::GasGravity},
         "FVF      RVB/STB"},
        {{false, true, true, true},
         {B::Fvf, B::GasFvf, B::WaterFvf, B::WaterViscosity},
         {B::SolutionGor, B::GasGravity},
         "FVF      RVB/STB"},
        {{true, false, true, true},
         {B::WaterFvf, B::WaterViscosity},
         {B::GasFvf, B::SolutionGor},
         "   FVF    RVB/STB"},
    };
    for (const Row& r : rows) {
        const InputBoxVisibility v = inputBoxVisibility(r.f, false);
        for (B b : r.shown)
            EXPECT_TRUE(visible(v, b)) << propertyBox(b).objectName;
        for (B b : r.hidden)
            EXPECT_FALSE(visible(v, b)) << propertyBox(b).objectName;
        EXPECT_EQ(v.fvfLabel, r.fvfLabel);
        EXPECT_EQ(v.gasAnalysis, r.f.gas);
    }
    // Once the GOR has taken gas out, its box stays in sight for correction.
    EXPECT_TRUE(visible(inputBoxVisibility({true, false, false, true}, true), B::SolutionGor));
}

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

// Before any rate is entered the free-gas test compares zeros; it must not untick gas.
TEST(SolutionGorText, OnlyAfterRates) {
    AnalysisState s;
    s.FluidFlags = kOilGas;
    EXPECT_FALSE(applyPropertyText(s, PropertyBox::SolutionGor, "0.9"));
    EXPECT_EQ(s.FluidFlags, kOilGas);
    EXPECT_EQ(s.SolutionGor, 0.9);
    s.RateCount = 1;
    s.Rate[1] = 100;
    s.GasRate[1] = 80;
    EXPECT_TRUE(applyPropertyText(s, PropertyBox::SolutionGor, "0.9"));
    EXPECT_EQ(s.FluidFlags, kOil);
}

// The navigation goes by the first four characters, and two or more rates call for
// the superposition plot.
TEST(Navigation, ScreenAndPlotKind) {
    EXPECT_EQ(navigationScreen("Semilog Analysis"), "kv1");
    EXPECT_EQ(navigationScreen("Type Curve Analysis"), "kv2");
    EXPECT_EQ(navigationScreen("Show/Edit Test Data"), "inpsho");
    EXPECT_EQ(navigationScreen("Skin Factor Evaluation"), "skin");
    EXPECT_FALSE(navigationScreen("Sem"));
    AnalysisState s;
    s.FluidFlags = kOil;
    s.ShutInFlag = 1;
    s.StartPressure = 3000;
    s.ProducingTime = 24;
    s.TestTime[1] = 24;
    s.TestPressure[1] = 3100;
    s.TestPointCount = 1;
    s.RateCount = 2;
    s.Rate[1] = 100;
    s.Rate[2] = 200;
    s.RateTime[1] = 20;
    s.RateTime[2] = 4;
    prepareForAnalysisScreen(s);
    EXPECT_EQ(s.SemilogPlotKind, kSuperpositionPlot);
    s.RateCount = 1;
    s.TimeFunction[1] = 0;
    prepareForAnalysisScreen(s);
    EXPECT_EQ(s.SemilogPlotKind, kSemilogPlot);
    EXPECT_EQ(s.TimeFunction[1], 12.0); // tp*t/(tp + t), prepared afresh
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
    EXPECT_EQ(inputScreenCaption(), "ZORVEKAN -- Input Data");
    startInputSession(s, "/data/wells");
    EXPECT_EQ(s.ApplicationDirectory, "/data/wells");
}

} // namespace
} // namespace zorvekan
