// SPDX-License-Identifier: MIT
#pragma once

#include "typecurve/library_file.h"

#include <array>
#include <functional>

namespace zorvekan {

// What one curve of a library family holds, as the generator computes it: the x range of
// its blocks (x = log10 of the time group) and their log10 values at x. In ONETYPE and
// FRCTYPE curve k owns pD block k and derivative block N + k over the same range; in
// TWOTYPE each curve is one block.
struct CurveDefinition {
    double xFirst;
    double xLast;
    // log10 of block k at x and, with derivative blocks, log10 of block N + k.
    std::function<std::array<double, 2>(double x)> logValues;
};

// Ranges: ONETYPE tD/CD 0.1..1e4 and FRCTYPE tDxf 1e-3..1e3, the spans of the usual charts.
// TWOTYPE pressure curves start at T = 0.1 R, 5 % below the unit slope, so twelve curves do
// not share one unit-slope segment in the hit test; the derivative transitions keep to
// P1 T = 0.05..4.6 and P2 T = 0.02..3 within x = -1..4, leaving out their common flat part
// at log10 0.5 where the last block would always win the hit test.
CurveDefinition curveDefinition(LibraryFile file, int curve);

} // namespace zorvekan
