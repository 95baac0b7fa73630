// SPDX-License-Identifier: MIT
// zorvekan-cli skin: the skin screen's split of a total skin into the pseudo-skins of
// the completion, exactly as the screen prints it.
#include "command.h"

#include "skin/skin_evaluation.h"

#include <cmath>
#include <ostream>
#include <sstream>

namespace zorvekan::cli {

namespace {

// "SPF,LP,RP,PHASING" into the perforation inputs.
void parsePerforation(const std::string& text, SkinInputs& in) {
    std::vector<double> values;
    std::stringstream fields(text);
    for (std::string field; std::getline(fields, field, ',');) {
        const auto v = parseNumber(field);
        if (!v)
            throw UsageError{"--perforated expects SPF,LP,RP,PHASING, not '" + text + "'"};
        values.push_back(*v);
    }
    if (values.size() != 4)
        throw UsageError{"--perforated expects SPF,LP,RP,PHASING, not '" + text + "'"};
    const std::optional<int> phasing = std::trunc(values[3]) == values[3]
                                           ? phasingIndexOf(static_cast<int>(values[3]))
                                           : std::nullopt;
    if (!phasing)
        throw UsageError{"the phasing must be 0, 45, 60, 90, 120 or 180 degrees"};
    in.perforated = true;
    in.shotsPerFoot = values[0];
    in.perforationLength = values[1];
    in.perforationRadius = values[2];
    in.phasing = *phasing;
}

int runSkin(const std::vector<std::string>& args, std::ostream& out, std::ostream&) {
    const Options o(
        args,
        {"total", "fracture", "rw", "kvkh", "slant", "h", "penetrated", "completed", "perforated"},
        {});
    if (!o.positional().empty())
        throw UsageError{"unexpected argument '" + o.positional().front() + "'"};
    SkinInputs in;
    in.totalSkin = o.number("total");
    in.fractureSkin = o.optionalNumber("fracture").value_or(0);
    in.wellboreRadius = o.optionalNumber("rw").value_or(0);
    in.permeabilityRatio = o.optionalNumber("kvkh").value_or(0);
    in.netPay = o.optionalNumber("h").value_or(0);
    if (const auto angle = o.optionalNumber("slant")) {
        in.slantHole = true;
        in.wellAngle = *angle;
    }
    if (const auto hp = o.optionalNumber("penetrated")) {
        in.partialPenetration = true;
        in.penetratedInterval = *hp;
    }
    if (const auto hc = o.optionalNumber("completed")) {
        in.partialCompletion = true;
        in.productionInterval = *hc;
    }
    if (const auto perforation = o.value("perforated"))
        parsePerforation(*perforation, in);
    for (const std::string& line : CalculateSkins(in).lines)
        out << line << '\n';
    return kExitOk;
}

const Registration registration{
    Command{"skin", "split a total skin into slant-hole, partial-penetration and perforation skins",
            "--total S [--fracture S] [--rw IN] [--kvkh R] [--slant DEG] [--h FT]\n"
            "       [--penetrated FT] [--completed FT] [--perforated SPF,LP,RP,PHASING]\n\n"
            "The skin screen's evaluation: each completion feature given is computed, printed and\n"
            "taken off the total, leaving the actual (damage) skin.\n\n"
            "  --total S        total skin factor from the analyses\n"
            "  --fracture S     fracture skin of the semilog results (default 0)\n"
            "  --rw IN          wellbore radius, inches\n"
            "  --kvkh R         vertical to horizontal permeability ratio kv/kh\n"
            "  --h FT           true vertical net pay, ft\n"
            "  --slant DEG      slant hole at DEG from vertical (Cinco-Ley, Miller and Ramey)\n"
            "  --penetrated FT  partial penetration: interval penetrated (Brons-Marting)\n"
            "  --completed FT   partial completion: production interval (Brons-Marting)\n"
            "  --perforated SPF,LP,RP,PHASING\n"
            "                   perforations: shots/ft, length and radius in inches, phasing\n"
            "                   0, 45, 60, 90, 120 or 180 degrees (Karakas-Tariq)\n\n"
            "Partial penetration and completion are printed only for 0.1 <= interval/h <= 0.8.\n"
            "A zero radius, ratio, density or length needed by a component is a run-time\n"
            "error (exit 1).\n",
            runSkin}};

} // namespace

} // namespace zorvekan::cli
