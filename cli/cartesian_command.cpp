// SPDX-License-Identifier: MIT
// zorvekan-cli cartesian: the drainage radius of a pseudosteady-state line on the
// Cartesian plot of a test file, exactly as the test data screen prints it.
#include "command.h"

#include "input/input_screen_rules.h"
#include "input/test_file.h"
#include "review/cartesian_plot.h"

#include <ostream>

namespace zorvekan::cli {

namespace {

struct DataPoint {
    double t, p;
};

// "T1,P1:T2,P2"
std::pair<DataPoint, DataPoint> parsePssLine(const std::string& text) {
    const UsageError bad{"--pss expects T1,P1:T2,P2 (hours, psia or m(p)), not '" + text + "'"};
    const auto colon = text.find(':');
    if (colon == std::string::npos)
        throw bad;
    auto point = [&](const std::string& part) {
        const auto comma = part.find(',');
        if (comma == std::string::npos)
            throw bad;
        const auto t = parseNumber(part.substr(0, comma));
        const auto p = parseNumber(part.substr(comma + 1));
        if (!t || !p)
            throw bad;
        return DataPoint{*t, *p};
    };
    return {point(text.substr(0, colon)), point(text.substr(colon + 1))};
}

int runCartesian(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const Options o(args, {"pss", "end-of-transient", "start-pss"}, {});
    if (o.positional().size() != 1)
        throw UsageError{"expects one test file"};
    if (!o.value("pss"))
        throw UsageError{"missing --pss T1,P1:T2,P2"};
    const auto [a, b] = parsePssLine(*o.value("pss"));
    const auto endOfTransient = o.optionalNumber("end-of-transient");
    const auto startPss = o.optionalNumber("start-pss");

    AnalysisState s;
    const OpenResult opened = openTestFile(s, o.positional().front());
    if (!opened.ok) {
        err << opened.error.message() << '\n';
        return kExitFailure;
    }
    prepareForAnalysisScreen(s);
    out << pssDrainageRadiusThrough(s, a.t, a.p, b.t, b.p).line << '\n';
    // The picks store their values for the semilog results; shown as stored.
    const CartesianScales scales = cartesianScales(s);
    if (endOfTransient)
        out << "EndOfTransientTime = " << fullPrecision((scales.xs * *endOfTransient) / scales.xs)
            << '\n';
    if (startPss)
        out << "StartPssValue = "
            << fullPrecision(s.PlotPressureMin +
                             (scales.ys * (*startPss - s.PlotPressureMin)) / scales.ys)
            << '\n';
    return kExitOk;
}

const Registration registration{
    Command{"cartesian", "pseudosteady-state drainage radius from the Cartesian plot",
            "FILE --pss T1,P1:T2,P2 [--end-of-transient T] [--start-pss P]\n\n"
            "Opens a test file, prepares it as choosing \"Show/Edit Test Data\" does, and prints\n"
            "the drainage radius of the pseudosteady-state straight line through two points of\n"
            "the Cartesian plot, exactly as the test data screen prints it:\n\n"
            "  Drainage radius = RE ft.\n\n"
            "from m = dp/dt, Vp = 0.0418 q B / (|m| ct), A = 5.615 Vp / (h phi),\n"
            "re = sqrt(A / 3.141593), with q the flow rate and B the oil FVF of the file.\n\n"
            "  --pss T1,P1:T2,P2      two points of the line: T in hours, P in psia, or in m(p)\n"
            "                         (1E6 psi^2/cp) for gas analysed in pseudopressure\n"
            "  --end-of-transient T   also print the end of the transient stored for the\n"
            "                         semilog results (EndOfTransientTime, hours)\n"
            "  --start-pss P          also print the start of pseudosteady state stored\n"
            "                         (StartPssValue, the ordinate value)\n\n"
            "A vertical or horizontal line, or a test without ct, h or porosity, is a\n"
            "division by zero: the fault is printed and the exit code is 1.\n",
            runCartesian}};

} // namespace

} // namespace zorvekan::cli
