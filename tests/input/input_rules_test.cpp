// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"
#include "input/input_rules.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

// Typed values are converted once, on entry, to the analysis units: a missed
// conversion (inches, per cent, microsips, acres) is off by 12, 100, 1e6 or 43560.
TEST(PropertyBoxes, ConvertTypedUnits) {
    AnalysisState s;
    applyPropertyText(s, PropertyBox::WellRadius, "7");
    EXPECT_NEAR(s.WellboreRadius, 0.58333, 1e-5);
    applyPropertyText(s, PropertyBox::Porosity, "20");
    EXPECT_DOUBLE_EQ(s.Porosity, 0.2);
    applyPropertyText(s, PropertyBox::Compressibility, "15");
    EXPECT_DOUBLE_EQ(s.TotalCompressibility, 1.5e-5);
    applyPropertyText(s, PropertyBox::DrainageArea, "40");
    EXPECT_DOUBLE_EQ(s.DrainageArea, 1742400.0);
    EXPECT_NEAR(s.DrainageRadius, 744.73, 0.005); // sqrt(A / 3.1416), not full pi
    applyPropertyText(s, PropertyBox::Viscosity, "");
    EXPECT_EQ(s.OilViscosity, 0.0);
    applyPropertyText(s, PropertyBox::NetPay, "35ft");
    EXPECT_EQ(s.Thickness, 35.0);
    EXPECT_NEAR(typedValue(s, PropertyBox::DrainageArea), 40.0, 1e-12);
    EXPECT_NEAR(typedValue(s, PropertyBox::WellRadius), 7.0, 1e-12);
}

// Each box is named and labelled once; a duplicate or a box pointing at the wrong
// field would store a property in another's place.
TEST(PropertyBoxes, EveryBoxHasItsOwnField) {
    const auto& boxes = propertyBoxes();
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(boxes[i].box), i);
        for (std::size_t j = i + 1; j < boxes.size(); ++j) {
            EXPECT_NE(boxes[i].field, boxes[j].field);
            EXPECT_STRNE(boxes[i].objectName, boxes[j].objectName);
        }
    }
    EXPECT_STREQ(propertyBox(PropertyBox::StartPressure).label, "Pressure @ start            psia");
    EXPECT_STREQ(propertyBox(PropertyBox::Compressibility).label,
                 "Total Compressibility            msips");
}

// The test type sets both flags; a falloff is a shut-in injection test.
TEST(TestType, FlagsByType) {
    struct Row {
        const char* type;
        int shutIn, injection;
    };
    for (const Row r : {Row{"Buildup", 1, 0}, Row{"Drawdown", 0, 0}, Row{"Injectivity", 0, 1},
                        Row{"Falloff", 1, 1}}) {
        AnalysisState s;
        s.ShutInFlag = s.InjectionFlag = 7;
        EXPECT_TRUE(applyTestType(s, r.type));
        EXPECT_EQ(s.ShutInFlag, r.shutIn) << r.type;
        EXPECT_EQ(s.InjectionFlag, r.injection) << r.type;
    }
}

// The fluid code decides every analysis formula; each check-box combination has
// its own code and gas alone depends on the analysis mode.
TEST(FluidCode, FromCheckBoxes) {
    EXPECT_EQ(fluidCode(true, false, false, true), kOil);
    EXPECT_EQ(fluidCode(false, false, true, true), kWater);
    EXPECT_EQ(fluidCode(true, false, true, true), kOilWater);
    EXPECT_EQ(fluidCode(false, true, false, true), kGasPseudopressure);
    EXPECT_EQ(fluidCode(false, true, false, false), kGasPressure);
    EXPECT_EQ(fluidCode(true, true, false, true), kOilGas);
    EXPECT_EQ(fluidCode(false, true, true, false), kGasWater);
    EXPECT_EQ(fluidCode(true, true, true, true), kOilGasWater);
    EXPECT_FALSE(fluidCode(false, false, false, true));
}

// An oil test needs its FVF before the flow-time unit (the producing time is a ratio
// of reservoir volumes); gas in pseudopressure does not.
TEST(RateTimeUnit, NeedsFvfExceptForGasInPseudopressure) {
    AnalysisState s;
    s.FluidFlags = kOil;
    EXPECT_EQ(applyRateTimeUnit(s, "Flow Times: days"),
              std::string("Enter FVF & Reselect Flow Time"));
    EXPECT_EQ(s.RateTimeUnit, 0);
    s.OilFvf = 1.2;
    EXPECT_FALSE(applyRateTimeUnit(s, "Flow Times: days"));
    EXPECT_EQ(s.RateTimeUnit, 1);
    AnalysisState gas;
    gas.FluidFlags = kGasPseudopressure;
    EXPECT_FALSE(applyRateTimeUnit(gas, "Flow Times: days"));
    EXPECT_EQ(gas.RateTimeUnit, 1);
    applyTestTimeUnit(gas, "Test Times: min.");
    EXPECT_EQ(gas.TestTimeUnit, 1);
}

// A solution GOR that takes up all the gas of the last rate leaves no free gas:
// oil+gas becomes oil, oil+gas+water becomes oil+water.
TEST(SolutionGor, UndersaturatedDropsTheGasPhase) {
    AnalysisState s;
    s.FluidFlags = kOilGas;
    s.RateCount = 1;
    s.Rate[1] = 500;
    s.GasRate[1] = 400;
    EXPECT_FALSE(applyPropertyText(s, PropertyBox::SolutionGor, "0.5"));
    EXPECT_EQ(s.FluidFlags, kOilGas);
    EXPECT_TRUE(applyPropertyText(s, PropertyBox::SolutionGor, "0.8"));
    EXPECT_EQ(s.FluidFlags, kOil);
    s.FluidFlags = kOilGasWater;
    EXPECT_TRUE(applySolutionGor(s, 1.0));
    EXPECT_EQ(s.FluidFlags, kOilWater);
}

// Gas dissolves in oil: a gas and water test whose last rate carries no gas (a
// reopened file with a GOR left from an oil test) must not be told the gas is gone.
TEST(SolutionGor, NoOilNoUndersaturation) {
    AnalysisState s;
    s.FluidFlags = kGasWater;
    s.RateCount = 1;
    s.WaterRate[1] = 300;
    EXPECT_FALSE(applySolutionGor(s, 0.5));
    EXPECT_EQ(s.FluidFlags, kGasWater);
    EXPECT_EQ(s.SolutionGor, 0.5);
}

} // namespace
} // namespace zorvekan
