// SPDX-License-Identifier: MIT
#include "properties/correlations.h"

namespace zorvekan {

namespace {
std::string_view prefix(std::string_view text) {
    return text.substr(0, 3);
}
} // namespace

std::optional<std::int16_t> oilCorrelationCode(std::string_view itemText) {
    static constexpr std::array<std::string_view, 9> prefixes = {"Sta", "Vaz", "Gla", "Al-", "Pet",
                                                                 "Dok", "Far", "Obo", "Kar"};
    for (std::size_t code = 0; code < prefixes.size(); ++code)
        if (prefix(itemText) == prefixes[code])
            return static_cast<std::int16_t>(code);
    return std::nullopt;
}

std::optional<std::int16_t> gasKindCode(std::string_view itemText) {
    if (prefix(itemText) == "Wet")
        return 0;
    if (prefix(itemText) == "Dry")
        return 1;
    return std::nullopt;
}

bool formationNeedsRockClass(std::string_view formationText) {
    return formationText == "Newman" || formationText == "Yale et. al.";
}

std::optional<RockClass> rockClassCode(std::string_view itemText) {
    const std::string_view p = prefix(itemText);
    if (p == "Con")
        return RockClass::Consolidated;
    if (p == "Fri")
        return RockClass::Friable;
    if (p == "Unc")
        return RockClass::Unconsolidated;
    if (p == "Car")
        return RockClass::Carbonate;
    return std::nullopt;
}

} // namespace zorvekan
