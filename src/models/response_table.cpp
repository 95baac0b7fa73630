// SPDX-License-Identifier: MIT
#include "models/response_table.h"

#include "core/runtime_error.h"

#include <cmath>
#include <numbers>
#include <string>

namespace zorvekan {

namespace {

constexpr int kGuardNodes = 3;

} // namespace

ResponseTable::ResponseTable(const DimensionlessWell& well, double tFirst, double tLast)
    : m_well(well), m_first(tFirst), m_last(tLast) {
    if (!(tFirst > 0 && tLast > tFirst && std::isfinite(tLast)))
        throw RuntimeError(Fault::InvalidArgument, "a response table needs 0 < T1 < T2, not " +
                                                       std::to_string(tFirst) + " to " +
                                                       std::to_string(tLast));
    m_step = std::numbers::ln10 / kNodesPerDecade;
    m_lnStart = std::log(tFirst) - kGuardNodes * m_step;
    const auto inner = static_cast<std::size_t>(std::ceil(std::log(tLast / tFirst) / m_step));
    const std::size_t n = inner + 2 * kGuardNodes + 1;
    m_value.resize(n);
    for (std::size_t i = 0; i < n; ++i) {
        const double pd = m_well.pressure(std::exp(m_lnStart + static_cast<double>(i) * m_step));
        if (!(pd > 0) || !std::isfinite(pd))
            throw RuntimeError(Fault::InvalidArgument,
                               "the model's pD is not a positive number at T = " +
                                   std::to_string(std::exp(m_lnStart + double(i) * m_step)));
        m_value[i] = std::log(pd);
    }
    // Natural spline on a uniform grid: M(i-1) + 4 M(i) + M(i+1) = 6 (y(i+1) - 2 y(i) + y(i-1))
    // / h^2, M = 0 at both ends; Thomas algorithm.
    m_curvature.assign(n, 0.0);
    if (n < 3)
        return;
    std::vector<double> diagonal(n, 4.0), rhs(n, 0.0);
    for (std::size_t i = 1; i + 1 < n; ++i)
        rhs[i] = 6.0 * (m_value[i + 1] - 2.0 * m_value[i] + m_value[i - 1]) / (m_step * m_step);
    for (std::size_t i = 2; i + 1 < n; ++i) {
        const double factor = 1.0 / diagonal[i - 1];
        diagonal[i] -= factor;
        rhs[i] -= factor * rhs[i - 1];
    }
    for (std::size_t i = n - 2; i >= 1; --i) {
        m_curvature[i] = (rhs[i] - m_curvature[i + 1]) / diagonal[i];
        if (i == 1)
            break;
    }
}

double ResponseTable::pressure(double t) const {
    if (!covers(t))
        return m_well.pressure(t);
    const double x = (std::log(t) - m_lnStart) / m_step;
    auto i = static_cast<std::size_t>(x);
    if (i + 1 >= m_value.size())
        i = m_value.size() - 2;
    const double b = x - static_cast<double>(i);
    const double a = 1.0 - b;
    const double h2 = m_step * m_step / 6.0;
    const double y = a * m_value[i] + b * m_value[i + 1] +
                     h2 * ((a * a * a - a) * m_curvature[i] + (b * b * b - b) * m_curvature[i + 1]);
    return std::exp(y);
}

const ResponseTable& ResponseTables::covering(const DimensionlessWell& well, double tFirst,
                                              double tLast) {
    for (auto it = m_kept.begin(); it != m_kept.end(); ++it)
        if (it->well() == well && it->covers(tFirst) && it->covers(tLast)) {
            if (it != m_kept.begin()) {
                ResponseTable found = std::move(*it);
                m_kept.erase(it);
                m_kept.push_front(std::move(found));
            }
            return m_kept.front();
        }
    m_kept.emplace_front(well, tFirst / 10.0, tLast * 10.0);
    if (m_kept.size() > kKept)
        m_kept.pop_back();
    return m_kept.front();
}

} // namespace zorvekan
