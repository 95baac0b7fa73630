// SPDX-License-Identifier: MIT
#include "semilog/semilog_results.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/pseudopressure.h"
#include "core/rate_history.h"
#include "core/result_line.h"
#include "core/semilog_series.h"
#include "semilog/semilog_line_check.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace zorvekan {

namespace {

constexpr double kDrainagePi = 3.1416;

// ---- rates and pressures of the test ----

// The rates of the last flowing step (a shut-in typed as a last, zero-rate step is not
// one).
double lastRate(const AnalysisState& s, const RateArray& rates) {
    return rates[lastFlowingStep(s)];
}

// Gas beside oil is free gas beyond the solution gas; gas and water have no oil, so
// all their gas is free.
double freeGasRate(const AnalysisState& s) {
    if (s.FluidFlags == kGasWater)
        return lastRate(s, s.GasRate);
    return lastRate(s, s.GasRate) - s.SolutionGor * lastRate(s, s.Rate);
}

// q*B in reservoir barrels a day; with several phases the total reservoir rate, the
// same rate the total mobility belongs to.
double reservoirRate(const AnalysisState& s) {
    double rate = s.FlowRate * s.OilFvf;
    if (s.FluidFlags >= kOilGas) {
        rate += lastRate(s, s.WaterRate) * s.WaterFvf;
        rate += std::max(0.0, freeGasRate(s)) * s.GasFvf;
    }
    return rate;
}

double startPressure(const AnalysisState& s) {
    return usesPseudopressure(s) ? s.StartPseudoPressure : s.StartPressure;
}

// Pressure change from the start of the test to a pressure read off a line, signed so
// that it is positive for a normal test. Flowing tests: p0 - p (producer), p - p0
// (injector). Shut-in tests: the pressure rises in a buildup, p - p0, and falls in a
// falloff, p0 - p.
double changeFromStart(const AnalysisState& s, double p) {
    const double p0 = startPressure(s);
    const bool rising = (s.ShutInFlag == 1) != (s.InjectionFlag == 1);
    return rising ? p - p0 : p0 - p;
}

std::string line(const char* caption, double value, const char* mask, const char* unit = "") {
    return resultLine(caption, Format(value, mask), unit);
}

// ---- fracture correction ----

double drainageHalfLength(const AnalysisState& s) {
    // The fracture models use a square drainage area: xe is half its side; a radius
    // from the pseudosteady-state line stands for the square of the same area.
    if (s.PssDrainageRadius > 0)
        return 0.5 * std::sqrt(kDrainagePi * s.PssDrainageRadius * s.PssDrainageRadius);
    return 0.5 * std::sqrt(std::max(0.0, s.DrainageArea));
}

// Fracture half-length from the linear-flow slope: xf = (0.3187/m_lf)*sqrt(qB|m|/(F h phi ct)).
double fractureHalfLength(const AnalysisState& s, const SemilogInputs& in, double absSlope,
                          double f) {
    return divide(0.3187, in.linearSlope) *
           squareRoot(divide(reservoirRate(s) * absSlope,
                             f * s.Thickness * s.Porosity * s.TotalCompressibility));
}

// Correction factor F of a fractured well's semilog slope (the semilog line of a
// fracture that reaches far towards the boundary is too steep). Iterated from 0.6 on
// xf/xe: F = 1 below 0.5, exp(-1.3845 r) up to 0.62, 0.3186 beyond.
double fractureFactor(const AnalysisState& s, const SemilogInputs& in, double absSlope, double xe) {
    if (s.ShutInFlag != 1)
        return 1.0;
    double f = 0.6;
    for (int pass = 0; pass < 20; ++pass) {
        const double r = fractureHalfLength(s, in, absSlope, f) / xe;
        double next = 1.0;
        if (r > 0.5 && r <= 0.62)
            next = std::exp(-1.3845 * r);
        else if (r > 0.62)
            next = 0.3186;
        const bool settled = std::fabs(f - next) < 0.005;
        f = next;
        if (settled)
            break;
    }
    return f;
}

// ---- the semilog line read at particular times ----

// Plot x of a shut-in time dt on this plot kind.
double shutInX(const AnalysisState& s, double dt) {
    if (s.SemilogPlotKind == kSuperpositionPlot)
        return shutInSummation(s, dt);
    return Log10(divide(s.ProducingTime + dt, dt));
}

// The correction log((tp + 1)/tp) of the Horner skin, or its superposition form.
double shutInSkinCorrection(const AnalysisState& s) {
    if (s.SemilogPlotKind != kSuperpositionPlot)
        return Log10(divide(s.ProducingTime + 1.0, s.ProducingTime));
    const AnalysisRates r = analysisRates(s);
    const int n = r.count;
    double sum = 0.0;
    for (int j = 1; j <= n; ++j) {
        const double flowed = r.end[n] - r.end[j - 1];
        sum += r.weight(j, n) * Log10(divide(flowed + 1.0, flowed));
    }
    return sum;
}

// Plot x of the latest point of the semilog series.
double lastPointX(const AnalysisState& s) {
    int latest = 1;
    for (int i = 2; i <= s.PointCount; ++i)
        if (s.SemilogTime[i] > s.SemilogTime[latest])
            latest = i;
    return s.SemilogX[latest];
}

// ---- the result steps ----

struct Permeabilities {
    double k = 0, kw = 0, kg = 0;
};

Permeabilities permeabilities(const AnalysisState& s, double absSlope, double f) {
    Permeabilities p;
    const double hm = s.Thickness * absSlope;
    const int code = s.FluidFlags;
    if (code == kGasPseudopressure) {
        // m(p) is plotted in millions of psi^2/cp.
        p.k = divide(1637.0 * s.FlowRate * (s.ReservoirTemperature + 460.0) * f, hm * 1e6);
    } else {
        p.k = divide(162.6 * s.FlowRate * s.OilViscosity * s.OilFvf * f, hm);
    }
    if (code >= kOilWater)
        p.kw = divide(162.6 * lastRate(s, s.WaterRate) * s.WaterViscosity * s.WaterFvf * f, hm);
    if (code == kGasWater) {
        p.kg = divide(162.6 * lastRate(s, s.GasRate) * s.GasViscosity * s.GasFvf * f, hm);
    } else if (code == kOilGas || code == kOilGasWater) {
        const double freeGas = freeGasRate(s);
        if (freeGas > 0)
            p.kg = divide(162.6 * freeGas * s.GasViscosity * s.GasFvf * f, hm);
    }
    if (semilogIsRateNormalised(s)) {
        // The plotted change is per unit of the normalising rate: the oil or principal
        // rate, or the total reservoir rate of gas and water.
        const double q = code == kGasWater ? normalisingRate(s, lastFlowingStep(s)) : s.FlowRate;
        p.k = divide(p.k, q);
        p.kw = divide(p.kw, q);
        p.kg = divide(p.kg, q);
    }
    return p;
}

double totalMobility(const AnalysisState& s, const Permeabilities& p) {
    double mobility = s.FluidFlags == kGasWater ? 0.0 : divide(p.k, s.OilViscosity);
    if (s.FluidFlags > kOilGas)
        mobility += divide(p.kw, s.WaterViscosity);
    if (s.FluidFlags >= kOilGas && s.FluidFlags != kOilWater && p.kg > 0)
        mobility += divide(p.kg, s.GasViscosity);
    return mobility;
}

double skinFactor(const AnalysisState& s, const SemilogResults& r) {
    const double absSlope = std::fabs(r.slope);
    const double logTerm = Log10(divide(r.mobility, s.Porosity * s.TotalCompressibility *
                                                        s.WellboreRadius * s.WellboreRadius));
    if (s.ShutInFlag == 1) {
        const double oneHour = r.intercept + r.slope * shutInX(s, 1.0);
        const double dp1 = changeFromStart(s, oneHour);
        return 1.151 *
               (r.fractureFactor * dp1 / absSlope - logTerm + 3.23 + shutInSkinCorrection(s));
    }
    if (semilogIsRateNormalised(s))
        return 1.151 * (r.intercept / absSlope - logTerm + 3.32); // 3.32 kept as always used
    const double dp1 = changeFromStart(s, r.intercept);           // the line at 1 hour
    return 1.151 * (r.fractureFactor * dp1 / absSlope - logTerm + 3.23);
}

// MBH dimensionless pressure of a well in the centre of a circle, by the polynomial
// fit in L = log10(tDA).
double mbhDimensionlessPressure(double tda) {
    if (tda > 0.11) {
        const double l = Log10(tda);
        return 3.477514 + 2.304144 * l;
    }
    if (tda >= 0.01) {
        const double l = Log10(tda);
        return 5.870553 + 7.516584 * l + 3.351904 * l * l + 0.5166537 * l * l * l;
    }
    return 0.0;
}

double dimensionlessAreaTime(const AnalysisState& s, double mobility) {
    return divide(0.000264 * mobility * s.ProducingTime,
                  s.Porosity * s.TotalCompressibility * s.DrainageArea);
}

void averagePressures(AnalysisState& s, SemilogResults& r) {
    if (s.ShutInFlag != 1 || !(s.DrainageArea > 0))
        return;
    const double absSlope = std::fabs(r.slope);
    const double sign = s.InjectionFlag == 1 ? 1.0 : -1.0; // a falloff's p-bar lies above p*
    const double tda = dimensionlessAreaTime(s, r.mobility);
    r.mbhPressure = r.intercept + sign * 0.434 * absSlope * mbhDimensionlessPressure(tda);

    // Dietz: the average pressure is the semilog line read at the shut-in time
    // dt = 3792*phi*ct*A/(lambda*CA), CA = 31.62 for a well centred in a circle
    // (0.0002637 = 1/3792 being the time constant of tD). At that time
    // tD = lambda*dt/(3792*phi*ct*rw^2) = A/(CA*rw^2), so on the MDH form of the line
    // p = p0 + |m|*(log tD + 0.868 s + 0.351), 0.351 standing for log10(3792) - 3.23.
    // It applies once the flow period reached pseudosteady state (tDA >= 0.1 at tp).
    if (tda >= 0.1) {
        const double logTerm =
            Log10(divide(s.DrainageArea, 31.62 * s.WellboreRadius * s.WellboreRadius));
        r.dietzPressure = startPressure(s) - sign * absSlope * (logTerm + 0.868 * r.skin + 0.351);
    }
}

double flowEfficiency(const AnalysisState& s, const SemilogResults& r) {
    double dp = 0;
    if (s.ShutInFlag == 1) {
        dp = changeFromStart(s, r.mbhPressure.value_or(r.intercept));
    } else {
        const double atLast = r.intercept + r.slope * lastPointX(s);
        dp = semilogIsRateNormalised(s) ? atLast : changeFromStart(s, atLast);
    }
    return 100.0 * divide(dp - 0.87 * std::fabs(r.slope) * r.skin, dp);
}

std::optional<ValidityMarks> validityMarks(const AnalysisState& s, const SemilogResults& r,
                                           const PlotScales& scales) {
    if (s.ShutInFlag != 1 || s.InjectionFlag != 0 || !(s.DrainageRadius > 0))
        return std::nullopt;
    // Infinite-acting radial flow from tDA = 0.005 to tDA = 0.1 of the drainage area.
    const double area = kDrainagePi * s.DrainageRadius * s.DrainageRadius;
    const double start = divide(18.9 * s.Porosity * s.TotalCompressibility * area, r.mobility);
    ValidityMarks m;
    m.startX = scales.x * (shutInX(s, start) - s.SemilogXMin);
    m.endX = scales.x * (shutInX(s, 20.0 * start) - s.SemilogXMin);
    return m;
}

} // namespace

