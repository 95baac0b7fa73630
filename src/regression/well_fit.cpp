// SPDX-License-Identifier: MIT
// The fit itself: the residuals of a well model through the test's rate history, solved with
// Ceres; the start of the search and the confidence intervals from Ceres' covariance.
#include "regression/well_fit.h"

#include "core/analysis_data.h"
#include "core/runtime_error.h"
#include "models/response_table.h"
#include "regression/test_history.h"

#include <ceres/covariance.h>
#include <ceres/dynamic_numeric_diff_cost_function.h>
#include <ceres/iteration_callback.h>
#include <ceres/problem.h>
#include <ceres/solver.h>
#include <glog/logging.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numeric>

namespace zorvekan {

namespace {

using P = ModelParameter;

// ---- the searched form of each parameter ----

enum class Form { Logarithmic, Logistic, Plain };

struct Searched {
    int parameter; // ModelParameter or kInitialPressure
    Form form;
    double lower = 0, upper = 0; // physical range
};

// A searched value that ended on (or within a hair of) its bound: the data did not hold it.
bool atLimit(const Searched& p, double theta) {
    switch (p.form) {
    case Form::Logarithmic:
        return theta <= std::log(p.lower) + 1e-3 || theta >= std::log(p.upper) - 1e-3;
    case Form::Logistic:
        return std::fabs(theta) >= 29.0;
    case Form::Plain:
        break;
    }
    return false;
}

double toPhysical(const Searched& p, double theta) {
    switch (p.form) {
    case Form::Logarithmic:
        return std::exp(theta);
    case Form::Logistic:
        return p.lower + (p.upper - p.lower) / (1.0 + std::exp(-theta));
    case Form::Plain:
        break;
    }
    return theta;
}

double toSearched(const Searched& p, double value) {
    switch (p.form) {
    case Form::Logarithmic:
        return std::log(value);
    case Form::Logistic:
        return std::log((value - p.lower) / (p.upper - value));
    case Form::Plain:
        break;
    }
    return value;
}

// d(physical) / d(searched), for carrying the covariance over (delta method).
double slope(const Searched& p, double value) {
    switch (p.form) {
    case Form::Logarithmic:
        return value;
    case Form::Logistic:
        return (value - p.lower) * (p.upper - value) / (p.upper - p.lower);
    case Form::Plain:
        break;
    }
    return 1.0;
}

// A start strictly inside the range, where the searched form is finite.
double inside(const Searched& p, double value) {
    if (p.form == Form::Plain)
        return value;
    const double margin = p.form == Form::Logistic ? 1e-3 * (p.upper - p.lower) : 0.0;
    const double lo = p.form == Form::Logarithmic ? p.lower * 1.001 : p.lower + margin;
    const double hi = p.form == Form::Logarithmic ? p.upper / 1.001 : p.upper - margin;
    return std::clamp(value, lo, hi);
}

std::vector<Searched> searchedParameters(WellModelKind model) {
    std::vector<Searched> out;
    for (ModelParameter p : modelParameters(model)) {
        const ParameterRange r = parameterRange(model, p);
        out.push_back({static_cast<int>(p), r.logarithmic ? Form::Logarithmic : Form::Logistic,
                       r.lower, r.upper});
    }
    out.push_back({kInitialPressure, Form::Plain});
    return out;
}

// ---- the data the fit works on ----

struct DerivativePoint {
    double logTime; // of the prepared time function
    double value;   // the data's derivative, in the unit of the pressures
};

struct FitData {
    const AnalysisState* state = nullptr;
    WellModelKind model = WellModelKind::Radial;
    TestHistory history;
    std::vector<int> used;        // history points (all test points, in order) fitted
    std::vector<double> observed; // their pressures or m(p)
    std::vector<double> allTimes; // test time of every history point
    AnalysisState prepared;       // the data prepared, for the derivative
    std::vector<DerivativePoint> derivative;
    double derivativeWeight = 0;
    std::vector<Searched> searched;

