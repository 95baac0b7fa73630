// SPDX-License-Identifier: MIT
#include "core/analysis_state.h"
#include "core/checked_math.h"

#include "../support/raised.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zorvekan {
namespace {

Fault faultOf(const auto& f) {
    return testing::raised(f).fault.value_or(Fault::NoData);
}

// Arithmetic faults must stop a computation with a reported error, never leave
// NaN or infinity in the analysis state.
TEST(CheckedMath, FaultsAreReportedByKind) {
    EXPECT_EQ(faultOf([] { Log10(0.0); }), Fault::InvalidArgument);
    EXPECT_EQ(faultOf([] { Log10(-2.0); }), Fault::InvalidArgument);
    EXPECT_EQ(faultOf([] { divide(1.0, 0.0); }), Fault::DivisionByZero);
    EXPECT_EQ(faultOf([] { divide(1e300, 1e-300); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { squareRoot(-1.0); }), Fault::InvalidArgument);
    EXPECT_EQ(faultOf([] { toInt16(32768.0); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { toInt16(-32769.0); }), Fault::Overflow);
    EXPECT_EQ(faultOf([] { finite(std::exp(1000.0), "x"); }), Fault::Overflow);
}

// The base-10 logarithm is ln(x)/ln(10) everywhere, so decades computed on
// different plots agree to the last bit.
TEST(CheckedMath, Log10IsNaturalLogRatio) {
    for (double x : {0.001, 0.5, 2.0, 1000.0, 123456.0})
        EXPECT_EQ(Log10(x), std::log(x) / std::log(10.0)) << x;
    EXPECT_EQ(toInt16(32767.0), 32767);
    EXPECT_EQ(basicInt(-0.5), -1.0);
}

// The analysis arrays have fixed bounds; a subscript outside them (an insert at
// 500 points, a header row -1) must be a reported fault, not a write past the end.
TEST(BoundedArray, SubscriptsOutsideTheBoundsAreFaults) {
    AnalysisState s;
    EXPECT_NO_THROW(s.TestTime[500] = 1.0);
    EXPECT_NO_THROW(s.TestTime[0] = 1.0);
    EXPECT_EQ(faultOf([&] { s.TestTime[501] = 1.0; }), Fault::SubscriptOutOfRange);
    EXPECT_EQ(faultOf([&] { s.TestTime[-1] = 1.0; }), Fault::SubscriptOutOfRange);
    EXPECT_EQ(faultOf([&] { s.Rate[26] = 1.0; }), Fault::SubscriptOutOfRange);
}

} // namespace
} // namespace zorvekan
