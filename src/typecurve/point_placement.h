// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace zorvekan {

// The curvature of a block is judged from this many uniform samples over its x range.
inline constexpr int kPlacementSamples = 1001;

// x of uniform sample i (0..kPlacementSamples - 1) over [xFirst, xLast].
double placementSample(double xFirst, double xLast, int i);

// x of `count` points over [xFirst, xLast] placed where the curve bends, given y at the
// uniform samples: density rho = sqrt(|y''| + 0.1), y'' from second differences, and the
// points at equal steps of Int rho dx, both ends kept. Straight lines between them stay
// within about 1e-3 decade of the curve, where uniform spacing leaves 1e-2.
std::vector<double> curvatureNodes(double xFirst, double xLast, const std::vector<double>& ySamples,
                                   int count);

} // namespace zorvekan