    explicit FitData(const AnalysisState& s) : history(s) {}
};

double measured(const AnalysisState& s, int i) {
    return usesPseudopressure(s) ? s.TestPseudoPressure[i] : s.TestPressure[i];
}

bool inWindow(const FitRequest& r, double t) {
    return (!r.windowStart || t >= *r.windowStart) && (!r.windowEnd || t <= *r.windowEnd);
}

// The model's pressure change a(k) Sum dq pD at every history point.
bool modelChanges(const FitData& d, const ParameterValues& v, ResponseTables& tables,
                  std::vector<double>& out) {
    const Formation& f = d.history.formation();
    const DimensionlessWell well = dimensionlessWell(d.model, f, v);
    const double perHour = timeGroupPerHour(f, at(v, P::Permeability), at(v, P::Storage));
    if (!(perHour > 0) || !std::isfinite(perHour))
        return false;
    const ResponseTable& table = tables.covering(well, perHour * d.history.shortestElapsed(),
                                                 perHour * d.history.longestElapsed());
    d.history.superpose([&table](double t) { return table.pressure(t); }, perHour, out);
    const double a = d.history.pressurePerRate(at(v, P::Permeability));
    for (double& x : out)
        x *= a;
    return true;
}

// The residuals: model minus measured pressure of each point used, then the weighted log
// derivative residuals.
class Residuals {
public:
    explicit Residuals(const FitData& d) : m_d(d) {}

    bool operator()(double const* const* theta, double* residuals) const {
        try {
            ParameterValues v{};
            double pi = 0;
            for (std::size_t k = 0; k < m_d.searched.size(); ++k) {
                const double value = toPhysical(m_d.searched[k], theta[k][0]);
                if (m_d.searched[k].parameter == kInitialPressure)
                    pi = value;
                else
                    v[static_cast<std::size_t>(m_d.searched[k].parameter)] = value;
            }
            if (!modelChanges(m_d, v, m_tables, m_change))
                return false;
            std::size_t r = 0;
            for (std::size_t k = 0; k < m_d.used.size(); ++k)
                residuals[r++] =
                    pi - m_change[static_cast<std::size_t>(m_d.used[k])] - m_d.observed[k];
            if (!m_d.derivative.empty() && !derivativeResiduals(pi, residuals + r))
                return false;
            for (std::size_t k = 0; k < count(); ++k)
                if (!std::isfinite(residuals[k]))
                    return false;
            return true;
        } catch (const RuntimeError&) {
            return false; // a step outside a model's domain: Ceres tries a shorter one
        }
    }

    std::size_t count() const { return m_d.used.size() + m_d.derivative.size(); }

private:
    // The model's pressures prepared as the data are, their derivative read at the data's
    // derivative points (a point where the model has none counts as a decade off).
    bool derivativeResiduals(double pi, double* out) const {
        AnalysisState m = m_d.prepared;
        for (std::size_t i = 0; i < m_change.size(); ++i) {
            const double p = pi - m_change[i];
            (usesPseudopressure(m) ? m.TestPseudoPressure : m.TestPressure)[int(i) + 1] = p;
        }
        ComputeTimeFunctions(m);
        int k = 1;
        for (std::size_t j = 0; j < m_d.derivative.size(); ++j) {
            const DerivativePoint& d = m_d.derivative[j];
            while (k <= m.DerivativeCount && m.DerivativeLogTime[k] < d.logTime)
                ++k;
            const bool found = k <= m.DerivativeCount && m.DerivativeLogTime[k] == d.logTime;
            const double ratio = found ? std::pow(10.0, m.LogDerivative[k]) / d.value : 10.0;
            out[j] = m_d.derivativeWeight * d.value * std::log(ratio);
        }
        return true;
    }

