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

struct ExampleCase {
    const char* file;
    int kind;       // the plot kind the line is drawn on
    double t1, t2;  // test times (h) of the two points the line goes through
    double k, skin; // the generator's true values
};

// The point of the semilog series whose time is nearest to t.
int nearestPoint(const AnalysisState& s, double t) {
    int best = 1;
    for (int i = 2; i <= s.PointCount; ++i)
        if (std::fabs(std::log(s.SemilogTime[i] / t)) <
            std::fabs(std::log(s.SemilogTime[best] / t)))
            best = i;
    return best;
}

// The example tests were generated from an analytic reservoir with known k and skin; a
// line through two points of the radial-flow part of each must give them back (within
// 3 % and 0.3), on the buildup's Horner plot, the gas drawdown in m(p), and the two-rate
// drawdown's superposition plot (where 3.32 reads the skin about 0.1 high).
TEST(ExampleTests, SemilogLineRecoversTheReservoir) {
    const ExampleCase cases[] = {
        {"oil-buildup.zvt", kSemilogPlot, 10, 50, 100, 3},
        {"gas-drawdown.zvt", kSemilogPlot, 5, 60, 10, 2},
        {"two-rate-drawdown.zvt", kSuperpositionPlot, 24, 70, 60, 4},
    };
    for (const auto& c : cases) {
        AnalysisState s;
        const OpenResult opened = openTestFile(s, std::string(SOURCE_DIR) + "/examples/" + c.file);
        ASSERT_TRUE(opened.ok) << opened.error.message();
        s.SemilogPlotKind = static_cast<std::int16_t>(c.kind);
        PrepareAnalysisData(s);
        SemilogInputs in;
        in.scales.x = 100 / (s.SemilogXMax - s.SemilogXMin);
        in.scales.y = 60 / (s.SemilogYMax - s.SemilogYMin);
        for (double t : {c.t1, c.t2}) {
            const int i = nearestPoint(s, t);
            lineMouseDown(in.line, in.scales.x * (s.SemilogX[i] - s.SemilogXMin),
                          in.scales.y * (s.SemilogY[i] - s.SemilogYMin));
        }
        ComputeSemilogResults(s, in);
        EXPECT_NEAR(s.Permeability, c.k, 0.03 * c.k) << c.file;
        EXPECT_NEAR(s.SkinFactor, c.skin, 0.3) << c.file;
    }
}

} // namespace
} // namespace zorvekan
