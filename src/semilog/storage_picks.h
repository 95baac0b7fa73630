// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "semilog/semilog_plots.h"

namespace zorvekan {

// What a click on the log-log plot means: the plotted time and change under the
// cursor, and the time of the test it stands for (a shut-in time computed back from
// the equivalent time te when there is a producing time: dt = tp*te/(tp - te)).
struct StorageClick {
    double plottedTime = 0; // te or t, hours
    double time = 0;        // dt (shut-in) or t, hours
    double deltaP = 0;      // psi, m(p) units, or per unit rate
};

StorageClick storagePointAt(const AnalysisState& s, double x, double y);

// Wellbore storage from a point on the unit-slope line, C = q*B*t / (24*dp) in
// bbl/psi; on a rate-normalised plot (a flowing test with several rates) dp is
// already per unit rate, so C = B*t / (24*dp).
double wellboreStorageAt(const AnalysisState& s, const StorageClick& click);

// Interval of a two-click flow-regime selection: the earlier time is the lower
// bound whatever the click order.
TimeInterval orderedInterval(double firstTime, double secondTime);

// Plot x of the "1 cycle" mark: one log cycle after the end of linear flow, where
// the semilog straight line may start.
double oneCycleMarkX(const AnalysisState& s, double endPlottedTime);

} // namespace zorvekan