    const FitData& m_d;
    mutable ResponseTables m_tables;
    mutable std::vector<double> m_change;
};

// ---- the start ----

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0.0 : v[v.size() / 2];
}

struct DataEstimates {
    double k = 10, c = 0.01; // md, bbl/psi
    double omega = 0.1;      // from the depth of the derivative's trough
    double troughTime = 0;   // hours, 0 without a trough
};

// Warren-Root derivative at its trough, relative to the radial level 0.5:
// 1 + omega^(1 / (1 - omega)) - omega^(omega / (1 - omega)).
double troughDepth(double omega) {
    return 1.0 + std::pow(omega, 1.0 / (1.0 - omega)) - std::pow(omega, omega / (1.0 - omega));
}

// Radial flow: the derivative is 0.5 in pD, so k = 0.5 a(1) q / D over the last third of the
// derivative points; the unit slope of storage gives C = q B t / (24 dp) at the first point. A
// trough after the storage hump, below 0.9 of the radial level, gives omega by its depth
// (bisection on troughDepth). Prepared changes of a stepped drawdown are per unit rate change.
DataEstimates estimatesFromData(const FitData& d) {
    DataEstimates e;
    const AnalysisState& p = d.prepared;
    const bool perUnitRate = p.ProducingTime == 0.0 && p.RateCount >= 2;
    const double q = perUnitRate ? 1.0 : std::fabs(d.history.lastRate());
    const int n = p.DerivativeCount;
    std::vector<double> late;
    for (int i = std::max(1, n - n / 3); i <= n; ++i)
        late.push_back(std::pow(10.0, p.LogDerivative[i]));
    const double level = median(late);
    if (level > 0)
        e.k = 0.5 * std::fabs(d.history.pressurePerRate(1.0)) * q / level;
    if (!usesPseudopressure(p) && p.TestPointCount >= 1 && p.DeltaP[1] > 0) {
        const double fvf = p.FluidFlags == kGasWater ? 1.0 : p.OilFvf;
        e.c = q * fvf * p.TimeFunction[1] / (24.0 * p.DeltaP[1]);
    }
    int peak = 1, trough = 0;
    for (int i = 1; i <= n / 2; ++i)
        if (p.LogDerivative[i] > p.LogDerivative[peak])
            peak = i;
    for (int i = peak; i <= n; ++i)
        if (trough == 0 || p.LogDerivative[i] < p.LogDerivative[trough])
            trough = i;
    const double depth =
        trough > 0 && level > 0 ? std::pow(10.0, p.LogDerivative[trough]) / level : 1.0;
    if (depth < 0.9) {
        double lo = std::log(1e-5), hi = std::log(0.9);
        for (int pass = 0; pass < 60; ++pass) {
            const double mid = 0.5 * (lo + hi);
            (troughDepth(std::exp(mid)) < depth ? lo : hi) = mid;
        }
        e.omega = std::exp(0.5 * (lo + hi));
        e.troughTime = std::pow(10.0, p.DerivativeLogTime[trough]);
    }
    return e;
}

std::array<double, kFitParameterCount> startValues(const FitData& d, const FitRequest& r) {
    const AnalysisState& s = *d.state;
    const DataEstimates e = estimatesFromData(d);
    std::array<double, kFitParameterCount> v{};
    const auto set = [&](ModelParameter p, double value) {
        v[static_cast<std::size_t>(p)] = value;
    };
    set(P::Permeability, s.Permeability > 0 ? s.Permeability : e.k);
    set(P::Skin, s.Permeability > 0 ? s.SkinFactor : 0.0);
    set(P::Storage, s.WellboreStorage > 0 ? s.WellboreStorage : e.c);
    set(P::HalfLength, s.FractureHalfLength > 0 ? s.FractureHalfLength : 100.0);
    set(P::OuterRadius, s.PssDrainageRadius > 0 ? s.PssDrainageRadius
                        : s.DrainageRadius > 0  ? s.DrainageRadius
                                                : 1000.0);
    set(P::Omega, e.omega);
    // The trough lies at lambda tD = omega ln(1 / omega) (Bourdet et al., 1989).
    const Formation& f = d.history.formation();
    const double tdPerHour =
        0.0002637 * v[static_cast<std::size_t>(P::Permeability)] /
        (f.porosity * f.viscosity * f.compressibility * f.wellRadius * f.wellRadius);
    set(P::Lambda,
        e.troughTime > 0 ? e.omega * std::log(1.0 / e.omega) / (tdPerHour * e.troughTime) : 1e-6);
    for (std::size_t i = 0; i < v.size(); ++i) {
        if (r.start[i])
            v[i] = *r.start[i];
        if (r.fixed[i])
            v[i] = *r.fixed[i];
    }
    for (const Searched& p : d.searched)
        v[static_cast<std::size_t>(p.parameter)] =
            inside(p, v[static_cast<std::size_t>(p.parameter)]);
    return v;
}

// Without a given initial pressure the start takes the level that fits the start model best:
// the mean of measured plus modelled change.
double bestLevel(const FitData& d, const std::array<double, kFitParameterCount>& start) {
    ParameterValues v{};
    std::copy_n(start.begin(), kModelParameterCount, v.begin());
    ResponseTables tables;
    std::vector<double> change;
    if (!modelChanges(d, v, tables, change))
        throw RuntimeError(Fault::InvalidArgument, "the start of the regression is not a model");
    double sum = 0;
    for (std::size_t k = 0; k < d.used.size(); ++k)
        sum += d.observed[k] + change[static_cast<std::size_t>(d.used[k])];
    return sum / static_cast<double>(d.used.size());
}

// ---- progress, intervals ----

// Ceres speaks through glog on stderr (a singular covariance, for one); the fit says what
// matters in its own lines and messages, so only a fatal glog message may still appear.
void quietCeres() {
    static const bool quiet = [] {
        FLAGS_minloglevel = google::GLOG_FATAL;
        return true;
    }();
    (void)quiet;
}

class ProgressCallback : public ceres::IterationCallback {
public:
    explicit ProgressCallback(const FitProgress& progress) : m_progress(progress) {}
    ceres::CallbackReturnType operator()(const ceres::IterationSummary& summary) override {
        if (m_progress && !m_progress(summary.iteration))
            return ceres::SOLVER_ABORT;
        return ceres::SOLVER_CONTINUE;
    }

private:
    const FitProgress& m_progress;
};

// Student's t at 0.975 for nu degrees of freedom (Cornish-Fisher expansion about the normal
// quantile, Abramowitz and Stegun 26.7.5; within 1e-3 from nu = 3).
double studentT975(double nu) {
    const double z = 1.959963985;
    const double z3 = z * z * z, z5 = z3 * z * z, z7 = z5 * z * z, z9 = z7 * z * z;
    return z + (z3 + z) / (4 * nu) + (5 * z5 + 16 * z3 + 3 * z) / (96 * nu * nu) +
           (3 * z7 + 19 * z5 + 17 * z3 - 15 * z) / (384 * nu * nu * nu) +
           (79 * z9 + 776 * z7 + 1482 * z5 - 1920 * z3 - 945 * z) / (92160 * nu * nu * nu * nu);
}

void setUpData(FitData& d, const AnalysisState& s, const FitRequest& r) {
    d.state = &s;
    d.model = r.model;
    d.searched = searchedParameters(r.model);
    d.derivativeWeight = r.derivativeWeight;
    for (int i = 1; i <= s.TestPointCount; ++i) {
        const double t = s.TestTime[i];
        d.allTimes.push_back(t);
        const int index = d.history.addPoint(t);
        if (inWindow(r, t) && t > 0) {
            d.used.push_back(index);
            d.observed.push_back(measured(s, i));
        }
    }
    d.prepared = s;
    ComputeTimeFunctions(d.prepared);
    if (r.derivativeWeight > 0) {
        const AnalysisState& p = d.prepared;
        int i = 1;
        for (int k = 1; k <= p.DerivativeCount; ++k) {
            while (i <= p.TestPointCount && p.LogTime[i] < p.DerivativeLogTime[k])
                ++i;
            if (i <= p.TestPointCount && inWindow(r, s.TestTime[p.SourceIndex[i]]))
                d.derivative.push_back(
                    {p.DerivativeLogTime[k], std::pow(10.0, p.LogDerivative[k])});
        }
    }
}

} // namespace

