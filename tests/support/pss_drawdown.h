// SPDX-License-Identifier: MIT
// A drawdown at 500 STB/day in pseudosteady state from the first hour, for the tests
// of the Cartesian plot: a constant rate q from a closed drainage area A declines at
// dp/dt = -0.23395 q B / (ct phi h A) psi/hr after a skin and transient offset of
// 80 psi, in 50 hourly points. For gas in pseudopressure the same decline is given to
// m(p), while the pressures follow another curve.
#pragma once

#include "core/analysis_state.h"

namespace zorvekan::testing {

constexpr double kAcre = 43560.0; // sq ft

inline AnalysisState pssDrawdown(double areaAcres, bool gas = false) {
    AnalysisState s;
    s.TestTitle = "PSS drawdown";
    s.FluidFlags = gas ? kGasPseudopressure : kOil;
    s.RateCount = 1;
    s.RateTime[1] = 50;
    s.Rate[1] = s.FlowRate = 500;
    s.OilFvf = 1.2;
    s.TotalCompressibility = 1.0e-5;
    s.Porosity = 0.2;
    s.Thickness = 30;
    const double decline = 0.23395 * s.FlowRate * s.OilFvf /
                           (s.TotalCompressibility * s.Porosity * s.Thickness * areaAcres * kAcre);
    s.TestPointCount = 50;
    for (int i = 1; i <= 50; ++i) {
        s.TestTime[i] = i;
        s.TestPressure[i] = gas ? 4000 - 3 * i * i : 4000 - 80 - decline * i;
        s.TestPseudoPressure[i] = gas ? 1000 - 20 - decline * i : 0;
    }
    return s;
}

} // namespace zorvekan::testing
