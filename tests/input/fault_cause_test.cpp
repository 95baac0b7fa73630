// SPDX-License-Identifier: MIT
#include "input/fault_cause.h"

#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/straight_line.h"
#include "semilog/semilog_results.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace zorvekan {
namespace {

// An oil drawdown of 400 STB/day typed as an engineer would: h 30 ft, mu 0.8 cp,
// B 1.25, phi 20 %, ct 15 microsips, rw 4.248 in, pi 4000 psia, MDH slope 43.36 psi.
AnalysisState oilDrawdown() {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.OilViscosity = 0.8;
    s.OilFvf = 1.25;
    s.Thickness = 30;
    s.Porosity = 0.2;
    s.TotalCompressibility = 1.5e-5;
    s.WellboreRadius = 0.354;
    s.StartPressure = 4000;
    s.RateCount = 1;
    s.Rate[1] = s.FlowRate = 400;
    s.RateTime[1] = 50;
    s.TestPointCount = 10;
    for (int i = 1; i <= 10; ++i) {
        s.TestTime[i] = std::pow(10.0, -1 + 0.25 * i);
        s.TestPressure[i] = 3700 - 43.36 * std::log10(s.TestTime[i]);
    }
    return s;
}

// The message the engineer sees when preparing the data or the semilog results (a
// line through points 3 and 9) fails, or an empty text when nothing fails.
std::string analysisMessage(AnalysisState s) {
    try {
        PrepareAnalysisData(s);
    } catch (const RuntimeError& e) {
        return faultMessage(s, e, FaultStage::Preparation);
    }
    try {
        SemilogInputs in;
        in.scales.x = divide(100, s.SemilogXMax - s.SemilogXMin); // as the plot frame does
        in.scales.y = divide(60, s.SemilogYMax - s.SemilogYMin);
        for (int i : {3, 9})
            lineMouseDown(in.line, in.scales.x * (s.SemilogX[i] - s.SemilogXMin),
                          in.scales.y * (s.SemilogY[i] - s.SemilogYMin));
        ComputeSemilogResults(s, in);
    } catch (const RuntimeError& e) {
        return faultMessage(s, e, FaultStage::Analysis);
    }
    return {};
}

// A fault message must name the input the engineer has to correct, in the words of
// the input screen and its typed unit, and name nothing that is not to blame (a box
// the fluid does not use, an input that cannot cause that kind of fault).
TEST(FaultCause, NamesTheInputBehindTheFault) {
    struct Row {
        const char* what;
        std::function<void(AnalysisState&)> change;
        const char* message;
    };
    const Row rows[] = {
        {"no net pay", [](AnalysisState& s) { s.Thickness = 0; }, "Division by zero: Net Pay is 0"},
        {"negative net pay", [](AnalysisState& s) { s.Thickness = -73; },
         "Invalid procedure call or argument: logarithm of a negative number: Net Pay is "
         "\u221273"},
        {"no rate",
         [](AnalysisState& s) {
             s.RateCount = 0;
             s.Rate[1] = s.FlowRate = 0;
         },
         "Invalid procedure call or argument: logarithm of 0: no rate entered for this "
         "drawdown"},
        {"a buildup without a rate: every Horner ratio is 1",
         [](AnalysisState& s) {
             s.ShutInFlag = 1;
             s.RateCount = 0;
             s.Rate[1] = s.FlowRate = 0;
         },
         "Division by zero: no rate entered for this buildup"},
        {"porosity and rw not typed", [](AnalysisState& s) { s.Porosity = s.WellboreRadius = 0; },
         "Division by zero: Porosity is 0; Well Radius is 0"},
        {"negative porosity, in %", [](AnalysisState& s) { s.Porosity = -0.2; },
         "Invalid procedure call or argument: logarithm of a negative number: Porosity is "
         "\u221220"},
        {"a point at the start pressure, no properties yet",
         [](AnalysisState& s) {
             s.TestPressure[4] = 4000;
             s.Thickness = s.OilFvf = 0;
         },
         "Invalid procedure call or argument: logarithm of 0: test point 4 has the start "
         "pressure"},
        {"gas in m(p) without a gravity: no FVF needed, net pay not yet used",
         [](AnalysisState& s) {
             s.FluidFlags = kGasPseudopressure;
             s.OilFvf = 0;
             s.Thickness = 0;
         },
         "Invalid procedure call or argument: logarithm of 0: Gas Gravity is 0"},
        {"nothing wrong", [](AnalysisState&) {}, ""},
    };
    for (const Row& r : rows) {
        AnalysisState s = oilDrawdown();
        r.change(s);
        EXPECT_EQ(analysisMessage(s), r.message) << r.what;
    }
    // An overflow is not explained by a zero.
    AnalysisState s = oilDrawdown();
    s.Thickness = 0;
    EXPECT_EQ(faultMessage(s, RuntimeError(Fault::Overflow, "quotient"), FaultStage::Analysis),
              "Overflow: quotient");
}

} // namespace
} // namespace zorvekan
