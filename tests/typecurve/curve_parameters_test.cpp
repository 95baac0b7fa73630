// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "typecurve/curve_parameters.h"

#include "../support/raised.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace zorvekan {
namespace {

// Le-2s intervals: each bound belongs to the interval below it (upper bound included), so a
// value on a bound and a value just above it pick neighbouring curves.
TEST(TransitionCurve, IntervalsOfLe2s) {
    struct Row {
        double le2s;
        int curve;
    };
    const Row rows[] = {
        {1.0, 1},    {5.0001e-2, 1},   {5e-2, 2},   {5.0001e-3, 2},   {5e-3, 3},   {5.0001e-4, 3},
        {5e-4, 4},   {1.0001e-5, 4},   {1e-5, 5},   {1.0001e-7, 5},   {1e-7, 6},   {1.0001e-9, 6},
        {1e-9, 7},   {5.0001e-13, 7},  {5e-13, 8},  {5.0001e-18, 8},  {5e-18, 9},  {1.0001e-25, 9},
        {1e-25, 10}, {1.0001e-35, 10}, {1e-35, 11}, {1.0001e-45, 11}, {1e-45, 12}, {1e-300, 12},
        {0.0, 12},   {-1e-3, 12},
    };
    for (const Row row : rows)
        EXPECT_EQ(transitionCurveForLe2s(row.le2s), row.curve) << "Le-2s " << row.le2s;
}

// Every pressure transition curve is chosen for its own lambda e^-2s: an interval table
// shifted by one row would draw the neighbouring curve.
TEST(TransitionCurve, EachCurveOwnsItsParameter) {
    for (int k = 1; k <= 12; ++k)
        EXPECT_EQ(transitionCurveForLe2s(curveParameter(LibraryFile::TwoType, k)), k);
    EXPECT_THROW(transitionCurveForLe2s(std::nan("")), RuntimeError);
}

// The labels the screen and the command line print for a curve, and curve numbers outside
// the family refused as subscript errors.
TEST(CurveParameters, LabelsOfEachFamily) {
    struct Row {
        LibraryFile file;
        int curve;
        const char* label;
    };
    const Row rows[] = {
        {LibraryFile::OneType, 1, "CDe2s = 3.0E-01"},  {LibraryFile::OneType, 7, "CDe2s = 1.0E04"},
        {LibraryFile::OneType, 16, "CDe2s = 1.0E60"},  {LibraryFile::FrcType, 1, "xe/xf = 1."},
        {LibraryFile::FrcType, 2, "xe/xf = 1.5"},      {LibraryFile::FrcType, 8, "xe/xf = 15."},
        {LibraryFile::FrcType, 9, "xe/xf = Infinite"}, {LibraryFile::TwoType, 1, "Le-2s = 1.0E-01"},
        {LibraryFile::TwoType, 12, "Le-2s = 1.0E-50"}, {LibraryFile::TwoType, 13, "P1 = 3.0E-04"},
        {LibraryFile::TwoType, 18, "P1 = 1.0E-01"},    {LibraryFile::TwoType, 19, "P2 = 1.0E-04"},
        {LibraryFile::TwoType, 25, "P2 = 1.0E-01"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(curveLabel(row.file, row.curve), row.label);
    for (const auto& [file, curve] :
         {std::pair{LibraryFile::OneType, 0}, std::pair{LibraryFile::OneType, 17},
          std::pair{LibraryFile::FrcType, 10}, std::pair{LibraryFile::TwoType, 26}})
        EXPECT_EQ(testing::raised([&] { curveLabel(file, curve); }).fault,
                  Fault::SubscriptOutOfRange)
            << "curve " << curve;
}

} // namespace
} // namespace zorvekan
