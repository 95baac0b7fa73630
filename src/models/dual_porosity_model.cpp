// SPDX-License-Identifier: MIT
// Double porosity with pseudo-steady interporosity flow: the transition curves, and the
// whole well with storage and skin.
#include "models/well_models.h"

#include "core/runtime_error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>

namespace zorvekan {

namespace {

// Below this K0(r) = -ln(r/2) - gamma and r K1(r) = 1 to double precision.
constexpr double kSmallArgument = 1e-8;

void checkPositive(double value, const char* name) {
    if (!(value > 0.0) || !std::isfinite(value))
        throw RuntimeError(Fault::InvalidArgument, std::string(name) +
                                                       " must be a positive number, not " +
                                                       std::to_string(value));
}

void checkTime(double tdOverCd) {
    if (!(tdOverCd >= 0.0) || !std::isfinite(tdOverCd))
        throw RuntimeError(Fault::InvalidArgument,
                           "tD/CD must not be negative, not " + std::to_string(tdOverCd));
}

// Gaver-Stehfest weights V_1..V_N, N = 16: beyond that double precision round-off eats
// the gain.
constexpr int kStehfestTerms = 16;

std::array<double, kStehfestTerms + 1> stehfestWeights() {
    const auto factorial = [](int n) {
        double f = 1.0;
        for (int i = 2; i <= n; ++i)
            f *= i;
        return f;
    };
    constexpr int half = kStehfestTerms / 2;
    std::array<double, kStehfestTerms + 1> v{};
    for (int i = 1; i <= kStehfestTerms; ++i) {
        double sum = 0.0;
        for (int k = (i + 1) / 2; k <= std::min(i, half); ++k)
            sum += std::pow(k, half) * factorial(2 * k) /
                   (factorial(half - k) * factorial(k) * factorial(k - 1) * factorial(i - k) *
                    factorial(2 * k - i));
        v[static_cast<std::size_t>(i)] = ((i + half) % 2 == 0 ? 1.0 : -1.0) * sum;
    }
    return v;
}

// K1(x) / K0(x); beyond x = 500 both underflow, and their asymptotic series (three terms,
// exact there to 1e-11) give the ratio.
double besselKRatio(double x) {
    if (x < 500.0)
        return std::cyl_bessel_k(1.0, x) / std::cyl_bessel_k(0.0, x);
    const double e = 1.0 / (8.0 * x);
    const double k1 = 1.0 + 3.0 * e - 7.5 * e * e + 52.5 * e * e * e;
    const double k0 = 1.0 - e + 4.5 * e * e - 37.5 * e * e * e;
    return k1 / k0;
}

} // namespace

double dualPorosityStoragePressure(double cde2s, double lambdaE2s, double omega, double tdOverCd) {
    checkPositive(cde2s, "CDe2s");
    checkPositive(lambdaE2s, "lambda e^-2s");
    checkPositive(tdOverCd, "tD/CD");
    if (!(omega > 0.0 && omega <= 1.0))
        throw RuntimeError(Fault::InvalidArgument,
                           "omega must lie in (0, 1], not " + std::to_string(omega));
    static const auto weights = stehfestWeights();
    const double step = std::numbers::ln2 / tdOverCd;
    double sum = 0.0;
    for (int i = 1; i <= kStehfestTerms; ++i) {
        const double z = i * step;
        const double u = z / cde2s;
        const double f = (omega * (1.0 - omega) * u + lambdaE2s) / ((1.0 - omega) * u + lambdaE2s);
        const double q = std::sqrt(u * f);
        sum += weights[static_cast<std::size_t>(i)] / (z * (z + q * besselKRatio(q)));
    }
    return step * sum;
}

double dualPorosityPlateau(double lambdaE2s) {
    checkPositive(lambdaE2s, "lambda e^-2s");
    const double r = std::sqrt(lambdaE2s);
    if (r < kSmallArgument)
        return -(std::log(0.5 * r) + std::numbers::egamma);
    return std::cyl_bessel_k(0.0, r) / (r * std::cyl_bessel_k(1.0, r));
}

double dualPorosityTransitionPressure(double lambdaE2s, double tdOverCd) {
    checkTime(tdOverCd);
    const double plateau = dualPorosityPlateau(lambdaE2s);
    return -plateau * std::expm1(-tdOverCd / plateau);
}

double dualPorosityDescendingDerivative(double p1, double tdOverCd) {
    checkPositive(p1, "P1");
    checkTime(tdOverCd);
    return 0.5 * std::exp(-p1 * tdOverCd);
}

double dualPorosityLogDescendingDerivative(double p1, double tdOverCd) {
    checkPositive(p1, "P1");
    checkTime(tdOverCd);
    return std::log10(0.5) - p1 * tdOverCd / std::numbers::ln10;
}

double dualPorosityAscendingDerivative(double p2, double tdOverCd) {
    checkPositive(p2, "P2");
    checkTime(tdOverCd);
    return -0.5 * std::expm1(-p2 * tdOverCd);
}

double warrenRootDerivative(double p1, double p2, double tdOverCd) {
    return dualPorosityDescendingDerivative(p1, tdOverCd) +
           dualPorosityAscendingDerivative(p2, tdOverCd);
}

} // namespace zorvekan
