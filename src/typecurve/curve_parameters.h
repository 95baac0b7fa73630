// SPDX-License-Identifier: MIT
#pragma once

#include "models/well_models.h"
#include "typecurve/library_file.h"

#include <array>
#include <string>

namespace zorvekan {

// The parameter of each library curve, in block order (curve k is element k - 1).

// ONETYPE, single porosity: CDe2s of curves 1..16.
inline constexpr std::array<double, 16> kSinglePorosityCDe2s = {
    0.3, 1, 3, 10, 1e2, 1e3, 1e4, 1e6, 1e8, 1e10, 1e15, 1e20, 1e30, 1e40, 1e50, 1e60};

// FRCTYPE, vertical fracture: xe/xf of curves 1..9; curve 9 is the infinite reservoir.
inline constexpr std::array<double, 9> kFractureXeOverXf = {
    1, 1.5, 2, 3, 5, 7, 10, 15, kInfiniteReservoir};

// TWOTYPE, double porosity. Curves 1..12: pressure transition curves, lambda e^-2s.
inline constexpr std::array<double, 12> kTransitionLambdaE2s = {
    1e-1, 1e-2, 1e-3, 1e-4, 1e-6, 1e-8, 1e-10, 1e-15, 1e-20, 1e-30, 1e-40, 1e-50};
// Curves 13..18: descending derivative transitions, P1 = lambda CD / (omega (1 - omega)).
inline constexpr int kFirstDescendingCurve = 13;
inline constexpr std::array<double, 6> kDescendingP1 = {0.0003, 0.001, 0.003, 0.01, 0.03, 0.1};
// Curves 19..25: ascending derivative transitions, P2 = lambda CD / (1 - omega).
inline constexpr int kFirstAscendingCurve = 19;
inline constexpr std::array<double, 7> kAscendingP2 = {0.0001, 0.0003, 0.001, 0.003,
                                                       0.01,   0.03,   0.1};

// The parameter of curve k of a library's family: CDe2s, xe/xf (infinite for FRCTYPE
// curve 9), lambda e^-2s, P1 or P2. A curve outside 1..N is Fault::SubscriptOutOfRange.
double curveParameter(LibraryFile file, int curve);

// The curve's label as the type-curve screen prints it: "CDe2s = 1.0E04" (mask "#.0E-00"),
// "xe/xf = 1.5" (mask "#0.##") or "xe/xf = Infinite", and for TWOTYPE "Le-2s = 1.0E-10",
// "P1 = 3.0E-04", "P2 = 1.0E-01".
std::string curveLabel(LibraryFile file, int curve);

// The TWOTYPE pressure transition curve (1..12) drawn for Le-2s = lambda e^-2s after a
// dual-porosity match. Intervals (lower bound excluded, upper included), curve 1..12:
//   > 5E-2, 5E-3..5E-2, 5E-4..5E-3, 1E-5..5E-4, 1E-7..1E-5, 1E-9..1E-7, 5E-13..1E-9,
//   5E-18..5E-13, 1E-25..5E-18, 1E-35..1E-25, 1E-45..1E-35, <= 1E-45
// so each curve covers the values nearest its own lambda e^-2s. Le-2s <= 0 (a match with
// omega above 1) falls in the last interval; NaN is Fault::InvalidArgument.
int transitionCurveForLe2s(double le2s);

} // namespace zorvekan