SemilogResults ComputeSemilogResults(AnalysisState& s, const SemilogInputs& in) {
    SemilogResults r;
    r.slope = lineSlope(in.line, in.scales.x, in.scales.y);
    r.intercept =
        lineIntercept(in.line, r.slope, s.SemilogXMin, in.scales.x, s.SemilogYMin, in.scales.y);
    const double absSlope = std::fabs(r.slope);
    auto& out = r.lines;

    // Fracture correction and half-length from a linear-flow slope.
    const double xe = drainageHalfLength(s);
    s.DrainageHalfLength = xe;
    const bool fractured = in.linearSlope > 0 && xe > 0;
    if (fractured) {
        s.TypeCurveModel = 3;
        r.fractureFactor = fractureFactor(s, in, absSlope, xe);
        r.fractureHalfLength = fractureHalfLength(s, in, absSlope, r.fractureFactor);
        s.FractureHalfLength = *r.fractureHalfLength;
        out.push_back(line("Fracture Half-Length =", *r.fractureHalfLength, "####.", " ft."));
    }

    const Permeabilities p = permeabilities(s, absSlope, r.fractureFactor);
    r.permeability = p.k;
    r.waterPermeability = p.kw;
    r.gasPermeability = p.kg;
    r.mobility = totalMobility(s, p);

    if (in.bilinearSlope > 0) {
        // kf*w = mu*(44.1*qB/(h*m_bf*(lambda*phi*ct)^0.25))^2, the one-phase form written with
        // the total mobility; FcD = 194.9*qB/(dp_ebf*h*lambda). mu and k are those of the
        // oil, or of the gas when gas flows with water and no oil.
        const bool gasAndWater = s.FluidFlags == kGasWater;
        const double qb = reservoirRate(s);
        const double root = std::pow(r.mobility * s.Porosity * s.TotalCompressibility, 0.25);
        const double group = divide(44.1 * qb, s.Thickness * in.bilinearSlope * root);
        r.fractureCapacity = (gasAndWater ? s.GasViscosity : s.OilViscosity) * group * group;
        out.push_back(line("Fracture Capacity =", *r.fractureCapacity, "####.", " md-ft."));
        const double fcd = divide(194.9 * qb, in.endBilinearDeltaP * s.Thickness * r.mobility);
        if (fcd >= 3)
            out.push_back(line("Bilinear Frac Half-Length =",
                               divide(*r.fractureCapacity, (gasAndWater ? p.kg : p.k) * fcd),
                               "####.", " ft."));
    }

    if (s.PssDrainageRadius > 0)
        out.push_back(line("Drainage radius =", s.PssDrainageRadius, "####.", " ft."));

    if (s.FluidFlags < kOilGas) {
        out.push_back(line("Permeability =", p.k, "###.##", " md."));
    } else {
        if (p.k > 0)
            out.push_back(line("Oil Permeability =", p.k, "###.##", " md."));
        if (p.kg > 0)
            out.push_back(line("Gas Permeability =", p.kg, "###.##", " md."));
        if (p.kw > 0)
            out.push_back(line("Water Permeability =", p.kw, "###.##", " md."));
    }
    s.Permeability = p.k;

    r.skin = skinFactor(s, r);
    s.SkinFactor = r.skin;
    out.push_back(line("Skin Factor =", r.skin, "##.##"));

    s.FractureSkin = 0;
    if (fractured) {
        const double dpLinear = changeFromStart(s, in.linearIntercept);
        r.fractureSkin =
            r.skin - divide(0.00708 * r.mobility * s.Thickness * dpLinear, reservoirRate(s));
        s.FractureSkin = *r.fractureSkin;
        out.push_back(line("Fracture Skin =", *r.fractureSkin, "##.##"));
    }

    averagePressures(s, r);
    r.flowEfficiency = flowEfficiency(s, r);
    // Average pressures of a gas in m(p) are printed as pressures, through one table
    // spanning them and p*.
    std::optional<PseudoPressureTable> table;
    if (usesPseudopressure(s) && r.mbhPressure) {
        const double other = r.dietzPressure.value_or(*r.mbhPressure);
        table.emplace(s, std::min({r.intercept, *r.mbhPressure, other}),
                      std::max({r.intercept, *r.mbhPressure, other}));
    }
    auto asPressure = [&](double plotted) { return table ? table->pressure(plotted) : plotted; };
    if (r.mbhPressure)
        out.push_back(line("MBH Avg. Pressure =", asPressure(*r.mbhPressure), "####."));
    if (r.dietzPressure)
        out.push_back(line("Dietz Avg. Pressure =", asPressure(*r.dietzPressure), "####."));
    out.push_back(line("Flow Efficiency =", *r.flowEfficiency, "###.##", "%"));
    for (std::string& check : semilogLineCheck(s, r))
        out.push_back(std::move(check));

    r.marks = validityMarks(s, r, in.scales);
    return r;
}

