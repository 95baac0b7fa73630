// SPDX-License-Identifier: MIT
#include "input/fault_cause.h"

#include "core/checked_math.h"
#include "input/input_rules.h"
#include "input/input_screen_rules.h"

#include <algorithm>
#include <cstdio>
#include <string_view>
#include <utility>
#include <vector>

namespace zorvekan {

namespace {

// The faults an input can cause: a zero divisor, a logarithm of 0, a logarithm of a
// negative number.
enum Suspect : unsigned { None = 0, Division = 1, LogOfZero = 2, LogOfNegative = 4 };

Suspect suspectOf(const RuntimeError& e) {
    if (e.fault() == Fault::DivisionByZero)
        return Division;
    if (e.fault() != Fault::InvalidArgument)
        return None;
    const std::string_view text = e.what();
    if (text.ends_with(kZeroArgument))
        return LogOfZero;
    if (text.ends_with(kNegativeArgument))
        return LogOfNegative;
    return None;
}

// The property boxes by their names on the input screen, with the faults a zero and
// a negative value of each cause: k = 162.6 q mu B / (m h) divides by h and is 0
// with no FVF, the skin's log(k / (phi mu ct rw^2)) divides by phi, ct and rw^2 and
// takes the logarithm of a negative k or phi ct, and a gas test in m(p) without a
// gravity has no pseudopressure change (named when the series are prepared). The start pressure,
// drainage area, temperature and solution GOR may rightly be 0 and are not named.
struct SuspectBox {
    PropertyBox box;
    const char* name;
    unsigned whenZero, whenNegative;
};
constexpr SuspectBox kSuspectBoxes[] = {
    {PropertyBox::NetPay, "Net Pay", Division, LogOfNegative},
    {PropertyBox::Porosity, "Porosity", Division, LogOfNegative},
    {PropertyBox::Compressibility, "Total Compressibility", Division, LogOfNegative},
    {PropertyBox::WellRadius, "Well Radius", Division, None},
    {PropertyBox::Viscosity, "Viscosity", Division, None},
    {PropertyBox::Fvf, "FVF", LogOfZero, LogOfNegative},
    {PropertyBox::WaterViscosity, "Water Viscosity", Division, None},
    {PropertyBox::GasViscosity, "Gas Viscosity", Division, None},
};

// A typed value as the engineer would write it, with a true minus sign.
std::string typed(double value) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.6g", value < 0 ? -value : value);
    return (value < 0 ? "\u2212" : "") + std::string(buf);
}

std::string testKind(const AnalysisState& s) {
    if (s.ShutInFlag != 0)
        return s.InjectionFlag != 0 ? "falloff" : "buildup";
    return s.InjectionFlag != 0 ? "injectivity test" : "drawdown";
}

// No rate: no producing time (a Horner plot of one abscissa) and no permeability.
void rateCauses(const AnalysisState& s, Suspect suspect, std::vector<std::string>& causes) {
    const bool zero = suspect == Division || suspect == LogOfZero;
    if (zero && s.RateCount < 1)
        causes.push_back("no rate entered for this " + testKind(s));
    else if (zero && s.FlowRate == 0)
        causes.push_back("the last rate is 0");
    else if (suspect == LogOfNegative && s.FlowRate < 0)
        causes.push_back("the last rate is " + typed(s.FlowRate));
}

void propertyCauses(const AnalysisState& s, Suspect suspect, std::vector<std::string>& causes) {
    const InputBoxVisibility used = inputBoxVisibility(fluidChoiceOf(s.FluidFlags), false);
    for (const SuspectBox& b : kSuspectBoxes) {
        if (!used.box[static_cast<std::size_t>(b.box)])
            continue;
        const double value = typedValue(s, b.box);
        if ((value == 0 && (b.whenZero & suspect)) || (value < 0 && (b.whenNegative & suspect)))
            causes.push_back(std::string(b.name) + " is " + typed(value));
    }
}

// The first point of each kind that has no logarithm of its time or pressure change.
void pointCauses(const AnalysisState& s, Suspect suspect, std::vector<std::string>& causes) {
    const int n = std::min<int>(s.TestPointCount, kMaxTestPoints);
    auto first = [&](auto&& matches, const char* what) {
        for (int i = 1; i <= n; ++i)
            if (matches(i)) {
                causes.push_back("test point " + std::to_string(i) + what);
                return;
            }
    };
    if (suspect == Division || suspect == LogOfZero)
        first([&](int i) { return s.TestTime[i] == 0; }, " has time 0");
    if (suspect == LogOfZero)
        first([&](int i) { return s.TestPressure[i] == s.StartPressure; },
              " has the start pressure");
    if (suspect == LogOfNegative)
        first([&](int i) { return s.TestTime[i] < 0; }, " has a negative time");
}

} // namespace

std::string faultCause(const AnalysisState& s, const RuntimeError& e, FaultStage stage) {
    const Suspect suspect = suspectOf(e);
    if (suspect == None)
        return {};
    std::vector<std::string> causes;
    if (stage == FaultStage::Analysis) {
        rateCauses(s, suspect, causes);
        propertyCauses(s, suspect, causes);
    } else if (suspect == LogOfZero && s.FluidFlags == kGasPseudopressure && !(s.GasGravity > 0)) {
        causes.push_back("Gas Gravity is " + typed(s.GasGravity)); // no m(p) change without it
    }
    pointCauses(s, suspect, causes);
    std::string text;
    for (const std::string& c : causes)
        text += (text.empty() ? "" : "; ") + c;
    return text;
}

std::string faultMessage(const AnalysisState& s, const RuntimeError& e, FaultStage stage) {
    const std::string cause = faultCause(s, e, stage);
    return cause.empty() ? std::string(e.what()) : std::string(e.what()) + ": " + cause;
}

} // namespace zorvekan
