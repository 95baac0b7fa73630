// SPDX-License-Identifier: MIT
#pragma once

#include "skin/skin_components.h"

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// What the skin screen holds: the total skin of the analyses, the fracture skin of
// the semilog results, the completion features that apply and their dimensions
// (units as typed: ft for net pay and intervals, inches for the wellbore radius and
// perforations).
struct SkinInputs {
    double totalSkin = 0;
    double fractureSkin = 0;
    double wellboreRadius = 0;     // rw, in.
    double permeabilityRatio = 0;  // kv/kh
    double wellAngle = 0;          // degrees from vertical
    double netPay = 0;             // true vertical h, ft
    double penetratedInterval = 0; // hp, ft
    double productionInterval = 0; // hc, ft
    double shotsPerFoot = 0;
    double perforationLength = 0; // lp, in.
    double perforationRadius = 0; // rp, in.
    int phasing = 1;              // 1..6: 0, 45, 60, 90, 120, 180 degrees
    bool slantHole = false, partialPenetration = false, partialCompletion = false,
         perforated = false;
};

struct SkinEvaluation {
    std::vector<std::string> lines; // as printed, in order
    std::optional<double> slantHole, partialPenetration, partialCompletion;
    std::optional<PerforationSkin> perforation;
    double actual = 0; // total - fracture - every computed component
};

// "Calculate Skins": the total and fracture skins, each ticked component (a partial
// penetration or completion outside 0.1 <= b <= 0.8 prints nothing and counts 0),
// and the actual (damage) skin that remains, as result lines.
SkinEvaluation CalculateSkins(const SkinInputs& in);

} // namespace zorvekan
