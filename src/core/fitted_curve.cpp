// SPDX-License-Identifier: MIT
#include "core/fitted_curve.h"

#include "core/analysis_data.h"
#include "core/plot_frame.h"
#include "core/runtime_error.h"
#include "core/semilog_series.h"

#include <algorithm>
#include <cmath>
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

void drawFittedLine(Canvas& c, const std::vector<std::array<double, 2>>& points, bool dashed) {
    // The dashes are laid along the whole line (1.5 plot units drawn, 1 left out): a pen's own
    // pattern starts again with every one of the short segments and would look solid.
    constexpr double kDash = 1.5, kGap = 1.0;
    c.setPenColor(kFittedOrange);
    c.setPenWidth(2);
    double along = 0; // position in the dash pattern
    const auto draw = [&c](double x1, double y1, double x2, double y2) {
        if (clipToAxisBox(x1, y1, x2, y2))
            c.line(x1, y1, x2, y2);
    };
    for (std::size_t i = 1; i < points.size(); ++i) {
        const double x1 = points[i - 1][0], y1 = points[i - 1][1];
        const double dx = points[i][0] - x1, dy = points[i][1] - y1;
        const double length = std::hypot(dx, dy);
        if (!dashed || length == 0) {
            draw(x1, y1, x1 + dx, y1 + dy);
            continue;
        }
        double from = 0;
        while (from < length) {
            const bool on = along < kDash;
            const double to = std::min(length, from + (on ? kDash - along : kDash + kGap - along));
            if (on)
                draw(x1 + dx * from / length, y1 + dy * from / length, x1 + dx * to / length,
                     y1 + dy * to / length);
            along = std::fmod(along + (to - from), kDash + kGap);
            from = to;
        }
    }
    c.setPenColor(kBlack);
}

void drawFittedLegend(Canvas& c, double x, double y) {
    c.setPenColor(kFittedOrange);
    c.text(x, y, "Regression");
    c.setPenColor(kBlack);
}

void drawFittedLogLog(Canvas& c, const AnalysisState& fitted,
                      const std::function<std::array<double, 2>(double, double)>& at, double x,
                      double y) {
    std::vector<std::array<double, 2>> change, derivative;
    for (int i = 1; i <= fitted.TestPointCount; ++i)
        change.push_back(at(fitted.LogTime[i], fitted.LogDeltaP[i]));
    for (int k = 1; k <= fitted.DerivativeCount; ++k)
        derivative.push_back(at(fitted.DerivativeLogTime[k], fitted.LogDerivative[k]));
    drawFittedLine(c, change, false);
    drawFittedLine(c, derivative, true);
    drawFittedLegend(c, x, y);
}

} // namespace zorvekan
