// SPDX-License-Identifier: MIT
// zorvekan-cli regress: a well model fitted by nonlinear regression to the whole test, with
// the result lines the type-curve screen prints after "Refine by Regression".
#include "command.h"

#include "core/analysis_data.h"
#include "input/test_file.h"
#include "regression/well_fit.h"

#include <ostream>

namespace zorvekan::cli {

namespace {

// The index of a fit parameter by its name: the model's names, or "pi".
int fitParameter(const std::string& name) {
    if (name == "pi")
        return kInitialPressure;
    if (const auto p = parameterNamed(name))
        return static_cast<int>(*p);
    throw UsageError{"unknown parameter '" + name + "' (k, s, C, xf, re, omega, lambda or pi)"};
}

// "name=value,name=value"
FitValues parseValues(const std::string& option, const std::string& text, WellModelKind model) {
    FitValues values;
    std::size_t from = 0;
    while (from <= text.size()) {
        const std::size_t comma = std::min(text.find(',', from), text.size());
        const std::string item = text.substr(from, comma - from);
        const std::size_t equals = item.find('=');
        const auto value =
            equals == std::string::npos ? std::nullopt : parseNumber(item.substr(equals + 1));
        if (!value)
            throw UsageError{"--" + option + " expects name=value,... not '" + text + "'"};
        const int p = fitParameter(item.substr(0, equals));
        if (p != kInitialPressure && !hasParameter(model, static_cast<ModelParameter>(p)))
            throw UsageError{"the model " + std::string(modelName(model)) + " has no parameter '" +
                             item.substr(0, equals) + "'"};
        values[static_cast<std::size_t>(p)] = *value;
        from = comma + 1;
    }
    return values;
}

// "T1:T2", either end may be left out.
void parseWindow(const std::string& text, FitRequest& r) {
    const auto colon = text.find(':');
    const auto bad = [&] {
        return UsageError{"--window expects T1:T2 in hours, not '" + text + "'"};
    };
    if (colon == std::string::npos)
        throw bad();
    const std::string first = text.substr(0, colon), last = text.substr(colon + 1);
    if (!first.empty() && !(r.windowStart = parseNumber(first)))
        throw bad();
    if (!last.empty() && !(r.windowEnd = parseNumber(last)))
        throw bad();
    if (r.windowStart && r.windowEnd && !(*r.windowStart < *r.windowEnd))
        throw bad();
}

int runRegress(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"model", "window", "start", "fix", "derivative-weight", "span"}, {});
    if (o.positional().size() != 1)
        throw UsageError{"expects one test file"};
    if (!o.value("model"))
        throw UsageError{"needs --model"};
    FitRequest request;
    const auto model = modelNamed(*o.value("model"));
    if (!model)
        throw UsageError{"--model must be radial, radial-closed, fracture-infinite, "
                         "fracture-uniform, dual-pss or dual-transient, not '" +
                         *o.value("model") + "'"};
    request.model = *model;
    if (const auto w = o.value("window"))
        parseWindow(*w, request);
    if (const auto s = o.value("start"))
        request.start = parseValues("start", *s, *model);
    if (const auto f = o.value("fix"))
        request.fixed = parseValues("fix", *f, *model);
    if (const auto w = o.optionalNumber("derivative-weight")) {
        if (!(*w >= 0))
            throw UsageError{"--derivative-weight cannot be negative"};
        request.derivativeWeight = *w;
    }

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
    const FitOutcome outcome = fitWellModel(s, request);
    if (!outcome.result) {
        err << outcome.message << '\n';
        return kExitFailure;
    }
    for (const auto& line : outcome.result->lines)
        out << line << '\n';
    return kExitOk;
}

const Registration registration{Command{
    "regress", "a well model fitted to the whole test by nonlinear regression",
    "FILE --model M [--window T1:T2] [--start name=value,...] [--fix name=value,...]\n"
    "       [--derivative-weight W] [--span L]\n\n"
    "Opens a test file and fits a well model with storage and skin to all its pressures\n"
    "through the rate history (m(p) for gas in pseudopressure), then prints the parameters\n"
    "with their 95 % intervals, the RMS misfit and the number of points, exactly as the\n"
    "type-curve screen prints them after \"Refine by Regression\".\n\n"
    "  --model M          radial, radial-closed (circle of radius re), fracture-infinite,\n"
    "                     fracture-uniform (half-length xf), dual-pss, dual-transient\n"
    "                     (omega, lambda)\n"
    "  --window T1:T2     only the points with T1 <= test time <= T2 (hours); either end may\n"
    "                     be left out\n"
    "  --start name=v,..  where the search starts: k (md), s, C (bbl/psi), xf (ft), re (ft),\n"
    "                     omega, lambda, pi (psia); the rest starts from the data\n"
    "  --fix name=v,..    parameters held at a value, pi included\n"
    "  --derivative-weight W  also fit the log derivative, weighted W against the pressures\n"
    "  --span L           derivative spacing in log cycles (default 0.2)\n",
    runRegress}};

} // namespace

} // namespace zorvekan::cli
