// SPDX-License-Identifier: MIT
#include "semilog/semilog_line_check.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/result_line.h"
#include "core/semilog_series.h"

#include <cmath>

namespace zorvekan {

namespace {

bool gasAlone(const AnalysisState& s) {
    return s.FluidFlags == kGasPseudopressure || s.FluidFlags == kGasPressure;
}

// Plot x of one hour: the shut-in time dt = 1 on a Horner or superposition plot of a
// buildup, log10(1) = 0 on a time axis.
double oneHourX(const AnalysisState& s) {
    if (s.ShutInFlag != 1)
        return 0.0;
    if (s.SemilogPlotKind == kSuperpositionPlot)
        return shutInSummation(s, 1.0);
    return Log10(s.ProducingTime + 1.0);
}

} // namespace

std::string semilogPlottedUnit(const AnalysisState& s) {
    std::string unit = usesPseudopressure(s) ? "(1E6) psi2/cp" : "psi";
    if (semilogIsRateNormalised(s))
        unit += gasAlone(s) ? "/(MCF/D)" : "/(STB/D)";
    return unit;
}

std::vector<std::string> semilogLineCheck(AnalysisState& s, const SemilogResults& r) {
    const bool perRate = semilogIsRateNormalised(s);
    // A change per unit rate is small (0.065 psi/(STB/D) a cycle): four decimals.
    const char* mask = perRate ? "#.0000" : "####.##";
    const std::string unit = semilogPlottedUnit(s);
    const double absSlope = std::fabs(r.slope);
    std::vector<std::string> lines;
    lines.push_back(resultLine("Slope =", Format(absSlope, mask), " " + unit + "/cycle."));
    if (s.ShutInFlag == 1) {
        const double pStar =
            usesPseudopressure(s) ? PseudoPressureToPressure(s, r.intercept) : r.intercept;
        lines.push_back(resultLine("p* =", Format(pStar, "####.##"), " psia."));
    }
    const double oneHour = r.intercept + r.slope * oneHourX(s);
    const std::string level = usesPseudopressure(s) || perRate ? unit : "psia";
    lines.push_back(resultLine("P1hr =", Format(oneHour, mask), " " + level + "."));
    lines.push_back(
        resultLine("Dp Skin =", Format(0.87 * absSlope * r.skin, mask), " " + unit + "."));
    return lines;
}

} // namespace zorvekan
