// SPDX-License-Identifier: MIT
#pragma once

#include <limits>

namespace zorvekan {

// Dimensionless well responses behind the type-curve families. Every function is
// a pure function of its arguments; arguments outside the stated domain throw
// RuntimeError (Fault::InvalidArgument), never return NaN.
//
// "Derivative group" always means the Bourdet group t * dpD/dt = dpD/d ln t, with t the
// time group of the family (tD/CD or tDxf).

struct WellResponse {
    double pressure;   // pD
    double derivative; // t * dpD/dt
};

// ---- Storage and skin, infinite-acting radial flow (effective-radius form) ----
//
// Well with wellbore storage CD and skin s in an infinite homogeneous reservoir, with the
// skin folded into the effective radius rwa = rw e^-s, so the response depends on the one
// group CDe2s = CD e^2s. Laplace form in z (conjugate to T = tD/CD), q = sqrt(z/CDe2s):
//   pbar(z) = K0(q) / (z [q K1(q) + z K0(q)])
// evaluated by its real branch-cut integral (C = CDe2s),
//   D(u)     = [u C J0(u) - J1(u)]^2 + [u C Y0(u) - Y1(u)]^2
//   pD(T)    = (4/pi^2) Int_0^inf (1 - exp(-u^2 C T)) / (u^3 D(u)) du
//   T pD'(T) = (4/pi^2) Int_0^inf C T exp(-u^2 C T) / (u D(u)) du
// with the trapezoid rule in ln u (step 0.0025, relative error about 1e-9).
// Early time: pD = T (unit slope). Late time: pD = 0.5 (ln T + 0.80907 + ln CDe2s),
// derivative 0.5. pD includes the skin. Domain: CDe2s > 0, T > 0 and
// 1e-13 <= CDe2s * T <= 1e73. About 0.2 ms per call (the Bessel functions are tabulated
// once, on first use).
double radialStoragePressure(double cde2s, double tdOverCd);
double radialStorageDerivative(double cde2s, double tdOverCd);
WellResponse radialStorageResponse(double cde2s, double tdOverCd); // both from one sum

// ---- Vertical fracture, uniform flux, in a closed square or an infinite reservoir ----
//
// Fracture of half-length xf centred in a closed square of side 2 xe, parallel to two
// sides; lengths in xf, time tDxf = 0.0002637 k t / (phi mu ct xf^2). Uniform flux along the
// fracture, pressure read on the fracture at x/xf = x0: x0 = 0.732 reproduces the
// infinite-conductivity fracture (within 4 % in pD, 0.017 in log10), x0 = 0 the uniform-flux
// well. pD = 2 pi Int_0^t X(x0, tau) Y(0, tau) dtau with X, Y the 1-D slab solutions
// (method of images at early time, eigenfunctions at late time), and the derivative group is
// exactly 2 pi t X(x0, t) Y(0, t).
// Linear flow: pD = sqrt(pi tDxf). Pseudo-steady state: pD = 2 pi tDA + K(xe/xf) with
// tDA = tDxf / (4 (xe/xf)^2); infinite reservoir: pD -> 0.5 (ln tDxf + 2.2106) at x0 = 0.732.
// xeOverXf >= 1, or kInfiniteReservoir; 0 <= x0 < 1; tDxf > 0. The first call for a new
// (xeOverXf, x0) integrates the early-time image terms once (about 1 ms); later calls take
// microseconds.
inline constexpr double kInfiniteConductivityPoint = 0.732;
inline constexpr double kInfiniteReservoir = std::numeric_limits<double>::infinity();

double fracturePressure(double xeOverXf, double tdxf, double x0 = kInfiniteConductivityPoint);
double fractureDerivative(double xeOverXf, double tdxf, double x0 = kInfiniteConductivityPoint);
WellResponse fractureResponse(double xeOverXf, double tdxf, double x0 = kInfiniteConductivityPoint);

// ---- Double porosity, pseudo-steady interporosity flow ----
//
// Pressure transition curve in the limit omega -> 0 (fissure storage negligible, the matrix
// an unlimited source), lambda' = lambda e^-2s, T = tD/CD:
//   pD(T) = R (1 - exp(-T/R)),  R = K0(sqrt lambda') / (sqrt lambda' K1(sqrt lambda'))
// It starts on the unit slope and flattens to the plateau R; R = 0.5 (ln(1/lambda') +
// 0.23186) for small lambda'. Domain: lambda' > 0, T >= 0.
double dualPorosityPlateau(double lambdaE2s);
double dualPorosityTransitionPressure(double lambdaE2s, double tdOverCd);

// The two halves of the Warren-Root derivative group with T = tD/CD:
//   0.5 exp(-P1 T), P1 = lambda CD / (omega (1 - omega))   (fissures draining)
//   0.5 (1 - exp(-P2 T)), P2 = lambda CD / (1 - omega)     (matrix taking over)
// Their sum is the radial-flow derivative of the double-porosity reservoir once storage
// has ended. The log10 form of the descending half is computed directly, without
// underflow. Domain: P1, P2 > 0, T >= 0.
double dualPorosityDescendingDerivative(double p1, double tdOverCd);
double dualPorosityLogDescendingDerivative(double p1, double tdOverCd); // log10 of the above
double dualPorosityAscendingDerivative(double p2, double tdOverCd);
double warrenRootDerivative(double p1, double p2, double tdOverCd);

// The whole double-porosity well: storage and skin (effective-radius form, as the
// single-porosity curves) with pseudo-steady interporosity flow. With T = tD/CD on the
// storage of fissures and matrix together, z conjugate to T and u = z / CDe2s:
//   pbar(z) = 1 / (z [z + q K1(q) / K0(q)]),  q^2 = u f(u),
//   f(u) = (omega (1 - omega) u + lambda') / ((1 - omega) u + lambda'),  lambda' = lambda e^-2s
// (Warren-Root reservoir, Bourdet-Gringarten form), inverted by Gaver-Stehfest with 16
// terms: pD to about 1e-5 relative. omega = 1 is the single-porosity well. Once storage has
// ended its derivative is warrenRootDerivative with P1 = lambda' CDe2s / (omega (1 - omega))
// and P2 = lambda' CDe2s / (1 - omega). Domain: CDe2s, lambda' > 0, 0 < omega <= 1, T > 0.
double dualPorosityStoragePressure(double cde2s, double lambdaE2s, double omega, double tdOverCd);

} // namespace zorvekan
