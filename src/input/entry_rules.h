// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <array>
#include <optional>
#include <string>

namespace zorvekan {

// Row-by-row entry of the rate history (DatinMode 1) or the test points (otherwise).

struct EntryBoxLayout {
    bool visible = false;
    std::string label;
};

struct EntryLayout {
    std::string heading; // "Enter Well Test Values" / "Enter Rates and Flow Duration"
    std::array<EntryBoxLayout, 4> boxes; // conv, conv2, conv3, conv4
};

// Captions and visible boxes of the entry screen for the current mode, fluid code and
// units (time/pressure for test points; duration and the rates of the flowing phases).
EntryLayout entryLayout(const AnalysisState& s);

// "Maximum of  500Test Points Allowed" and "Maximum of  25 Rates Allowed" (the limit is
// joined as number-to-text gives it, with its leading blank).
std::string testPointLimitMessage();
std::string rateLimitMessage();

// The rows typed on the entry screen, kept apart from the rate history and the test
// points until entry is finished, so an abandoned entry changes neither.
struct EntryDraft {
    PointArray time, pressure;                    // test points: hours, psia
    RateArray duration, rate, gasRate, waterRate; // rates: hours, per day
};

struct RowOutcome {
    bool stored = false;
    bool limitReached = false;                    // the message is the row limit's
    std::optional<std::string> message;           // a limit or input message to show
    std::optional<std::string> startPressureText; // set when a time-0 row gave the start pressure
};

// Stores one typed row into the draft at EntryCounter and advances it.
// Test points: time (minutes are turned into hours) and pressure; a row at time 0 is the
// start of the test and sets StartPressure instead (not counted); a negative time is
// refused. Rates: duration (days are turned into hours) and the rates of conv2..conv4.
// Beyond 500 points or 25 rates the limit message is returned and nothing is stored.
RowOutcome storeEntryRow(AnalysisState& s, EntryDraft& draft,
                         const std::array<std::string, 4>& texts);

// Finishing entry: the draft's stored rows are written to the test points or the rate
// history (rows beyond them keep their old values) and become TestPointCount or
// RateCount; for rates the flow rate and producing time are derived
// (deriveFlowRateAndProducingTime); DerivativeSpan returns to 0.2. A fault (a rate
// history with no producing time) leaves `s` as it was.
void finishEntry(AnalysisState& s, const EntryDraft& draft);

// FlowRate q = the last rate of the history (of a shut-in test, the last non-zero one:
// a zero-rate step at the end is the shut-in itself, and the steps before it are the
// flow history); ProducingTime tp over that flow history:
//   one rate: its duration;
//   several:  tp = 24*(V_o + V_g + V_w) / (B_o*q_o + B_w*q_w + B_g*q_g,free) at the last rate,
//             the cumulative reservoir volume V = sum(t_m*B*q_m/24) over the history
//             divided by the last reservoir rate (Horner's equivalent producing time);
//             free gas q_g - Rs*q_o counts only when gas flows beside oil or water and
//             is never negative. For one phase the FVF cancels and is not needed.
//   drawdown or injectivity: tp = 0 (the test itself is the flow period).
void deriveFlowRateAndProducingTime(AnalysisState& s);

} // namespace zorvekan
