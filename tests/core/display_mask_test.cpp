// SPDX-License-Identifier: MIT
#include "core/display_mask.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

struct MaskCase {
    double value;
    const char* mask;
    const char* expected;
};

// Every number the program shows goes through a mask: a wrong leading zero, a lost
// decimal point or a wrong rounding would misstate a result.
TEST(Format, FixedMasksFollowBasicRules) {
    const MaskCase cases[] = {
        {0.5, "#.###", ".5"},        // no leading zero under '#'
        {1.23456, "#.###", "1.235"}, // rounds half away from zero
        {1.5, "#.###", "1.5"},       // optional decimals drop trailing zeros
        {0, "#.###", "."},           // zero keeps only the point
        {12, "##.", "12."},          // the point is printed even with no decimals
        {1234, "##.", "1234."},      // integer digits beyond the placeholders all show
        {3000.25, "#####.#", "3000.3"},
        {12.345, "##.##", "12.35"}, // 12.345 is 12.3449999… in binary, decimal rounding wins
        {-0.5, "#.###", "-.5"},
        {744.73, "####.", "745."},
        {0.2, "0.##", "0.2"}, // '0' forces the leading zero
        {1, "0.##", "1."},
        {0.25, "#0.##", "0.25"},
        {7, "#####", "7"},
        {0, "#####", ""},        // '#' suppresses a zero entirely
        {99.96, "##.#", "100."}, // carry into a new integer digit
        {0.004, "#.##", "."},    // rounds away to nothing
        {5, "000.0", "005.0"},
        {0.123, "###.##%", "12.3%"}, // percent multiplies by 100
        {1e307, "0%", "Infinity"},   // a percentage beyond the double range
    };
    for (const auto& c : cases)
        EXPECT_EQ(Format(c.value, c.mask), c.expected) << c.value << " under " << c.mask;
}

// Type-curve parameters and dual-porosity results are printed in exponent form;
// a wrong exponent sign or padding misreads CDe2s by decades.
TEST(Format, ScientificMasks) {
    const MaskCase cases[] = {
        {12345, "#.0E-00", "1.2E04"},
        {0.00012, "#.0E-00", "1.2E-04"},
        {0.3, "#.0E-00", "3.0E-01"},
        {1e20, "#.0E-00", "1.0E20"},
        {1e60, "#.0E-00", "1.0E60"},
        {9.96, "#.0E-00", "1.0E01"}, // mantissa rounding carries into the exponent
        {-5e-5, "#.0E-00", "-5.0E-05"},
        {1234567.89, "###.##E-00", "123.46E04"},
        {0.12345, "0.00E-00", "1.23E-01"},
        {12345, "0.0E+00", "1.2E+04"},
        {0.0001, "0.0E+0", "1.0E-4"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(Format(c.value, c.mask), c.expected) << c.value << " under " << c.mask;
}

// Sections choose the text for negative and zero values.
TEST(Format, SectionsForNegativeAndZero) {
    EXPECT_EQ(Format(-3, "#.0;(#.0)"), "(3.0)");
    EXPECT_EQ(Format(0, "#.0;(#.0);\"none\""), "none");
    EXPECT_EQ(Format(2, "#.0;(#.0);\"none\""), "2.0");
}

// Tick labels and composed messages depend on the leading blank of a
// non-negative number ("Maximum of  500Test Points Allowed").
TEST(Str, LeadingBlankAndCompactForm) {
    const std::pair<double, const char*> cases[] = {
        {500, " 500"},
        {-5, "-5"},
        {0, " 0"},
        {0.5, " .5"},
        {-0.25, "-.25"},
        {0.0001, " .0001"},
        {0.00001, " 1E-05"},
        {1e15, " 1E+15"},
        {123456789012345.0, " 123456789012345"},
        {1.0 / 3.0, " .333333333333333"},
        {2.5e-7, " 2.5E-07"},
        {100000, " 100000"},
    };
    for (const auto& [value, expected] : cases)
        EXPECT_EQ(Str(value), expected) << value;
}

} // namespace
} // namespace zorvekan
