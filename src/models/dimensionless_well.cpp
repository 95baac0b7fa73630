// SPDX-License-Identifier: MIT
// The fitted models in Laplace space: sandface admittances of the homogeneous, closed-circle,
// fractured and double-porosity wells, behind wellbore storage.
#include "models/dimensionless_well.h"

#include "core/runtime_error.h"
#include "models/stehfest.h"
#include "models/well_models.h"

#include <cmath>
#include <numbers>
#include <string>

namespace zorvekan {

namespace {

using P = ModelParameter;

constexpr std::array<P, 3> kRadial = {P::Permeability, P::Skin, P::Storage};
constexpr std::array<P, 4> kClosed = {P::Permeability, P::Skin, P::Storage, P::OuterRadius};
constexpr std::array<P, 4> kFracture = {P::Permeability, P::Skin, P::Storage, P::HalfLength};
constexpr std::array<P, 5> kDual = {P::Permeability, P::Skin, P::Storage, P::Omega, P::Lambda};

constexpr std::array<std::string_view, 6> kModelNames = {
    "radial",           "radial-closed", "fracture-infinite",
    "fracture-uniform", "dual-pss",      "dual-transient"};
constexpr std::array<std::string_view, kModelParameterCount> kParameterNames = {
    "k", "s", "C", "xf", "re", "omega", "lambda"};

// Beyond this K0 and K1 underflow; e^-700 also makes the far boundary of a closed circle
// invisible, since its reflection carries K1(q re) / I1(q re) ~ pi e^(-2 q re).
constexpr double kBesselLimit = 350.0;

bool isFracture(WellModelKind kind) {
    return kind == WellModelKind::FractureInfinite || kind == WellModelKind::FractureUniform;
}

// K1(x) / K0(x); beyond x = 500 both underflow, and their asymptotic series (three terms,
// exact there to 1e-11) give the ratio.
double besselKRatio(double x) {
    if (x < 500.0)
        return std::cyl_bessel_k(1.0, x) / std::cyl_bessel_k(0.0, x);
    const double e = 1.0 / (8.0 * x);
    const double k1 = 1.0 + 3.0 * e - 7.5 * e * e + 52.5 * e * e * e;
    const double k0 = 1.0 - e + 4.5 * e * e - 37.5 * e * e * e;
    return k1 / k0;
}

// Infinite homogeneous reservoir, pbar_sf = K0(q) / (u q K1(q)), q = sqrt(u f(u)), with
// f = 1 for the homogeneous reservoir and the interporosity function of a double-porosity one.
double radialAdmittance(double q) {
    return q * besselKRatio(q);
}

// Closed circle of radius reD (van Everdingen and Hurst, Trans. AIME 1949):
//   pbar_sf = [K0(q) + I0(q) R] / (u q [K1(q) - I1(q) R]),  R = K1(q reD) / I1(q reD).
double closedCircleAdmittance(double q, double reD) {
    if (q * (reD - 1.0) > kBesselLimit)
        return radialAdmittance(q);
    const double r = std::cyl_bessel_k(1.0, q * reD) / std::cyl_bessel_i(1.0, q * reD);
    return q * (std::cyl_bessel_k(1.0, q) - std::cyl_bessel_i(1.0, q) * r) /
           (std::cyl_bessel_k(0.0, q) + std::cyl_bessel_i(0.0, q) * r);
}

// Vertical fracture, uniform flux along -1 <= x <= 1 (lengths in xf), pressure read at x0
// (Gringarten, Ramey and Raghavan, SPEJ 1974: x0 = 0.732 gives the infinite-conductivity
// fracture, x0 = 0 the uniform-flux one). The strip source in Laplace space (Ozkan and
// Raghavan, SPEFE 1991) is
//   u pbar_f = [Ki(sqrt(u) (1 - x0)) + Ki(sqrt(u) (1 + x0))] / (2 sqrt(u)),  Ki = Int_0 K0,
// and the fracture-face skin adds s to it (Cinco-Ley and Samaniego, JPT 1981).
double fractureAdmittance(double u, double x0, double skin) {
    const double r = std::sqrt(u);
    const double strip = (integralOfK0(r * (1.0 - x0)) + integralOfK0(r * (1.0 + x0))) / (2.0 * r);
    return 1.0 / (strip + skin);
}

// Interporosity functions f(u) of the double-porosity reservoir, lambda and u on the
// effective radius:
//   pseudo-steady (Warren and Root, SPEJ 1963): (omega (1 - omega) u + lambda) /
//                                               ((1 - omega) u + lambda)
//   transient, slab matrix (de Swaan, SPEJ 1976, in the form of Bourdet and Gringarten,
//   SPE 9293, 1980): omega + sqrt(lambda (1 - omega) / (3u)) tanh(sqrt(3 (1 - omega) u / lambda))
double pseudoSteadyInterporosity(double u, double omega, double lambda) {
    return (omega * (1.0 - omega) * u + lambda) / ((1.0 - omega) * u + lambda);
}

double transientInterporosity(double u, double omega, double lambda) {
    const double a = std::sqrt(3.0 * (1.0 - omega) * u / lambda);
    return omega + std::sqrt(lambda * (1.0 - omega) / (3.0 * u)) * std::tanh(a);
}

[[noreturn]] void fail(const std::string& what) {
    throw RuntimeError(Fault::InvalidArgument, what);
}

// The message is only made for a well that fails: a fit evaluates millions of wells.
void checkWell(const DimensionlessWell& w) {
    if (!(w.storage > 0 && std::isfinite(w.storage)))
        fail("the storage group must be a positive number, not " + std::to_string(w.storage));
    switch (w.kind) {
    case WellModelKind::RadialClosed:
        if (!(w.outerRadius > 1.5 && std::isfinite(w.outerRadius)))
            fail("the drainage radius must lie well outside the effective well radius (re e^s / "
                 "rw = " +
                 std::to_string(w.outerRadius) + ")");
        break;
    case WellModelKind::FractureInfinite:
    case WellModelKind::FractureUniform:
        if (!(w.skin >= 0 && std::isfinite(w.skin)))
            fail("the fracture-face skin cannot be negative, not " + std::to_string(w.skin));
        break;
    case WellModelKind::DualPss:
    case WellModelKind::DualTransient:
        if (!(w.omega > 0 && w.omega <= 1))
            fail("omega must lie in (0, 1], not " + std::to_string(w.omega));
        if (!(w.lambda > 0 && std::isfinite(w.lambda)))
            fail("lambda must be a positive number, not " + std::to_string(w.lambda));
        break;
    case WellModelKind::Radial:
        break;
    }
}

} // namespace

std::span<const ModelParameter> modelParameters(WellModelKind kind) {
    switch (kind) {
    case WellModelKind::Radial:
        return kRadial;
    case WellModelKind::RadialClosed:
        return kClosed;
    case WellModelKind::FractureInfinite:
    case WellModelKind::FractureUniform:
        return kFracture;
    case WellModelKind::DualPss:
    case WellModelKind::DualTransient:
        return kDual;
    }
    return kRadial;
}

bool hasParameter(WellModelKind kind, ModelParameter p) {
    for (ModelParameter q : modelParameters(kind))
        if (q == p)
            return true;
    return false;
}

ParameterRange parameterRange(WellModelKind kind, ModelParameter p) {
    switch (p) {
    case P::Permeability:
        return {1e-4, 1e5, true};
    case P::Skin:
        return isFracture(kind) ? ParameterRange{0.0, 50.0, false}
                                : ParameterRange{-7.0, 50.0, false};
    case P::Storage:
        return {1e-7, 10.0, true};
    case P::HalfLength:
        return {1.0, 1e4, true};
    case P::OuterRadius:
        return {10.0, 1e6, true};
    case P::Omega:
        return {1e-5, 0.999, true};
    case P::Lambda:
        return {1e-12, 1e-2, true};
    }
    return {0, 0, false};
}

std::string_view modelName(WellModelKind kind) {
    return kModelNames[static_cast<std::size_t>(kind)];
}

std::optional<WellModelKind> modelNamed(std::string_view name) {
    for (WellModelKind kind : kWellModelKinds)
        if (modelName(kind) == name)
            return kind;
    return std::nullopt;
}

std::string_view parameterName(ModelParameter p) {
    return kParameterNames[static_cast<std::size_t>(p)];
}

std::optional<ModelParameter> parameterNamed(std::string_view name) {
    for (std::size_t i = 0; i < kParameterNames.size(); ++i)
        if (kParameterNames[i] == name)
            return static_cast<ModelParameter>(i);
    return std::nullopt;
}

double integralOfK0(double x) {
    using std::numbers::egamma;
    using std::numbers::pi;
    if (!(x >= 0 && std::isfinite(x)))
        fail("Int K0 needs x >= 0, not " + std::to_string(x));
    if (x == 0.0)
        return 0.0;
    if (x < 2.0) {
        // Sum_k (x/2)^2k x / ((k!)^2 (2k + 1)) [psi(k + 1) - ln(x/2) + 1/(2k + 1)]
        const double lnHalf = std::log(0.5 * x);
        const double q = 0.25 * x * x;
        double power = x; // (x/2)^2k x / (k!)^2
        double psi = -egamma;
        double sum = 0.0;
        for (int k = 0; k < 60; ++k) {
            if (k > 0) {
                power *= q / (double(k) * k);
                psi += 1.0 / k;
            }
            const double term = power / (2 * k + 1) * (psi - lnHalf + 1.0 / (2 * k + 1));
            sum += term;
            if (std::fabs(term) < 1e-18 * std::fabs(sum))
                break;
        }
        return sum;
    }
    // Trapezoid rule in w with step 0.2 (error about e^(-pi^2 / 0.2)); the terms stop
    // mattering once x (cosh w - 1) exceeds 42, which for x >= 2 is before w = 3.8.
    constexpr double h = 0.2;
    static const std::array<double, 20> coshes = [] {
        std::array<double, 20> c{};
        for (std::size_t j = 0; j < c.size(); ++j)
            c[j] = std::cosh(static_cast<double>(j + 1) * h);
        return c;
    }();
    double tail = 0.5 * std::exp(-x);
    for (const double c : coshes) {
        if (x * (c - 1.0) > 42.0)
            break;
        tail += std::exp(-x * c) / c;
    }
    return 0.5 * pi - h * tail;
}

double DimensionlessWell::laplace(double z) const {
    if (!(z > 0 && std::isfinite(z)))
        fail("the Laplace variable must be positive");
    checkWell(*this);
    const double u = z / storage;
    double y = 0.0;
    switch (kind) {
    case WellModelKind::Radial:
        y = radialAdmittance(std::sqrt(u));
        break;
    case WellModelKind::RadialClosed:
        y = closedCircleAdmittance(std::sqrt(u), outerRadius);
        break;
    case WellModelKind::FractureInfinite:
        y = fractureAdmittance(u, kInfiniteConductivityPoint, skin);
        break;
    case WellModelKind::FractureUniform:
        y = fractureAdmittance(u, 0.0, skin);
        break;
    case WellModelKind::DualPss:
        y = radialAdmittance(std::sqrt(u * pseudoSteadyInterporosity(u, omega, lambda)));
        break;
    case WellModelKind::DualTransient:
        y = radialAdmittance(std::sqrt(u * transientInterporosity(u, omega, lambda)));
        break;
    }
    return 1.0 / (z * (z + y));
}

double DimensionlessWell::pressure(double t) const {
    if (!(t > 0 && std::isfinite(t)))
        fail("tD/CD must be a positive number, not " + std::to_string(t));
    checkWell(*this);
    return stehfestInverse([this](double z) { return laplace(z); }, t);
}

DimensionlessWell dimensionlessWell(WellModelKind kind, const Formation& f,
                                    const ParameterValues& v) {
    const double pore = f.porosity * f.compressibility * f.thickness;
    const double s = at(v, P::Skin);
    DimensionlessWell w;
    w.kind = kind;
    if (isFracture(kind)) {
        const double xf = at(v, P::HalfLength);
        w.storage = 0.8936 * at(v, P::Storage) / (pore * xf * xf);
        w.skin = s;
        return w;
    }
    const double rw = f.wellRadius;
    w.storage = 0.8936 * at(v, P::Storage) / (pore * rw * rw) * std::exp(2.0 * s);
    if (kind == WellModelKind::RadialClosed)
        w.outerRadius = at(v, P::OuterRadius) / rw * std::exp(s);
    if (kind == WellModelKind::DualPss || kind == WellModelKind::DualTransient) {
        w.omega = at(v, P::Omega);
        w.lambda = at(v, P::Lambda) * std::exp(-2.0 * s);
    }
    return w;
}

double timeGroupPerHour(const Formation& f, double permeability, double storage) {
    return 0.0002637 / 0.8936 * permeability * f.thickness / (f.viscosity * storage);
}

} // namespace zorvekan
