// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "input/test_file.h"
#include "semilog/semilog_results.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace zorvekan {
namespace {

struct Line {
    double slope, intercept;
};

// Least-squares line through the semilog points whose time is at least `from` hours.
Line semilogLine(const AnalysisState& s, double from) {
    double n = 0, sx = 0, sy = 0, sxx = 0, sxy = 0;
    for (int k = 1; k <= s.PointCount; ++k) {
        if (s.SemilogTime[k] < from)
            continue;
        const double x = s.SemilogX[k], y = s.SemilogY[k];
        n += 1;
        sx += x;
        sy += y;
        sxx += x * x;
        sxy += x * y;
    }
    const double slope = (n * sxy - sx * sy) / (n * sxx - sx * sx);
    return {slope, (sy - slope * sx) / n};
}

// The point of the semilog series whose time is nearest to t.
int nearestPoint(const AnalysisState& s, double t) {
    int best = 1;
    for (int i = 2; i <= s.PointCount; ++i)
        if (std::fabs(std::log(s.SemilogTime[i] / t)) <
            std::fabs(std::log(s.SemilogTime[best] / t)))
            best = i;
    return best;
}

// The example tests were generated from an analytic reservoir with known k and skin
// (Horner for the buildup, m(p) against log t for the gas drawdown, superposition for
// the two rates), through the program's own preparation of each file:
// - the least-squares semilog line of the radial-flow part must give them back within
//   1 % and 0.1 with the textbook formulas, so a unit slip in the generator (tD, CD,
//   141.2, 1422, minutes, days) fails here;
// - a line picked through two of its points must give them back through the program's
//   results within 3 % and 0.3 (on the superposition plot 3.32 reads the skin about
//   0.1 high).
TEST(ExampleTests, SemilogLineRecoversTheReservoir) {
    struct Example {
        const char* file;
        int kind;
        double from;     // hours: start of radial flow on the semilog plot
        double t1, t2;   // test times (h) of the two points the picked line goes through
        double k, skin;  // the generator's true values
        double unitRate; // 162.6 q B mu / h (oil) or 1637 q T / (1E6 h) (gas in m(p))
    };
    const Example cases[] = {
        {"oil-buildup.zvt", kSemilogPlot, 8, 10, 50, 100, 3, 162.6 * 400 * 1.25 * 0.8 / 50},
        {"gas-drawdown.zvt", kSemilogPlot, 5, 5, 60, 10, 2, 1637.0 * 4000 * 660 / 1e6 / 50},
        {"two-rate-drawdown.zvt", kSuperpositionPlot, 24, 24, 70, 60, 4, 162.6 * 1.2 / 50},
    };
    for (const Example& c : cases) {
        SCOPED_TRACE(c.file);
        AnalysisState s;
        const OpenResult opened = openTestFile(s, std::string(SOURCE_DIR) + "/examples/" + c.file);
        ASSERT_TRUE(opened.ok) << opened.error.message();
        s.SemilogPlotKind = static_cast<std::int16_t>(c.kind);
        PrepareAnalysisData(s);

        const Line line = semilogLine(s, c.from);
        const double m = std::fabs(line.slope);
        EXPECT_NEAR(c.unitRate / m, c.k, 0.01 * c.k);
        const double mu = s.OilViscosity; // the gas preparation leaves mu_g(p_i) here
        // log10(k / (phi mu ct rw^2)) - 3.23: the semilog skin's reservoir term.
        const double term = Log10(c.k / (s.Porosity * mu * s.TotalCompressibility *
                                         s.WellboreRadius * s.WellboreRadius)) -
                            3.23;
        double b = (s.StartPseudoPressure - line.intercept) / m; // flowing m(p)
        if (s.ShutInFlag == 1)
            b = (line.intercept + line.slope * Log10(s.ProducingTime + 1.0) - s.StartPressure) / m;
        else if (c.kind == kSuperpositionPlot)
            b = line.intercept / m;
        EXPECT_NEAR(1.151 * (b - term), c.skin, 0.1);

        SemilogInputs in;
        in.scales.x = 100 / (s.SemilogXMax - s.SemilogXMin);
        in.scales.y = 60 / (s.SemilogYMax - s.SemilogYMin);
        for (double t : {c.t1, c.t2}) {
            const int i = nearestPoint(s, t);
            lineMouseDown(in.line, in.scales.x * (s.SemilogX[i] - s.SemilogXMin),
                          in.scales.y * (s.SemilogY[i] - s.SemilogYMin));
        }
        ComputeSemilogResults(s, in);
        EXPECT_NEAR(s.Permeability, c.k, 0.03 * c.k);
        EXPECT_NEAR(s.SkinFactor, c.skin, 0.3);
    }
}

// The lines that let the engineer check the semilog line, by hand for a line through
// two points of the example buildup, (t+dt)/dt = 9.55445544554 at 3987.17 psia and 2 at
// 3996.07 psia (tp = 72 h, pwf = 3873.1 psia):
//   m = 8.9 / log10(2 / 9.55445544554) = -13.1042 psi/cycle;
//   p* = 3996.07 + 13.1042 log10(2) = 4000.0148; P1hr = p* - 13.1042 log10(73) = 3975.598;
//   s = 1.151 ((3975.598 - 3873.1)/13.1042 - log10(99.266/(0.2*0.8*15E-6*0.354^2)) + 3.23
//       + log10(73/72)) = 2.9226; Dp Skin = 0.87 * 13.1042 * 2.9226 = 33.32 psi.
// The two-rate drawdown's superposition plot is per unit rate and has no p*: a line from
// (1, 0.5) to (2, 0.6) reads 0.1 a cycle and 0.4 at x = 0 (one hour of the last rate).
TEST(ExampleTests, LineCheckByHand) {
    struct Case {
        const char* file;
        std::array<double, 4> ends; // x1, y1, x2, y2; x the Horner ratio or the summation term
        std::vector<std::string> lines;
    };
    const Case cases[] = {
        {"oil-buildup.zvt",
         {9.55445544554, 3987.17, 2, 3996.07},
         {"Slope = 13.1 psi/cycle.", "p* = 4000.01 psia.", "P1hr = 3975.6 psia.",
          "Dp Skin = 33.32 psi."}},
        {"two-rate-drawdown.zvt",
         {1, 0.5, 2, 0.6},
         {"Slope = .1000 psi/(STB/D)/cycle.", "P1hr = .4000 psi/(STB/D)."}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        AnalysisState s;
        ASSERT_TRUE(openTestFile(s, std::string(SOURCE_DIR) + "/examples/" + c.file).ok);
        s.SemilogPlotKind = s.RateCount > 1 ? kSuperpositionPlot : kSemilogPlot;
        PrepareAnalysisData(s);
        SemilogInputs in;
        in.scales.x = 100 / (s.SemilogXMax - s.SemilogXMin);
        in.scales.y = 60 / (s.SemilogYMax - s.SemilogYMin);
        const bool horner = s.SemilogPlotKind == kSemilogPlot;
        for (int i : {0, 2})
            lineMouseDown(in.line,
                          in.scales.x * ((horner ? Log10(c.ends[i]) : c.ends[i]) - s.SemilogXMin),
                          in.scales.y * (c.ends[i + 1] - s.SemilogYMin));
        const SemilogResults r = ComputeSemilogResults(s, in);
        const auto slope = std::find(r.lines.begin(), r.lines.end(), c.lines.front());
        ASSERT_LE(slope + static_cast<long>(c.lines.size()), r.lines.end());
        EXPECT_EQ(std::vector(slope, slope + static_cast<long>(c.lines.size())), c.lines);
    }
}

} // namespace
} // namespace zorvekan
