// SPDX-License-Identifier: MIT
// Well tests made from the exact line-source solution with skin, superposed in time
// over the rate history, for the tests of the semilog analyses:
//   dp(t) = 70.6 B mu / (k h) * sum_j (q_j - q_(j-1)) * [-Ei(-948 phi mu ct rw^2 / (k (t -
//   t_(j-1)))) + 2 s]
// (gas in m(p): 711 T / (k h) in place of 70.6 B mu / (k h), psi^2/cp; gas and water:
// 70.6 / (lambda_t h) with the total reservoir rate Bg qg + Bw qw and the total
// mobility lambda_t = kg/mu_g + kw/mu_w, Perrine). A shut-in is the step to rate 0.
#pragma once

#include "core/analysis_state.h"
#include "core/pseudopressure.h"
#include "input/entry_rules.h"

#include <cmath>
#include <vector>

namespace zorvekan::testing {

enum class Fluid { Oil, Water, GasInPseudopressure, GasAndWater };
enum class TestKind { Buildup, Drawdown, Falloff, Injectivity };

// The reservoir each fluid's tests are made in: k (gas permeability for gas and
// water), skin, and the rate of the last step.
struct LineSourceReservoir {
    double k, skin, h, phi, ct, rw, mu, fvf, rate, initialPressure;
    double waterK = 0, waterMu = 0, waterFvf = 0, waterRate = 0; // gas and water only
};

inline LineSourceReservoir lineSourceReservoir(Fluid fluid) {
    switch (fluid) {
    case Fluid::Oil:
        return {25, 3, 40, 0.18, 12e-6, 0.3, 0.9, 1.25, 400, 4000};
    case Fluid::Water:
        return {120, -2, 30, 0.22, 6e-6, 0.35, 0.55, 1.02, 1500, 2500};
    case Fluid::GasInPseudopressure: // mu is mu_g where the analysis evaluates it
        return {8, 2, 60, 0.12, 150e-6, 0.3, 0, 0, 3000, 3500};
    case Fluid::GasAndWater: // rates in proportion to mobility, as Perrine's method assumes
        return {15,  1,    50,   0.15, 20e-6, 0.3,  0.022,
                0.9, 2000, 3000, 3,    0.5,   1.03, 2000 * 0.9 * (3 / 0.5) / (15 / 0.022) / 1.03};
    }
    return {};
}

constexpr double kGasTemperature = 200, kGasGravity = 0.7; // deg F, air = 1

namespace detail {

// p / (mu_g z) of the analysis' own gas routines: half the integrand of m(p).
inline double gasIntegrand(double p) {
    AnalysisState gas;
    gas.ReservoirTemperature = kGasTemperature;
    gas.GasGravity = kGasGravity;
    const double z = GasZFactor(gas, p);
    return p / (GasViscosityAndFvf(gas, p, z).viscosity * z);
}

inline double gasViscosity(double p) {
    AnalysisState gas;
    gas.ReservoirTemperature = kGasTemperature;
    gas.GasGravity = kGasGravity;
    return GasViscosityAndFvf(gas, p, GasZFactor(gas, p)).viscosity;
}

// The pressure whose trapezoid from `from`, (f(from) + f(p)) (p - from), adds
// `increment` psi^2/cp: the step by which the analysis integrates m(p) along the data.
inline double pressureAfter(double from, double increment) {
    const double f0 = gasIntegrand(from);
    double p = from + increment / (2 * f0);
    for (int pass = 0; pass < 50; ++pass) {
        const double next = from + increment / (f0 + gasIntegrand(p));
        if (std::fabs(next - p) < 1e-10)
            return next;
        p = next;
    }
    return p;
}

} // namespace detail

// A test of the given kind with 1, 2 or 3 rates, as the entry screen leaves it (flow
// rate and producing time derived). Flowing tests last 100 h with points at the end
// of every step; shut-in tests follow 200 h at the last rate and run 50 h.
inline AnalysisState lineSourceTest(Fluid fluid, TestKind kind, int rates) {
    const LineSourceReservoir r = lineSourceReservoir(fluid);
    const bool shutIn = kind == TestKind::Buildup || kind == TestKind::Falloff;
    const bool injection = kind == TestKind::Falloff || kind == TestKind::Injectivity;
    const std::vector<double> share = rates == 1   ? std::vector<double>{1}
                                      : rates == 2 ? std::vector<double>{0.6, 1}
                                                   : std::vector<double>{0.5, 1, 0.75};
    const std::vector<double> durations = shutIn ? (rates == 1   ? std::vector<double>{200}
                                                    : rates == 2 ? std::vector<double>{40, 200}
                                                                 : std::vector<double>{20, 40, 200})
                                                 : (rates == 1   ? std::vector<double>{100}
                                                    : rates == 2 ? std::vector<double>{12, 88}
                                                                 : std::vector<double>{8, 16, 76});

    AnalysisState s;
    s.ShutInFlag = shutIn ? 1 : 0;
    s.InjectionFlag = injection ? 1 : 0;
    s.Thickness = r.h;
    s.Porosity = r.phi;
    s.TotalCompressibility = r.ct;
    s.WellboreRadius = r.rw;
    if (fluid == Fluid::Oil || fluid == Fluid::Water) {
        s.OilViscosity = r.mu; // the viscosity and FVF boxes hold the one liquid's
        s.OilFvf = r.fvf;
    }
    std::vector<double> normalising; // the rate each step's superposition term carries
    for (int j = 1; j <= rates; ++j) {
        const double q = r.rate * share[j - 1];
        s.RateTime[j] = durations[j - 1];
        if (fluid == Fluid::GasAndWater) {
            s.GasRate[j] = q;
            s.WaterRate[j] = r.waterRate * share[j - 1];
            normalising.push_back(r.fvf * q + r.waterFvf * s.WaterRate[j]);
        } else {
            s.Rate[j] = q;
            normalising.push_back(q);
        }
    }
    s.RateCount = static_cast<std::int16_t>(rates);
    double mobility = r.k / r.mu, unit = 70.6 * r.fvf * r.mu / (r.k * r.h);
    switch (fluid) {
    case Fluid::Oil:
        s.FluidFlags = kOil;
        break;
    case Fluid::Water:
        s.FluidFlags = kWater;
        break;
    case Fluid::GasInPseudopressure:
        s.FluidFlags = kGasPseudopressure;
        s.ReservoirTemperature = kGasTemperature;
        s.GasGravity = kGasGravity;
        unit = 711 * (kGasTemperature + 460) / (r.k * r.h);
        break;
    case Fluid::GasAndWater:
        s.FluidFlags = kGasWater;
        s.GasFvf = r.fvf;
        s.GasViscosity = r.mu;
        s.WaterFvf = r.waterFvf;
        s.WaterViscosity = r.waterMu;
        mobility = r.k / r.mu + r.waterK / r.waterMu;
        unit = 70.6 / (mobility * r.h);
        break;
    }
    deriveFlowRateAndProducingTime(s);

    std::vector<double> starts{0};
    for (double d : durations)
        starts.push_back(starts.back() + d);
    const double flowEnd = starts.back();
    std::vector<double> times;
    if (shutIn) {
        for (int i = 0; i < 40; ++i)
            times.push_back(std::pow(10.0, -2 + i * (std::log10(50.0) + 2) / 39));
    } else {
        for (int j = 0; j < rates; ++j) {
            const double length = starts[j + 1] - starts[j];
            for (int i = 0; i < 11; ++i)
                times.push_back(starts[j] + std::pow(10.0, -2 + i * (std::log10(length) + 2) / 11));
            times.push_back(starts[j + 1]); // the pressure at each rate change
        }
    }

    // Change from the initial pressure at time t since the start of the history, with
    // the viscosity the analysis will use (mu_g where it last evaluates the gas).
    auto change = [&](double t, double mu) {
        const double m = fluid == Fluid::GasInPseudopressure ? mu : r.mu;
        const double group = fluid == Fluid::GasAndWater
                                 ? 948 * r.phi * r.ct * r.rw * r.rw / mobility
                                 : 948 * r.phi * m * r.ct * r.rw * r.rw / r.k;
        auto pD = [&](double tau) { return -std::expint(-group / tau) + 2 * r.skin; };
        double sum = 0, previous = 0;
        for (int j = 0; j < rates && t > starts[j]; ++j) {
            sum += (normalising[j] - previous) * pD(t - starts[j]);
            previous = normalising[j];
        }
        if (t > flowEnd)
            sum -= previous * pD(t - flowEnd);
        return unit * sum;
    };

    const double sign = injection ? 1.0 : -1.0; // injection raises the pressure
    const int n = static_cast<int>(times.size());
    s.TestPointCount = static_cast<std::int16_t>(n);
    if (fluid != Fluid::GasInPseudopressure) {
        s.StartPressure = r.initialPressure + (shutIn ? sign * change(flowEnd, 0) : 0);
        for (int i = 1; i <= n; ++i) {
            s.TestTime[i] = times[i - 1];
            s.TestPressure[i] =
                r.initialPressure + sign * change((shutIn ? flowEnd : 0) + times[i - 1], 0);
        }
        return s;
    }

    // Gas: each pressure continues the analysis' m(p) integration from the one before
    // (start pressure first), so the pseudopressures it computes carry the changes
    // exactly. The viscosity is mu_g at the pressure evaluated last (the last point of
    // a shut-in test, the start pressure of a flowing one); two passes settle it.
    double mu = detail::gasViscosity(r.initialPressure);
    for (int pass = 0; pass < 2; ++pass) {
        double previous = r.initialPressure, reached = 0;
        if (shutIn) {
            // Start pressure: the flowing pressure at shut-in, from a fine integration.
            const double target = change(flowEnd, mu);
            double p = r.initialPressure;
            while (reached < target) {
                const double next = p + sign * 1.0;
                reached +=
                    std::fabs((detail::gasIntegrand(p) + detail::gasIntegrand(next)) * (next - p));
                p = next;
            }
            previous = p;
            reached = target;
        }
        s.StartPressure = previous;
        for (int i = 1; i <= n; ++i) {
            const double t = shutIn ? flowEnd + times[i - 1] : times[i - 1];
            const double target = change(t, mu);
            s.TestTime[i] = times[i - 1];
            s.TestPressure[i] = detail::pressureAfter(previous, sign * (target - reached));
            previous = s.TestPressure[i];
            reached = target;
        }
        mu = detail::gasViscosity(shutIn ? s.TestPressure[n] : s.StartPressure);
    }
    return s;
}

} // namespace zorvekan::testing
