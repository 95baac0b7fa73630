// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <numbers>

namespace zorvekan {

// Gaver-Stehfest inversion of a Laplace transform (Stehfest, Comm. ACM 13, 1970):
//   f(t) ~ (ln 2 / t) Sum_{i=1..N} V_i fbar(i ln 2 / t)
// with N = 16 weights: beyond that the round-off of double precision eats the gain. It needs
// fbar on the real axis only and is accurate to about 1e-5 relative for the smooth, monotone
// well responses, provided fbar itself is accurate to about 1e-14 (the weights reach 1e6 and
// alternate in sign).
inline constexpr int kStehfestTerms = 16;

// V_1..V_N (element 0 unused).
const std::array<double, kStehfestTerms + 1>& stehfestWeights();

// f(t) for t > 0; fbar(z) is called for z = ln 2 / t .. N ln 2 / t.
template <class Transform> double stehfestInverse(const Transform& fbar, double t) {
    const auto& weights = stehfestWeights();
    const double step = std::numbers::ln2 / t;
    double sum = 0.0;
    for (int i = 1; i <= kStehfestTerms; ++i)
        sum += weights[static_cast<std::size_t>(i)] * fbar(i * step);
    return step * sum;
}

} // namespace zorvekan
