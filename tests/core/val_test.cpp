// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "core/val.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

// Every text box is read leniently: a box must never reject text, and a stray
// character must not change the number in front of it. A text Val does not take
// whole ("1,3" read as 1) must be told apart, so the box can show its reading.
TEST(Val, LeadingNumericPart) {
    struct Case {
        const char* text;
        double value;
        bool whole;
    };
    const Case cases[] = {
        {"12abc", 12, false}, {"", 0, true},
        {"abc", 0, false},    {" ", 0, true},
        {"7", 7, true},       {"  -3.5e2x", -350, false},
        {".5", 0.5, true},    {"1,000", 1, false},   // the comma ends the number
        {"1,3", 1, false},    {"1 000", 1000, true}, // blanks are skipped anywhere
        {"15.", 15, true},    {"+4.25", 4.25, true},
        {"2D3", 2000, true}, // BASIC's double-precision exponent letter
        {"3e", 3, false},    // an exponent without digits is not part of the number
        {"-", 0, false},      {"..5", 0, false},
        {"&H1F", 31, true},   {"&O17", 15, true},
        {"&O19", 1, false},   {"1.5e-5", 1.5e-5, true},
        {"\t20\n", 20, true},
    };
    for (const auto& [text, expected, whole] : cases) {
        EXPECT_DOUBLE_EQ(Val(text), expected) << '"' << text << '"';
        EXPECT_EQ(ValTakesWholeText(text), whole) << '"' << text << '"';
    }
}

// A number beyond the double range is an overflow fault, not infinity in the state.
TEST(Val, OverflowIsAFault) {
    EXPECT_THROW(Val("1e999"), RuntimeError);
    EXPECT_DOUBLE_EQ(Val("1e-999"), 0.0);
}

} // namespace
} // namespace zorvekan
