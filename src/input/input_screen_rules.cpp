// SPDX-License-Identifier: MIT
#include "input/input_screen_rules.h"

#include "core/analysis_data.h"
#include "core/display_mask.h"
#include "core/rate_history.h"
#include "core/version.h"

#include <utility>

namespace zorvekan {

void startInputSession(AnalysisState& s, std::string workingDirectory) {
    s.ApplicationDirectory = std::move(workingDirectory);
    s.PssDrainageRadius = 0.0;
}

std::string inputScreenCaption() {
    return std::string(kProgramTitle) + " -- Input Data";
}

InputBoxVisibility inputBoxVisibility(const FluidChoice& f, bool undersaturatedShown) {
    using B = PropertyBox;
    InputBoxVisibility v;
    auto show = [&v](B b, bool on) { v.box[static_cast<std::size_t>(b)] = on; };
    for (B b : {B::Viscosity, B::NetPay, B::WellRadius, B::Porosity, B::Compressibility,
                B::DrainageArea, B::StartPressure})
        show(b, true);
    const bool liquid = f.oil || f.water;
    const bool gasAloneInPseudopressure = f.gas && !liquid && f.gasInPseudopressure;
    show(B::Fvf, !gasAloneInPseudopressure);
    show(B::GasGravity, gasAloneInPseudopressure);
    show(B::Temperature, gasAloneInPseudopressure);
    show(B::GasFvf, f.gas && liquid);
    show(B::GasViscosity, f.gas && liquid);
    show(B::WaterFvf, f.water && (f.oil || f.gas));
    show(B::WaterViscosity, f.water && (f.oil || f.gas));
    show(B::SolutionGor, f.oil && (f.gas || undersaturatedShown));
    v.gasAnalysis = f.gas;
    if (!f.gas)
        v.fvfLabel = "   FVF    RVB/STB";
    else if (!liquid)
        v.fvfLabel = "   FVF    RVB/MCF"; // gas alone in pressure: the FVF of the gas
    else
        v.fvfLabel = propertyBox(B::Fvf).label;
    return v;
}

void applyFluidChoice(AnalysisState& s, const FluidChoice& f) {
    if (const auto code = fluidCode(f.oil, f.gas, f.water, f.gasInPseudopressure))
        s.FluidFlags = *code;
}

FluidChoice fluidChoiceOf(std::int16_t code) {
    FluidChoice f;
    f.oil = code == kOil || code == kOilGas || code == kOilWater || code == kOilGasWater;
    f.gas = code == kGasPseudopressure || code == kGasPressure || code == kOilGas ||
            code == kGasWater || code == kOilGasWater;
    f.water = code == kWater || code == kOilWater || code == kGasWater || code == kOilGasWater;
    f.gasInPseudopressure = code != kGasPressure;
    return f;
}

std::optional<std::string> navigationScreen(std::string_view item) {
    const std::string_view key = item.substr(0, 4);
    if (key == "Semi")
        return "kv1";
    if (key == "Type")
        return "kv2";
    if (key == "Show")
        return "inpsho";
    if (key == "Skin")
        return "skin";
    return std::nullopt;
}

void prepareForAnalysisScreen(AnalysisState& s) {
    s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
    PrepareAnalysisData(s);
}

bool analysisListAvailable(const AnalysisState& s) {
    return s.TestPointCount > 0;
}

std::string drainageRadiusText(const AnalysisState& s) {
    if (!(s.DrainageRadius > 0))
        return {};
    return Format(s.DrainageRadius, "#####.##");
}

std::string rateSummary(const AnalysisState& s) {
    const int n = s.RateCount;
    if (n < 1)
        return "No rates entered";
    const bool gasAlone = s.FluidFlags == kGasPseudopressure || s.FluidFlags == kGasPressure;
    std::string text = std::to_string(n) + (n == 1 ? " rate" : " rates");
    const int flowing = lastFlowingStep(s);
    if (flowing < n)
        text += n - flowing == 1 ? " (last: shut-in)"
                                 : " (last " + std::to_string(n - flowing) + ": shut-in)";
    // The units digit is always shown: a drawdown's tp of 0 reads "0.", not ".".
    text += ", q = " + Format(s.FlowRate, "#####0.#") + (gasAlone ? " MCF/day" : " STB/day");
    text += ", tp = " + Format(s.ProducingTime, "#####0.##") + " hrs.";
    return text;
}

std::string testPointSummary(const AnalysisState& s) {
    const int n = s.TestPointCount;
    if (n < 1)
        return "No test points entered";
    return std::to_string(n) + (n == 1 ? " test point" : " test points");
}

std::string versionText() {
    return std::string(kProgramName) + " version " + kProgramVersion + "\n" + kProgramPurpose +
           "\n\nOilfield units: psia, hours, ft, md, cp, STB/day, MCF/day.";
}

} // namespace zorvekan
