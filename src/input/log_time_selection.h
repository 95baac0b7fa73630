// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zorvekan {

// Chooses `keep` of n times (n > keep >= 2) so that a test keeps its shape on a
// log-time axis: the first and last points are kept; from each kept point the next
// one is the first point at least 1/r of the remaining log-time span later, r being
// the number of points still to choose (so the spacing is even in log time); where
// the data are sparser than that spacing (early wellbore-storage data) every point
// is kept and the spacing of the rest shrinks accordingly; a point is never taken so
// late that too few remain. With n <= keep every point is kept.
//
// It decides point by point in file order, knowing only n and the last time, so a
// gauge record of millions of points is reduced without holding it: one pass over
// the file counts the points and finds the last time, a second one selects.
class LogTimeSelector {
public:
    // Times must be above 0 and must not decrease.
    LogTimeSelector(std::size_t n, double lastTime, std::size_t keep);

    // Called once for each point in order with its time; true when it is kept.
    bool keep(double time);

private:
    void aimAtNext(double fromTime);

    std::size_t m_n, m_keep;
    std::size_t m_index = 0; // of the point offered next
    std::size_t m_kept = 0;
    double m_lnLast;
    double m_threshold = 0;   // the time from which the next point is kept
    std::size_t m_latest = 0; // the index at which it is kept at the latest
};

// The indices LogTimeSelector keeps, ascending: exactly min(n, keep).
std::vector<std::size_t> logTimeSelection(std::span<const double> time, std::size_t keep);

} // namespace zorvekan
