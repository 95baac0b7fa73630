// SPDX-License-Identifier: MIT
#include "properties/calculator_gas.h"

#include "properties/correlations.h"
#include "properties/gas_properties.h"

namespace zorvekan {

CalculatorGasOutcome calculateGasPart(AnalysisState& s, double gravity, double temperatureF,
                                      double pressure) {
    CalculatorGasOutcome out;
    if (!(gravity > 0)) {
        out.note = "Gas gravity not above 0: no gas properties computed.";
        return out;
    }
    const GasCalculation g = CalculateGasProperties(s, gravity, temperatureF, pressure);
    if (g.failure != ZFactorFailure::None) {
        out.fatal = zFactorFailureMessage(g.failure);
        return out;
    }
    out.lines = gasResultLines(g);
    out.values = g;
    return out;
}

std::string selectedOilCorrelation(const AnalysisState& s) {
    const int code = s.OilCorrelation;
    if (code < 0 || code >= static_cast<int>(kOilCorrelations.size()))
        return {};
    return std::string(kOilCorrelations[static_cast<std::size_t>(code)]);
}

std::string selectedGasKind(const AnalysisState& s) {
    return std::string(kGasKinds[s.GasKind == 1 ? 1 : 0]);
}

} // namespace zorvekan
