// SPDX-License-Identifier: MIT
// zorvekan-cli semilog: the semilog straight-line results of a test file, exactly as
// the semilog screen prints them for the same line.
#include "command.h"

#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "core/semilog_series.h"
#include "input/test_file.h"
#include "semilog/semilog_results.h"

#include <cmath>
#include <ostream>
#include <tuple>

namespace zorvekan::cli {

namespace {

struct DataPoint {
    double x, y;
};

// "X1,Y1:X2,Y2"
std::pair<DataPoint, DataPoint> parseTwoPoints(const std::string& option, const std::string& text) {
    const auto colon = text.find(':');
    auto point = [&](const std::string& part) {
        const auto comma = part.find(',');
        if (comma == std::string::npos)
            throw UsageError{"--" + option + " expects X1,Y1:X2,Y2, not '" + text + "'"};
        const auto x = parseNumber(part.substr(0, comma));
        const auto y = parseNumber(part.substr(comma + 1));
        if (!x || !y)
            throw UsageError{"--" + option + " expects numbers in X1,Y1:X2,Y2, not '" + text + "'"};
        return DataPoint{*x, *y};
    };
    if (colon == std::string::npos)
        throw UsageError{"--" + option + " expects X1,Y1:X2,Y2, not '" + text + "'"};
    return {point(text.substr(0, colon)), point(text.substr(colon + 1))};
}

// Plot x of a value of the semilog plot's own time function: the Horner ratio, the
// time or the equivalent time (log axis), or the summation term itself.
double semilogPlotX(const AnalysisState& s, const PlotScales& scales, double timeFunction) {
    const double x = s.SemilogPlotKind == kSuperpositionPlot ? timeFunction : Log10(timeFunction);
    return scales.x * (x - s.SemilogXMin);
}

// Slope and zero-time intercept of a linear- or bilinear-flow line through two
// (time in hours, pressure) points, as the flow plots compute them: |slope| in
// pressure per hour^exponent, intercept taken with |slope| even when the line falls.
std::pair<double, double> flowLine(const std::pair<DataPoint, DataPoint>& p, double exponent) {
    const double x1 = std::pow(p.first.x, exponent), x2 = std::pow(p.second.x, exponent);
    const double slope = std::fabs(divide(p.second.y - p.first.y, x2 - x1));
    return {slope, p.second.y - slope * x2};
}

// The prepared point of the test point nearest (in log time) to test time t.
int preparedPointNearest(const AnalysisState& s, double t) {
    int best = 0;
    double bestDistance = 0;
    for (int i = 1; i <= s.TestPointCount; ++i) {
        const double distance = std::fabs(Log10(s.TestTime[s.SourceIndex[i]] / t));
        if (best == 0 || distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    if (best == 0)
        throw UsageError{"--end-of-transient needs test points"};
    return best;
}

// Plot x of a test time on the semilog plot, for the end-of-transient pick. On the
// semilog plot of a multi-rate flowing test the axis is the equivalent time: the
// test time is that of the nearest test point, placed at its equivalent time.
double transientPlotX(const AnalysisState& s, const PlotScales& scales, double t) {
    if (!(t > 0))
        throw UsageError{"--end-of-transient expects a time above 0"};
    double x = 0;
    if (s.SemilogPlotKind == kSemilogPlot && s.ShutInFlag == 0 && s.RateCount >= 2) {
        x = s.LogTime[preparedPointNearest(s, t)];
    } else if (s.SemilogPlotKind == kSuperpositionPlot) {
        if (s.ShutInFlag == 1)
            x = shutInSummation(s, t);
        else if (!flowingSummation(s, t, x))
            throw UsageError{"--end-of-transient time lies at or before a rate change"};
    } else if (s.ShutInFlag == 1) {
        x = Log10(divide(s.ProducingTime + t, t));
    } else {
        x = Log10(t);
    }
    return scales.x * (x - s.SemilogXMin);
}

int runSemilog(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(
        args, {"line", "kind", "span", "end-of-transient", "linear", "bilinear", "end-bilinear-dp"},
        {});
    if (o.positional().size() != 1)
        throw UsageError{"expects one test file"};
    if (!o.value("line"))
        throw UsageError{"missing --line X1,Y1:X2,Y2"};
    const auto linePoints = parseTwoPoints("line", *o.value("line"));

    AnalysisState s;
    const OpenResult opened = openTestFile(s, o.positional().front());
    if (!opened.ok) {
        err << opened.error.message() << '\n';
        return kExitFailure;
    }
    s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
    if (const auto kind = o.value("kind")) {
        if (*kind == "semilog")
            s.SemilogPlotKind = kSemilogPlot;
        else if (*kind == "superposition")
            s.SemilogPlotKind = kSuperpositionPlot;
        else
            throw UsageError{"--kind is semilog or superposition, not '" + *kind + "'"};
    }
    if (const auto span = o.optionalNumber("span"))
        s.DerivativeSpan = *span;
    PrepareAnalysisData(s);

    SemilogInputs in;
    in.scales.x = divide(100.0, s.SemilogXMax - s.SemilogXMin);
    in.scales.y = divide(60.0, s.SemilogYMax - s.SemilogYMin);
    for (const DataPoint& p : {linePoints.first, linePoints.second})
        lineMouseDown(in.line, semilogPlotX(s, in.scales, p.x),
                      in.scales.y * (p.y - s.SemilogYMin));
    if (const auto linear = o.value("linear"))
        std::tie(in.linearSlope, in.linearIntercept) =
            flowLine(parseTwoPoints("linear", *linear), 0.5);
    if (const auto bilinear = o.value("bilinear")) {
        in.bilinearSlope = flowLine(parseTwoPoints("bilinear", *bilinear), 0.25).first;
        const auto dp = o.optionalNumber("end-bilinear-dp");
        if (!dp)
            throw UsageError{
                "--bilinear needs --end-bilinear-dp (the change at the end of bilinear flow)"};
        in.endBilinearDeltaP = *dp;
    }

    const SemilogResults r = ComputeSemilogResults(s, in);
    for (const auto& line : r.lines)
        out << line << '\n';
    if (const auto t = o.optionalNumber("end-of-transient")) {
        const TransientPick pick =
            pickEndOfTransient(s, transientPlotX(s, in.scales, *t), in.scales);
        if (pick.radiusLine)
            out << *pick.radiusLine << '\n';
    }
    return kExitOk;
}

const Registration registration{
    Command{"semilog", "semilog straight-line results of a test file",
            "FILE --line X1,Y1:X2,Y2 [--kind semilog|superposition] [--span L]\n"
            "       [--end-of-transient T] [--linear T1,P1:T2,P2] [--bilinear T1,P1:T2,P2\n"
            "        --end-bilinear-dp DP]\n\n"
            "Opens a test file, prepares it as the semilog screen does and prints the result\n"
            "lines of the straight line through two points, exactly as the screen prints them.\n\n"
            "  --line X1,Y1:X2,Y2   two points of the line: X in the plot's own time function\n"
            "                       (the Horner ratio (tp+dt)/dt of a buildup's semilog plot, the\n"
            "                       time in hours of a drawdown, the equivalent time of a multi-\n"
            "                       rate drawdown, the summation term itself on a superposition\n"
            "                       plot), Y in the plotted unit (psia, m(p) in 1E6 psi^2/cp, or\n"
            "                       the rate-normalised change)\n"
            "  --kind K             semilog or superposition (default: semilog for one rate,\n"
            "                       superposition for two or more, as the program opens it)\n"
            "  --span L             derivative spacing in log cycles (default 0.2)\n"
            "  --end-of-transient T end of the transient at test time T hours: adds the radius\n"
            "                       of investigation (on the semilog plot of a multi-rate\n"
            "                       flowing test, at the equivalent time of the test point\n"
            "                       nearest T, as a click there)\n"
            "  --linear T1,P1:T2,P2 a line on the linear-flow plot through two (hours, psia)\n"
            "                       points: fracture half-length and fracture skin\n"
            "  --bilinear T1,P1:T2,P2 a line on the bilinear-flow plot, with\n"
            "  --end-bilinear-dp DP the pressure change at the end of bilinear flow: fracture\n"
            "                       capacity and the bilinear half-length\n",
            runSemilog}};

} // namespace

} // namespace zorvekan::cli
