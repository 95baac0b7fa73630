// SPDX-License-Identifier: MIT
// Branch-cut integral of the storage-and-skin solution (effective-radius form).
#include "models/well_models.h"

#include "core/runtime_error.h"

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace zorvekan {

namespace {

// D(u) has a sharp minimum (the storage hump) about 1/ln C wide in ln u; a step of
// 0.0025 resolves it to 1e-9 relative, 0.01 would already be 0.2 % off.
constexpr double kStep = 0.0025;
// The integrands fall off faster than e^-50 outside ln u_c -/+ 25, u_c = 1/sqrt(C T).
constexpr double kHalfWindow = 25.0;
// The table spans ln u from -110 to 40, which admits 1e-13 <= C T <= 1e73.
constexpr double kLnUFirst = -110.0;
constexpr double kLnULast = 40.0;
// Below this the small-argument forms equal J and Y to double precision.
constexpr double kSmallArgument = 1e-8;
// Above this the first Hankel terms are exact to double precision; the library's own
// large-argument phase degrades beyond about 1e12.
constexpr double kLargeArgument = 1e8;

struct BesselNode {
    double u;
    double j0, j1, y0, y1;
};

BesselNode besselAt(double u) {
    using std::numbers::egamma;
    using std::numbers::pi;
    if (u < kSmallArgument)
        return {u, 1.0, 0.5 * u, (2.0 / pi) * (std::log(0.5 * u) + egamma), -2.0 / (pi * u)};
    if (u > kLargeArgument) {
        // D(u) = |u C H0(u) - H1(u)|^2 with H = J + iY depends only on the moduli and on the
        // phase difference theta1 - theta0 = -pi/2 + 1/(2u), so both Hankel functions are
        // rotated by -theta0: H0 -> m, H1 -> m e^{i(1/(2u) - pi/2)}, m = sqrt(2/(pi u)).
        const double m = std::sqrt(2.0 / (pi * u));
        const double e = 0.5 / u;
        return {u, m, m * std::sin(e), 0.0, -m * std::cos(e)};
    }
    return {u, std::cyl_bessel_j(0.0, u), std::cyl_bessel_j(1.0, u), std::cyl_neumann(0.0, u),
            std::cyl_neumann(1.0, u)};
}

// J0, J1, Y0, Y1 on the global grid ln u = kLnUFirst + j h; they do not depend on C or T,
// so every (C, T) is a plain sum over its window of this table.
std::vector<BesselNode> tabulate() {
    const auto count = static_cast<std::size_t>(std::lround((kLnULast - kLnUFirst) / kStep)) + 1;
    std::vector<BesselNode> table(count);
    for (std::size_t j = 0; j < count; ++j)
        table[j] = besselAt(std::exp(kLnUFirst + static_cast<double>(j) * kStep));
    return table;
}

const std::vector<BesselNode>& besselTable() {
    static const std::vector<BesselNode> table = tabulate();
    return table;
}

void checkArguments(double cde2s, double tdOverCd) {
    if (!(cde2s > 0.0) || !std::isfinite(cde2s))
        throw RuntimeError(Fault::InvalidArgument,
                           "CDe2s must be a positive number, not " + std::to_string(cde2s));
    if (!(tdOverCd > 0.0) || !std::isfinite(tdOverCd))
        throw RuntimeError(Fault::InvalidArgument,
                           "tD/CD must be a positive number, not " + std::to_string(tdOverCd));
}

} // namespace

WellResponse radialStorageResponse(double cde2s, double tdOverCd) {
    checkArguments(cde2s, tdOverCd);
    const double c = cde2s;
    const double ct = cde2s * tdOverCd;
    const double centre = -0.5 * std::log(ct); // ln u_c
    const double first = std::ceil((centre - kHalfWindow - kLnUFirst) / kStep);
    const double last = std::floor((centre + kHalfWindow - kLnUFirst) / kStep);
    const auto& table = besselTable();
    if (!std::isfinite(ct) || first < 0.0 || last > static_cast<double>(table.size() - 1))
        throw RuntimeError(Fault::InvalidArgument,
                           "CDe2s * tD/CD = " + std::to_string(ct) +
                               " is outside the range 1e-13 to 1e73 of the storage solution");

    // Substituting v = ln u, both integrands share w = 1 / (u^2 D):
    //   pD:         (1 - e^-x) w dv,   derivative: x e^-x w dv,   x = u^2 C T.
    double pressure = 0.0;
    double derivative = 0.0;
    for (auto j = static_cast<std::size_t>(first); j <= static_cast<std::size_t>(last); ++j) {
        const BesselNode& n = table[j];
        const double uc = n.u * c;
        const double a = uc * n.j0 - n.j1;
        const double b = uc * n.y0 - n.y1;
        const double u2 = n.u * n.u;
        const double w = 1.0 / (u2 * (a * a + b * b));
        const double x = u2 * ct;
        if (x < 0.5) {
            const double em1 = std::expm1(-x);
            pressure -= em1 * w;
            derivative += x * (1.0 + em1) * w;
        } else {
            const double e = std::exp(-x);
            pressure += (1.0 - e) * w;
            derivative += x * e * w;
        }
    }
    const double scale = 4.0 / (std::numbers::pi * std::numbers::pi) * kStep;
    return {scale * pressure, scale * derivative};
}

double radialStoragePressure(double cde2s, double tdOverCd) {
    return radialStorageResponse(cde2s, tdOverCd).pressure;
}

double radialStorageDerivative(double cde2s, double tdOverCd) {
    return radialStorageResponse(cde2s, tdOverCd).derivative;
}

} // namespace zorvekan
