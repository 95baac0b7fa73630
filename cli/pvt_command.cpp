// SPDX-License-Identifier: MIT
// zorvekan-cli pvt: the property calculator's results for one pressure and temperature.
#include "command.h"

#include "core/analysis_state.h"
#include "properties/correlations.h"
#include "properties/property_calculator.h"
#include "properties/water_properties.h"

#include <ostream>

namespace zorvekan::cli {

namespace {

// "--salinity 35000" is ppm; "--salinity 3.5%" is weight percent NaCl.
double salinityOption(const Options& o) {
    const auto text = o.value("salinity");
    if (!text)
        return 0;
    std::string number = *text;
    SalinityUnit unit = SalinityUnit::Ppm;
    if (!number.empty() && number.back() == '%') {
        number.pop_back();
        unit = SalinityUnit::Percent;
    }
    const auto v = parseNumber(number);
    if (!v || *v < 0)
        throw UsageError{"--salinity expects ppm or a percentage such as 3.5%, not '" + *text +
                         "'"};
    return salinityPercent(*v, unit);
}

double optional(const Options& o, const char* name) {
    return o.optionalNumber(name).value_or(0.0);
}

void print(std::ostream& out, const char* heading, const std::vector<std::string>& lines) {
    if (lines.empty())
        return;
    out << heading << '\n';
    for (const std::string& l : lines)
        out << l << '\n';
}

int runPvt(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args,
                    {"api", "gas-gravity", "temperature", "pressure", "gor", "pb", "oil",
                     "formation", "rock", "porosity", "salinity", "so", "sw", "sg"},
                    {"dry"});
    if (!o.positional().empty())
        throw UsageError{"unexpected argument '" + o.positional().front() + "'"};
    PropertyInputs in;
    in.api = o.number("api");
    in.gasGravity = o.number("gas-gravity");
    in.temperature = o.number("temperature");
    in.pressure = o.number("pressure");
    in.gor = optional(o, "gor");
    in.bubblePoint = optional(o, "pb");
    if (!(in.gor > 0) && !(in.bubblePoint > 0))
        throw UsageError{"give --gor or --pb"};
    in.salinity = salinityOption(o);
    in.porosity = optional(o, "porosity");
    in.oilSaturation = optional(o, "so");
    in.waterSaturation = optional(o, "sw");
    in.gasSaturation = optional(o, "sg");
    in.formation = o.value("formation").value_or("Hall");
    in.rockClass = o.value("rock").value_or("");

    AnalysisState state;
    state.GasKind = o.has("dry") ? 1 : 0;
    const auto code = o.optionalNumber("oil").value_or(0.0);
    if (!(code >= 0 && code <= 8) || code != static_cast<int>(code))
        throw UsageError{"--oil expects a correlation code 0 to 8"};
    state.OilCorrelation = static_cast<std::int16_t>(code);

    const PropertyCalculation r = calculateProperties(state, in);
    if (r.gas.fatal) {
        err << *r.gas.fatal << '\n';
        return kExitFailure;
    }
    std::string oilHeading(kOilCorrelations[static_cast<std::size_t>(state.OilCorrelation)]);
    if (!r.oilStandards.empty())
        oilHeading += " (" + r.oilStandards + ")";
    print(out, oilHeading.c_str(), r.oilLines);
    print(out, "Gas", r.gas.lines);
    print(out, "Water (McCain)", r.waterLines);
    print(out, ("Formation: " + in.formation).c_str(), r.rockLines);
    for (const std::string& note : r.notes)
        err << note << '\n';
    return kExitOk;
}

const Registration registration{Command{
    "pvt", "oil, gas, water and rock properties of the property calculator",
    "--api A --gas-gravity G --temperature F --pressure P (--gor R | --pb P)\n"
    "    [--oil CODE] [--dry] [--salinity S] [--formation NAME --rock CLASS --porosity PHI]\n"
    "    [--so SO --sw SW --sg SG]\n\n"
    "The property calculator's result lines: the oil by the chosen correlation, the gas\n"
    "(Hall-Yarborough z-factor, as the gas command), the water by McCain's correlations,\n"
    "the formation compressibility and the total compressibility in microsips.\n\n"
    "  --api A           stock-tank oil gravity, deg API\n"
    "  --gas-gravity G   separator gas gravity, air = 1\n"
    "  --temperature F   reservoir temperature, deg F\n"
    "  --pressure P      pressure, psia\n"
    "  --gor R           solution GOR at the bubble point, scf/STB\n"
    "  --pb P            bubble-point pressure, psia (when no GOR is given)\n"
    "  --oil CODE        0 Standing, 1 Vazquez-Beggs, 2 Glaso, 3 Al-Marhoun,\n"
    "                    4 Petrosky-Farshad, 5 Dokla-Osman, 6 Farshad, 7 Obomanu-Okpobiri,\n"
    "                    8 Kartoatmodjo-Schmidt (default 0)\n"
    "  --dry             dry-gas pseudo-critical properties (default: wet gas)\n"
    "  --salinity S      water salinity in ppm, or in weight percent NaCl as 3.5%\n"
    "  --formation NAME  Hall (default), Newman, \"Van der Knaap\" or \"Yale et. al.\"\n"
    "  --rock CLASS      \"Consolidated Sands\", \"Friable Sands\", \"Unconsolidated Sands\"\n"
    "                    or Carbonates (read by its first three letters)\n"
    "  --porosity PHI    porosity, fraction\n"
    "  --so, --sw, --sg  oil, water and gas saturations, fractions\n\n"
    "Values that cannot be computed are named on the error stream. A z-factor failure\n"
    "prints its message and exits with 1.\n",
    runPvt}};

} // namespace

} // namespace zorvekan::cli
