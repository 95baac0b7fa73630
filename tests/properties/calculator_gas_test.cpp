// SPDX-License-Identifier: MIT
#include "properties/calculator_gas.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

// Without a gravity the calculator computes no gas at all and says so; outside the
// Hall-Yarborough range it reports the failure that ends the program.
TEST(CalculatorGas, GravityAndFailures) {
    AnalysisState s;
    s.OilFvf = 1.3;
    const CalculatorGasOutcome none = calculateGasPart(s, 0.0, 200, 3000);
    EXPECT_TRUE(none.lines.empty());
    EXPECT_TRUE(none.note);
    EXPECT_FALSE(none.fatal);
    EXPECT_EQ(s.OilFvf, 1.3); // no z evaluation, so no B stored

    const CalculatorGasOutcome cold = calculateGasPart(s, 0.7, -300, 1000);
    EXPECT_EQ(cold.fatal, "pTr<1: z-factor Routine FAILS");
    EXPECT_TRUE(cold.lines.empty());
    const CalculatorGasOutcome deep = calculateGasPart(s, 0.7, 200, 20000);
    EXPECT_EQ(deep.fatal, "pPr>20.5: z-factor Routine FAILS");

    const CalculatorGasOutcome ok = calculateGasPart(s, 0.7, 200, 3000);
    ASSERT_EQ(ok.lines.size(), 5u);
    EXPECT_EQ(ok.lines[0], "Gas Z-Factor = .882");
    EXPECT_FALSE(ok.note);
}

// The column starts with what the stored codes stand for.
TEST(CalculatorGas, SelectedCorrelationTexts) {
    AnalysisState s;
    EXPECT_EQ(selectedOilCorrelation(s), "Standing : California Crudes");
    EXPECT_EQ(selectedGasKind(s), "Wet Gas");
    s.OilCorrelation = 8;
    s.GasKind = 1;
    EXPECT_EQ(selectedOilCorrelation(s), "Kartoatmodjo/Schmidt : Worldwide Crudes");
    EXPECT_EQ(selectedGasKind(s), "Dry Gas");
    s.OilCorrelation = 9;
    EXPECT_EQ(selectedOilCorrelation(s), "");
}

} // namespace
} // namespace zorvekan
