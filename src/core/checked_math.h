// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvekan {

// How a domain fault names its argument: "logarithm of 0", "logarithm of a negative
// number", "square root of a negative number".
inline constexpr std::string_view kZeroArgument = " of 0";
inline constexpr std::string_view kNegativeArgument = " of a negative number";

// Base-10 logarithm as the analyses compute it everywhere: ln(x) / ln(10).
// A non-positive argument is a run-time fault (no logarithm of zero).
double Log10(double x);

// a / b; a zero divisor is a run-time fault, as is a quotient beyond the double range.
double divide(double a, double b);

// sqrt(x) for x >= 0; a negative argument is a run-time fault.
double squareRoot(double x);

// Natural logarithm for x > 0.
double naturalLog(double x);

// Returns x when it is a finite number, otherwise raises an overflow fault
// naming the quantity. Used after exp/pow and products that can run away.
double finite(double x, const char* quantity);

// A whole number held as a 16-bit signed integer; outside -32768..32767 it overflows.
std::int16_t toInt16(double x);

// BASIC Int(): the largest whole number not above x.
double basicInt(double x);

} // namespace zorvekan
