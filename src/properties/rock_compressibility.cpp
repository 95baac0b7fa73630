// SPDX-License-Identifier: MIT
#include "properties/rock_compressibility.h"

#include "properties/correlations.h"

#include <cmath>

namespace zorvekan {

namespace {

// Hall, H.N. (1953), "Compressibility of Reservoir Rocks", Trans. AIME 198, 309-311:
// cf = 1.782e-6 / phi^0.438.
double hall(double porosity) {
    return 1.782e-6 / std::pow(porosity, 0.438);
}

// Newman, G.H. (1973), "Pore-Volume Compressibility of Consolidated, Friable, and
// Unconsolidated Reservoir Rocks Under Hydrostatic Loading", JPT (Feb.) 129-134, as
// fitted in Horne, R.N. (1995), "Modern Well Test Analysis", 2nd ed., Petroway:
//   consolidated sandstones cf = 97.32e-6 / (1 + 55.8721 phi)^1.42859,
//   limestones             cf = 0.853531 / (1 + 2.47664e6 phi)^0.92990.
double newmanConsolidated(double porosity) {
    return 97.32e-6 / std::pow(1.0 + 55.8721 * porosity, 1.42859);
}
double newmanLimestone(double porosity) {
    return 0.853531 / std::pow(1.0 + 2.47664e6 * porosity, 0.92990);
}

FormationCompressibility newman(std::string_view rockClass, double porosity) {
    const auto rock = rockClassCode(rockClass);
    if (!rock)
        return {std::nullopt, "Newman needs a rock class"};
    switch (*rock) {
    case RockClass::Consolidated:
        return {newmanConsolidated(porosity), "Newman consolidated sandstone fit"};
    case RockClass::Carbonate:
        return {newmanLimestone(porosity), "Newman limestone fit"};
    case RockClass::Friable:
    case RockClass::Unconsolidated:
        break;
    }
    return {std::nullopt, "Newman published no fit for " + std::string(rockClass)};
}

} // namespace

FormationCompressibility formationCompressibility(std::string_view formation,
                                                  std::string_view rockClass, double porosity) {
    if (!(porosity > 0 && porosity < 1))
        return {std::nullopt, "Formation compressibility needs a porosity between 0 and 100 %"};
    const std::string_view key = formation.substr(0, 3);
    if (key == "Hal")
        return {hall(porosity), {}};
    if (key == "New")
        return newman(rockClass, porosity);
    if (key == "Van" || key == "Yal")
        return {std::nullopt,
                std::string(formation) + ": coefficients not available in this version"};
    return {std::nullopt, "No formation correlation chosen"};
}

} // namespace zorvekan
