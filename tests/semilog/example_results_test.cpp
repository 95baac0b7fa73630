// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "input/test_file.h"
#include "semilog/semilog_results.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

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

} // namespace
} // namespace zorvekan
