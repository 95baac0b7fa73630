// SPDX-License-Identifier: MIT
// What a fit reports: its result lines, the fitted model's pressures, and the results it
// leaves in the state for the other screens.
#include "regression/well_fit.h"

#include "core/display_mask.h"
#include "core/fitted_curve.h"
#include "core/result_line.h"
#include "core/runtime_error.h"
#include "models/response_table.h"
#include "regression/test_history.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zorvekan {

namespace {

using P = ModelParameter;

constexpr int kCurvePoints = 200;

struct Caption {
    const char* caption;
    const char* unit;
    const char* mask; // "" for the mask of the value's size
};

Caption captionOf(int parameter, const AnalysisState& s) {
    switch (parameter) {
    case static_cast<int>(P::Permeability):
        return {"Permeability =", " md.", ""};
    case static_cast<int>(P::Skin):
        return {"Skin Factor =", "", "0.00"};
    case static_cast<int>(P::Storage):
        return {"Wellbore Storage =", " bbl/psi.", ""};
    case static_cast<int>(P::HalfLength):
        return {"Fracture Half Length =", " ft.", "0.0"};
    case static_cast<int>(P::OuterRadius):
        return {"Drainage Radius =", " ft.", "0."};
    case static_cast<int>(P::Omega):
        return {"Omega =", "", "0.00E-00"};
    case static_cast<int>(P::Lambda):
        return {"Lambda =", "", "0.00E-00"};
    default:
        break;
    }
    const char* unit = usesPseudopressure(s) ? " (1E6) psi2/cp." : " psia.";
    if (s.ShutInFlag == 1)
        return {usesPseudopressure(s) ? "m(p*) =" : "p* =", unit, "0.00"};
    return {usesPseudopressure(s) ? "Initial m(p) =" : "Initial Pressure =", unit, "0.00"};
}

// Two decimals from 1 up, three significant digits below (0.0100, 0.000123); the interval
// takes the decimals of its value.
std::string formatted(double value, const char* mask, double size) {
    if (*mask)
        return Format(value, mask);
    const double magnitude = std::fabs(size);
    int decimals = 2;
    if (magnitude < 1 && magnitude > 0) {
        int exponent = static_cast<int>(std::floor(std::log10(magnitude)));
        if (std::round(magnitude / std::pow(10.0, exponent - 2)) >= 1000) // 0.009999 is 0.0100
            ++exponent;
        decimals = std::min(12, std::max(2, 2 - exponent));
    }
    return Format(value, "0." + std::string(static_cast<std::size_t>(decimals), '0'));
}

} // namespace

std::string modelCaption(WellModelKind kind) {
    switch (kind) {
    case WellModelKind::Radial:
        return "Radial Homogeneous";
    case WellModelKind::RadialClosed:
        return "Radial, Closed Circle";
    case WellModelKind::FractureInfinite:
        return "Fracture, Infinite Conductivity";
    case WellModelKind::FractureUniform:
        return "Fracture, Uniform Flux";
    case WellModelKind::DualPss:
        return "Dual Porosity, PSS";
    case WellModelKind::DualTransient:
        return "Dual Porosity, Transient";
    }
    return {};
}

std::vector<std::string> fitLines(const AnalysisState& s, const FitResult& r) {
    std::vector<std::string> lines{"Regression: " + modelCaption(r.model)};
    std::vector<int> shown;
    for (ModelParameter p : modelParameters(r.model))
        shown.push_back(static_cast<int>(p));
    shown.push_back(kInitialPressure);
    for (int p : shown) {
        const auto i = static_cast<std::size_t>(p);
        const Caption c = captionOf(p, s);
        std::string line = resultLine(c.caption, formatted(r.value[i], c.mask, r.value[i]), c.unit);
        if (r.fixed[i])
            line += " (fixed)";
        else if (r.atLimit[i])
            line += " (at its limit: not seen by the data)";
        else if (r.halfInterval[i])
            line += " (\u00b1 " + formatted(*r.halfInterval[i], c.mask, r.value[i]) + ")";
        else
            line += " (not determined)";
        lines.push_back(line);
    }
    const char* unit = usesPseudopressure(s) ? " (1E6) psi2/cp." : " psi.";
    lines.push_back(resultLine("RMS Misfit =", Format(r.rmsMisfit, "0.000"), unit));
    lines.push_back(resultLine("Points Used =", std::to_string(r.pointsUsed)));
    return lines;
}

std::vector<double> fittedPressures(const AnalysisState& s, const FitResult& r,
                                    const std::vector<double>& times) {
    TestHistory history(s);
    for (double t : times)
        history.addPoint(t);
    ParameterValues v{};
    std::copy_n(r.value.begin(), kModelParameterCount, v.begin());
    const Formation& f = history.formation();
    const double perHour = timeGroupPerHour(f, at(v, P::Permeability), at(v, P::Storage));
    std::vector<double> change;
    if (history.shortestElapsed() <= history.longestElapsed()) {
        const ResponseTable table(dimensionlessWell(r.model, f, v),
                                  perHour * history.shortestElapsed(),
                                  perHour * history.longestElapsed() * (1 + 1e-9));
        history.superpose([&table](double t) { return table.pressure(t); }, perHour, change);
    } else {
        change.assign(times.size(), 0.0);
    }
    const double a = history.pressurePerRate(at(v, P::Permeability));
    std::vector<double> p(times.size());
    for (std::size_t i = 0; i < p.size(); ++i)
        p[i] = r.value[kInitialPressure] - a * change[i];
    return p;
}

void applyFit(AnalysisState& s, const FitResult& r) {
    const auto value = [&r](ModelParameter p) { return r.value[static_cast<std::size_t>(p)]; };
    s.Permeability = value(P::Permeability);
    s.SkinFactor = value(P::Skin);
    s.WellboreStorage = value(P::Storage);
    if (hasParameter(r.model, P::HalfLength))
        s.FractureHalfLength = value(P::HalfLength);

    double first = std::numeric_limits<double>::infinity(), last = 0;
    for (int i = 1; i <= s.TestPointCount; ++i)
        if (s.TestTime[i] > 0) {
            first = std::min(first, s.TestTime[i]);
            last = std::max(last, s.TestTime[i]);
        }
    s.FittedTime.clear();
    s.FittedPressure.clear();
    if (!(last > first))
        return;
    for (int k = 0; k < kCurvePoints; ++k)
        s.FittedTime.push_back(first * std::pow(last / first, k / double(kCurvePoints - 1)));
    s.FittedPressure = fittedPressures(s, r, s.FittedTime);
    s.FittedFingerprint = testFingerprint(s);
}

} // namespace zorvekan
