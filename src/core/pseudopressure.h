// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

namespace zorvekan {

// Gas properties along the pressure axis of the pseudopressure integral. Both use
// ReservoirTemperature and GasGravity from the state, and both leave a trace in
// it that the rest of the program reads: GasZFactor stores its Hall-Yarborough B
// in OilFvf, GasViscosityAndFvf stores the gas viscosity in OilViscosity.

// Hall-Yarborough z at p (psia): Tpc = 167 + 316.67*gg (R), Ppc = 702.5 - 50*gg (psia),
// Newton iteration on the reduced density from y = 0.001 (at most 100 passes,
// tolerance 1e-5), z = A*Ppr/y. No validity limits on Tpr or Ppr.
double GasZFactor(AnalysisState& s, double p);

struct GasFvfAndViscosity {
    double fvf;       // Bg, RB/MCF
    double viscosity; // mu_g, cp
};

// Bg = 5.035*z*T_R/p and the Lee-Gonzalez-Eakin viscosity with Ma = 28.8*gg:
// mu = 1e-4*K*exp(X*rho^Y), rho = 0.00752*Ma/Bg (g/cc).
GasFvfAndViscosity GasViscosityAndFvf(AnalysisState& s, double p, double z);

// Real-gas pseudopressure m(p) = 2*integral(p/(mu*z) dp) from 14.7 psia of every
// test point and of the start pressure, in units of 1E6 psi^2/cp.
// The integral is taken on a 50-psi grid up to the lowest pressure of the test
// (the pressure at shut-in for a buildup, the last pressure for a drawdown) and
// then point to point along the data, by trapezoids (f1 + f2)*dp, which carry the
// factor 2 of m(p). Grid pressures stop at 14,964.7 psia; beyond it the last grid
// interval is counted twice, a property of the method kept for consistency with
// results computed before.
void ComputePseudopressures(AnalysisState& s);

} // namespace zorvekan
