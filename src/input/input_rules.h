// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// ---- test description ----

inline constexpr std::array<std::string_view, 4> kTestTypes = {"Buildup", "Drawdown", "Injectivity",
                                                               "Falloff"};
inline constexpr std::array<std::string_view, 2> kGasAnalysisModes = {"Pseudopressure", "Pressure"};
inline constexpr std::array<std::string_view, 2> kRateTimeUnits = {"Flow Times: hrs.",
                                                                   "Flow Times: days"};
inline constexpr std::array<std::string_view, 2> kTestTimeUnits = {"Test Times: min.",
                                                                   "Test Times: hrs."};

inline constexpr const char* kInputErrorTitle = "ZORVEKAN Input Error";
inline constexpr const char* kEnterFvfMessage = "Enter FVF & Reselect Flow Time";

// Sets ShutInFlag and InjectionFlag from the test type: Buildup 1/0, Drawdown 0/0,
// Injectivity 0/1, Falloff 1/1. Unknown text changes nothing and returns false.
bool applyTestType(AnalysisState& s, std::string_view item);

// FluidFlags from the fluid check boxes and the gas analysis mode:
// gas unchecked: oil 1, water 3, oil+water 5; gas checked: alone 0 (pseudopressure)
// or 2 (pressure), with oil 4, with water 6, all three 7. Nothing checked: no code.
std::optional<std::int16_t> fluidCode(bool oil, bool gas, bool water, bool gasInPseudopressure);

// The flow-time unit may be chosen only once an FVF is known (the producing time is
// computed from reservoir volumes), except for gas analysed in pseudopressure.
bool flowTimeUnitAllowed(const AnalysisState& s);

// Returns the input-error message when the unit must be refused (flowTimeUnitAllowed),
// else sets RateTimeUnit.
std::optional<std::string> applyRateTimeUnit(AnalysisState& s, std::string_view item);

void applyTestTimeUnit(AnalysisState& s, std::string_view item);

// Solution-GOR rule: stores SolutionGor; when the last rate carries no free gas
// (q_g - Rs*q_o <= 0) gas is no longer a flowing phase: 4 becomes 1 and 7 becomes 5.
// Before any rate is entered, and in a test without oil (gas dissolves in oil), the
// rule does not apply.
// Returns true in that undersaturated case (the gas box is to be cleared and
// "Undersaturated Condition" shown).
bool applySolutionGor(AnalysisState& s, double gor);

// ---- property boxes of the input screen ----

enum class PropertyBox {
    Viscosity,       // muin
    Fvf,             // boin
    NetPay,          // hin
    WellRadius,      // rwin
    Porosity,        // phin
    Compressibility, // ctin
    DrainageArea,    // rein
    StartPressure,   // psin
    Temperature,     // trin
    GasGravity,      // ggin
    WaterFvf,        // bwin
    WaterViscosity,  // mwin
    GasFvf,          // bgin
    GasViscosity,    // mgin
    SolutionGor,     // rsin (its own rule, applySolutionGor)
};

struct PropertyBoxInfo {
    PropertyBox box;
    const char* objectName;
    const char* label; // caption with the typed unit
    double AnalysisState::*field;
    double typedPerStored; // typed = stored * factor, stored = typed / factor
};

inline constexpr int kPropertyBoxCount = 15;
const std::array<PropertyBoxInfo, kPropertyBoxCount>& propertyBoxes();
const PropertyBoxInfo& propertyBox(PropertyBox box);

// Stores a typed value of a property box with its unit conversion (well radius in
// inches /12, porosity % /100, compressibility microsips /1e6, area acres *43560 with
// DrainageRadius = sqrt(A / 3.1416)). The solution GOR goes through applySolutionGor;
// the returned flag is its undersaturated result.
bool applyTypedValue(AnalysisState& s, PropertyBox box, double typed);

// The change rule of a property box: applyTypedValue of the text's leading number.
bool applyPropertyText(AnalysisState& s, PropertyBox box, std::string_view text);

// The typed value of a stored property (the inverse conversion), for refilling a box.
double typedValue(const AnalysisState& s, PropertyBox box);

// The drainage area in acres that DrainageRadius stands for, pi re^2 / 43560. While
// the radius is the one the stored area gives, that is the stored area itself, taken
// without the round trip through the square root, so it never drifts by a last digit.
double drainageAreaAcres(const AnalysisState& s);

} // namespace zorvekan
