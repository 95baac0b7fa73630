// SPDX-License-Identifier: MIT
// The test the benchmarks measure: a 500-point buildup, log-spaced from 0.001 h to
// 100 h, with wellbore storage and a semilog straight line (the shape of a real
// gauge record).
#pragma once

#include "core/analysis_state.h"

#include <cmath>

namespace zorvekan::bench {

inline AnalysisState syntheticBuildup(int fluid) {
    AnalysisState s;
    s.FluidFlags = static_cast<std::int16_t>(fluid);
    s.ShutInFlag = 1;
    s.StartPressure = 2000;
    s.ProducingTime = 72;
    s.RateCount = 1;
    s.RateTime[1] = 72;
    s.Rate[1] = 800;
    s.ReservoirTemperature = 200;
    s.GasGravity = 0.7;
    s.TestPointCount = 500;
    for (int i = 1; i <= 500; ++i) {
        const double t = std::pow(10.0, -3.0 + 5.0 * (i - 1) / 499.0);
        const double storage = 1.0 - std::exp(-t / 0.05);
        s.TestTime[i] = t;
        s.TestPressure[i] = 2000 + storage * (600 + 60 * std::log10(1 + t));
    }
    return s;
}

} // namespace zorvekan::bench
