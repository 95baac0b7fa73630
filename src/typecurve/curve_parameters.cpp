// SPDX-License-Identifier: MIT
#include "typecurve/curve_parameters.h"

#include "core/display_mask.h"
#include "core/result_line.h"
#include "core/runtime_error.h"

#include <cmath>

namespace zorvekan {

namespace {

// Upper bounds (included) of the Le-2s intervals of TWOTYPE curves 2..12.
constexpr std::array<double, 11> kLe2sUpperBounds = {5e-2,  5e-3,  5e-4,  1e-5,  1e-7, 1e-9,
                                                     5e-13, 5e-18, 1e-25, 1e-35, 1e-45};

void checkCurve(LibraryFile file, int curve) {
    const int count = libraryCurveCount(file);
    if (curve < 1 || curve > count)
        throw RuntimeError(Fault::SubscriptOutOfRange, std::string(libraryFileName(file)) +
                                                           " has no curve " +
                                                           std::to_string(curve) + " (curves 1.." +
                                                           std::to_string(count) + ")");
}

} // namespace

double curveParameter(LibraryFile file, int curve) {
    checkCurve(file, curve);
    const auto k = static_cast<std::size_t>(curve - 1);
    switch (file) {
    case LibraryFile::OneType:
        return kSinglePorosityCDe2s[k];
    case LibraryFile::FrcType:
        return kFractureXeOverXf[k];
    case LibraryFile::TwoType:
        if (curve < kFirstDescendingCurve)
            return kTransitionLambdaE2s[k];
        if (curve < kFirstAscendingCurve)
            return kDescendingP1[static_cast<std::size_t>(curve - kFirstDescendingCurve)];
        return kAscendingP2[static_cast<std::size_t>(curve - kFirstAscendingCurve)];
    }
    return 0.0;
}

std::string curveLabel(LibraryFile file, int curve) {
    const double parameter = curveParameter(file, curve);
    switch (file) {
    case LibraryFile::OneType:
        return resultLine("CDe2s =", Format(parameter, "#.0E-00"));
    case LibraryFile::FrcType:
        if (parameter == kInfiniteReservoir)
            return "xe/xf = Infinite";
        return resultLine("xe/xf =", Format(parameter, "#0.##"));
    case LibraryFile::TwoType:
        if (curve < kFirstDescendingCurve)
            return resultLine("Le-2s =", Format(parameter, "#.0E-00"));
        if (curve < kFirstAscendingCurve)
            return resultLine("P1 =", Format(parameter, "#.0E-00"));
        return resultLine("P2 =", Format(parameter, "#.0E-00"));
    }
    return {};
}

int transitionCurveForLe2s(double le2s) {
    if (std::isnan(le2s))
        throw RuntimeError(Fault::InvalidArgument, "Le-2s is not a number");
    int curve = 1;
    for (std::size_t i = 0; i < kLe2sUpperBounds.size(); ++i)
        if (le2s <= kLe2sUpperBounds[i])
            curve = static_cast<int>(i) + 2;
    return curve;
}

} // namespace zorvekan
