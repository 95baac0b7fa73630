// SPDX-License-Identifier: MIT
// zorvekan-cli typecurve: the results of a type-curve match of a test file, exactly as the
// type-curve screen prints them for the same curve and match point.
#include "command.h"

#include "core/analysis_data.h"
#include "input/test_file.h"
#include "typecurve/type_curve_match.h"

#include <cmath>
#include <ostream>

namespace zorvekan::cli {

namespace {

int modelCode(const std::string& name) {
    if (name == "single")
        return kSinglePorosityModel;
    if (name == "dual")
        return kDualPorosityModel;
    if (name == "fracture")
        return kVerticalFractureModel;
    throw UsageError{"--model must be single, dual or fracture, not '" + name + "'"};
}

// "TD,PD@DT,DP"
MatchPoint parseMatch(const std::string& text) {
    const auto bad = [&] {
        return UsageError{"--match expects TD,PD@DT,DP (numbers), not '" + text + "'"};
    };
    const auto at = text.find('@');
    if (at == std::string::npos)
        throw bad();
    const auto pair = [&](const std::string& part) {
        const auto comma = part.find(',');
        if (comma == std::string::npos)
            throw bad();
        const auto a = parseNumber(part.substr(0, comma));
        const auto b = parseNumber(part.substr(comma + 1));
        if (!a || !b || !(*a > 0) || !(*b > 0))
            throw bad();
        return std::pair{*a, *b};
    };
    const auto [td, pd] = pair(text.substr(0, at));
    const auto [dt, dp] = pair(text.substr(at + 1));
    return {td, pd, dt, dp};
}

int curveNumber(const Options& o, const char* name) {
    const double v = o.number(name);
    if (!(v >= 1 && v <= 99) || v != std::floor(v))
        throw UsageError{std::string("--") + name + " expects a curve number"};
    return static_cast<int>(v);
}

int runTypeCurve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"model", "curve", "match", "p1", "p2", "span"}, {});
    if (o.positional().size() != 1)
        throw UsageError{"expects one test file"};
    if (!o.value("model") || !o.value("curve") || !o.value("match"))
        throw UsageError{"needs --model, --curve and --match"};
    const int model = modelCode(*o.value("model"));
    const int curve = curveNumber(o, "curve");
    const MatchPoint match = parseMatch(*o.value("match"));
    const bool transitions = o.has("p1") || o.has("p2");
    if (transitions && (model != kDualPorosityModel || !o.has("p1") || !o.has("p2")))
        throw UsageError{"--p1 and --p2 go together, with --model dual"};

    AnalysisState s;
    const OpenResult opened = openTestFile(s, o.positional().front());
    if (!opened.ok) {
        err << opened.error.message() << '\n';
        return kExitFailure;
    }
    // Prepared as the navigation list prepares it for the type-curve screen.
    s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
    if (const auto span = o.optionalNumber("span"))
        s.DerivativeSpan = *span;
    PrepareAnalysisData(s);
    TypeCurveResults r = ComputeMatchResults(s, model, curve, match);
    if (transitions)
        r = ComputeDualPorosityResults(s, r, curveNumber(o, "p1"), curveNumber(o, "p2"));
    for (const auto& line : r.lines)
        out << line << '\n';
    return kExitOk;
}

const Registration registration{Command{
    "typecurve", "results of a type-curve match of a test file",
    "FILE --model single|dual|fracture --curve K --match TD,PD@DT,DP [--p1 K --p2 K]\n"
    "       [--span L]\n\n"
    "Opens a test file, prepares it as the type-curve screen does and prints the result lines\n"
    "of a match on curve K of the model's family, exactly as the screen prints them.\n\n"
    "  --model M          single (ONETYPE, CDe2s), dual (ONETYPE, then the TWOTYPE\n"
    "                     transition curves) or fracture (FRCTYPE, xe/xf)\n"
    "  --curve K          the matched curve: 1..16 of ONETYPE, 1..9 of FRCTYPE\n"
    "  --match TD,PD@DT,DP  one point read on both grids: TD and PD in the type-curve groups\n"
    "                     (tD/CD or tDxf, and pD), DT in hours of the prepared time function,\n"
    "                     DP in the plotted pressure unit (psi, m(p) in 1E6 psi^2/cp, or per\n"
    "                     unit rate change for a multi-rate drawdown)\n"
    "  --p1 K --p2 K      dual porosity: the descending (13..18) and ascending (19..25)\n"
    "                     TWOTYPE transition curves; adds omega, lambda, CDe2sfm, skin, Le-2s\n"
    "  --span L           derivative spacing in log cycles (default 0.2)\n",
    runTypeCurve}};

} // namespace

} // namespace zorvekan::cli
