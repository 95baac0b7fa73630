// SPDX-License-Identifier: MIT
#include "core/analysis_data.h"
#include "core/checked_math.h"
#include "input/test_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>

namespace zorvekan {
namespace {

const std::string kExamples = std::string(SOURCE_DIR) + "/examples/";

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

struct Example {
    const char* file;
    int kind;
    double from;     // hours: start of radial flow on the semilog plot
    double k, skin;  // the generator's true values
    double unitRate; // 162.6 q B mu / h (oil) or 1637 q T / (1E6 h) (gas in m(p))
};

// log10(k / (phi mu ct rw^2)) - 3.23: the semilog skin's reservoir term.
double skinTerm(const AnalysisState& s, double k, double mu) {
    return Log10(k /
                 (s.Porosity * mu * s.TotalCompressibility * s.WellboreRadius * s.WellboreRadius)) -
           3.23;
}

// The examples are there so analyses can be checked against known answers: their
// semilog straight line, through the program's own preparation of the file, must
// give back the permeability and skin the generator was given (Horner for the
// buildup, m(p) against log t for the gas, superposition for the two rates). A unit
// slip in the generator (tD, CD, 141.2, 1422, minutes, days) fails here.
TEST(Examples, SemilogLineRecoversPermeabilityAndSkin) {
    const Example cases[] = {
        {"oil-buildup.zvt", kSemilogPlot, 8, 100, 3, 162.6 * 400 * 1.25 * 0.8 / 50},
        {"gas-drawdown.zvt", kSemilogPlot, 5, 10, 2, 1637.0 * 4000 * 660 / 1e6 / 50},
        {"two-rate-drawdown.zvt", kSuperpositionPlot, 24, 60, 4, 162.6 * 1.2 * 1.0 / 50},
    };
    for (const Example& c : cases) {
        SCOPED_TRACE(c.file);
        AnalysisState s;
        const OpenResult opened = openTestFile(s, kExamples + c.file);
        ASSERT_TRUE(opened.ok) << opened.error.message();
        s.SemilogPlotKind = static_cast<std::int16_t>(c.kind);
        PrepareAnalysisData(s);
        const Line line = semilogLine(s, c.from);
        const double m = std::fabs(line.slope);
        EXPECT_NEAR(c.unitRate / m, c.k, 0.01 * c.k);
        double skin = 0;
        const double mu = s.OilViscosity; // the gas preparation leaves mu_g(p_i) here
        if (s.ShutInFlag == 1) {
            const double p1 = line.intercept + line.slope * Log10(s.ProducingTime + 1.0);
            skin = 1.151 * ((p1 - s.StartPressure) / m - skinTerm(s, c.k, mu));
        } else if (c.kind == kSuperpositionPlot) {
            skin = 1.151 * (line.intercept / m - skinTerm(s, c.k, mu));
        } else {
            skin = 1.151 * ((s.StartPseudoPressure - line.intercept) / m - skinTerm(s, c.k, mu));
        }
        EXPECT_NEAR(skin, c.skin, 0.1);
    }
}

// A new user opens an example and saves it again: the file must come back
// unchanged (every value fits its box's display mask, times and pressures are
// gauge numbers), or the examples would drift from what the program writes.
TEST(Examples, OpenThenSaveWritesTheSameFile) {
    for (const char* file : {"oil-buildup.zvt", "gas-drawdown.zvt", "two-rate-drawdown.zvt"}) {
        std::ifstream in(kExamples + file, std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        AnalysisState s;
        ASSERT_TRUE(loadTestFile(s, text.str(), file).ok) << file;
        EXPECT_EQ(testFileText(s), text.str()) << file;
    }
}

} // namespace
} // namespace zorvekan
