// SPDX-License-Identifier: MIT
#include "properties/rock_compressibility.h"
#include "properties/water_properties.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

// McCain's brine correlations against pure water and sea water (NIST/IAPWS values):
// the expansion of water from 60 F to 200 F (999.01 / 963.23 kg/m3), densities at
// 60 F (pure 999.01, 35 g/kg sea water 1026.0 kg/m3), the viscosity of pure water at
// 200 and 300 F (0.3055 and 0.1835 cp, McCain's fit is a few percent low) and the
// compressibility of water at 200 F and 3000 psia (about 3.0 microsips).
TEST(WaterProperties, AgreeWithPureAndSeaWater) {
    const double kgPerM3 = 16.0185; // per lb/cu ft
    const WaterProperties atmospheric = waterProperties({200, 14.7, 0});
    EXPECT_NEAR(atmospheric.fvf, 999.01 / 963.23, 0.003);
    EXPECT_NEAR(waterProperties({60, 14.7, 0}).density * kgPerM3, 999.01, 2.0);
    EXPECT_NEAR(waterProperties({60, 14.7, 3.5}).density * kgPerM3, 1026.0, 4.0);
    EXPECT_NEAR(atmospheric.viscosity, 0.3055, 0.3055 * 0.08);
    EXPECT_NEAR(waterProperties({300, 100, 0}).viscosity, 0.1835, 0.1835 * 0.03);
    EXPECT_NEAR(waterProperties({200, 3000, 0}).compressibility, 3.0e-6, 0.25e-6);
}

// Salt makes water denser and more viscous, dissolves less gas and compresses less;
// pressure dissolves more gas. A sign slip in any salinity term reverses one of these.
TEST(WaterProperties, SalinityAndPressureTrends) {
    const WaterProperties fresh = waterProperties({200, 3000, 0});
    const WaterProperties brine =
        waterProperties({200, 3000, salinityPercent(100000, SalinityUnit::Ppm)});
    EXPECT_GT(brine.density, fresh.density);
    EXPECT_GT(brine.viscosity, fresh.viscosity);
    EXPECT_LT(brine.solutionGas, fresh.solutionGas);
    EXPECT_LT(brine.compressibility, fresh.compressibility);
    EXPECT_GT(waterProperties({200, 5000, 0}).solutionGas, fresh.solutionGas);
    EXPECT_GT(fresh.solutionGas, 5.0);
    EXPECT_LT(fresh.solutionGas, 25.0);
    EXPECT_TRUE(waterInputProblem({-470, 3000, 0}));
    EXPECT_TRUE(waterInputProblem({200, 0, 0}));
    EXPECT_FALSE(waterInputProblem({200, 3000, 10}));
}

// Ahmed, "Reservoir Engineering Handbook", chapter 4, works a sandstone of 20 %
// porosity: Hall gives 3.606 microsips and Newman's consolidated-sandstone fit 2.74.
// The correlation and the rock class are recognised by their first three letters;
// Newman has no fit for friable and unconsolidated sands and says so.
TEST(FormationCompressibility, PublishedSandstoneAndPrefixRules) {
    struct Row {
        const char* formation;
        const char* rock;
        std::optional<double> microsips;
    };
    const Row rows[] = {
        {"Hall", "", 3.606},
        {"Hall", "Friable Sands", 3.606}, // Hall ignores the rock class
        {"Newman", "Consolidated Sands", 2.74},
        {"Newman", "Consolidated", 2.74},
        {"Newman", "Carbonates", 4.32},
        {"Newman", "Friable Sands", std::nullopt},
        {"Newman", "Unconsolidated Sands", std::nullopt},
        {"Newman", "", std::nullopt},
        {"Van der Knaap", "Carbonates", std::nullopt},
        {"Yale et. al.", "Consolidated Sands", std::nullopt},
    };
    for (const Row& r : rows) {
        const FormationCompressibility f = formationCompressibility(r.formation, r.rock, 0.2);
        ASSERT_EQ(f.value.has_value(), r.microsips.has_value()) << r.formation << r.rock;
        if (r.microsips) {
            EXPECT_NEAR(*f.value * 1e6, *r.microsips, 0.01) << r.formation << r.rock;
        } else {
            EXPECT_FALSE(f.remark.empty()) << r.formation << r.rock;
        }
    }
    EXPECT_EQ(formationCompressibility("Newman", "Friable Sands", 0.2).remark,
              "Newman published no fit for Friable Sands");
    EXPECT_FALSE(formationCompressibility("Hall", "", 0).value);
}

} // namespace
} // namespace zorvekan
