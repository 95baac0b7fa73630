// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace zorvekan {

// The published correlations the property calculator can use, as the correlation
// dialog lists them. Choices are recognised by the first three characters of the
// item text, the same way the calculator compares names, so the codes do not
// depend on list positions.

inline constexpr std::array<std::string_view, 9> kOilCorrelations = {
    "Standing : California Crudes",
    "Vazquez/Beggs : Worldwide Crudes",
    "Glaso : North Sea Crudes",
    "Al-Marhoun : Middle East Crudes",
    "Petrosky/Farshad : Gulf of Mexico Crudes",
    "Dokla/Osman : U.A.E. crudes",
    "Farshad : Columbian Crudes",
    "Obomanu/Okpobiri : Nigerian Crudes",
    "Kartoatmodjo/Schmidt : Worldwide Crudes",
};
inline constexpr std::array<std::string_view, 2> kGasKinds = {"Wet Gas", "Dry Gas"};
inline constexpr std::array<std::string_view, 4> kFormationCorrelations = {
    "Hall", "Van der Knaap", "Yale et. al.", "Newman"};
inline constexpr std::array<std::string_view, 4> kRockClasses = {
    "Consolidated Sands", "Friable Sands", "Unconsolidated Sands", "Carbonates"};

// OilCorrelation code 0..8 from the prefixes "Sta" "Vaz" "Gla" "Al-" "Pet" "Dok" "Far"
// "Obo" "Kar"; no code for any other text.
std::optional<std::int16_t> oilCorrelationCode(std::string_view itemText);

// GasKind: "Wet..." 0, "Dry..." 1.
std::optional<std::int16_t> gasKindCode(std::string_view itemText);

// The rock class list applies to the Newman and Yale et al. correlations only.
bool formationNeedsRockClass(std::string_view formationText);

enum class RockClass { Consolidated, Friable, Unconsolidated, Carbonate };

// Rock class by its first three letters "Con", "Fri", "Unc", "Car".
std::optional<RockClass> rockClassCode(std::string_view itemText);

} // namespace zorvekan
