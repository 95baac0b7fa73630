// SPDX-License-Identifier: MIT
#include "core/fitted_curve.h"

#include "core/analysis_data.h"
#include "core/runtime_error.h"
#include "core/semilog_series.h"

#include <cstring>

namespace zorvekan {

namespace {

class Fnv1a {
public:
    template <class T> void add(const T& value) {
        unsigned char bytes[sizeof(T)];
        std::memcpy(bytes, &value, sizeof(T));
        for (unsigned char b : bytes)
            m_hash = (m_hash ^ b) * 1099511628211ULL;
    }
    std::uint64_t value() const { return m_hash; }

private:
    std::uint64_t m_hash = 14695981039346656037ULL;
};

} // namespace

std::uint64_t testFingerprint(const AnalysisState& s) {
    Fnv1a h;
    for (const auto flag :
         {s.ShutInFlag, s.InjectionFlag, s.FluidFlags, s.TestPointCount, s.RateCount})
        h.add(flag);
    for (const double v : {s.StartPressure, s.ProducingTime, s.ReservoirTemperature, s.GasGravity})
        h.add(v);
    for (int i = 1; i <= s.TestPointCount && i <= kMaxTestPoints; ++i) {
        h.add(s.TestTime[i]);
        h.add(s.TestPressure[i]);
    }
    for (int j = 1; j <= s.RateCount && j <= kMaxRates; ++j)
        for (const double v : {s.RateTime[j], s.Rate[j], s.GasRate[j], s.WaterRate[j]})
            h.add(v);
    return h.value();
}

std::optional<AnalysisState> preparedFittedCurve(const AnalysisState& s) {
    const std::size_t n = s.FittedTime.size();
    if (n == 0 || n > kMaxTestPoints || s.FittedPressure.size() != n ||
        s.FittedFingerprint != testFingerprint(s))
        return std::nullopt;
    AnalysisState c = s;
    c.TestPointCount = static_cast<std::int16_t>(n);
    for (std::size_t k = 0; k < n; ++k) {
        const int i = static_cast<int>(k) + 1;
        c.TestTime[i] = s.FittedTime[k];
        (usesPseudopressure(c) ? c.TestPseudoPressure : c.TestPressure)[i] = s.FittedPressure[k];
    }
    try {
        ComputeTimeFunctions(c);
        BuildSemilogSeries(c);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
    return c;
}

} // namespace zorvekan