TransientPick pickEndOfTransient(AnalysisState& s, double x, const PlotScales& scales) {
    TransientPick pick;
    const double plotX = s.SemilogXMin + divide(x, scales.x);
    if (s.SemilogPlotKind == kSuperpositionPlot) {
        // The summation term has no inverse: take the time of the nearest point.
        int nearest = 1;
        for (int i = 2; i <= s.PointCount; ++i)
            if (std::fabs(s.SemilogX[i] - plotX) < std::fabs(s.SemilogX[nearest] - plotX))
                nearest = i;
        pick.time = s.PointCount > 0 ? s.SemilogTime[nearest] : 0.0;
    } else if (s.ShutInFlag == 1) {
        const double ratio = finite(std::pow(10.0, plotX), "Horner ratio");
        pick.time = divide(s.ProducingTime, ratio - 1.0);
    } else {
        pick.time = finite(std::pow(10.0, plotX), "time");
    }
    pick.markLabel = s.ShutInFlag == 1 ? "Transient -->" : "<-- Transient";
    s.EndOfTransientTime = pick.time;
    if (s.Permeability > 0) {
        const double radius =
            0.032 * squareRoot(divide(s.Permeability * pick.time,
                                      s.Porosity * s.OilViscosity * s.TotalCompressibility));
        pick.radiusLine = line("Radius Investigated =", radius, "#####", " ft.");
    }
    return pick;
}

