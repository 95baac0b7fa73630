// SPDX-License-Identifier: MIT
// zorvekan-cli series: the prepared analysis series of a test file, as CSV.
#include "command.h"

#include "core/analysis_data.h"
#include "core/analysis_state.h"
#include "input/test_file.h"

#include <cstdio>
#include <ostream>

namespace zorvekan::cli {

namespace {

void printSeries(const AnalysisState& s, std::ostream& out) {
    out << "i,TimeFunction,DeltaP,LogTime,LogDeltaP,SemilogX,SemilogY\n";
    for (int i = 1; i <= s.TestPointCount; ++i) {
        out << i << ',' << fullPrecision(s.TimeFunction[i]) << ',' << fullPrecision(s.DeltaP[i])
            << ',' << fullPrecision(s.LogTime[i]) << ',' << fullPrecision(s.LogDeltaP[i]) << ',';
        if (i <= s.PointCount)
            out << fullPrecision(s.SemilogX[i]) << ',' << fullPrecision(s.SemilogY[i]);
        else
            out << ',';
        out << '\n';
    }
    out << "\nk,DerivativeLogTime,LogDerivative\n";
    for (int k = 1; k <= s.DerivativeCount; ++k)
        out << k << ',' << fullPrecision(s.DerivativeLogTime[k]) << ','
            << fullPrecision(s.LogDerivative[k]) << '\n';
}

int runSeries(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"span", "kind"}, {});
    if (o.positional().size() != 1)
        throw UsageError{o.positional().empty() ? "missing test file"
                                                : "one test file expected, got " +
                                                      std::to_string(o.positional().size())};
    const auto span = o.optionalNumber("span");
    if (span && !(*span > 0))
        throw UsageError{"--span must be above 0 (log cycles)"};
    const auto kind = o.value("kind");
    if (kind && *kind != "semilog" && *kind != "superposition")
        throw UsageError{"--kind must be semilog or superposition, not '" + *kind + "'"};

    AnalysisState s;
    const OpenResult opened = openTestFile(s, o.positional().front());
    if (!opened.ok) {
        err << opened.error.message() << '\n';
        return kExitFailure;
    }
    if (span)
        s.DerivativeSpan = *span;
    // As the navigation list chooses: semilog for one rate, superposition for more.
    if (kind)
        s.SemilogPlotKind = *kind == "semilog" ? kSemilogPlot : kSuperpositionPlot;
    else
        s.SemilogPlotKind = s.RateCount >= 2 ? kSuperpositionPlot : kSemilogPlot;
    PrepareAnalysisData(s);
    printSeries(s, out);
    return kExitOk;
}

const Registration registration{
    Command{"series", "prepared analysis series of a test file, as CSV",
            "FILE [--span L] [--kind semilog|superposition]\n\n"
            "Opens the test file FILE as the input screen's Open does, prepares the analysis\n"
            "series as choosing an analysis does (pseudopressure for gas in m(p), time functions,\n"
            "pressure changes, derivative, semilog series) and prints two CSV tables:\n\n"
            "  i,TimeFunction,DeltaP,LogTime,LogDeltaP,SemilogX,SemilogY\n"
            "      one row per test point i = 1..N, every column the array element at index i\n"
            "      (the first four in time-function order). The semilog series leaves out points\n"
            "      it cannot plot (at a rate change), so it can be shorter: SemilogX and SemilogY\n"
            "      are empty in rows past its end.\n"
            "  (a blank line)\n"
            "  k,DerivativeLogTime,LogDerivative\n"
            "      one row per derivative point.\n\n"
            "Numbers are printed with 17 significant digits.\n\n"
            "  --span L     derivative spacing in log cycles (default 0.2, as Open sets it)\n"
            "  --kind K     semilog or superposition plot (default: semilog for one rate,\n"
            "               superposition for two or more)\n\n"
            "A file that cannot be read prints its file, line, field and fault and exits with 1.\n",
            runSeries}};

} // namespace

} // namespace zorvekan::cli
