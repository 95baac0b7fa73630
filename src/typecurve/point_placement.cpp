// SPDX-License-Identifier: MIT
#include "typecurve/point_placement.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <iterator>

namespace zorvekan {

namespace {

// Keeps a little density on straight stretches, so no step grows beyond about 0.25 decade.
constexpr double kDensityFloor = 0.1;

} // namespace

double placementSample(double xFirst, double xLast, int i) {
    if (i == kPlacementSamples - 1)
        return xLast;
    return xFirst + (xLast - xFirst) * i / (kPlacementSamples - 1);
}

std::vector<double> curvatureNodes(double xFirst, double xLast, const std::vector<double>& ySamples,
                                   int count) {
    assert(static_cast<int>(ySamples.size()) == kPlacementSamples && count >= 2);
    const int n = kPlacementSamples;
    const double h = (xLast - xFirst) / (n - 1);

    std::vector<double> density(static_cast<std::size_t>(n));
    for (int i = 1; i + 1 < n; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const double bend = std::abs(ySamples[k + 1] - 2.0 * ySamples[k] + ySamples[k - 1]);
        density[k] = std::sqrt(bend / (h * h) + kDensityFloor);
    }
    density.front() = density[1];
    density.back() = density[static_cast<std::size_t>(n - 2)];

    std::vector<double> cumulative(static_cast<std::size_t>(n), 0.0);
    for (std::size_t k = 1; k < cumulative.size(); ++k)
        cumulative[k] = cumulative[k - 1] + 0.5 * h * (density[k - 1] + density[k]);

    std::vector<double> nodes(static_cast<std::size_t>(count));
    nodes.front() = xFirst;
    nodes.back() = xLast;
    for (int p = 1; p + 1 < count; ++p) {
        const double target = cumulative.back() * p / (count - 1);
        const auto upper = std::upper_bound(cumulative.begin(), cumulative.end(), target);
        const auto k = static_cast<std::size_t>(std::distance(cumulative.begin(), upper));
        const double fraction = (target - cumulative[k - 1]) / (cumulative[k] - cumulative[k - 1]);
        nodes[static_cast<std::size_t>(p)] =
            placementSample(xFirst, xLast, static_cast<int>(k - 1)) + fraction * h;
    }
    return nodes;
}

} // namespace zorvekan
