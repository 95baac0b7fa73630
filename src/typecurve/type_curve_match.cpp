// SPDX-License-Identifier: MIT
#include "typecurve/type_curve_match.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/result_line.h"
#include "core/runtime_error.h"
#include "typecurve/curve_parameters.h"
#include "typecurve/library_file.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace zorvekan {

namespace {

// Upper bounds (included) of the CDe2sfm intervals of ONETYPE curves 1..15.
constexpr std::array<double, 15> kLateCurveBounds = {0.65, 2,    6.5,  55,   550,  5500, 1e5, 1e7,
                                                     1e9,  5e12, 5e17, 1e25, 1e35, 1e45, 1e55};

double lastRate(const AnalysisState& s, const RateArray& rates) {
    return rates[s.RateCount];
}

// The rate a phase's permeability is multiplied by: its last rate, or on a per-unit-rate
// overlay 1 for a phase that flows and 0 for one that does not.
double phaseRate(const AnalysisState& s, double rate) {
    if (matchIsPerUnitRate(s))
        return rate > 0 ? 1.0 : 0.0;
    return rate;
}

double freeGasRate(const AnalysisState& s) {
    return std::max(0.0, lastRate(s, s.GasRate) - s.SolutionGor * lastRate(s, s.Rate));
}

bool waterFlows(const AnalysisState& s) {
    return s.FluidFlags > kOilGas;
}

bool freeGasFlows(const AnalysisState& s) {
    return s.FluidFlags == kOilGas || s.FluidFlags == kGasWater || s.FluidFlags == kOilGasWater;
}

// k / mu, where a phase with no permeability adds nothing (whatever its viscosity box holds).
double mobilityOf(double k, double mu) {
    return k == 0.0 ? 0.0 : divide(k, mu);
}

// phi ct h rw^2, the storage of the well's volume of rock per psi (ft^3 / psi).
double rockStorage(const AnalysisState& s) {
    return s.Porosity * s.TotalCompressibility * s.Thickness * s.WellboreRadius * s.WellboreRadius;
}

double skinFrom(const AnalysisState& s, double cde2s, double storage) {
    return 0.5 * naturalLog(divide(cde2s * 1.119 * rockStorage(s), storage));
}

void addParameterLine(TypeCurveResults& r) {
    const std::string value = Format(r.parameter, "#.0E-00");
    switch (r.model) {
    case kSinglePorosityModel:
        r.lines.push_back(resultLine("CDe2s =", value));
        break;
    case kDualPorosityModel:
        r.lines.push_back(resultLine("CDe2s(frac) =", value));
        break;
    default:
        r.lines.push_back(curveLabel(LibraryFile::FrcType, r.curve));
        break;
    }
}

void addPermeabilityLines(const AnalysisState& s, TypeCurveResults& r) {
    const auto md = [](double k) { return Format(k, "###.##"); };
    if (s.FluidFlags < kOilGas)
        r.lines.push_back(resultLine("Permeability =", md(r.permeability), " md."));
    if (s.FluidFlags == kOilGas || s.FluidFlags == kOilWater || s.FluidFlags == kOilGasWater)
        r.lines.push_back(resultLine("Oil Permeability =", md(r.permeability), " md."));
    if (r.gasPermeability > 0)
        r.lines.push_back(resultLine("Gas Permeability =", md(r.gasPermeability), " md."));
    if (r.waterPermeability > 0)
        r.lines.push_back(resultLine("Wtr Permeability =", md(r.waterPermeability), " md."));
}

// "Wellbore Storage =": four decimals as the storage plot prints it, or an exponent where
// four decimals would keep less than two digits.
std::string storageLine(double storage) {
    const char* mask = std::fabs(storage) >= 0.001 ? "#.####" : "#.0E-00";
    return resultLine("Wellbore Storage =", Format(storage, mask), " bbl/psi.");
}

int familyCurveCount(int model) {
    return libraryCurveCount(model == kVerticalFractureModel ? LibraryFile::FrcType
                                                             : LibraryFile::OneType);
}

} // namespace

bool matchIsPerUnitRate(const AnalysisState& s) {
    return s.ProducingTime == 0.0 && s.RateCount >= 2;
}

double matchPermeability(const AnalysisState& s, double pressureRatio) {
    const double q = matchIsPerUnitRate(s) ? 1.0 : s.FlowRate;
    if (usesPseudopressure(s))
        return divide(1422.0 * q * (s.ReservoirTemperature + 460.0), s.Thickness) *
               divide(pressureRatio, 1000000.0);
    return divide(141.2 * q * s.OilViscosity * s.OilFvf, s.Thickness) * pressureRatio;
}

double storageTimeGroupPerHour(const AnalysisState& s, double mobility, double storage) {
    return divide(0.000295 * mobility * s.Thickness, storage);
}

double fractureTimeGroupPerHour(const AnalysisState& s, double mobility, double halfLength) {
    return divide(0.000264 * mobility,
                  s.Porosity * s.TotalCompressibility * halfLength * halfLength);
}

