// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <optional>
#include <span>
#include <string_view>

namespace zorvekan {

// The well and reservoir models that are fitted to a whole test. Each is a well with wellbore
// storage and skin producing at a constant rate from time 0; everything a model says is its
// dimensionless drawdown pD(T) in the one time group all of them share,
//   T = tD / CD = (0.0002637 k t / (phi mu ct rw^2)) / (0.8936 C / (phi ct h rw^2))
//     = 0.000295 k h t / (mu C)        (k md, h ft, t hours, mu cp, C bbl/psi),
// with pD = k h dp / (141.2 q B mu). A model is its parameter vector (the engineer's
// units), the bounds of each parameter, and pD(T).
enum class WellModelKind {
    Radial,           // homogeneous, infinite-acting
    RadialClosed,     // homogeneous, closed circle of radius re
    FractureInfinite, // vertical fracture of half-length xf, infinite conductivity
    FractureUniform,  // vertical fracture of half-length xf, uniform flux
    DualPss,          // double porosity, pseudo-steady interporosity flow
    DualTransient,    // double porosity, transient interporosity flow (slab matrix)
};
inline constexpr std::array<WellModelKind, 6> kWellModelKinds = {
    WellModelKind::Radial,          WellModelKind::RadialClosed, WellModelKind::FractureInfinite,
    WellModelKind::FractureUniform, WellModelKind::DualPss,      WellModelKind::DualTransient};

// The parameters of the models: k md, skin, C bbl/psi, xf ft, re ft, omega, lambda.
enum class ModelParameter { Permeability, Skin, Storage, HalfLength, OuterRadius, Omega, Lambda };
inline constexpr int kModelParameterCount = 7;

// Values indexed by ModelParameter; those a model does not have are ignored.
using ParameterValues = std::array<double, kModelParameterCount>;
inline double& at(ParameterValues& v, ModelParameter p) {
    return v[static_cast<std::size_t>(p)];
}
inline double at(const ParameterValues& v, ModelParameter p) {
    return v[static_cast<std::size_t>(p)];
}

// Where a parameter may go. Logarithmic parameters are searched as ln p; the skin, which may
// be negative, through the logistic map of the real line onto (lower, upper).
struct ParameterRange {
    double lower, upper;
    bool logarithmic;
};

std::span<const ModelParameter> modelParameters(WellModelKind kind);
bool hasParameter(WellModelKind kind, ModelParameter p);
// Skin of the fracture models is the fracture-face skin and cannot be negative.
ParameterRange parameterRange(WellModelKind kind, ModelParameter p);

// Names on the command line: "radial", "radial-closed", "fracture-infinite",
// "fracture-uniform", "dual-pss", "dual-transient"; parameters "k", "s", "C", "xf", "re",
// "omega", "lambda".
std::string_view modelName(WellModelKind kind);
std::optional<WellModelKind> modelNamed(std::string_view name);
std::string_view parameterName(ModelParameter p);
std::optional<ModelParameter> parameterNamed(std::string_view name);

// The formation and the well that make the parameters dimensionless: h ft, phi fraction,
// mu cp, ct 1/psi, rw ft.
struct Formation {
    double thickness, porosity, viscosity, compressibility, wellRadius;
};

// A model at one parameter vector, in dimensionless form. Its Laplace transform in T (z the
// Laplace variable of T) is, for every model,
//   pbar(z) = 1 / (z (z + y(u))),   u = z / Cs,
// the well with storage Cs draining a sandface of admittance y(u) = 1 / (u pbar_sf(u)), u the
// Laplace variable of tD on the model's reference length (Agarwal, Al-Hussainy and Ramey,
// SPEJ 1970). Radial and double-porosity models use the effective-radius form rwa = rw e^-s
// (Cs = CD e^2s, the skin folded into the radius, as the type-curve library does); the
// fractures carry the fracture-face skin in the sandface (Cs = CDf on xf).
struct DimensionlessWell {
    WellModelKind kind = WellModelKind::Radial;
    double storage = 1;     // Cs: CD e^2s, or CDf = 0.8936 C / (phi ct h xf^2) for fractures
    double skin = 0;        // fracture-face skin (fractures only)
    double outerRadius = 0; // re e^s / rw (closed circle only)
    double omega = 1;       // storativity ratio (double porosity only)
    double lambda = 0;      // lambda e^-2s (double porosity only)

    bool operator==(const DimensionlessWell&) const = default;

    // pbar(z), z > 0; arguments outside a model's domain are Fault::InvalidArgument.
    double laplace(double z) const;
    // pD(T) for T > 0 by Gaver-Stehfest (about 1e-5 relative, 20 microseconds).
    double pressure(double t) const;
};

// The dimensionless well of a parameter vector:
//   CD = 0.8936 C / (phi ct h rw^2), Cs = CD e^2s, re e^s / rw, lambda e^-2s;
//   fractures: Cs = 0.8936 C / (phi ct h xf^2), skin s.
DimensionlessWell dimensionlessWell(WellModelKind kind, const Formation& f,
                                    const ParameterValues& v);

// T per hour: 0.0002637 k / (phi mu ct rw^2) / CD = 0.000295 k h / (mu C).
double timeGroupPerHour(const Formation& f, double permeability, double storage);

// Int_0^x K0(t) dt: the strip source of the fracture models. Power series below x = 2; above,
// pi/2 - Int_x^inf K0 with Int_x^inf K0(t) dt = Int_0^inf e^(-x cosh w) / cosh w dw by the
// trapezoid rule (exact to double precision: the integrand is analytic in a strip and falls
// off doubly exponentially).
double integralOfK0(double x);

} // namespace zorvekan
