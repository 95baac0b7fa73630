// SPDX-License-Identifier: MIT
#include "input/input_rules.h"

#include "core/checked_math.h"
#include "core/val.h"

#include <cmath>

namespace zorvekan {

namespace {

constexpr double kSquareFeetPerAcre = 43560.0;
constexpr double kDrainagePi = 3.1416; // the drainage radius has always used 3.1416

const std::array<PropertyBoxInfo, kPropertyBoxCount> kBoxes = {{
    {PropertyBox::Viscosity, "muin", "Viscosity      cp.", &AnalysisState::OilViscosity, 1.0},
    {PropertyBox::Fvf, "boin", "FVF      RVB/STB", &AnalysisState::OilFvf, 1.0},
    {PropertyBox::NetPay, "hin", "Net Pay        ft.", &AnalysisState::Thickness, 1.0},
    {PropertyBox::WellRadius, "rwin", "Well Radius        in.", &AnalysisState::WellboreRadius,
     12.0},
    {PropertyBox::Porosity, "phin", "Porosity     %", &AnalysisState::Porosity, 100.0},
    {PropertyBox::Compressibility, "ctin", "Total Compressibility            msips",
     &AnalysisState::TotalCompressibility, 1e6},
    {PropertyBox::DrainageArea, "rein", "Drainage Area        acres", &AnalysisState::DrainageArea,
     1.0 / kSquareFeetPerAcre},
    {PropertyBox::StartPressure, "psin", "Pressure @ start            psia",
     &AnalysisState::StartPressure, 1.0},
    {PropertyBox::Temperature, "trin", "Res.Temp.      F.", &AnalysisState::ReservoirTemperature,
     1.0},
    {PropertyBox::GasGravity, "ggin", "Gas  Gravity", &AnalysisState::GasGravity, 1.0},
    {PropertyBox::WaterFvf, "bwin", "Water FVF      RVB/STB", &AnalysisState::WaterFvf, 1.0},
    {PropertyBox::WaterViscosity, "mwin", "Water Viscosity      cp.",
     &AnalysisState::WaterViscosity, 1.0},
    {PropertyBox::GasFvf, "bgin", "Gas FVF      RVB/MCF", &AnalysisState::GasFvf, 1.0},
    {PropertyBox::GasViscosity, "mgin", "Gas Viscosity      cp.", &AnalysisState::GasViscosity,
     1.0},
    {PropertyBox::SolutionGor, "rsin", "Sol'n Gas MCF/STB", &AnalysisState::SolutionGor, 1.0},
}};

} // namespace

bool applyTestType(AnalysisState& s, std::string_view item) {
    if (item == "Buildup") {
        s.ShutInFlag = 1;
        s.InjectionFlag = 0;
    } else if (item == "Drawdown") {
        s.ShutInFlag = 0;
        s.InjectionFlag = 0;
    } else if (item == "Injectivity") {
        s.ShutInFlag = 0;
        s.InjectionFlag = 1;
    } else if (item == "Falloff") {
        s.ShutInFlag = 1;
        s.InjectionFlag = 1;
    } else {
        return false;
    }
    return true;
}

std::optional<std::int16_t> fluidCode(bool oil, bool gas, bool water, bool gasInPseudopressure) {
    if (!gas) {
        if (oil && water)
            return kOilWater;
        if (oil)
            return kOil;
        if (water)
            return kWater;
        return std::nullopt;
    }
    if (oil && water)
        return kOilGasWater;
    if (oil)
        return kOilGas;
    if (water)
        return kGasWater;
    return gasInPseudopressure ? kGasPseudopressure : kGasPressure;
}

bool flowTimeUnitAllowed(const AnalysisState& s) {
    return s.FluidFlags == kGasPseudopressure || s.OilFvf > 0;
}

std::optional<std::string> applyRateTimeUnit(AnalysisState& s, std::string_view item) {
    if (!flowTimeUnitAllowed(s))
        return std::string(kEnterFvfMessage);
    if (item == kRateTimeUnits[0])
        s.RateTimeUnit = 0;
    else if (item == kRateTimeUnits[1])
        s.RateTimeUnit = 1;
    return std::nullopt;
}

void applyTestTimeUnit(AnalysisState& s, std::string_view item) {
    if (item == kTestTimeUnits[0])
        s.TestTimeUnit = 1;
    else if (item == kTestTimeUnits[1])
        s.TestTimeUnit = 0;
}

bool applySolutionGor(AnalysisState& s, double gor) {
    s.SolutionGor = gor;
    const int n = s.RateCount;
    if (n < 1) // no rate yet: nothing tells whether the gas is free
        return false;
    const int code = s.FluidFlags;
    if (code != kOil && code != kOilGas && code != kOilWater && code != kOilGasWater)
        return false; // gas, water, gas and water: no oil to hold gas in solution
    if (s.GasRate[n] - gor * s.Rate[n] > 0)
        return false;
    if (s.FluidFlags == kOilGas)
        s.FluidFlags = kOil;
    else if (s.FluidFlags == kOilGasWater)
        s.FluidFlags = kOilWater;
    return true;
}

const std::array<PropertyBoxInfo, kPropertyBoxCount>& propertyBoxes() {
    return kBoxes;
}

const PropertyBoxInfo& propertyBox(PropertyBox box) {
    return kBoxes[static_cast<std::size_t>(box)];
}

bool applyTypedValue(AnalysisState& s, PropertyBox box, double typed) {
    if (box == PropertyBox::SolutionGor)
        return applySolutionGor(s, typed);
    const PropertyBoxInfo& info = propertyBox(box);
    if (box == PropertyBox::DrainageArea) {
        // Whole square feet per acre: the product is the correctly rounded area.
        s.DrainageArea = finite(typed * kSquareFeetPerAcre, info.objectName);
        s.DrainageRadius = squareRoot(s.DrainageArea / kDrainagePi);
    } else {
        s.*info.field = finite(typed / info.typedPerStored, info.objectName);
    }
    return false;
}

bool applyPropertyText(AnalysisState& s, PropertyBox box, std::string_view text) {
    return applyTypedValue(s, box, Val(text));
}

double drainageAreaAcres(const AnalysisState& s) {
    if (s.DrainageArea >= 0 && std::sqrt(s.DrainageArea / kDrainagePi) == s.DrainageRadius)
        return s.DrainageArea / kSquareFeetPerAcre;
    return kDrainagePi * s.DrainageRadius * s.DrainageRadius / kSquareFeetPerAcre;
}

double typedValue(const AnalysisState& s, PropertyBox box) {
    if (box == PropertyBox::DrainageArea)
        return drainageAreaAcres(s);
    const PropertyBoxInfo& info = propertyBox(box);
    return s.*info.field * info.typedPerStored;
}

} // namespace zorvekan
