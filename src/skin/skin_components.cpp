// SPDX-License-Identifier: MIT
#include "skin/skin_components.h"

#include "core/checked_math.h"
#include "core/runtime_error.h"

#include <cmath>
#include <string>

namespace zorvekan {

namespace {

// The program's own pi of the slant-hole angle conversions.
constexpr double kDegree = 3.14159 / 180;

// A length or ratio that the correlations divide by or take the logarithm of: 0 is a
// division by zero and a negative value has no logarithm, either way named.
double positive(double value, const char* what) {
    if (value == 0)
        throw RuntimeError(Fault::DivisionByZero, std::string("the ") + what + " is 0");
    if (!(value > 0))
        throw RuntimeError(Fault::InvalidArgument, std::string("the ") + what + " is negative");
    return value;
}

double power(double base, double exponent, const char* quantity) {
    return finite(std::pow(base, exponent), quantity);
}

// (kv/kh)^0.5 and (kh/kv)^0.5 from the kv/kh the engineer types.
double verticalFactor(double ratio) {
    return squareRoot(positive(ratio, "vertical to horizontal permeability ratio"));
}
double anisotropyFactor(double ratio) {
    return squareRoot(divide(1.0, positive(ratio, "vertical to horizontal permeability ratio")));
}

struct GPoint {
    double b, g;
};
constexpr std::array<GPoint, 5> kBronsMartingG = {
    {{0.1, 2.337}, {0.2, 1.862}, {0.4, 1.569}, {0.6, 1.621}, {0.8, 1.995}}};

// Karakas and Tariq (1991), by phasing 0, 45, 60, 90, 120, 180 degrees.
constexpr std::array<PerforationConstants, kPhasingCount> kKarakasTariq = {{
    {0.25, -2.091, 0.0453, 5.1313, 1.8672, 0.16, 2.675},
    {0.86, -1.788, 0.2398, 1.1915, 1.6392, 4.6E-05, 8.791},
    {0.813, -1.898, 0.1023, 1.3654, 1.649, 0.0003, 7.509},
    {0.726, -1.905, 0.1038, 1.5674, 1.6935, 0.0019, 6.155},
    {0.648, -2.018, 0.0634, 1.6136, 1.777, 0.0066, 5.32},
    {0.5, -2.025, 0.0943, 3.0373, 1.8115, 0.026, 4.532},
}};

} // namespace

double slantHoleSkin(double angleDegrees, double netPay, double wellboreRadius, double ratio) {
    if (!(angleDegrees >= 0 && angleDegrees <= 90))
        throw RuntimeError(Fault::InvalidArgument,
                           "the wellbore angle must lie between 0 and 90 degrees from vertical");
    const double apparent = // thw', degrees
        std::atan(verticalFactor(ratio) * std::tan(angleDegrees * kDegree)) / kDegree;
    const double hD =
        divide(12 * positive(netPay, "net pay"), positive(wellboreRadius, "wellbore radius")) *
        anisotropyFactor(ratio);
    return -power(apparent / 41, 2.06, "slant hole skin") -
           power(apparent / 56, 1.865, "slant hole skin") * Log10(hD / 100);
}

double bronsMartingG(double b) {
    for (std::size_t i = 0; i + 1 < kBronsMartingG.size(); ++i) {
        const GPoint lower = kBronsMartingG[i], upper = kBronsMartingG[i + 1];
        if (b >= lower.b && b < upper.b)
            return lower.g - (lower.g - upper.g) * (b - lower.b) / (upper.b - lower.b);
    }
    return 0;
}

std::optional<double> bronsMartingSkin(double b, double thickness, double wellboreRadius,
                                       double ratio) {
    if (!(b >= 0.1 && b <= 0.8))
        return std::nullopt;
    const double hD = divide(12 * thickness, positive(wellboreRadius, "wellbore radius")) *
                      anisotropyFactor(ratio);
    return (1 / b - 1) * (naturalLog(hD) - bronsMartingG(b));
}

std::optional<double> partialPenetrationSkin(double penetrated, double netPay,
                                             double wellboreRadius, double ratio) {
    const double b = divide(penetrated, positive(netPay, "net pay"));
    return bronsMartingSkin(b, netPay, wellboreRadius, ratio);
}

std::optional<double> partialCompletionSkin(double completed, double netPay, double wellboreRadius,
                                            double ratio) {
    const double b = divide(completed, positive(netPay, "net pay"));
    return bronsMartingSkin(b, completed / 2, wellboreRadius, ratio);
}

const PerforationConstants& karakasTariqConstants(int phasingIndex) {
    if (phasingIndex < 1 || phasingIndex > kPhasingCount)
        throw RuntimeError(Fault::SubscriptOutOfRange,
                           "phasing " + std::to_string(phasingIndex) + " (1 to 6)");
    return kKarakasTariq[static_cast<std::size_t>(phasingIndex - 1)];
}

std::optional<int> phasingIndexOf(int degrees) {
    for (int i = 0; i < kPhasingCount; ++i)
        if (kPhasingDegrees[static_cast<std::size_t>(i)] == degrees)
            return i + 1;
    return std::nullopt;
}

PerforationSkin perforationSkin(int phasingIndex, double wellboreRadius, double shotsPerFoot,
                                double perforationLength, double perforationRadius, double ratio) {
    const PerforationConstants& k = karakasTariqConstants(phasingIndex);
    const double rw = positive(wellboreRadius, "wellbore radius");
    const double lp = positive(perforationLength, "perforation length");
    const double rp = positive(perforationRadius, "perforation radius");
    const double spacing = divide(12, positive(shotsPerFoot, "perforation density"));

    PerforationSkin s;
    // In-line perforations act as a fracture of length lp: r'we = lp/4.
    const double effectiveRadius = phasingIndex == 1 ? lp / 4 : k.alpha * (rw + lp);
    s.horizontal = naturalLog(rw / effectiveRadius);
    s.wellbore = finite(k.c1 * std::exp(k.c2 * rw / (lp + rw)), "wellbore skin");
    const double hD = spacing / lp * anisotropyFactor(ratio);
    const double rpD = rp / (2 * spacing) * (1 + verticalFactor(ratio));
    const double a = k.a1 * Log10(rpD) + k.a2;
    const double b = k.b1 * rpD + k.b2;
    s.vertical = finite(power(10, a, "vertical skin") * power(hD, b - 1, "vertical skin") *
                            power(rpD, b, "vertical skin"),
                        "vertical skin");
    return s;
}

} // namespace zorvekan
