// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/rate_history.h"
#include "core/val.h"

#include <algorithm>

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

RowOutcome storeTestRow(AnalysisState& s, const std::array<std::string, 4>& texts) {
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
        return out;
    }
    if (s.TestTimeUnit == 1)
        t /= 60.0;
    s.TestTime[n] = t;
    s.TestPressure[n] = p;
    s.EntryCounter = static_cast<std::int16_t>(n + 1);
    out.stored = true;
    return out;
}

RowOutcome storeRateRow(AnalysisState& s, const std::array<std::string, 4>& texts) {
    RowOutcome out;
    const int n = s.EntryCounter;
    if (n > kMaxRates || n < 1) {
        out.message = rateLimitMessage();
        return out;
    }
    s.Rate[n] = Val(texts[1]);
    s.GasRate[n] = Val(texts[2]);
    s.WaterRate[n] = Val(texts[3]);
    s.RateTime[n] = Val(texts[0]) * (s.RateTimeUnit == 1 ? 24.0 : 1.0);
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

RowOutcome storeEntryRow(AnalysisState& s, const std::array<std::string, 4>& texts) {
    return s.DatinMode == 1 ? storeRateRow(s, texts) : storeTestRow(s, texts);
}

void finishEntry(AnalysisState& s) {
    const int stored = std::max(0, s.EntryCounter - 1);
    s.EntryCounter = static_cast<std::int16_t>(stored);
    if (s.DatinMode == 1) {
        s.RateCount = static_cast<std::int16_t>(stored);
        deriveFlowRateAndProducingTime(s);
    } else {
        s.TestPointCount = static_cast<std::int16_t>(stored);
    }
    s.DerivativeSpan = 0.2;
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
