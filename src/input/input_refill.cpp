// SPDX-License-Identifier: MIT
#include "input/input_refill.h"

#include "core/display_mask.h"

#include <cmath>

namespace zorvekan {

namespace {

std::string_view testTypeItem(const AnalysisState& s) {
    if (s.ShutInFlag != 0)
        return s.InjectionFlag != 0 ? kTestTypes[3] : kTestTypes[0]; // Falloff, Buildup
    return s.InjectionFlag != 0 ? kTestTypes[2] : kTestTypes[1];     // Injectivity, Drawdown
}

void setFluidChecks(const AnalysisState& s, InputRefill& r) {
    const int code = s.FluidFlags;
    r.oil = code == kOil || code == kOilGas || code == kOilWater || code == kOilGasWater;
    r.gas = code == kGasPseudopressure || code == kGasPressure || code == kOilGas ||
            code == kGasWater || code == kOilGasWater;
    r.water = code == kWater || code == kOilWater || code == kGasWater || code == kOilGasWater;
    r.gasAnalysis = code == kGasPseudopressure ? kGasAnalysisModes[0] : kGasAnalysisModes[1];
}

// 18 decimals hold 15 significant digits down to 1E-4.
constexpr const char* kRefillMask = "#.##################";
constexpr const char* kRefillExponentMask = "#.##############E-00";

} // namespace

std::string refillText(double typed) {
    const double size = std::fabs(typed);
    const bool exponent = size != 0 && (size < 1e-4 || size >= 1e15);
    return Format(typed, exponent ? kRefillExponentMask : kRefillMask);
}

std::vector<PropertyBox> fileCarriedBoxes(int fluidCode) {
    using B = PropertyBox;
    std::vector<PropertyBox> boxes = {B::Viscosity,    B::Fvf,          B::NetPay,
                                      B::WellRadius,   B::Porosity,     B::Compressibility,
                                      B::DrainageArea, B::StartPressure};
    if (fluidCode == kGasPseudopressure) {
        boxes.push_back(B::GasGravity);
        boxes.push_back(B::Temperature);
    }
    if (fluidCode >= 4) {
        for (B b : {B::WaterFvf, B::WaterViscosity, B::GasFvf, B::GasViscosity, B::SolutionGor})
            boxes.push_back(b);
    }
    return boxes;
}

namespace {

InputRefill choicesOf(const AnalysisState& s) {
    InputRefill r;
    r.title = s.TestTitle;
    r.testType = testTypeItem(s);
    r.rateTimeUnit = kRateTimeUnits[s.RateTimeUnit == 1 ? 1 : 0];
    r.testTimeUnit = kTestTimeUnits[s.TestTimeUnit == 1 ? 0 : 1];
    return r;
}

} // namespace

InputRefill refillInputScreen(AnalysisState& s) {
    InputRefill r = choicesOf(s);
    for (const PropertyBox box : fileCarriedBoxes(s.FluidFlags)) {
        std::string text = refillText(typedValue(s, box));
        if (applyPropertyText(s, box, text))
            r.undersaturated = true;
        r.boxes.push_back({box, std::move(text)});
    }
    setFluidChecks(s, r); // after the GOR rule, which may have taken gas out of the test
    return r;
}

} // namespace zorvekan
