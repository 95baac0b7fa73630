// SPDX-License-Identifier: MIT
#include "typecurve/type_curve_match.h"
#include "typecurve/type_curve_plot.h"

#include "../support/raised.h"
#include "../support/recording_canvas.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <tuple>
#include <vector>

namespace zorvekan {
namespace {

using testing::raised;
using testing::RecordingCanvas;

// An oil buildup with round numbers: 141.2 q B mu / h = 1129.6 psi, so P_M / dp_M =
// 1 / 11.296 is k = 100 md; lambda = 125 md/cp, 0.000295 lambda h = 1.84375, so T_M =
// 184.375 at dt_M = 1 h is C = 0.01 bbl/psi; phi ct h rw^2 = 2.5e-5 ft^3/psi.
AnalysisState oilTest() {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.ShutInFlag = 1;
    s.OilViscosity = 0.8;
    s.OilFvf = 1.25;
    s.Thickness = 50;
    s.Porosity = 0.2;
    s.TotalCompressibility = 1e-5;
    s.WellboreRadius = 0.5;
    s.RateCount = 1;
    s.Rate[1] = 400;
    s.FlowRate = 400;
    s.ProducingTime = 72;
    return s;
}

constexpr MatchPoint kOilMatch{184.375, 1, 1, 11.296};

// Curves chosen from the estimates, including the 1E15 curve that is never chosen (CDe2s
// 5E16 keeps 1E20) and each side of a threshold; no flag or no estimate chooses nothing.
TEST(TypeCurvePreselection, CurveFromTheEstimates) {
    struct Row {
        double cde2s; // with skin 0, or the CD of a skin-1 row
        double skin;
        int curve;
    };
    const Row rows[] = {{0.5, 0, 1},    {0.65, 0, 2},    {1.99, 0, 2},    {6.5, 0, 4},
                        {54, 0, 4},     {549, 0, 5},     {5499, 0, 6},    {5501, 0, 7},
                        {5.04e5, 0, 7}, {5.06e5, 0, 8},  {4.9e14, 0, 10}, {5e16, 0, 12},
                        {4e59, 0, 15},  {5.6e59, 0, 16}, {1, 1, 4}};
    for (const Row& row : rows) {
        AnalysisState s = oilTest();
        s.TypeCurveEstimateFlag = 1;
        s.SkinFactor = row.skin;
        s.WellboreStorage = row.cde2s * 2.5e-5 / 0.894;
        EXPECT_EQ(preselectCurve(s, kSinglePorosityModel), row.curve) << row.cde2s;
        EXPECT_EQ(preselectCurve(s, kDualPorosityModel), row.curve) << row.cde2s;
        s.TypeCurveEstimateFlag = 0;
        EXPECT_FALSE(preselectCurve(s, kSinglePorosityModel));
    }
    const std::pair<double, int> fractures[] = {{25, 9}, {20, 9},   {19.99, 8},
                                                {5, 5},  {1.25, 2}, {1.2, 1}};
    for (const auto& [ratio, curve] : fractures) {
        AnalysisState s = oilTest();
        s.TypeCurveEstimateFlag = 1;
        s.FractureHalfLength = 100;
        s.DrainageHalfLength = 100 * ratio;
        EXPECT_EQ(preselectCurve(s, kVerticalFractureModel), curve) << ratio;
    }
    AnalysisState area = oilTest(); // xe from a 2000-ft square, xf 100 ft: xe/xf 10
    area.TypeCurveEstimateFlag = 1, area.FractureHalfLength = 100, area.DrainageArea = 4e6;
    EXPECT_EQ(preselectCurve(area, kVerticalFractureModel), 7);
    AnalysisState none = oilTest();
    none.TypeCurveEstimateFlag = 1;
    EXPECT_FALSE(preselectCurve(none, kSinglePorosityModel));   // no storage picked
    EXPECT_FALSE(preselectCurve(none, kVerticalFractureModel)); // no half-length
}

// The result lines of a match for each fluid code, from hand calculation: 1422 and T + 460
// for gas in pseudopressure, no rate on a per-unit-rate multi-rate drawdown, no gas line for
// a negative free-gas rate, the mobility of every phase in the storage. The storage models
// end with the storage of the match, C = 0.000295 k h dt_M / (mu T_M) = 1.475 / 147.5 =
// 0.01 bbl/psi, or 1E-5 (an exponent) at a match 1000 times later in tD/CD.
TEST(TypeCurveMatch, ResultLinesByFluidAndModel) {
    using Lines = std::vector<std::string>;
    const auto check = [](const char* name, int model, int curve, MatchPoint match,
                          void (*setUp)(AnalysisState&), const Lines& lines, double storage) {
        AnalysisState s = oilTest();
        setUp(s);
        const TypeCurveResults r = ComputeMatchResults(s, model, curve, match);
        EXPECT_EQ(r.lines, lines) << name;
        EXPECT_NEAR(r.storage, storage, 1e-6) << name;
        if (r.fractureHalfLength) {
            EXPECT_EQ(s.FractureHalfLength, *r.fractureHalfLength) << name;
        }
    };
    const Lines oil = {"CDe2s = 1.0E06", "Permeability = 100. md.", "Skin Factor = 3.97",
                       "Wellbore Storage = .01 bbl/psi."};
    check(
        "oil", kSinglePorosityModel, 8, kOilMatch, [](AnalysisState&) {}, oil, 0.01);
    check(
        "small storage", kSinglePorosityModel, 8, {1.84375e5, 1, 1, 11.296}, [](AnalysisState&) {},
        {"CDe2s = 1.0E06", "Permeability = 100. md.", "Skin Factor = 7.42",
         "Wellbore Storage = 1.0E-05 bbl/psi."},
        1e-5);
    check(
        "gas in m(p)", kSinglePorosityModel, 8, {184.375, 1, 1, 0.750816},
        [](AnalysisState& s) {
            s.FluidFlags = kGasPseudopressure, s.FlowRate = 4000, s.ReservoirTemperature = 200;
        },
        oil, 0.01);
    check(
        "two rates", kSinglePorosityModel, 8, {184.375, 1, 1, 0.02824},
        [](AnalysisState& s) {
            s.ShutInFlag = 0, s.ProducingTime = 0, s.RateCount = 2;
            s.Rate[1] = 300, s.Rate[2] = 500, s.FlowRate = 500;
        },
        oil, 0.01);
    check(
        "oil and gas, no free gas", kSinglePorosityModel, 8, kOilMatch,
        [](AnalysisState& s) {
            s.FluidFlags = kOilGas, s.GasRate[1] = 100, s.SolutionGor = 1;
            s.GasViscosity = 0.02, s.GasFvf = 1;
        },
        {"CDe2s = 1.0E06", "Oil Permeability = 100. md.", "Skin Factor = 3.97",
         "Wellbore Storage = .01 bbl/psi."},
        0.01);
    check(
        "three phases", kVerticalFractureModel, 2, {2 * 184.375, 1, 1, 11.296},
        [](AnalysisState& s) {
            s.FluidFlags = kOilGasWater, s.GasRate[1] = 500, s.SolutionGor = 0.5;
            s.GasViscosity = 0.02, s.GasFvf = 1;
            s.WaterRate[1] = 200, s.WaterViscosity = 0.5, s.WaterFvf = 1;
        },
        {"xe/xf = 1.5", "Oil Permeability = 100. md.", "Gas Permeability = 1.5 md.",
         "Wtr Permeability = 25. md.", "Fracture Half Length = 9. ft."},
        0.01);
    check(
        "fracture", kVerticalFractureModel, 9, {1.65, 1, 1, 11.296}, [](AnalysisState&) {},
        {"xe/xf = Infinite", "Permeability = 100. md.", "Fracture Half Length = 100. ft."},
        1.117424); // 1.84375 / 1.65
}

// Dual porosity from the two transition picks, by hand: P1 = 0.003, P2 = 0.001, omega 1/3,
// CD = 0.8936 * 0.01 / 2.5e-5 = 357.44, lambda = (2/3) 0.001 / CD = 1.865e-6, CDe2sfm =
// 1E6 / 3, s = 0.5 ln(CDe2sfm * 1.119 * 2.5e-5 / 0.01) = 3.42, Le-2s = lambda e^-2s = 2.0e-9;
// a curve from the wrong group is refused.
TEST(TypeCurveMatch, DualPorosityFromTheTransitionCurves) {
    AnalysisState s = oilTest();
    const TypeCurveResults match = ComputeMatchResults(s, kDualPorosityModel, 8, kOilMatch);
    EXPECT_EQ(match.lines,
              (std::vector<std::string>{"CDe2s(frac) = 1.0E06", "Permeability = 100. md.",
                                        "Wellbore Storage = .01 bbl/psi."}));
    EXPECT_NEAR(match.storageGroup, 357.44, 1e-9);
    const TypeCurveResults r = ComputeDualPorosityResults(s, match, 15, 21);
    EXPECT_EQ(r.lines, (std::vector<std::string>{
                           "CDe2s(frac) = 1.0E06", "Permeability = 100. md.", "Omega = 3.3E-01",
                           "Lambda = 1.9E-06", "CDe2sfm = 3.3E05", "Skin Factor = 3.42",
                           "Le-2s = 2.0E-09", "Wellbore Storage = .01 bbl/psi."}));
    EXPECT_EQ(r.dual->lateCurve, 8);       // 3.3E5 lies in 1E5..1E7
    EXPECT_EQ(r.dual->transitionCurve, 6); // 2E-9 lies in 1E-9..1E-7
    for (const auto& [p1, p2] : {std::pair{19, 21}, std::pair{15, 16}, std::pair{12, 21}})
        EXPECT_EQ(raised([&] { ComputeDualPorosityResults(s, match, p1, p2); }).fault,
                  Fault::InvalidArgument);
}

// The late curve of the fracture-plus-matrix system: each bound belongs to the interval
// below it, and the intervals differ from the preselection thresholds above 5500.
TEST(TypeCurveMatch, LateCurveIntervals) {
    const std::pair<double, int> rows[] = {
        {0.65, 1},  {0.66, 2},  {2, 2},     {6.5, 3},   {55, 4},    {550, 5},    {5500, 6},
        {5501, 7},  {1e5, 7},   {1.1e5, 8}, {1e7, 8},   {1e9, 9},   {5e12, 10},  {5.1e12, 11},
        {5e17, 11}, {1e25, 12}, {1e35, 13}, {1e45, 14}, {1e55, 15}, {1.1e55, 16}};
    for (const auto& [v, curve] : rows)
        EXPECT_EQ(lateCurveForCDe2sfm(v), curve) << v;
}

// Data placed from the estimates lie where the estimates put them: a match anywhere on the
// picture gives k and C back; without estimates the first point sits at the corner; a
// shift moves the data, never the grid.
TEST(TypeCurvePlacement, EstimatesRoundTripThroughAMatch) {
    for (int model : {kSinglePorosityModel, kDualPorosityModel, kVerticalFractureModel}) {
        AnalysisState s = oilTest();
        s.TypeCurveEstimateFlag = 1;
        s.Permeability = 100;
        s.WellboreStorage = 0.01;
        s.FractureHalfLength = 100;
        const DataPlacement p = initialPlacement(s, model);
        for (const auto& [x, y] : {std::pair{10.0, 15.0}, std::pair{73.0, 41.5}}) {
            const TypeCurveResults r =
                ComputeMatchResults(s, model, 9, matchPointAt(typeCurveGrid(model), p, x, y));
            EXPECT_NEAR(r.permeability, 100, 1e-9) << model;
            if (model == kVerticalFractureModel) {
                EXPECT_NEAR(*r.fractureHalfLength, 100, 1e-9);
            } else {
                EXPECT_NEAR(r.storage, 0.01, 1e-12) << model;
            }
        }
    }
    AnalysisState s = oilTest();
    s.TestPointCount = 1, s.LogTime[1] = 0.3, s.LogDeltaP[1] = 1.2;
    const DataPlacement corner = initialPlacement(s, kSinglePorosityModel);
    EXPECT_EQ(std::pair(corner.xd0, corner.yd0), std::pair(0.3, 1.2));
}

// The status line under the cursor, by hand on the single-porosity grid (20 units a decade
// from 0.1) with the data shifted to put their 0.1 h and 1 psi at (20, 20): at (40, 40)
// tD/CD = 10, pD = 10, te = 1 h of a 72-h flow, i.e. dt = 72 / 71 = 1.014 h, and dp = 10 psi;
// on the fracture's grid (from 0.001 and 0.01, 100/6 units a decade) tDxf = 10^-0.6 and
// pD = 10^0.4, with the groups alone when there are no data.
TEST(TypeCurveReadout, GroupsAndTheDataUnderTheCursor) {
    const std::tuple<int, int, std::string> rows[] = {
        {kSinglePorosityModel, 1,
         "tD/CD = 10.  pD = 10.    te = 1. hrs.  dt = 1.014 hrs.  dp = 10. psi"},
        {kVerticalFractureModel, 0, "tDxf = 0.251189  pD = 2.512"},
    };
    for (const auto& [model, points, text] : rows) {
        AnalysisState s = oilTest();
        s.TestPointCount = points;
        TypeCurveView view;
        view.model = model;
        view.placement = {-1, 0, 20, 20};
        EXPECT_EQ(typeCurveReadout(s, view, 40, 40), text) << model;
    }
}

// A small library of two curves: overlapping blocks (the last wins), a derivative block
// standing for its pressure curve, misses and clicks outside the box hitting nothing.
TEST(TypeCurveHitTest, LastBlockWinsAndDerivativesStandForTheirCurve) {
    const auto dir = std::filesystem::temp_directory_path() /
                     ("zorvekan_hit_test_" + std::to_string(::getpid()));
    std::filesystem::create_directories(dir);
    const auto path = dir / "ONETYPE";
    std::ofstream(path) << "2\n2\n-1,0\n4,0\n2\n-1,0.02\n4,0.02\n"
                        << "2\n-1,-0.5\n4,-0.5\n3\n-1,1\n1,1\n4,1\n";
    const TypeCurveGrid g = typeCurveGrid(kSinglePorosityModel); // y = 0 at Y = 20
    const struct {
        double x, y;
        std::optional<int> curve;
        int first;
    } rows[] = {{50, 20.2, 2, 1}, {50, 19.3, 1, 1}, {50, 10.3, 1, 1}, {50, 40.9, 2, 1},
                {50, 30, {}, 1},  {-5, 20, {}, 1},  {50, 10, {}, 2},  {40, 40, 2, 2}};
    for (const auto& row : rows)
        EXPECT_EQ(hitTestCurve(path, LibraryFile::OneType, g, row.x, row.y, row.first), row.curve)
            << row.x << ", " << row.y;
    std::filesystem::remove_all(dir);
}

// The family as drawn: pressure blocks solid and derivative blocks dashed, green, width 1,
// inside the axis box; the data at their placed positions; the captions; the preselected
// curve in magenta with its label only when there is an estimate.
TEST(TypeCurveDrawing, FamilyOverlayAndLabels) {
    const LibraryLocation library{SOURCE_DIR "/data", ""};
    AnalysisState s = oilTest();
    s.TestPointCount = 2, s.LogTime[1] = 0, s.LogDeltaP[1] = 1;
    s.LogTime[2] = 1, s.LogDeltaP[2] = 1.5;
    s.DerivativeCount = 1, s.DerivativeLogTime[1] = 0.5, s.LogDerivative[1] = 0.5;
    TypeCurveView view;
    view.placement = {0, 0.5, 10, 0}; // first point at (10, 10)
    RecordingCanvas c;
    const auto magenta = [&] {
        return std::count_if(c.lines.begin(), c.lines.end(),
                             [](const auto& l) { return l.colour == kMagenta; });
    };
    DrawTypeCurves(c, s, library, view);
    int green[2] = {0, 0}; // solid, dashed
    for (const auto& l : c.lines)
        if (l.colour == kCurveGreen) {
            EXPECT_TRUE(l.width == 1 && std::min({l.x1, l.x2, l.y1, l.y2}) >= -1e-9 &&
                        std::max(l.x1, l.x2) <= 100 + 1e-9 && std::max(l.y1, l.y2) <= 60 + 1e-9);
            ++green[l.dashed];
        }
    EXPECT_GT(green[0], 16 * 20);
    EXPECT_GT(green[1], 16 * 20);
    ASSERT_EQ(c.dotsIn(kDataBlue), 2);
    EXPECT_EQ(std::pair(c.dots[0].x, c.dots[0].y), std::pair(10.0, 10.0));
    EXPECT_EQ(std::pair(c.dots[1].x, c.dots[1].y), std::pair(30.0, 20.0));
    EXPECT_EQ(c.dotsIn(kLightBlue), 1);
    EXPECT_TRUE(c.findText("log tD/CD"));
    ASSERT_TRUE(c.findText("log pD, log pD'"));
    EXPECT_TRUE(c.findText("log pD, log pD'")->vertical);
    EXPECT_EQ(magenta(), 0);

    s.TypeCurveEstimateFlag = 1;
    s.WellboreStorage = 5e16 * 2.5e-5 / 0.894;
    view.selectedCurve = preselectCurve(s, kSinglePorosityModel);
    DrawTypeCurves(c, s, library, view);
    EXPECT_TRUE(c.findText("CDe2s = 1.0E20"));
    EXPECT_GT(magenta(), 20);

    view = {};
    view.model = kVerticalFractureModel, view.selectedCurve = 9;
    DrawTypeCurves(c, s, library, view);
    EXPECT_TRUE(c.findText("log tDxf") && c.findText("xe/xf = Infinite"));
}

} // namespace
} // namespace zorvekan
