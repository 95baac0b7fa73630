// SPDX-License-Identifier: MIT
// Uniform-flux vertical fracture in a closed square (Gringarten-Ramey-Raghavan), as the
// product of two 1-D slab solutions integrated in time.
#include "models/well_models.h"

#include "core/runtime_error.h"

#include <array>
#include <cmath>
#include <deque>
#include <memory>
#include <mutex>
#include <numbers>
#include <string>
#include <vector>

namespace zorvekan {

namespace {

using std::numbers::pi;

constexpr int kImages = 8;            // image pairs; the next one is below e^-49 for tau <= a^2
constexpr int kEigenTerms = 40;       // eigenfunctions; ample for tau >= a^2
constexpr double kLnTauStart = -20.0; // the image excess is below 1e-300 before e^-20
constexpr double kPanelWidth = 0.25;  // in ln tau, one 8-point Gauss-Legendre rule each

constexpr std::array<double, 4> kGaussNodes = {0.1834346424956498, 0.5255324099163290,
                                               0.7966664774136267, 0.9602898564975363};
constexpr std::array<double, 4> kGaussWeights = {0.3626837833783620, 0.3137066458778873,
                                                 0.2223810344533745, 0.1012285362903763};

// E1(w) = -Ei(-w).
double exponentialIntegralE1(double w) {
    return -std::expint(-w);
}

// Unit-strength strip source of half-length 1 seen at distance d along the fracture axis:
// S(d) = 1/4 [erf((d+1)/(2 sqrt tau)) - erf((d-1)/(2 sqrt tau))], taken with erfc when both
// arguments share a sign, where the erf difference would cancel.
double stripSource(double d, double twoRootTau) {
    if (d - 1.0 > 0.0)
        return 0.25 * (std::erfc((d - 1.0) / twoRootTau) - std::erfc((d + 1.0) / twoRootTau));
    if (d + 1.0 < 0.0)
        return 0.25 * (std::erfc(-(d + 1.0) / twoRootTau) - std::erfc(-(d - 1.0) / twoRootTau));
    return 0.25 * (std::erf((d + 1.0) / twoRootTau) - std::erf((d - 1.0) / twoRootTau));
}

// A slab factor split into its own term (the infinite reservoir) and the image remainder,
// so the effect of the boundaries is computed without cancellation.
struct SlabFactor {
    double own;
    double images;
    double total() const { return own + images; }
};

SlabFactor alongFractureImages(double a, double x0, double tau) {
    const double twoRootTau = 2.0 * std::sqrt(tau);
    double images = 0.0;
    for (int k = kImages; k >= 1; --k)
        images +=
            stripSource(x0 - 2.0 * k * a, twoRootTau) + stripSource(x0 + 2.0 * k * a, twoRootTau);
    return {stripSource(x0, twoRootTau), images};
}

SlabFactor acrossFractureImages(double a, double tau) {
    const double own = 1.0 / (2.0 * std::sqrt(pi * tau));
    double images = 0.0;
    for (int k = kImages; k >= 1; --k)
        images += 2.0 * std::exp(-double(k) * k * a * a / tau);
    return {own, own * images};
}

// A_n = 2 (a/(n pi)) sin(n pi/a) cos(n pi x0/a): the strip source's eigen coefficients.
double stripCoefficient(double a, double x0, int n) {
    const double npi = n * pi;
    return 2.0 * (a / npi) * std::sin(npi / a) * std::cos(npi * x0 / a);
}

// X(x0, tau) Y(0, tau) from the eigenfunction series, for tau >= a^2.
double eigenProduct(double a, double x0, double tau) {
    const double alpha = pi * pi / (a * a);
    double x = 1.0;
    double y = 1.0;
    for (int n = 1; n <= kEigenTerms; ++n) {
        const double e = std::exp(-alpha * n * n * tau);
        x += e * stripCoefficient(a, x0, n);
        y += 2.0 * e;
    }
    return x * y / (4.0 * a * a);
}

// Infinite reservoir, closed form:
//   pD = (sqrt(pi t)/2) [erf((1-x0)/(2 sqrt t)) + erf((1+x0)/(2 sqrt t))]
//        + ((1-x0)/4) E1((1-x0)^2/(4t)) + ((1+x0)/4) E1((1+x0)^2/(4t))
//   t pD' = (sqrt(pi t)/4) [erf((1-x0)/(2 sqrt t)) + erf((1+x0)/(2 sqrt t))]
WellResponse infiniteResponse(double x0, double t) {
    const double twoRootT = 2.0 * std::sqrt(t);
    const double erfSum = std::erf((1.0 - x0) / twoRootT) + std::erf((1.0 + x0) / twoRootT);
    const double linear = 0.5 * std::sqrt(pi * t) * erfSum;
    const double radial =
        0.25 * (1.0 - x0) * exponentialIntegralE1((1.0 - x0) * (1.0 - x0) / (4.0 * t)) +
        0.25 * (1.0 + x0) * exponentialIntegralE1((1.0 + x0) * (1.0 + x0) / (4.0 * t));
    return {linear + radial, 0.5 * linear};
}

// The square for one (a, x0). The early-time boundary effect
//   2 pi Int_0^t [g - g_inf] dtau,  g - g_inf = X0 Yr + Xr Y0 + Xr Yr
// is integrated once, panel by panel in ln tau up to ln a^2, so a call only adds the
// part of one panel.
class ClosedSquare {
public:
    ClosedSquare(double a, double x0) : m_a(a), m_x0(x0), m_lnEnd(2.0 * std::log(a)) {
        m_cumulative.push_back(0.0);
        for (double w = kLnTauStart; w + kPanelWidth <= m_lnEnd; w += kPanelWidth)
            m_cumulative.push_back(m_cumulative.back() + panel(w, w + kPanelWidth));
        m_excessAtEnd = excessTo(m_lnEnd);
        m_pressureAtEnd = infiniteResponse(x0, a * a).pressure + m_excessAtEnd;
    }

