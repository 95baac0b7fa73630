// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/rate_history.h"
#include "core/val.h"

#include <algorithm>
#include <utility>

namespace zorvekan {

namespace {

constexpr const char* kOilRate = "Oil Rate STB/day";
constexpr const char* kGasRate = "Gas Rate MCF/day";
constexpr const char* kWaterRate = "Wtr Rate STB/day";

bool gasBesideAnotherPhase(int code) {
    return code == kOilGas || code == kGasWater || code == kOilGasWater;
}
bool waterBesideAnotherPhase(int code) {
    return code == kOilWater || code == kGasWater || code == kOilGasWater;
}

RowOutcome storeTestRow(AnalysisState& s, EntryDraft& d, const std::array<std::string, 4>& texts) {
    RowOutcome out;
    const int n = s.EntryCounter;
    double t = Val(texts[0]);
    const double p = Val(texts[1]);
    if (t < 0) {
        out.message = "Test times must be above 0; a row at time 0 gives the start pressure.";
        return out;
    }
    if (t == 0) {
        s.StartPressure = p;
        out.startPressureText = Format(p, "#####.#");
        out.stored = true;
        return out; // the start of the test is not a counted point
    }
    if (n > kMaxTestPoints || n < 1) {
        out.message = testPointLimitMessage();
        out.limitReached = true;
        return out;
    }
    if (s.TestTimeUnit == 1)
        t /= 60.0;
    d.time[n] = t;
    d.pressure[n] = p;
    s.EntryCounter = static_cast<std::int16_t>(n + 1);
    out.stored = true;
    return out;
}

RowOutcome storeRateRow(AnalysisState& s, EntryDraft& d, const std::array<std::string, 4>& texts) {
    RowOutcome out;
    const int n = s.EntryCounter;
    if (n > kMaxRates || n < 1) {
        out.message = rateLimitMessage();
        out.limitReached = true;
        return out;
    }
    d.rate[n] = Val(texts[1]);
    d.gasRate[n] = Val(texts[2]);
    d.waterRate[n] = Val(texts[3]);
    d.duration[n] = Val(texts[0]) * (s.RateTimeUnit == 1 ? 24.0 : 1.0);
    s.EntryCounter = static_cast<std::int16_t>(n + 1);
    out.stored = true;
    return out;
}

} // namespace

EntryLayout entryLayout(const AnalysisState& s) {
    EntryLayout layout;
    const int code = s.FluidFlags;
    if (s.DatinMode != 1) {
        layout.heading = "Enter Well Test Values";
        layout.boxes[0] = {true,
                           s.TestTimeUnit == 1 ? "Time           min." : "Time           hrs."};
        layout.boxes[1] = {true, "Pressure    psia"};
        return layout;
    }
    layout.heading = "Enter Rates and Flow Duration";
    layout.boxes[0] = {true, s.RateTimeUnit == 1 ? "Duration     days" : "Duration      hrs."};
    if (code == kGasPseudopressure || code == kGasPressure)
        layout.boxes[1] = {true, kGasRate};
    else if (code == kWater)
        layout.boxes[1] = {true, kWaterRate};
    else
        layout.boxes[1] = {code != kGasWater, kOilRate};
    layout.boxes[2] = {gasBesideAnotherPhase(code), kGasRate};
    layout.boxes[3] = {waterBesideAnotherPhase(code), kWaterRate};
    return layout;
}

std::string testPointLimitMessage() {
    return "Maximum of " + Str(kMaxTestPoints) + "Test Points Allowed";
}

std::string rateLimitMessage() {
    return "Maximum of " + Str(kMaxRates) + " Rates Allowed";
}

RowOutcome storeEntryRow(AnalysisState& s, EntryDraft& draft,
                         const std::array<std::string, 4>& texts) {
    return s.DatinMode == 1 ? storeRateRow(s, draft, texts) : storeTestRow(s, draft, texts);
}

namespace {

void commitRows(AnalysisState& s, const EntryDraft& d, int stored) {
    if (s.DatinMode == 1) {
        for (int j = 1; j <= stored; ++j) {
            s.RateTime[j] = d.duration[j];
            s.Rate[j] = d.rate[j];
            s.GasRate[j] = d.gasRate[j];
            s.WaterRate[j] = d.waterRate[j];
        }
        s.RateCount = static_cast<std::int16_t>(stored);
        deriveFlowRateAndProducingTime(s);
    } else {
        for (int i = 1; i <= stored; ++i) {
            s.TestTime[i] = d.time[i];
            s.TestPressure[i] = d.pressure[i];
        }
        s.TestPointCount = static_cast<std::int16_t>(stored);
    }
}

} // namespace

void finishEntry(AnalysisState& s, const EntryDraft& d) {
    const int stored = std::max(0, s.EntryCounter - 1);
    // All or nothing: a history that gives no producing time leaves the test as it was.
    AnalysisState entered = s;
    entered.EntryCounter = static_cast<std::int16_t>(stored);
    commitRows(entered, d, stored);
    entered.DerivativeSpan = 0.2;
    s = std::move(entered);
}

void deriveFlowRateAndProducingTime(AnalysisState& s) {
    // A shut-in typed as the last, zero-rate step of the history is the shut-in itself.
    const int c = lastFlowingStep(s);
    s.FlowRate = s.Rate[c];
    if (s.ShutInFlag == 0) {
        s.ProducingTime = 0.0; // a drawdown or injectivity test is itself the flow period
        return;
    }
    if (c <= 1) {
        s.ProducingTime = s.RateTime[c];
        return;
    }
    const bool multiphase = s.FluidFlags > 3;
    // One phase: the FVF cancels from volume and rate, so it is left out and the
    // producing time does not depend on an FVF that gas tests need not enter.
    const double bo = multiphase ? s.OilFvf : 1.0;
    auto freeGas = [&](int m) { return std::max(0.0, s.GasRate[m] - s.SolutionGor * s.Rate[m]); };
    double volume = 0.0;
    for (int m = 1; m <= c; ++m) {
        volume += s.RateTime[m] * bo * s.Rate[m] / 24.0;
        if (multiphase) {
            volume += s.RateTime[m] * s.GasFvf * freeGas(m) / 24.0;
            volume += s.RateTime[m] * s.WaterFvf * s.WaterRate[m] / 24.0;
        }
    }
    double lastRate = bo * s.Rate[c];
    if (multiphase)
        lastRate += s.WaterFvf * s.WaterRate[c] + s.GasFvf * freeGas(c);
    s.ProducingTime = divide(24.0 * volume, lastRate);
}

} // namespace zorvekan
