// SPDX-License-Identifier: MIT
#include "typecurve/library_contents.h"

#include "models/well_models.h"
#include "typecurve/curve_parameters.h"

#include <algorithm>
#include <cmath>

namespace zorvekan {

namespace {

constexpr double kSingleFirstX = -1.0;
constexpr double kSingleLastX = 4.0;
constexpr double kFractureFirstX = -3.0;
constexpr double kFractureLastX = 3.0;
constexpr double kDualFirstX = -1.0;
constexpr double kDualLastX = 4.0;

double timeGroup(double x) {
    return std::pow(10.0, x);
}

std::array<double, 2> logs(const WellResponse& r) {
    return {std::log10(r.pressure), std::log10(r.derivative)};
}

CurveDefinition singlePorosity(double cde2s) {
    return {kSingleFirstX, kSingleLastX,
            [cde2s](double x) { return logs(radialStorageResponse(cde2s, timeGroup(x))); }};
}

CurveDefinition fracture(double xeOverXf) {
    return {kFractureFirstX, kFractureLastX,
            [xeOverXf](double x) { return logs(fractureResponse(xeOverXf, timeGroup(x))); }};
}

CurveDefinition pressureTransition(double lambdaE2s) {
    const double plateau = dualPorosityPlateau(lambdaE2s);
    return {std::log10(0.1 * plateau), kDualLastX, [lambdaE2s](double x) {
                const double y =
                    std::log10(dualPorosityTransitionPressure(lambdaE2s, timeGroup(x)));
                return std::array<double, 2>{y, y};
            }};
}

CurveDefinition descendingTransition(double p1) {
    return {std::log10(0.05 / p1), std::min(kDualLastX, std::log10(4.6 / p1)), [p1](double x) {
                const double y = dualPorosityLogDescendingDerivative(p1, timeGroup(x));
                return std::array<double, 2>{y, y};
            }};
}

CurveDefinition ascendingTransition(double p2) {
    return {std::max(kDualFirstX, std::log10(0.02 / p2)),
            std::min(kDualLastX, std::log10(3.0 / p2)), [p2](double x) {
                const double y = std::log10(dualPorosityAscendingDerivative(p2, timeGroup(x)));
                return std::array<double, 2>{y, y};
            }};
}

} // namespace

CurveDefinition curveDefinition(LibraryFile file, int curve) {
    const double parameter = curveParameter(file, curve);
    switch (file) {
    case LibraryFile::OneType:
        return singlePorosity(parameter);
    case LibraryFile::FrcType:
        return fracture(parameter);
    case LibraryFile::TwoType:
        if (curve < kFirstDescendingCurve)
            return pressureTransition(parameter);
        if (curve < kFirstAscendingCurve)
            return descendingTransition(parameter);
        return ascendingTransition(parameter);
    }
    return {};
}

} // namespace zorvekan
