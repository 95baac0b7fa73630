// SPDX-License-Identifier: MIT
#include "semilog/storage_picks.h"

#include "core/checked_math.h"
#include "core/plot_frame.h"

#include <algorithm>

namespace zorvekan {

StorageClick storagePointAt(const AnalysisState& s, double x, double y) {
    StorageClick click;
    click.plottedTime = logValueAt(x, s.StorageXMin, s.StorageScale);
    click.deltaP = logValueAt(y, s.StorageYMin, s.StorageScale);
    const double tp = s.ProducingTime;
    click.time =
        tp > 0 ? divide(tp * click.plottedTime, tp - click.plottedTime) : click.plottedTime;
    return click;
}

double wellboreStorageAt(const AnalysisState& s, const StorageClick& click) {
    const bool perUnitRate = s.ShutInFlag == 0 && s.RateCount >= 2;
    const double rate = perUnitRate ? 1.0 : s.FlowRate;
    return divide(rate * s.OilFvf * click.time, 24.0 * click.deltaP);
}

TimeInterval orderedInterval(double firstTime, double secondTime) {
    return {std::min(firstTime, secondTime), std::max(firstTime, secondTime)};
}

double oneCycleMarkX(const AnalysisState& s, double endPlottedTime) {
    return (Log10(10.0 * endPlottedTime) - s.StorageXMin) * s.StorageScale;
}

} // namespace zorvekan