PseudoPressureTable::PseudoPressureTable(AnalysisState& s, double lowest, double highest) {
    // The gas routines leave their B and viscosity in the oil fields; what the results
    // read from those fields must stay as the preparation left it.
    const double keptFvf = s.OilFvf, keptViscosity = s.OilViscosity;
    auto integrand = [&](double p) {
        const double z = GasZFactor(s, p);
        return divide(p, GasViscosityAndFvf(s, p, z).viscosity * z);
    };
    double testLow = s.StartPressure, testHigh = s.StartPressure;
    for (int i = 1; i <= s.TestPointCount; ++i) {
        testLow = std::min(testLow, s.TestPressure[i]);
        testHigh = std::max(testHigh, s.TestPressure[i]);
    }

    // m(p) on the 50-psi grid from the base pressure, as the test pseudopressures are
    // integrated, far enough to reach the highest test pressure and the highest value.
    constexpr double kBase = 14.7, kStep = 50.0, kCeiling = 100000.0; // psia
    std::vector<double> gridP{kBase}, gridF{integrand(kBase)}, gridM{0.0};
    while (gridP.back() < kCeiling && (gridP.back() < testHigh || gridM.back() < highest * 1e6)) {
        const double p = gridP.back() + kStep;
        const double f = integrand(p);
        gridM.push_back(gridM.back() + (f + gridF.back()) * kStep);
        gridP.push_back(p);
        gridF.push_back(f);
    }
    std::size_t bottom = 0; // the last grid point below the test and the lowest value
    while (bottom + 1 < gridP.size() && gridP[bottom + 1] <= testLow &&
           gridM[bottom + 1] <= lowest * 1e6)
        ++bottom;

    // Rows evenly spread over that span, each m(p) closing its grid interval with one
    // trapezoid as the program's own pseudopressure of a single pressure does.
    const double first = gridP[bottom], last = gridP.back();
    std::size_t g = bottom;
    for (int i = 0; i < kRows; ++i) {
        const double p = i == kRows - 1 ? last : first + (last - first) * i / (kRows - 1);
        while (g + 1 < gridP.size() && gridP[g + 1] <= p)
            ++g;
        m_pressure[i] = p;
        m_pseudo[i] = (gridM[g] + (integrand(p) + gridF[g]) * (p - gridP[g])) / 1e6;
    }
    s.OilFvf = keptFvf;
    s.OilViscosity = keptViscosity;
}

double PseudoPressureTable::pressure(double pseudoPressure) const {
    int i = 1;
    while (i < kRows - 1 && m_pseudo[i] < pseudoPressure)
        ++i;
    const double fraction = divide(pseudoPressure - m_pseudo[i - 1], m_pseudo[i] - m_pseudo[i - 1]);
    return m_pressure[i - 1] + fraction * (m_pressure[i] - m_pressure[i - 1]);
}

double PseudoPressureToPressure(AnalysisState& s, double pseudoPressure) {
    return PseudoPressureTable(s, pseudoPressure, pseudoPressure).pressure(pseudoPressure);
}

} // namespace zorvekan