TypeCurveResults ComputeMatchResults(AnalysisState& s, int model, int curve, const MatchPoint& m) {
    if (model < kSinglePorosityModel || model > kVerticalFractureModel)
        throw RuntimeError(Fault::InvalidArgument,
                           "type-curve model " + std::to_string(model) + " is not 1, 2 or 3");
    if (curve < 1 || curve > familyCurveCount(model))
        throw RuntimeError(Fault::SubscriptOutOfRange,
                           "the family has no curve " + std::to_string(curve));
    TypeCurveResults r;
    r.model = model;
    r.curve = curve;
    r.parameter = curveParameter(
        model == kVerticalFractureModel ? LibraryFile::FrcType : LibraryFile::OneType, curve);
    r.match = m;
    const double ratio = divide(m.typeCurvePressure, m.deltaP);
    const double h = s.Thickness;

    r.permeability = matchPermeability(s, ratio);
    if (waterFlows(s))
        r.waterPermeability =
            divide(141.2 * phaseRate(s, lastRate(s, s.WaterRate)) * s.WaterViscosity * s.WaterFvf,
                   h) *
            ratio;
    if (freeGasFlows(s))
        r.gasPermeability =
            divide(141.2 * phaseRate(s, freeGasRate(s)) * s.GasViscosity * s.GasFvf, h) * ratio;

    r.mobility = mobilityOf(r.permeability, s.OilViscosity);
    if (waterFlows(s))
        r.mobility += mobilityOf(r.waterPermeability, s.WaterViscosity);
    if (freeGasFlows(s))
        r.mobility += mobilityOf(r.gasPermeability, s.GasViscosity);
    r.storage = divide(0.000295 * r.mobility * h * m.time, m.typeCurveTime);

    addParameterLine(r);
    addPermeabilityLines(s, r);
    switch (model) {
    case kVerticalFractureModel:
        r.fractureHalfLength = squareRoot(divide(
            0.000264 * r.mobility * m.time, s.Porosity * s.TotalCompressibility * m.typeCurveTime));
        s.FractureHalfLength = *r.fractureHalfLength;
        r.lines.push_back(
            resultLine("Fracture Half Length =", Format(*r.fractureHalfLength, "####."), " ft."));
        break;
    case kSinglePorosityModel:
        r.skin = skinFrom(s, r.parameter, r.storage);
        r.lines.push_back(resultLine("Skin Factor =", Format(*r.skin, "##.##")));
        break;
    default:
        r.storageGroup = divide(0.8936 * r.storage, rockStorage(s));
        break;
    }
    // The storage the match found, last, for the engineer to compare with the unit-slope
    // pick (a fracture's storage is not what its type curves are drawn for).
    if (model != kVerticalFractureModel)
        r.lines.push_back(storageLine(r.storage));
    return r;
}

TypeCurveResults ComputeDualPorosityResults(const AnalysisState& s, const TypeCurveResults& match,
                                            int descendingCurve, int ascendingCurve) {
    if (match.model != kDualPorosityModel)
        throw RuntimeError(Fault::InvalidArgument, "transition curves belong to dual porosity");
    const auto check = [](int curve, int first, int last, const char* what) {
        if (curve < first || curve > last)
            throw RuntimeError(Fault::InvalidArgument,
                               std::string("curve ") + std::to_string(curve) + " is not " + what);
    };
    check(descendingCurve, kFirstDescendingCurve, kFirstAscendingCurve - 1,
          "a descending transition curve (13..18)");
    check(ascendingCurve, kFirstAscendingCurve, libraryCurveCount(LibraryFile::TwoType),
          "an ascending transition curve (19..25)");

    TypeCurveResults r = match;
    // The match's storage line moves below the transition results.
    if (!r.lines.empty() && r.lines.back() == storageLine(r.storage))
        r.lines.pop_back();
    DualPorosityResults d;
    d.p1 = curveParameter(LibraryFile::TwoType, descendingCurve);
    d.p2 = curveParameter(LibraryFile::TwoType, ascendingCurve);
    d.omega = d.p2 / d.p1;
    d.lambda = divide((1.0 - d.omega) * d.p2, match.storageGroup);
    d.cde2sfm = match.parameter * d.omega;
    d.skin = skinFrom(s, d.cde2sfm, match.storage);
    d.le2s = finite(d.lambda * std::exp(-2.0 * d.skin), "Le-2s");
    d.lateCurve = lateCurveForCDe2sfm(d.cde2sfm);
    d.transitionCurve = transitionCurveForLe2s(d.le2s);
    r.skin = d.skin;
    r.dual = d;
    const auto sci = [](double v) { return Format(v, "#.0E-00"); };
    r.lines.push_back(resultLine("Omega =", sci(d.omega)));
    r.lines.push_back(resultLine("Lambda =", sci(d.lambda)));
    r.lines.push_back(resultLine("CDe2sfm =", sci(d.cde2sfm)));
    r.lines.push_back(resultLine("Skin Factor =", Format(d.skin, "##.##")));
    r.lines.push_back(resultLine("Le-2s =", sci(d.le2s)));
    r.lines.push_back(storageLine(r.storage));
    return r;
}

int lateCurveForCDe2sfm(double cde2sfm) {
    if (std::isnan(cde2sfm))
        throw RuntimeError(Fault::InvalidArgument, "CDe2sfm is not a number");
    int curve = 1;
    for (double bound : kLateCurveBounds)
        if (cde2sfm > bound)
            ++curve;
    return curve;
}

} // namespace zorvekan
