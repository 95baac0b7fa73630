// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "skin/skin_components.h"

#include <gtest/gtest.h>

#include <functional>

namespace zorvekan {
namespace {

// A wrong exponent, divisor or angle conversion in the Cinco-Ley, Miller and Ramey
// slant-hole skin. Worked case (first row): thw = 30 deg, kv/kh = 0.1, h = 100 ft,
// rw = 4 in: thw' = atan(0.3162 tan 30) = 10.35 deg, hD = (1200/4)(3.162) = 948.7,
// s = -(10.35/41)^2.06 - (10.35/56)^1.865 log10(9.487) = -0.0586 - 0.0430(0.977) = -0.1005.
// Isotropic 60 deg keeps thw' = 60 (hD = 171.4): -2.1912 - 1.1373(0.2341) = -2.4573.
TEST(SkinComponents, SlantHoleAgainstHandCalculation) {
    struct Case {
        double angle, h, rw, ratio, skin;
    } cases[] = {
        {30, 100, 4, 0.1, -0.10053},
        {60, 50, 3.5, 1, -2.45730},
        {45, 200, 6, 0.5, -1.05078}, // thw' = 35.26, hD = 565.7
        {0, 100, 4, 0.1, 0},         // a vertical well has no slant skin
    };
    for (const Case& c : cases)
        EXPECT_NEAR(slantHoleSkin(c.angle, c.h, c.rw, c.ratio), c.skin, 5e-5) << c.angle;
}

// G must pass through the tabulated points and be linear between them; at b = 0.8
// no segment applies and G is 0.
TEST(SkinComponents, BronsMartingGInterpolatesTheTable) {
    const double cases[][2] = {{0.1, 2.337},   {0.15, 2.0995}, {0.2, 1.862}, {0.3, 1.7155},
                               {0.4, 1.569},   {0.5, 1.595},   {0.6, 1.621}, {0.7, 1.808},
                               {0.79, 1.9763}, {0.8, 0},       {0.05, 0}};
    for (const auto& c : cases)
        EXPECT_NEAR(bronsMartingG(c[0]), c[1], 1e-9) << c[0];
}

// Partial penetration uses the whole net pay in hD, partial completion half the
// production interval; outside 0.1..0.8 neither is computed.
// Worked case (first row): hp = 40 ft of h = 100 ft, rw = 4 in, kv/kh = 0.1: b = 0.4,
// hD = (1200/4)(3.162) = 948.7, ln hD = 6.855, G = 1.569, s = 1.5 (6.855 - 1.569) = 7.93.
// Partial completion hc = 50 ft: b = 0.5, hD = (12 * 25/4)(3.162) = 237.2, G = 1.595,
// s = 1 (5.469 - 1.595) = 3.874.
TEST(SkinComponents, BronsMartingAgainstHandCalculation) {
    struct Case {
        bool completion;
        double interval, h, rw, ratio;
        std::optional<double> skin;
    } cases[] = {
        {false, 40, 100, 4, 0.1, 7.92911},
        {false, 30, 100, 4, 0.1, 11.99234}, // b = 0.3, G = 1.7155
        {false, 80, 100, 4, 0.1, 1.71377},  // b = 0.8: G = 0, s = 0.25 ln hD
        {false, 5, 100, 4, 0.1, std::nullopt},
        {false, 90, 100, 4, 0.1, std::nullopt},
        {true, 50, 100, 4, 0.1, 3.87378},
        {true, 25, 100, 4, 0.5, 6.54649}, // b = 0.25, hD = 53.03, G = 1.78875
        {true, 85, 100, 4, 0.5, std::nullopt},
    };
    for (const Case& c : cases) {
        const auto skin = c.completion ? partialCompletionSkin(c.interval, c.h, c.rw, c.ratio)
                                       : partialPenetrationSkin(c.interval, c.h, c.rw, c.ratio);
        ASSERT_EQ(skin.has_value(), c.skin.has_value()) << c.interval;
        if (skin) {
            EXPECT_NEAR(*skin, *c.skin, 5e-5) << c.interval;
        }
    }
}

// Each phasing must use its own Karakas-Tariq constants (a wrong a_theta shows in sH,
// a wrong c1 or c2 in sWb, a wrong a1, a2, b1 or b2 in sV), and 0 deg the effective
// radius lp/4 whatever rw is. Worked case: rw = 4 in, lp = 12 in, rp = 0.2 in,
// 4 shots/ft, kv/kh = 0.25: spacing 3 in, hD = (3/12)(2) = 0.5, rpD = (0.2/6)(1.5) = 0.05.
// At 90 deg: sH = ln(4/(0.726 * 16)) = -1.0661, sWb = 0.0019 e^(6.155/4) = 0.00885,
// a = -1.905 log10(0.05) + 0.1038 = 2.5823, b = 1.5674(0.05) + 1.6935 = 1.7719,
// sV = 10^2.5823 (0.5)^0.7719 (0.05)^1.7719 = 1.1083.
TEST(SkinComponents, KarakasTariqPerPhasing) {
    struct Case {
        int degrees;
        double rw, horizontal, wellbore, vertical;
    } cases[] = {
        {0, 4, 0.28768, 0.31229, 0.46173},    {0, 6, 0.69315, 0.39027, 0.46173},
        {45, 4, -1.23547, 0.00041, 1.39808},  {60, 4, -1.17927, 0.00196, 1.32286},
        {90, 4, -1.06609, 0.00885, 1.10828},  {120, 4, -0.95243, 0.02495, 1.03227},
        {180, 4, -0.69315, 0.08073, 0.76646},
    };
    for (const Case& c : cases) {
        const PerforationSkin s =
            perforationSkin(*phasingIndexOf(c.degrees), c.rw, 4, 12, 0.2, 0.25);
        EXPECT_NEAR(s.horizontal, c.horizontal, 5e-5) << c.degrees;
        EXPECT_NEAR(s.wellbore, c.wellbore, 5e-6) << c.degrees;
        EXPECT_NEAR(s.vertical, c.vertical, 5e-5) << c.degrees;
    }
    EXPECT_FALSE(phasingIndexOf(30));
    // The published 180-degree example: rw = 0.406 ft, lp = 8 in, rp = 0.25 in, 2 shots/ft,
    // kh/kv = 3: sH = -0.278, sWb = 0.145, sV = 2.325, sp = 2.19.
    EXPECT_NEAR(perforationSkin(6, 4.872, 2, 8, 0.25, 1.0 / 3).total(), 2.1914, 5e-4);
}

// A zero radius, density, ratio or length, a negative length or an angle beyond
// horizontal must stop with a run-time error, never give NaN or infinity.
TEST(SkinComponents, ZeroInputsAreRuntimeErrors) {
    const std::function<void()> faults[] = {
        [] { slantHoleSkin(30, 100, 0, 0.1); },
        [] { slantHoleSkin(30, 100, 4, 0); },
        [] { slantHoleSkin(30, 0, 4, 0.1); },
        [] { slantHoleSkin(120, 100, 4, 0.1); },
        [] { partialPenetrationSkin(40, 0, 4, 0.1); },
        [] { partialPenetrationSkin(40, 100, 0, 0.1); },
        [] { partialCompletionSkin(50, 100, 4, 0); },
        [] { partialCompletionSkin(50, 100, -4, 0.1); },
        [] { perforationSkin(4, 0, 4, 12, 0.2, 0.25); },
        [] { perforationSkin(4, 4, 0, 12, 0.2, 0.25); },
        [] { perforationSkin(1, 4, 4, 0, 0.2, 0.25); },
        [] { perforationSkin(4, 4, 4, 12, 0, 0.25); },
        [] { perforationSkin(4, 4, 4, 12, 0.2, 0); },
        [] { perforationSkin(7, 4, 4, 12, 0.2, 0.25); },
    };
    for (std::size_t i = 0; i < std::size(faults); ++i)
        EXPECT_THROW(faults[i](), RuntimeError) << "case " << i;
}

} // namespace
} // namespace zorvekan