FitOutcome fitWellModel(const AnalysisState& s, const FitRequest& request,
                        const FitProgress& progress) {
    quietCeres();
    FitData d(s);
    setUpData(d, s, request);
    std::size_t freeCount = 0;
    for (const Searched& p : d.searched)
        freeCount += request.fixed[static_cast<std::size_t>(p.parameter)] ? 0 : 1;
    if (d.used.size() + d.derivative.size() <= freeCount)
        throw RuntimeError(Fault::NoData, "The regression needs more points in its window than "
                                          "the " +
                                              std::to_string(freeCount) + " parameters it fits.");

    std::array<double, kFitParameterCount> start = startValues(d, request);
    if (!request.start[kInitialPressure] && !request.fixed[kInitialPressure])
        start[kInitialPressure] = bestLevel(d, start);
    if (request.fixed[kInitialPressure])
        start[kInitialPressure] = *request.fixed[kInitialPressure];

    // One block of one value per parameter, so that any of them can be held.
    std::vector<double> theta;
    for (const Searched& p : d.searched)
        theta.push_back(toSearched(p, start[static_cast<std::size_t>(p.parameter)]));
    ceres::NumericDiffOptions diff;
    diff.relative_step_size = 1e-4;
    auto* cost = new ceres::DynamicNumericDiffCostFunction<Residuals, ceres::FORWARD>(
        new Residuals(d), ceres::TAKE_OWNERSHIP, diff);
    for (std::size_t k = 0; k < theta.size(); ++k)
        cost->AddParameterBlock(1);
    const auto residualCount = static_cast<int>(d.used.size() + d.derivative.size());
    cost->SetNumResiduals(residualCount);
    ceres::Problem problem;
    std::vector<double*> blocks;
    for (double& t : theta)
        blocks.push_back(&t);
    problem.AddResidualBlock(cost, nullptr, blocks);
    for (std::size_t k = 0; k < theta.size(); ++k) {
        const Searched& p = d.searched[k];
        if (request.fixed[static_cast<std::size_t>(p.parameter)]) {
            problem.SetParameterBlockConstant(blocks[k]);
        } else if (p.form == Form::Logarithmic) {
            problem.SetParameterLowerBound(blocks[k], 0, std::log(p.lower));
            problem.SetParameterUpperBound(blocks[k], 0, std::log(p.upper));
        } else if (p.form == Form::Logistic) {
            problem.SetParameterLowerBound(blocks[k], 0, -30.0);
            problem.SetParameterUpperBound(blocks[k], 0, 30.0);
        }
    }

    ceres::Solver::Options options;
    options.linear_solver_type = ceres::DENSE_QR;
    options.max_num_iterations = request.maxIterations;
    options.function_tolerance = 1e-15;
    options.parameter_tolerance = 1e-15;
    options.gradient_tolerance = 1e-14;
    options.logging_type = ceres::SILENT;
    options.num_threads = 1;
    ProgressCallback callback(progress);
    options.callbacks.push_back(&callback);
    ceres::Solver::Summary summary;
    ceres::Solve(options, &problem, &summary);

    FitOutcome outcome;
    switch (summary.termination_type) {
    case ceres::CONVERGENCE:
        break;
    case ceres::USER_FAILURE:
    case ceres::USER_SUCCESS:
        outcome.cancelled = true;
        outcome.message = "The regression was cancelled; the previous results are kept.";
        return outcome;
    case ceres::NO_CONVERGENCE:
        outcome.message = "The regression did not converge in " +
                          std::to_string(request.maxIterations) +
                          " iterations; the previous results are kept.";
        return outcome;
    default:
        outcome.message =
            "The regression failed (" + summary.message + "); the previous results are kept.";
        return outcome;
    }

    FitResult r;
    r.model = request.model;
    r.pointsUsed = static_cast<int>(d.used.size());
    r.iterations = summary.num_successful_steps + summary.num_unsuccessful_steps;
    for (std::size_t k = 0; k < theta.size(); ++k) {
        const auto index = static_cast<std::size_t>(d.searched[k].parameter);
        r.value[index] = toPhysical(d.searched[k], theta[k]);
        r.fixed[index] = request.fixed[index].has_value();
        r.atLimit[index] = !r.fixed[index] && atLimit(d.searched[k], theta[k]);
    }
    std::vector<double> residuals(static_cast<std::size_t>(residualCount));
    {
        Residuals last(d);
        std::vector<const double*> values(blocks.begin(), blocks.end());
        if (!last(values.data(), residuals.data()))
            throw RuntimeError(Fault::InvalidArgument, "the fitted model cannot be evaluated");
    }
    const double pressureSquares =
        std::inner_product(residuals.begin(), residuals.begin() + static_cast<long>(d.used.size()),
                           residuals.begin(), 0.0);
    r.rmsMisfit = std::sqrt(pressureSquares / static_cast<double>(d.used.size()));

    // Intervals from the covariance of the searched parameters that were free and stayed off
    // their limits (one the data do not see, held at its limit, would make the whole
    // covariance singular).
    std::vector<const double*> free;
    std::vector<std::size_t> freeIndex;
    for (std::size_t k = 0; k < theta.size(); ++k)
        if (const auto index = static_cast<std::size_t>(d.searched[k].parameter);
            !request.fixed[index]) {
            if (r.atLimit[index]) {
                problem.SetParameterBlockConstant(blocks[k]);
                continue;
            }
            free.push_back(blocks[k]);
            freeIndex.push_back(k);
        }
    ceres::Covariance::Options covarianceOptions;
    covarianceOptions.algorithm_type = ceres::DENSE_SVD;
    covarianceOptions.num_threads = 1;
    ceres::Covariance covariance(covarianceOptions);
    std::vector<std::pair<const double*, const double*>> pairs;
    for (const double* b : free)
        pairs.emplace_back(b, b);
    if (!free.empty() && covariance.Compute(pairs, &problem)) {
        const double dof = static_cast<double>(residualCount) - static_cast<double>(free.size());
        const double allSquares =
            std::inner_product(residuals.begin(), residuals.end(), residuals.begin(), 0.0);
        const double sigma = std::sqrt(allSquares / dof);
        const double t = studentT975(dof);
        for (std::size_t j = 0; j < free.size(); ++j) {
            double variance = 0;
            covariance.GetCovarianceBlock(free[j], free[j], &variance);
            const Searched& p = d.searched[freeIndex[j]];
            const auto index = static_cast<std::size_t>(p.parameter);
            if (variance >= 0 && std::isfinite(variance))
                r.halfInterval[index] =
                    t * sigma * std::sqrt(variance) * std::fabs(slope(p, r.value[index]));
        }
    }
    r.lines = fitLines(s, r);
    outcome.result = std::move(r);
    return outcome;
}

} // namespace zorvekan
