// SPDX-License-Identifier: MIT
// zorvekan-cli gas: the property calculator's gas results at one pressure.
#include "command.h"

#include "core/analysis_state.h"
#include "properties/gas_properties.h"

#include <ostream>

namespace zorvekan::cli {

namespace {

int runGas(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"gravity", "temperature", "pressure"}, {"dry"});
    if (!o.positional().empty())
        throw UsageError{"unexpected argument '" + o.positional().front() + "'"};
    const double gravity = o.number("gravity");
    const double temperature = o.number("temperature");
    const double pressure = o.number("pressure");
    if (!(gravity > 0))
        throw UsageError{"--gravity must be above 0 (air = 1)"};

    AnalysisState state;
    state.GasKind = o.has("dry") ? 1 : 0;
    const GasCalculation g = CalculateGasProperties(state, gravity, temperature, pressure);
    if (g.failure != ZFactorFailure::None) {
        err << zFactorFailureMessage(g.failure) << '\n';
        return kExitFailure;
    }
    for (const auto& line : gasResultLines(g))
        out << line << '\n';
    return kExitOk;
}

const Registration registration{Command{
    "gas", "gas z-factor, FVF, compressibility, viscosity and density",
    "--gravity G --temperature F --pressure P [--dry]\n\n"
    "Gas properties as the property calculator computes them: Hall-Yarborough z-factor\n"
    "with the wet-gas pseudo-critical correlation (--dry: the dry-gas one), formation\n"
    "volume factor (RB/MCF), compressibility (microsips), Lee-Gonzalez-Eakin viscosity (cp)\n"
    "and density (lb/cu ft).\n\n"
    "  --gravity G      gas gravity, air = 1\n"
    "  --temperature F  reservoir temperature, deg F\n"
    "  --pressure P     pressure, psia\n"
    "  --dry            dry gas (default: wet gas)\n\n"
    "A reduced temperature below 1 or a reduced pressure above 20.5 prints\n"
    "\"pTr<1: z-factor Routine FAILS\" or \"pPr>20.5: z-factor Routine FAILS\" and exits with 1.\n",
    runGas}};

} // namespace

} // namespace zorvekan::cli
