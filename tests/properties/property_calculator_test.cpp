// SPDX-License-Identifier: MIT
#include "../support/oil_properties.h"
#include "properties/property_calculator.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zorvekan {
namespace {

using testing::oilPropertyInputs;

bool anyLineHas(const PropertyCalculation& r, const std::string& text) {
    for (const auto* lines : {&r.gas.lines, &r.oilLines, &r.waterLines, &r.rockLines})
        for (const std::string& l : *lines)
            if (l.find(text) != std::string::npos)
                return true;
    return false;
}

// The gas part runs first and keeps its failure: a z-factor failure stops the whole
// calculation (no oil, water or rock lines); a calculation that runs copies nothing
// into the test by itself (the B the z routine leaves in OilFvf is checked on the
// calculator screen, with its notice on the input screen).
TEST(PropertyCalculator, GasFailureStopsTheCalculation) {
    AnalysisState s;
    PropertyInputs in = oilPropertyInputs();
    in.pressure = 20000; // Ppr above 20.5
    const PropertyCalculation failed = calculateProperties(s, in);
    ASSERT_TRUE(failed.gas.fatal);
    EXPECT_TRUE(failed.oilLines.empty() && failed.waterLines.empty() && failed.rockLines.empty());
    const PropertyCalculation r = calculateProperties(s, oilPropertyInputs());
    EXPECT_FALSE(r.gas.fatal);
    EXPECT_NE(s.OilFvf, *r.values.oilFvf);
    EXPECT_TRUE(r.values.totalCompressibility);
}

// Inputs that leave a value without meaning give no line for it and a reason, never
// NaN: no gas gravity (no gas, no oil, and no z routine to leave its B in the oil
// FVF), a temperature below 0 R, no GOR or pb, no porosity (no cf and therefore no
// ct). Without saturations ct is simply not asked for.
TEST(PropertyCalculator, ValuesThatCannotBeComputedAreNamed) {
    struct Row {
        const char* name;
        void (*change)(PropertyInputs&);
        bool oil, water, formation, total, noted = true;
    };
    const Row rows[] = {
        {"no gas gravity", [](PropertyInputs& i) { i.gasGravity = 0; }, false, true, true, false},
        {"below 0 R",
         [](PropertyInputs& i) {
             i.gasGravity = 0;
             i.temperature = -470;
         },
         false, false, true, false},
        {"no GOR or pb", [](PropertyInputs& i) { i.gor = 0; }, false, true, true, false},
        {"no porosity", [](PropertyInputs& i) { i.porosity = 0; }, true, true, false, false},
        {"no saturations", [](PropertyInputs& i) { i.oilSaturation = i.waterSaturation = 0; }, true,
         true, true, false, false},
    };
    for (const Row& row : rows) {
        AnalysisState s;
        s.OilFvf = 1.3;
        PropertyInputs in = oilPropertyInputs();
        row.change(in);
        const PropertyCalculation r = calculateProperties(s, in);
        EXPECT_EQ(s.OilFvf == 1.3, in.gasGravity == 0) << row.name;
        EXPECT_EQ(!r.oilLines.empty(), row.oil) << row.name;
        EXPECT_EQ(!r.waterLines.empty(), row.water) << row.name;
        EXPECT_EQ(anyLineHas(r, "Formation Compressibility"), row.formation) << row.name;
        EXPECT_EQ(r.values.totalCompressibility.has_value(), row.total) << row.name;
        EXPECT_EQ(!r.notes.empty(), row.noted) << row.name;
        EXPECT_FALSE(anyLineHas(r, "nan") || anyLineHas(r, "inf")) << row.name;
    }
}

// ct = So co + Sw cw + Sg cg + cf, hand-computed: 0.7*10 + 0.3*3 + 4 = 11.9 microsips;
// a phase with a saturation but no compressibility leaves ct unknown, a phase without
// saturation does not count.
TEST(PropertyCalculator, TotalCompressibility) {
    PropertyInputs in;
    in.oilSaturation = 0.7;
    in.waterSaturation = 0.3;
    EXPECT_NEAR(*totalCompressibility(in, 10e-6, 3e-6, std::nullopt, 4e-6), 11.9e-6, 1e-12);
    EXPECT_FALSE(totalCompressibility(in, std::nullopt, 3e-6, 500e-6, 4e-6));
    EXPECT_FALSE(totalCompressibility(in, 10e-6, 3e-6, 500e-6, std::nullopt));
    in.gasSaturation = 0.1;
    EXPECT_NEAR(*totalCompressibility(in, 10e-6, 3e-6, 500e-6, 4e-6), 61.9e-6, 1e-12);
}

// "Copy to Input" fills exactly the boxes the fluid code shows on the input screen:
// the principal phase's FVF and viscosity (gas alone in pseudopressure has no FVF box),
// a second phase's own boxes, and ct in microsips, each in the box's refill mask.
TEST(PropertyCalculator, CopiedBoxesFollowTheFluidCode) {
    const PhaseValues v{1.2345678, 0.5, 0.9, 0.02, 1.03, 0.3, 12.5e-6};
    const std::pair<std::int16_t, std::vector<std::string>> rows[] = {
        {kGasPseudopressure, {"muin=.02", "ctin=12.5"}},
        {kOil, {"boin=1.2346", "muin=.5", "ctin=12.5"}},
        {kGasPressure, {"boin=.9", "muin=.02", "ctin=12.5"}},
        {kWater, {"boin=1.03", "muin=.3", "ctin=12.5"}},
        {kOilGas, {"boin=1.2346", "muin=.5", "bgin=.9", "mgin=.02", "ctin=12.5"}},
        {kOilWater, {"boin=1.2346", "muin=.5", "bwin=1.03", "mwin=.3", "ctin=12.5"}},
        {kGasWater,
         {"boin=1.03", "muin=.3", "bgin=.9", "mgin=.02", "bwin=1.03", "mwin=.3", "ctin=12.5"}},
    };
    for (const auto& [code, expected] : rows) {
        std::vector<std::string> missing, got;
        for (const BoxValue& b : inputBoxValues(code, v, missing))
            got.push_back(b.objectName + "=" + b.text);
        EXPECT_EQ(got, expected) << "FluidFlags " << code;
        EXPECT_TRUE(missing.empty());
    }
    std::vector<std::string> missing;
    const auto partial =
        inputBoxValues(kOilGas, PhaseValues{1.2, 0.5, {}, {}, {}, {}, {}}, missing);
    EXPECT_EQ(partial.size(), 2u);
    EXPECT_EQ(missing,
              (std::vector<std::string>{"gas FVF", "gas viscosity", "total compressibility"}));
}

} // namespace
} // namespace zorvekan
