// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "models/dimensionless_well.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// Nonlinear regression of a well model on a whole test: weighted least squares on the
// measured pressures (m(p) for gas analysed in pseudopressure) through the test's rate
// history (TestHistory), solved by Ceres (Levenberg-Marquardt, bounds, numeric derivatives).
// Parameters are searched in a form that keeps them physical: ln k, ln C, ln xf, ln re,
// ln omega, ln lambda, the skin through a logistic map onto its range, and the initial
// pressure pi (p* of an infinite-acting shut-in test) as it is.

// A parameter of the fit: one of the model's, or the initial pressure.
inline constexpr int kInitialPressure = kModelParameterCount;
inline constexpr int kFitParameterCount = kModelParameterCount + 1;
using FitValues = std::array<std::optional<double>, kFitParameterCount>;

// The most iterations a fit takes before it gives up as not converging.
inline constexpr int kMaxFitIterations = 200;

struct FitRequest {
    WellModelKind model = WellModelKind::Radial;
    // Test times (hours, as TestTime) of the points used; the whole test when empty.
    std::optional<double> windowStart, windowEnd;
    // Where the search starts; a parameter not given starts from the semilog and storage
    // results of the state (Permeability, SkinFactor, WellboreStorage, FractureHalfLength,
    // DrainageRadius) or, without them, from the data: k from the late derivative level,
    // C from the first point on the unit slope, pi from the best level for the others.
    FitValues start;
    // Parameters held at a value instead of fitted.
    FitValues fixed;
    // Weight of the log derivative beside the pressures: each prepared derivative point in the
    // window adds the residual W D ln(D_model / D), in the unit of the pressures. 0: none.
    double derivativeWeight = 0;
    // Iterations after which the fit gives up as not converging.
    int maxIterations = kMaxFitIterations;
};

struct FitResult {
    WellModelKind model = WellModelKind::Radial;
    std::array<double, kFitParameterCount> value{};
    // 95 % half-intervals: t(0.975, n - p) sigma sqrt(diag covariance) by the delta method from
    // the searched form, sigma^2 = sum of squares / (n - p); empty when the covariance is
    // singular (parameters the data cannot tell apart).
    std::array<std::optional<double>, kFitParameterCount> halfInterval{};
    std::array<bool, kFitParameterCount> fixed{};
    // Ended on the bound of its search range: the data do not hold it there (a boundary or a
    // fracture the test does not see).
    std::array<bool, kFitParameterCount> atLimit{};
    double rmsMisfit = 0; // psi, or 1E6 psi^2/cp for gas in pseudopressure
    int pointsUsed = 0;
    int iterations = 0;
    std::vector<std::string> lines;
};

// What the fit says besides its result.
struct FitOutcome {
    std::optional<FitResult> result; // empty when the fit did not converge or was cancelled
    std::string message;             // why, when empty
    bool cancelled = false;
};

// Called after every iteration with its number; returning false cancels the fit.
using FitProgress = std::function<bool(int iteration)>;

// Fits the requested model to the prepared test (gas in pseudopressure needs its m(p) computed).
// A test the model cannot be fitted to (no rates, a property at 0, fewer points than
// parameters, a start outside the model's domain) is a RuntimeError.
FitOutcome fitWellModel(const AnalysisState& s, const FitRequest& request,
                        const FitProgress& progress = {});

// The fit's result lines, as the type-curve screen and the command line print them:
//   "Regression: <model>", one line per parameter with its 95 % interval
//   ("Permeability = 11.70 md. (± 0.31)", "(fixed)" for a held one), "RMS Misfit =" and
//   "Points Used =".
std::vector<std::string> fitLines(const AnalysisState& s, const FitResult& r);

// The model's pressure (or m(p)) at test times t (hours, as TestTime).
std::vector<double> fittedPressures(const AnalysisState& s, const FitResult& r,
                                    const std::vector<double>& times);

// After a fit: writes Permeability, SkinFactor, WellboreStorage (and FractureHalfLength for
// a fracture) and the fitted curve (FittedTime, FittedPressure: 200 times spaced evenly in
// log time over the test, with the test's fingerprint) into the state.
void applyFit(AnalysisState& s, const FitResult& r);

// The model's caption: "Radial Homogeneous", "Radial, Closed Circle", "Fracture, Infinite
// Conductivity", "Fracture, Uniform Flux", "Dual Porosity, PSS", "Dual Porosity, Transient".
std::string modelCaption(WellModelKind kind);

} // namespace zorvekan
