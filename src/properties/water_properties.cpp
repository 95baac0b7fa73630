// SPDX-License-Identifier: MIT
#include "properties/water_properties.h"

#include "core/checked_math.h"
#include "core/runtime_error.h"

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kGramsPerLitrePerLbPerCuFt = 16.0185;

// McCain (1990): Bw = (1 + dVwT)(1 + dVwp),
//   dVwT = -1.0001e-2 + 1.33391e-4 T + 5.50654e-7 T^2,
//   dVwp = -1.95301e-9 p T - 1.72834e-13 p^2 T - 3.58922e-7 p - 2.25341e-10 p^2.
double formationVolumeFactor(double t, double p) {
    const double dvT = -1.0001e-2 + 1.33391e-4 * t + 5.50654e-7 * t * t;
    const double dvP =
        -1.95301e-9 * p * t - 1.72834e-13 * p * p * t - 3.58922e-7 * p - 2.25341e-10 * p * p;
    return (1.0 + dvT) * (1.0 + dvP);
}

// McCain (1990), fitted to Culberson and McKetta's methane solubility in pure water:
//   Rswp = A + B p + C p^2 with cubic and quartic polynomials in T;
// brine: log(Rsw/Rswp) = -0.0840655 S T^-0.285854.
double solutionGas(double t, double p, double s) {
    const double a = 8.15839 - 6.12265e-2 * t + 1.91663e-4 * t * t - 2.1654e-7 * t * t * t;
    const double b = 1.01021e-2 - 7.44241e-5 * t + 3.05553e-7 * t * t - 2.94883e-10 * t * t * t;
    const double c = -1e-7 * (9.02505 - 0.130237 * t + 8.53425e-4 * t * t - 2.34122e-6 * t * t * t +
                              2.37049e-9 * t * t * t * t);
    const double pure = a + b * p + c * p * p;
    return pure * std::pow(10.0, -0.0840655 * s * std::pow(t, -0.285854));
}

// McCain (1990): mu_w1 = A T^-B at atmospheric pressure,
//   A = 109.574 - 8.40564 S + 0.313314 S^2 + 8.72213e-3 S^3,
//   B = 1.12166 - 2.63951e-2 S + 6.79461e-4 S^2 + 5.47119e-5 S^3 - 1.55586e-6 S^4;
//   mu_w / mu_w1 = 0.9994 + 4.0295e-5 p + 3.1062e-9 p^2.
double viscosity(double t, double p, double s) {
    const double a = 109.574 - 8.40564 * s + 0.313314 * s * s + 8.72213e-3 * s * s * s;
    const double b = 1.12166 - 2.63951e-2 * s + 6.79461e-4 * s * s + 5.47119e-5 * s * s * s -
                     1.55586e-6 * s * s * s * s;
    const double atmospheric = a * finite(std::pow(t, -b), "water viscosity");
    return atmospheric * (0.9994 + 4.0295e-5 * p + 3.1062e-9 * p * p);
}

// McCain (1990): brine density at standard conditions
//   rho_w = 62.368 + 0.438603 S + 1.60074e-3 S^2 lb/cu ft.
double standardDensity(double s) {
    return 62.368 + 0.438603 * s + 1.60074e-3 * s * s;
}

// Osif, T.L. (1988), "The Effects of Salt, Gas, Temperature, and Pressure on the
// Compressibility of Water", SPERE (Feb) 175-181, as McCain (1990) recommends above
// the bubble point: cw = 1 / (7.033 p + 541.5 C - 537.0 T + 403,300), C in g/L NaCl.
double compressibility(double t, double p, double s) {
    const double c = s / 100.0 * standardDensity(s) * kGramsPerLitrePerLbPerCuFt;
    const double denominator = 7.033 * p + 541.5 * c - 537.0 * t + 403300.0;
    if (!(denominator > 0))
        throw RuntimeError(Fault::InvalidArgument,
                           "water compressibility: temperature beyond Osif's correlation");
    return 1.0 / denominator;
}

void noteRange(std::vector<std::string>& notes, bool inside, const char* text) {
    if (!inside)
        notes.emplace_back(text);
}

} // namespace

double salinityPercent(double value, SalinityUnit unit) {
    return unit == SalinityUnit::Ppm ? value / 1e4 : value;
}

std::optional<std::string> waterInputProblem(const WaterInput& in) {
    // McCain's viscosity takes T in deg F to a negative power: water below 0 F
    // (or 0 R) has no value.
    if (!(in.temperature > 0))
        return "Water properties need a temperature above 0 F.";
    if (!(in.pressure > 0))
        return "Water properties need a pressure above 0 psia.";
    if (!(in.salinity >= 0 && in.salinity < 100))
        return "Water salinity must be 0 to 100 % NaCl.";
    return std::nullopt;
}

WaterProperties waterProperties(const WaterInput& in) {
    const double t = in.temperature;
    const double p = in.pressure;
    const double s = in.salinity;
    WaterProperties w;
    w.fvf = formationVolumeFactor(t, p);
    w.solutionGas = std::max(0.0, solutionGas(t, p, s));
    w.compressibility = compressibility(t, p, s);
    w.viscosity = viscosity(t, p, s);
    w.density = divide(standardDensity(s), w.fvf);
    // The data behind each correlation, as McCain and Osif give it.
    noteRange(w.rangeNotes, t <= 260 && p <= 5000,
              "Water FVF: McCain's data reach 260 F and 5000 psia");
    noteRange(w.rangeNotes, t >= 100 && t <= 400 && s <= 26,
              "Water viscosity: McCain's data cover 100-400 F and up to 26 % NaCl");
    noteRange(w.rangeNotes, t >= 200 && t <= 270 && p >= 1000 && p <= 20000,
              "Water compressibility: Osif's data cover 200-270 F and 1000-20000 psig");
    return w;
}

} // namespace zorvekan
