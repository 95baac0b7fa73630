// SPDX-License-Identifier: MIT
#include "regression/test_history.h"

#include "core/rate_history.h"
#include "core/runtime_error.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>

namespace zorvekan {

namespace {

void require(bool ok, const std::string& what) {
    if (!ok)
        throw RuntimeError(Fault::NoData, what);
}

} // namespace

TestHistory::TestHistory(const AnalysisState& s) {
    m_shutIn = s.ShutInFlag == 1;
    m_sign = s.InjectionFlag == 1 ? -1.0 : 1.0;
    const AnalysisRates r = analysisRates(s);
    double previous = 0.0;
    for (int j = 1; j <= r.count; ++j) {
        m_stepStart.push_back(r.end[j - 1]);
        m_rateChange.push_back(r.rate[j] - previous);
        previous = r.rate[j];
    }
    double end = r.count > 0 ? r.end[r.count] : 0.0;
    if (r.count == 0 && s.FlowRate != 0) {
        m_stepStart.push_back(0.0);
        m_rateChange.push_back(s.FlowRate);
        previous = s.FlowRate;
        end = s.ProducingTime;
    }
    m_lastRate = previous;
    require(!m_stepStart.empty() && m_lastRate != 0,
            "The regression needs the rate history of the test: enter its rates first.");
    if (m_shutIn) {
        require(end > 0, "The regression needs the flowing time before the shut-in.");
        m_shutInAt = end;
        m_stepStart.push_back(end);
        m_rateChange.push_back(-m_lastRate);
    }

    m_formation = {s.Thickness, s.Porosity, s.OilViscosity, s.TotalCompressibility,
                   s.WellboreRadius};
    require(s.Thickness > 0, "The regression needs the net pay above 0.");
    require(s.Porosity > 0, "The regression needs the porosity above 0.");
    require(s.TotalCompressibility > 0, "The regression needs the total compressibility above 0.");
    require(s.WellboreRadius > 0, "The regression needs the well radius above 0.");
    require(s.OilViscosity > 0, "The regression needs the viscosity above 0.");
    if (usesPseudopressure(s)) {
        require(s.ReservoirTemperature > 0,
                "The regression needs the reservoir temperature above 0.");
        m_pressureFactor = 1422.0 * (s.ReservoirTemperature + 460.0) / (s.Thickness * 1e6);
    } else {
        const double fvf = s.FluidFlags == kGasWater ? 1.0 : s.OilFvf;
        require(fvf > 0, "The regression needs the formation volume factor above 0.");
        m_pressureFactor = 141.2 * fvf * s.OilViscosity / s.Thickness;
    }
    m_shortest = std::numeric_limits<double>::infinity();
    m_longest = 0.0;
}

int TestHistory::addPoint(double testTime) {
    const double t = m_shutInAt + testTime;
    for (std::size_t j = 0; j < m_stepStart.size(); ++j) {
        const double elapsed = t - m_stepStart[j];
        if (elapsed <= 0)
            continue;
        m_terms.push_back({m_rateChange[j], elapsed});
        m_shortest = std::min(m_shortest, elapsed);
        m_longest = std::max(m_longest, elapsed);
    }
    m_first.push_back(m_terms.size());
    return pointCount() - 1;
}

void TestHistory::superpose(const std::function<double(double)>& pD, double timeGroupPerHour,
                            std::vector<double>& out) const {
    out.assign(static_cast<std::size_t>(pointCount()), 0.0);
    for (std::size_t i = 0; i < out.size(); ++i) {
        double sum = 0.0;
        for (std::size_t k = m_first[i]; k < m_first[i + 1]; ++k)
            sum += m_terms[k].rateChange * pD(timeGroupPerHour * m_terms[k].elapsed);
        out[i] = sum;
    }
}

double TestHistory::pressurePerRate(double permeability) const {
    return m_sign * m_pressureFactor / permeability;
}

} // namespace zorvekan
