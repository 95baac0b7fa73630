// SPDX-License-Identifier: MIT
// Double porosity with pseudo-steady interporosity flow: the transition curves, and the
// whole well with storage and skin.
#include "models/well_models.h"

#include "core/runtime_error.h"
#include "models/dimensionless_well.h"

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

} // namespace

double dualPorosityStoragePressure(double cde2s, double lambdaE2s, double omega, double tdOverCd) {
    checkPositive(cde2s, "CDe2s");
    checkPositive(lambdaE2s, "lambda e^-2s");
    checkPositive(tdOverCd, "tD/CD");
    if (!(omega > 0.0 && omega <= 1.0))
        throw RuntimeError(Fault::InvalidArgument,
                           "omega must lie in (0, 1], not " + std::to_string(omega));
    DimensionlessWell well;
    well.kind = WellModelKind::DualPss;
    well.storage = cde2s;
    well.omega = omega;
    well.lambda = lambdaE2s;
    return well.pressure(tdOverCd);
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
