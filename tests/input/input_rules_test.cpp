// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"
#include "input/input_rules.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

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
