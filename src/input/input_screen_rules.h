// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "input/input_rules.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// Rules of the input screen beyond the single property boxes: which boxes the fluid
// choice shows, the navigation to the analysis screens, and the texts the screen
// derives from the state.

// ---- start of a session ----

// The working directory at start-up becomes the application directory (the type-curve
// library is read from it); the Cartesian drainage radius starts at 0.
void startInputSession(AnalysisState& s, std::string workingDirectory);

// "ZORVEKAN -- Input Data"
std::string inputScreenCaption();

// ---- fluid choice ----

struct FluidChoice {
    bool oil = false, gas = false, water = false;
    bool gasInPseudopressure = true; // gaspk reads "Pseudopressure"
};

struct InputBoxVisibility {
    std::array<bool, kPropertyBoxCount> box{}; // by PropertyBox
    bool gasAnalysis = false;                  // gaspk and its caption
    std::string fvfLabel;                      // caption of the principal-phase FVF box
};

// The boxes the phases need. Always: viscosity, net pay, well radius, porosity,
// compressibility, drainage area, start pressure. Gas alone in pseudopressure: gas
// gravity and temperature instead of the FVF (m(p) needs them, the FVF cancels).
// Gas beside a liquid: gas FVF and viscosity; water beside another phase: water FVF
// and viscosity; oil with gas: the solution GOR, which also stays in sight while the
// undersaturated notice stands so the engineer can correct it.
InputBoxVisibility inputBoxVisibility(const FluidChoice& f, bool undersaturatedShown);

// Re-derives FluidFlags from the check boxes and gaspk (nothing checked leaves it).
void applyFluidChoice(AnalysisState& s, const FluidChoice& f);

// The check boxes and gaspk that show a fluid code (the inverse of fluidCode).
FluidChoice fluidChoiceOf(std::int16_t fluidFlags);

// ---- navigation ----

inline constexpr std::array<std::string_view, 3> kAnalysisItems = {
    "Show/Edit Test Data", "Semilog Analysis", "Type Curve Analysis"};
inline constexpr std::string_view kSkinItem = "Skin Factor Evaluation";
inline constexpr const char* kUndersaturatedCaption = "Undersaturated Condition";
inline constexpr const char* kPrintHeading = "Well Test: Input Data";

// Object name of the screen an item of the navigation lists opens, by its first
// four characters: "Semi" kv1, "Type" kv2, "Show" inpsho, "Skin" skin.
std::optional<std::string> navigationScreen(std::string_view item);

// Before an analysis screen opens: the semilog plot kind follows the rate history
// (superposition for two or more rates) and the analysis series are prepared.
void prepareForAnalysisScreen(AnalysisState& s);

// The analysis list is offered once there are test points to analyse.
bool analysisListAvailable(const AnalysisState& s);

// ---- derived texts ----

// Drainage radius sqrt(A / 3.1416) in ft, "#####.##"; empty while no area is entered.
std::string drainageRadiusText(const AnalysisState& s);

// What has been entered on the entry screen, for the input screen's data group:
// "2 rates, q = 100. STB/day, tp = 40. hrs." and "12 test points". A shut-in test
// whose history ends with the shut-in typed as a zero-rate step says so:
// "3 rates (last: shut-in), q = 200. STB/day, tp = 25. hrs.".
std::string rateSummary(const AnalysisState& s);
std::string testPointSummary(const AnalysisState& s);

// Version information of the "&Version" entry.
std::string versionText();

} // namespace zorvekan
