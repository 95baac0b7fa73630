// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "skin/skin_evaluation.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zorvekan {
namespace {

using Lines = std::vector<std::string>;

// The lines must keep their exact captions, leading blanks and masks, in order, and
// the actual skin must take off the fracture skin and every component printed.
// Worked case: total 15, fracture -1.5, slant 30 deg (-0.1005), hp = 40 of h = 100 ft
// (7.929), hc = 50 ft (3.874), 90 deg with 4 shots/ft, lp = 12 in, rp = 0.2 in,
// rw = 4 in, kv/kh = 0.1 (sH -1.066, sWb 0.0089, sV 1.659, sp 0.602):
// actual = 15 + 1.5 + 0.1005 - 7.929 - 3.874 - 0.602 = 4.196.
TEST(SkinEvaluation, EveryComponentTakenOffTheTotal) {
    SkinInputs in;
    in.totalSkin = 15;
    in.fractureSkin = -1.5;
    in.wellboreRadius = 4;
    in.permeabilityRatio = 0.1;
    in.wellAngle = 30;
    in.netPay = 100;
    in.penetratedInterval = 40;
    in.productionInterval = 50;
    in.shotsPerFoot = 4;
    in.perforationLength = 12;
    in.perforationRadius = 0.2;
    in.phasing = 4;
    in.slantHole = in.partialPenetration = in.partialCompletion = in.perforated = true;
    const SkinEvaluation e = CalculateSkins(in);
    EXPECT_EQ(e.lines,
              (Lines{"Total Skin Factor = 15.", "Fracture Skin Factor = -1.5",
                     "Slant Hole Skin Factor = -0.1", "Partial Penetration Skin Factor = 7.93",
                     "Partial Completion Skin Factor = 3.87", "Perforation Skin Factor = 0.6",
                     "   Components:", "    Horizontal Skin Factor = -1.07",
                     "    Wellbore Skin Factor = 0.01", "    Vertical Skin Factor = 1.66",
                     "Actual Skin Factor = 4.2"}));
    EXPECT_NEAR(e.actual, 4.19605, 5e-5);
}

// What is not ticked or not computable must not be printed or subtracted: no box
// ticked leaves total = actual; b = 0.05 skips partial penetration even with a zero
// radius that would otherwise fault; a zero fracture skin prints no line.
TEST(SkinEvaluation, ComponentsNotComputedCountZero) {
    SkinInputs in;
    in.totalSkin = 5.236;
    in.netPay = 100;
    in.penetratedInterval = 5;
    const Lines totalOnly{"Total Skin Factor = 5.24", "Actual Skin Factor = 5.24"};
    EXPECT_EQ(CalculateSkins(in).lines, totalOnly);
    in.partialPenetration = true;
    EXPECT_EQ(CalculateSkins(in).lines, totalOnly);
    in.netPay = 0; // b itself cannot be formed
    EXPECT_THROW(CalculateSkins(in), RuntimeError);
}

} // namespace
} // namespace zorvekan
