// SPDX-License-Identifier: MIT
#include "core/checked_math.h"

#include "core/runtime_error.h"

#include <cmath>
#include <cstdio>
#include <string>

namespace zorvekan {

namespace {
std::string show(double x) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.6g", x);
    return buf;
}

// "logarithm of 0", "square root of a negative number": the argument in words, since
// its value is an intermediate the engineer never typed.
std::string outsideDomain(const char* operation, double x) {
    std::string text = operation;
    if (x == 0.0)
        text += kZeroArgument;
    else if (x < 0.0)
        text += kNegativeArgument;
    else
        text += " of " + show(x);
    return text;
}
} // namespace

double Log10(double x) {
    if (!(x > 0.0))
        throw RuntimeError(Fault::InvalidArgument, outsideDomain("logarithm", x));
    return finite(std::log(x) / std::log(10.0), "logarithm");
}

double divide(double a, double b) {
    if (b == 0.0 || std::isnan(b))
        throw RuntimeError(Fault::DivisionByZero);
    return finite(a / b, "quotient");
}

double squareRoot(double x) {
    if (!(x >= 0.0))
        throw RuntimeError(Fault::InvalidArgument, outsideDomain("square root", x));
    return std::sqrt(x);
}

double naturalLog(double x) {
    if (!(x > 0.0))
        throw RuntimeError(Fault::InvalidArgument, outsideDomain("logarithm", x));
    return std::log(x);
}

double finite(double x, const char* quantity) {
    if (!std::isfinite(x))
        throw RuntimeError(Fault::Overflow, quantity);
    return x;
}

std::int16_t toInt16(double x) {
    const double r = std::nearbyint(x);
    if (!(r >= -32768.0 && r <= 32767.0))
        throw RuntimeError(Fault::Overflow, show(x) + " exceeds the 16-bit integer range");
    return static_cast<std::int16_t>(r);
}

double basicInt(double x) {
    return std::floor(x);
}

} // namespace zorvekan