    double a() const { return m_a; }
    double x0() const { return m_x0; }

    WellResponse response(double t) const {
        if (t <= m_a * m_a) {
            const WellResponse inf = infiniteResponse(m_x0, t);
            const SlabFactor x = alongFractureImages(m_a, m_x0, t);
            const SlabFactor y = acrossFractureImages(m_a, t);
            return {inf.pressure + excessTo(std::log(t)), 2.0 * pi * t * x.total() * y.total()};
        }
        return {m_pressureAtEnd + latePressure(t), 2.0 * pi * t * eigenProduct(m_a, m_x0, t)};
    }

private:
    // tau (g - g_inf) at tau = e^w, times 2 pi: the integrand in ln tau.
    double excessIntegrand(double w) const {
        const double tau = std::exp(w);
        const SlabFactor x = alongFractureImages(m_a, m_x0, tau);
        const SlabFactor y = acrossFractureImages(m_a, tau);
        return 2.0 * pi * tau * (x.own * y.images + x.images * y.own + x.images * y.images);
    }

    double panel(double w0, double w1) const {
        const double mid = 0.5 * (w0 + w1);
        const double half = 0.5 * (w1 - w0);
        double sum = 0.0;
        for (std::size_t i = 0; i < kGaussNodes.size(); ++i)
            sum += kGaussWeights[i] * (excessIntegrand(mid - half * kGaussNodes[i]) +
                                       excessIntegrand(mid + half * kGaussNodes[i]));
        return half * sum;
    }

    double excessTo(double lnT) const {
        if (lnT <= kLnTauStart)
            return 0.0;
        const auto whole = std::min(static_cast<std::size_t>((lnT - kLnTauStart) / kPanelWidth),
                                    m_cumulative.size() - 1);
        const double w0 = kLnTauStart + static_cast<double>(whole) * kPanelWidth;
        return m_cumulative[whole] + (lnT > w0 ? panel(w0, lnT) : 0.0);
    }

    // 2 pi Int_{a^2}^t X Y dtau term by term in the eigenfunction form, with
    // E(c) = (e^{-c t1} - e^{-c t}) / c, t1 = a^2, alpha = pi^2/a^2:
    //   (1/(4a^2)) [(t - t1) + Sum A_n E(alpha n^2) + 2 Sum E(alpha m^2)
    //               + 2 Sum Sum A_n E(alpha (n^2 + m^2))]
    double latePressure(double t) const {
        const double t1 = m_a * m_a;
        const double alpha = pi * pi / t1;
        const auto e = [&](double c) { return (std::exp(-c * t1) - std::exp(-c * t)) / c; };
        double sum = t - t1;
        for (int n = 1; n <= kEigenTerms; ++n) {
            const double an = stripCoefficient(m_a, m_x0, n);
            sum += an * e(alpha * n * n) + 2.0 * e(alpha * n * n);
            for (int m = 1; m <= kEigenTerms && (n * n + m * m) * pi * pi < 745.0; ++m)
                sum += 2.0 * an * e(alpha * (n * n + m * m));
        }
        return 2.0 * pi * sum / (4.0 * t1);
    }

    double m_a;
    double m_x0;
    double m_lnEnd;
    std::vector<double> m_cumulative; // boundary effect at ln tau = -20 + 0.25 i
    double m_excessAtEnd = 0.0;
    double m_pressureAtEnd = 0.0;
};

// The last few squares asked for, so a caller sweeping time on one curve integrates the
// early-time images once.
std::shared_ptr<const ClosedSquare> closedSquare(double a, double x0) {
    static std::mutex mutex;
    static std::deque<std::shared_ptr<const ClosedSquare>> recent;
    constexpr std::size_t kKept = 32;
    const std::lock_guard lock(mutex);
    for (const auto& s : recent)
        if (s->a() == a && s->x0() == x0)
            return s;
    auto square = std::make_shared<const ClosedSquare>(a, x0);
    recent.push_front(square);
    if (recent.size() > kKept)
        recent.pop_back();
    return square;
}

void checkArguments(double a, double t, double x0) {
    if (!(a >= 1.0))
        throw RuntimeError(Fault::InvalidArgument,
                           "xe/xf must be at least 1, not " + std::to_string(a));
    if (!(t > 0.0) || !std::isfinite(t))
        throw RuntimeError(Fault::InvalidArgument,
                           "tDxf must be a positive number, not " + std::to_string(t));
    if (!(x0 >= 0.0 && x0 < 1.0))
        throw RuntimeError(Fault::InvalidArgument,
                           "the point read on the fracture must lie in 0 <= x/xf < 1, not " +
                               std::to_string(x0));
}

} // namespace

WellResponse fractureResponse(double xeOverXf, double tdxf, double x0) {
    checkArguments(xeOverXf, tdxf, x0);
    if (xeOverXf == kInfiniteReservoir)
        return infiniteResponse(x0, tdxf);
    return closedSquare(xeOverXf, x0)->response(tdxf);
}

double fracturePressure(double xeOverXf, double tdxf, double x0) {
    return fractureResponse(xeOverXf, tdxf, x0).pressure;
}

double fractureDerivative(double xeOverXf, double tdxf, double x0) {
    return fractureResponse(xeOverXf, tdxf, x0).derivative;
}

} // namespace zorvekan
