// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "models/dimensionless_well.h"

#include <functional>
#include <vector>

namespace zorvekan {

// A test as a fit sees it: the rate steps from the start of the history, and for each
// measured point the elapsed time since every rate change before it, so that the model's
// pressure follows by superposition in time of its drawdown response:
//   p(t) = pi - sign * a(k) * Sum_j (q_j - q_(j-1)) pD(T per hour * (t - t_(j-1)))
// with a(k) = 141.2 B mu / (k h) psi per STB/D (oil, water, gas in pressure: the principal
// phase's FVF and viscosity; B = 1 for gas with water, whose rates are reservoir barrels), or
// 1422 (T + 460) / (k h) / 1E6 in 1E6 psi^2/cp per MCF/D for gas in pseudopressure, and
// sign +1 for a producer, -1 for an injector. A buildup or falloff adds the shut-in, a rate
// change of -q_n at the end of the last flowing step; its test times count from there.
class TestHistory {
public:
    // The history of the state's rate steps (AnalysisRates) or, without steps, one step of
    // FlowRate lasting ProducingTime (shut-in tests) or from time 0 (flowing tests).
    // A test without rates, or whose principal-phase properties are not all above 0, is
    // Fault::NoData with a message saying what is missing.
    explicit TestHistory(const AnalysisState& s);

    // Adds a measured point at test time t (hours as TestTime); returns its index.
    int addPoint(double testTime);
    int pointCount() const { return static_cast<int>(m_first.size()) - 1; }

    // The shortest and longest elapsed time since a rate change over the points (hours).
    double shortestElapsed() const { return m_shortest; }
    double longestElapsed() const { return m_longest; }

    // Sum_j dq_j pD(timeGroupPerHour * elapsed_j) of every point, in rate units times pD.
    void superpose(const std::function<double(double)>& pD, double timeGroupPerHour,
                   std::vector<double>& out) const;

    // a(k): pressure (or m(p)) per unit rate and unit pD, signed: positive for a producer.
    double pressurePerRate(double permeability) const;

    // Formation and well of the state (h, phi, mu, ct, rw).
    const Formation& formation() const { return m_formation; }
    bool shutIn() const { return m_shutIn; }
    // The rate of the last flowing step, for start estimates.
    double lastRate() const { return m_lastRate; }

private:
    struct Term {
        double rateChange;
        double elapsed; // hours
    };
    std::vector<double> m_stepStart;  // t_(j-1), hours from the start of the history
    std::vector<double> m_rateChange; // q_j - q_(j-1), the shut-in included
    double m_shutInAt = 0;            // where test times start (0 for flowing tests)
    bool m_shutIn = false;
    double m_sign = 1;
    double m_pressureFactor = 0; // a(k) * k
    double m_lastRate = 0;
    Formation m_formation{};
    std::vector<Term> m_terms;
    std::vector<std::size_t> m_first{0}; // terms of point i: m_first[i] .. m_first[i + 1]
    double m_shortest = 0, m_longest = 0;
};

} // namespace zorvekan
