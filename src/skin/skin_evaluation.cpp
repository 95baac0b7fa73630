// SPDX-License-Identifier: MIT
#include "skin/skin_evaluation.h"

#include "core/display_mask.h"
#include "core/result_line.h"

namespace zorvekan {

namespace {

constexpr const char* kSkinMask = "#0.##";

std::string line(const char* caption, double value, const char* mask = kSkinMask) {
    return resultLine(caption, Format(value, mask));
}

} // namespace

SkinEvaluation CalculateSkins(const SkinInputs& in) {
    SkinEvaluation e;
    e.lines.push_back(line("Total Skin Factor =", in.totalSkin));
    // Each pseudo-skin found is taken off the total, in the order printed.
    e.actual = in.totalSkin - in.fractureSkin;
    if (in.fractureSkin != 0)
        e.lines.push_back(line("Fracture Skin Factor =", in.fractureSkin));

    if (in.slantHole) {
        e.slantHole =
            slantHoleSkin(in.wellAngle, in.netPay, in.wellboreRadius, in.permeabilityRatio);
        e.lines.push_back(line("Slant Hole Skin Factor =", *e.slantHole));
        e.actual -= *e.slantHole;
    }
    if (in.partialPenetration) {
        e.partialPenetration = partialPenetrationSkin(in.penetratedInterval, in.netPay,
                                                      in.wellboreRadius, in.permeabilityRatio);
        if (e.partialPenetration) {
            e.lines.push_back(line("Partial Penetration Skin Factor =", *e.partialPenetration));
            e.actual -= *e.partialPenetration;
        }
    }
    if (in.partialCompletion) {
        e.partialCompletion = partialCompletionSkin(in.productionInterval, in.netPay,
                                                    in.wellboreRadius, in.permeabilityRatio);
        if (e.partialCompletion) {
            e.lines.push_back(line("Partial Completion Skin Factor =", *e.partialCompletion));
            e.actual -= *e.partialCompletion;
        }
    }
    if (in.perforated) {
        const PerforationSkin p =
            perforationSkin(in.phasing, in.wellboreRadius, in.shotsPerFoot, in.perforationLength,
                            in.perforationRadius, in.permeabilityRatio);
        e.perforation = p;
        e.lines.push_back(line("Perforation Skin Factor =", p.total()));
        e.lines.emplace_back("   Components:");
        e.lines.push_back(line("    Horizontal Skin Factor =", p.horizontal));
        e.lines.push_back(line("    Wellbore Skin Factor =", p.wellbore));
        e.lines.push_back(line("    Vertical Skin Factor =", p.vertical));
        e.actual -= p.total();
    }

    e.lines.push_back(line("Actual Skin Factor =", e.actual, "##.##"));
    return e;
}

} // namespace zorvekan
