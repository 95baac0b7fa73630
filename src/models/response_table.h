// SPDX-License-Identifier: MIT
#pragma once

#include "models/dimensionless_well.h"

#include <deque>
#include <vector>

namespace zorvekan {

// pD(T) of one dimensionless well, tabulated so that a test's whole rate history can be
// superposed at every step of a fit: ln pD against ln T at kNodesPerDecade nodes a decade
// (inverted by Gaver-Stehfest), read back by a natural cubic spline. Between the nodes the
// spline departs from the inverted pD by less than 1e-6 relative for every model over the
// parameter ranges of the fit (tests/models), well below the 1e-5 of the inversion itself.
// Three extra nodes at each end keep the spline's free ends away from the range asked for.
class ResponseTable {
public:
    static constexpr int kNodesPerDecade = 20;

    // Tabulates over [tFirst, tLast] (0 < tFirst < tLast); a model fault of the well (a
    // parameter outside its domain) is thrown here.
    ResponseTable(const DimensionlessWell& well, double tFirst, double tLast);

    const DimensionlessWell& well() const { return m_well; }
    bool covers(double t) const { return t >= m_first && t <= m_last; }

    // pD(T): interpolated inside the range, inverted directly outside it.
    double pressure(double t) const;

private:
    DimensionlessWell m_well;
    double m_first = 0, m_last = 0;  // the range asked for
    double m_lnStart = 0;            // ln T of node 0
    double m_step = 0;               // node spacing in ln T
    std::vector<double> m_value;     // ln pD at the nodes
    std::vector<double> m_curvature; // second derivative in ln T (natural spline)
};

// The tables of the last few wells asked for. A fit asks again and again for the same wells
// (a step changes k or pi only, which leaves the well as it was; the numeric derivatives
// change one parameter at a time), so most requests find their table kept.
class ResponseTables {
public:
    // A table of the well covering [tFirst, tLast]: one kept, or a new one spanning a decade
    // more on each side. The reference holds until the next call.
    const ResponseTable& covering(const DimensionlessWell& well, double tFirst, double tLast);

private:
    static constexpr std::size_t kKept = 8;
    std::deque<ResponseTable> m_kept; // most recent first
};

} // namespace zorvekan
