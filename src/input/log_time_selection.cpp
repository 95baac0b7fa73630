// SPDX-License-Identifier: MIT
#include "input/log_time_selection.h"

#include <cmath>

namespace zorvekan {

LogTimeSelector::LogTimeSelector(std::size_t n, double lastTime, std::size_t keep)
    : m_n(n), m_keep(keep), m_lnLast(std::log(lastTime)) {}

void LogTimeSelector::aimAtNext(double fromTime) {
    const std::size_t remaining = m_keep - m_kept; // still to choose, the last point included
    const double lnFrom = std::log(fromTime);
    m_threshold = std::exp(lnFrom + (m_lnLast - lnFrom) / static_cast<double>(remaining));
    m_latest = m_n - remaining; // leaves one point for each still to choose
}

bool LogTimeSelector::keep(double time) {
    const std::size_t i = m_index++;
    if (m_n <= m_keep || m_keep < 2)
        return i < m_keep;
    bool kept = false;
    if (i == 0 || i == m_n - 1)
        kept = true;
    else if (m_kept < m_keep - 1)
        kept = i >= m_latest || time >= m_threshold;
    if (!kept)
        return false;
    ++m_kept;
    if (m_kept < m_keep - 1)
        aimAtNext(time);
    return true;
}

std::vector<std::size_t> logTimeSelection(std::span<const double> time, std::size_t keep) {
    std::vector<std::size_t> kept;
    if (time.empty())
        return kept;
    LogTimeSelector selector(time.size(), time.back(), keep);
    for (std::size_t i = 0; i < time.size(); ++i)
        if (selector.keep(time[i]))
            kept.push_back(i);
    return kept;
}

} // namespace zorvekan
