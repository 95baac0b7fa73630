// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "core/val.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

// Every text box is read leniently: a box must never reject text, and a stray
// character must not change the number in front of it.
TEST(Val, LeadingNumericPart) {
    const std::pair<const char*, double> cases[] = {
        {"12abc", 12},      {"", 0},
        {"abc", 0},         {" ", 0},
        {"7", 7},           {"  -3.5e2x", -350},
        {".5", 0.5},        {"1,000", 1}, // the comma ends the number
        {"1 000", 1000},                  // blanks are skipped anywhere
        {"15.", 15},        {"+4.25", 4.25},
        {"2D3", 2000}, // BASIC's double-precision exponent letter
        {"3e", 3},     // an exponent without digits is not part of the number
        {"-", 0},           {"..5", 0},
        {"&H1F", 31},       {"&O17", 15},
        {"1.5e-5", 1.5e-5}, {"\t20\n", 20},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_DOUBLE_EQ(Val(text), expected) << '"' << text << '"';
}

// A number beyond the double range is an overflow fault, not infinity in the state.
TEST(Val, OverflowIsAFault) {
    EXPECT_THROW(Val("1e999"), RuntimeError);
    EXPECT_DOUBLE_EQ(Val("1e-999"), 0.0);
}

} // namespace
} // namespace zorvekan
