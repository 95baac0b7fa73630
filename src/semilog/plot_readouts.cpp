// SPDX-License-Identifier: MIT
#include "semilog/plot_readouts.h"

#include "core/display_mask.h"
#include "core/semilog_series.h"
#include "semilog/semilog_line_check.h"

#include <cmath>

namespace zorvekan {

namespace {

std::string hours(const char* name, double t) {
    return std::string(name) + " = " + readoutNumber(t) + " hrs.";
}

std::string pressureLike(const AnalysisState& s, const char* name, const char* unit, double v) {
    if (usesPseudopressure(s))
        return std::string("m(p) = ") + readoutNumber(v) + " (1E6) psi2/cp";
    return std::string(name) + " = " + readoutNumber(v) + " " + unit;
}

} // namespace

std::string readoutNumber(double v) {
    const double a = std::fabs(v);
    if (!std::isfinite(v))
        return "?";
    if (a >= 1000)
        return Format(v, "0");
    if (a >= 100)
        return Format(v, "0.#");
    if (a >= 10)
        return Format(v, "0.##");
    if (a >= 1 || a == 0)
        return Format(v, "0.###");
    if (a >= 0.001)
        return Format(v, "0.######");
    return Format(v, "0.0##E-00");
}

std::string semilogReadout(const AnalysisState& s, const PlotScales& scales, double x, double y) {
    if (!(scales.x != 0 && scales.y != 0))
        return {};
    const double u = s.SemilogXMin + x / scales.x;
    const double v = s.SemilogYMin + y / scales.y;
    std::string text;
    if (s.SemilogPlotKind == kSuperpositionPlot) {
        text = "Summation term = " + readoutNumber(u);
    } else if (s.ShutInFlag == 1) {
        const double ratio = std::pow(10.0, u);
        if (!(ratio > 1 && std::isfinite(ratio)))
            return {};
        text = "(t+dt)/dt = " + readoutNumber(ratio) + "  " +
               hours("dt", s.ProducingTime / (ratio - 1.0));
    } else {
        text = hours(s.RateCount >= 2 ? "te" : "t", std::pow(10.0, u));
    }
    const std::string unit = semilogPlottedUnit(s);
    if (semilogIsRateNormalised(s))
        return text + "  " + (usesPseudopressure(s) ? "dm(p)/q = " : "dp/q = ") + readoutNumber(v) +
               " " + unit;
    return text + "  " + pressureLike(s, "p", "psia", v);
}

std::string storageReadout(const AnalysisState& s, double x, double y) {
    if (!(s.StorageScale > 0))
        return {};
    const double te = std::pow(10.0, s.StorageXMin + x / s.StorageScale);
    const double dp = std::pow(10.0, s.StorageYMin + y / s.StorageScale);
    const double tp = s.ProducingTime;
    std::string text;
    if (tp > 0) {
        text = hours("te", te);
        if (te < tp)
            text += "  " + hours("dt", tp * te / (tp - te));
    } else {
        text = hours("t", te);
    }
    const bool perRate = s.ShutInFlag == 0 && s.RateCount >= 2;
    if (perRate)
        return text + "  " + (usesPseudopressure(s) ? "dm(p)/dq = " : "dp/dq = ") +
               readoutNumber(dp) + " " + semilogPlottedUnit(s);
    return text + "  " + pressureLike(s, "dp", "psi", dp);
}

std::string flowReadout(const AnalysisState& s, const FlowPlotFrame& f, double x, double y) {
    if (!(f.scales.x != 0 && f.scales.y != 0 && f.exponent > 0))
        return {};
    const double root = f.xMin + x / f.scales.x;
    if (!(root > 0))
        return {};
    const double t = std::pow(root, 1.0 / f.exponent);
    return hours("t", t) + "  " + pressureLike(s, "p", "psia", f.yMin + y / f.scales.y);
}

} // namespace zorvekan
