// SPDX-License-Identifier: MIT
#include "models/stehfest.h"

#include <algorithm>
#include <cmath>

namespace zorvekan {

namespace {

std::array<double, kStehfestTerms + 1> computeWeights() {
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

} // namespace

const std::array<double, kStehfestTerms + 1>& stehfestWeights() {
    static const auto weights = computeWeights();
    return weights;
}

} // namespace zorvekan
