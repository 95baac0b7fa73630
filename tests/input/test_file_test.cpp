// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"
#include "input/input_rules.h"
#include "input/test_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <limits>
#include <map>
#include <sstream>
#include <vector>

namespace zorvekan {
namespace {

const std::string kData = std::string(TEST_DATA_DIR) + "/input/";

std::string fileText(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::stringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::stringstream in(text);
    for (std::string part; std::getline(in, part, separator);)
        parts.push_back(part);
    return parts;
}

struct TypedTest {
    struct {
        const char* title;
        const char* testType;
        int fluid, rateTimeUnit, testTimeUnit;
    } record1;
    std::string boxes;  // "objectName=text" separated by blanks
    std::string rates;  // rows "duration,rate[,gas,water]" separated by ";"
    std::string points; // rows "time,pressure"
};

// A test as the engineer types it on the input and entry screens, every value going
// through the screens' own rules.
AnalysisState typed(const TypedTest& t) {
    AnalysisState s;
    s.TestTitle = t.record1.title;
    applyTestType(s, t.record1.testType);
    s.FluidFlags = static_cast<std::int16_t>(t.record1.fluid);
    s.RateTimeUnit = static_cast<std::int16_t>(t.record1.rateTimeUnit);
    s.TestTimeUnit = static_cast<std::int16_t>(t.record1.testTimeUnit);
    // The GOR box only keeps gas in the test once the rates are there, so it is typed
    // last, and the rates are finished again so tp counts the free gas with it.
    const auto typeBoxes = [&](bool gor) {
        for (const std::string& item : split(t.boxes, ' '))
            for (const PropertyBoxInfo& box : propertyBoxes())
                if (item.substr(0, item.find('=')) == box.objectName &&
                    (box.box == PropertyBox::SolutionGor) == gor)
                    applyPropertyText(s, box.box, item.substr(item.find('=') + 1));
    };
    typeBoxes(false);
    for (const int mode : {1, 0}) {
        s.DatinMode = static_cast<std::int16_t>(mode);
        s.EntryCounter = 1;
        for (const std::string& row : split(mode == 1 ? t.rates : t.points, ';')) {
            std::array<std::string, 4> cells = {" ", " ", " ", " "};
            std::ranges::copy(split(row, ','), cells.begin());
            storeEntryRow(s, cells);
        }
        finishEntry(s);
    }
    typeBoxes(true);
    deriveFlowRateAndProducingTime(s);
    return s;
}

using B = PropertyBox;

const TypedTest kOilBuildup{
    {"Well A-7 buildup", "Buildup", kOil, 1, 1},
    "muin=0.8 boin=1.25 hin=30 rwin=4.248 phin=20 ctin=15 rein=40 psin=2000",
    "3,500",
    "1,2050.5;2,2101.25;5,2240;10,2380.75;30,2530;60,2581.5;120,2610"};

const TypedTest kGasDrawdown{
    {"Gas well G-2", "Drawdown", kGasPseudopressure, 0, 0},
    "muin=0.025 hin=50 rwin=3.5 phin=12 ctin=150 rein=80 psin=4500 ggin=0.7 trin=200",
    "48,2500",
    "0.5,4410.25;1,4395.5;2,4381;5,4362.75"};

const TypedTest kThreePhaseBuildup{
    {"Three-phase buildup", "Buildup", kOilGasWater, 0, 0},
    "muin=1.2 boin=1.35 hin=45.5 rwin=6 phin=18.5 ctin=12.5 rein=160 psin=3200 bwin=1.02 "
    "mwin=0.5 bgin=0.9 mgin=0.018 rsin=0.4",
    "24,300,250,50;48,250,220,60",
    "0.25,2950;1,3010.5;4,3080"};

// Every field a test file carries, and what Open derives from them, compared exactly.
void expectSameTest(const AnalysisState& a, const AnalysisState& b, const std::string& what) {
    SCOPED_TRACE(what);
    EXPECT_EQ(a.TestTitle, b.TestTitle);
    EXPECT_EQ(a.ShutInFlag, b.ShutInFlag);
    EXPECT_EQ(a.InjectionFlag, b.InjectionFlag);
    EXPECT_EQ(a.FluidFlags, b.FluidFlags);
    EXPECT_EQ(a.RateTimeUnit, b.RateTimeUnit);
    EXPECT_EQ(a.TestTimeUnit, b.TestTimeUnit);
    for (const PropertyBoxInfo& box : propertyBoxes())
        EXPECT_EQ(a.*box.field, b.*box.field) << box.objectName;
    EXPECT_EQ(a.DrainageRadius, b.DrainageRadius);
    ASSERT_EQ(a.RateCount, b.RateCount);
    for (int j = 1; j <= a.RateCount; ++j) {
        EXPECT_EQ(a.RateTime[j], b.RateTime[j]) << "rate " << j;
        EXPECT_EQ(a.Rate[j], b.Rate[j]) << "rate " << j;
        if (a.FluidFlags >= 4) {
            EXPECT_EQ(a.GasRate[j], b.GasRate[j]) << "rate " << j;
            EXPECT_EQ(a.WaterRate[j], b.WaterRate[j]) << "rate " << j;
        }
    }
    ASSERT_EQ(a.TestPointCount, b.TestPointCount);
    for (int i = 1; i <= a.TestPointCount; ++i) {
        EXPECT_EQ(a.TestTime[i], b.TestTime[i]) << "point " << i;
        EXPECT_EQ(a.TestPressure[i], b.TestPressure[i]) << "point " << i;
    }
    EXPECT_EQ(a.FlowRate, b.FlowRate);
    EXPECT_EQ(a.ProducingTime, b.ProducingTime);
    EXPECT_EQ(a.DerivativeSpan, b.DerivativeSpan);
}

// The records, field order, unit conversions (days, minutes, inches, microsips, acres
// from the 3.1416 drainage radius) and number forms of Save, checked against files
// written out by hand: an oil buildup (3a, days, minutes), a gas drawdown in m(p)
// (record 2) and a three-phase buildup with two rates (3b, four-field rate records).
TEST(TestFile, WritesTheRecordsOfHandWrittenFiles) {
    const std::pair<const TypedTest*, const char*> cases[] = {
        {&kOilBuildup, "oil_buildup.zvt"},
        {&kGasDrawdown, "gas_drawdown.zvt"},
        {&kThreePhaseBuildup, "three_phase_buildup.zvt"}};
    for (const auto& [test, file] : cases)
        EXPECT_EQ(testFileText(typed(*test)), fileText(kData + file)) << file;
}

// Noise of a unit conversion must not reach the file (0.354 ft * 12 is 4.248, not
// 4.2479999999999993), nor may digits be lost; exponents are BASIC's "E-05".
TEST(TestFile, NumbersHaveAtMostFifteenDigits) {
    const std::pair<double, const char*> cases[] = {{0.354 * 12, "4.248"},
                                                    {1.5e-5 * 1e6, "15"},
                                                    {0.1 + 0.2, "0.3"},
                                                    {2.0 / 3.0, "0.666666666666667"},
                                                    {-0.0, "0"},
                                                    {-2.5, "-2.5"},
                                                    {1e-5, "1E-05"},
                                                    {1.5e15, "1.5E+15"},
                                                    {123456789012345.0, "123456789012345"},
                                                    {72.0 / 24.0, "3"}};
    for (const auto& [value, text] : cases)
        EXPECT_EQ(testFileNumber(value), text) << value;
    EXPECT_THROW(testFileNumber(std::numeric_limits<double>::infinity()), RuntimeError);
    EXPECT_THROW(testFileNumber(std::numeric_limits<double>::quiet_NaN()), RuntimeError);
}

// Save then Open gives back the same test for every fluid code, test type and unit
// choice: a conversion applied on one side only, a record written for the wrong code
// or a unit taken from the screen instead of record 1 shows up as a changed field.
TEST(TestFile, SaveOpenRoundTripForEveryChoice) {
    for (int fluid = 0; fluid <= 7; ++fluid)
        for (const char* type : {"Buildup", "Drawdown", "Injectivity", "Falloff"})
            for (int rtu = 0; rtu <= 1; ++rtu)
                for (int ttu = 0; ttu <= 1; ++ttu) {
                    TypedTest t = kThreePhaseBuildup;
                    t.record1 = {t.record1.title, type, fluid, rtu, ttu};
                    t.boxes += " ggin=0.65 trin=185.5";
                    const AnalysisState saved = typed(t);
                    const std::string text = testFileText(saved);
                    const std::string what = std::string(type) + " fluid " + std::to_string(fluid) +
                                             " units " + std::to_string(rtu) + std::to_string(ttu);
                    AnalysisState fresh;
                    fresh.RateTimeUnit = static_cast<std::int16_t>(1 - rtu); // screen disagrees
                    fresh.TestTimeUnit = static_cast<std::int16_t>(1 - ttu);
                    ASSERT_TRUE(loadTestFile(fresh, text, "t.zvt").ok) << what;
                    AnalysisState same = saved;
                    same.DerivativeSpan = 0.5;
                    ASSERT_TRUE(loadTestFile(same, text, "t.zvt").ok) << what;
                    expectSameTest(saved, same, what);
                    // In a fresh state only the boxes the file carries for this code
                    // are filled; each must hold the saved value.
                    for (const PropertyBox box : fileCarriedBoxes(fluid))
                        EXPECT_EQ(fresh.*propertyBox(box).field, saved.*propertyBox(box).field)
                            << what << ' ' << propertyBox(box).objectName;
                    EXPECT_EQ(testFileText(fresh), text) << what;
                }
}

// Open refills the boxes in their typed units (porosity in %, rw in inches, ct in
// microsips) with their masks, derives q and tp from the rates as finishing entry
// does, and resets the derivative spacing; the lists follow record 1.
TEST(TestFile, OpenRefillsTheInputScreen) {
    AnalysisState s;
    s.DerivativeSpan = 0.35;
    const OpenResult r = openTestFile(s, kData + "three_phase_buildup.zvt");
    ASSERT_TRUE(r.ok) << r.error.message();
    EXPECT_EQ(r.refill.title, "Three-phase buildup");
    EXPECT_EQ(r.refill.testType, "Buildup");
    EXPECT_TRUE(r.refill.oil && r.refill.gas && r.refill.water);
    EXPECT_EQ(r.refill.rateTimeUnit, "Flow Times: hrs.");
    EXPECT_EQ(r.refill.testTimeUnit, "Test Times: hrs.");
    std::map<PropertyBox, std::string> shown;
    for (const BoxText& b : r.refill.boxes)
        shown[b.box] = b.text;
    EXPECT_EQ(shown[B::Porosity], "18.5");
    EXPECT_EQ(shown[B::WellRadius], "6.");
    EXPECT_EQ(shown[B::Compressibility], "12.5");
    EXPECT_EQ(shown[B::DrainageArea], "160.");
    EXPECT_EQ(shown[B::GasViscosity], ".018");
    EXPECT_EQ(r.refill.boxes.back().box, B::SolutionGor);
    EXPECT_EQ(s.WellboreRadius, 0.5);
    EXPECT_EQ(s.FlowRate, 250.0);
    // tp = 24*(V_o + V_g + V_w) / (Bo*qo + Bw*qw + Bg*(qg - Rs*qo)) at the last rate.
    const double volume = 24 * (1.35 * 300 + 0.9 * (250 - 0.4 * 300) + 1.02 * 50) +
                          48 * (1.35 * 250 + 0.9 * (220 - 0.4 * 250) + 1.02 * 60);
    const double lastRate = 1.35 * 250 + 1.02 * 60 + 0.9 * (220 - 0.4 * 250);
    EXPECT_NEAR(s.ProducingTime, volume / lastRate, 1e-12);
    EXPECT_EQ(s.DerivativeSpan, 0.2);
}

// The boxes are refilled through their change rules, the GOR after the rates: a value
// with more digits than its box shows is stored as shown, and a GOR that takes all the
// gas of the last rate lowers oil+gas+water to oil+water and tells the screen to clear
// the gas box. A drawdown has no producing time whatever the history.
TEST(TestFile, OpenRunsTheBoxGorAndDrawdownRules) {
    TypedTest t = kThreePhaseBuildup;
    t.record1.testType = "Drawdown";
    AnalysisState saved = typed(t);
    saved.SolutionGor = 0.9; // 220 - 0.9*250 < 0
    saved.OilFvf = 1.23456;
    AnalysisState s;
    s.ProducingTime = 99;
    const OpenResult r = loadTestFile(s, testFileText(saved), "t.zvt");
    ASSERT_TRUE(r.ok);
    EXPECT_TRUE(r.refill.undersaturated);
    EXPECT_FALSE(r.refill.gas);
    EXPECT_EQ(s.FluidFlags, kOilWater);
    EXPECT_EQ(s.ProducingTime, 0.0);
    EXPECT_EQ(s.OilFvf, 1.2346);
    EXPECT_EQ(r.refill.boxes[1].box, B::Fvf);
    EXPECT_EQ(r.refill.boxes[1].text, "1.2346");
}

// Fields the file does not carry keep their values (the state is not cleared between
// tests), and results of the previous analysis stay until they are recomputed.
TEST(TestFile, FieldsOutsideTheFileAreKept) {
    AnalysisState s;
    s.GasGravity = 0.72;
    s.WaterFvf = 1.03;
    s.Permeability = 55;
    s.RateTime[2] = 7;
    ASSERT_TRUE(openTestFile(s, kData + "oil_buildup.zvt").ok);
    EXPECT_EQ(s.GasGravity, 0.72);
    EXPECT_EQ(s.WaterFvf, 1.03);
    EXPECT_EQ(s.Permeability, 55.0);
    EXPECT_EQ(s.RateTime[2], 7.0);
    EXPECT_EQ(s.RateTime[1], 72.0); // 3 days
    EXPECT_EQ(s.TestTime[7], 2.0);  // 120 minutes
    EXPECT_EQ(s.ProducingTime, 72.0);
}

// A new user opens an example and saves it again: the file must come back unchanged
// (every value fits its box's display mask, times and pressures are gauge numbers),
// or the examples would drift from what the program writes.
TEST(TestFile, ExamplesOpenThenSaveTheSameFile) {
    for (const char* file : {"oil-buildup.zvt", "gas-drawdown.zvt", "two-rate-drawdown.zvt",
                             "fractured-drawdown.zvt", "dual-porosity-buildup.zvt"}) {
        const std::string text = fileText(std::string(SOURCE_DIR) + "/examples/" + file);
        AnalysisState s;
        ASSERT_TRUE(loadTestFile(s, text, file).ok) << file;
        EXPECT_EQ(testFileText(s), text) << file;
    }
}

// Files written by older programs: CRLF line ends, numbers without a leading zero,
// a D exponent and blanks around fields are all the same test.
TEST(TestFile, ReadsBasicStyleVariants) {
    const std::string text = "\"Old\" , 0 ,1,1,0,0,0,0,0\r\n"
                             "1,.8,1.25,3D1,4.248,.2,1.5E+01,2000,40\r\n"
                             "500,72\r\n\r\n"
                             "1,2050.5\r\n";
    AnalysisState s;
    const OpenResult r = loadTestFile(s, text, "old.zvt");
    ASSERT_TRUE(r.ok) << r.error.message();
    EXPECT_EQ(s.TestTitle, "Old");
    EXPECT_EQ(s.Thickness, 30.0);
    EXPECT_EQ(s.Porosity, 0.2);
    EXPECT_DOUBLE_EQ(s.TotalCompressibility, 1.5e-5);
    EXPECT_EQ(s.TestPointCount, 1);
}

// A quote or a line break in the title would split the record on reading; Save
// turns them into harmless characters so the file opens again.
TEST(TestFile, TitleWithQuotesStillOpens) {
    AnalysisState s = typed(kOilBuildup);
    s.TestTitle = "Well \"A\"\nday 2";
    AnalysisState back;
    ASSERT_TRUE(loadTestFile(back, testFileText(s), "t.zvt").ok);
    EXPECT_EQ(back.TestTitle, "Well 'A' day 2");
}

// Damaged and foreign files (in the manner of Tiled's tests/errors): each is refused
// with the file, the line, the field and the fault, and the current test stays as
// it was, never half-overwritten.
TEST(TestFile, BrokenFilesAreRefusedAndChangeNothing) {
    struct Case {
        const char* file;
        int line;
        const char* field;
        const char* problem;
    };
    const Case cases[] = {
        {"empty.zvt", 0, "", "the file is empty"},
        {"truncated_record.zvt", 2, "record 3a, WellboreRadius (in.)", "file ends before"},
        {"cut_mid_line.zvt", 5, "", "cut short"},
        {"text_for_number.zvt", 2, "record 3a, WellboreRadius (in.)", "\"abc\" is not a number"},
        {"rates_26.zvt", 2, "record 3a, RateCount", "26 rates declared"},
        {"points_600.zvt", 504, "record 5, test point 501", "holds 600 test points"},
        {"binary.zvt", 2, "", "not a text file (byte 0x1A)"},
        {"quoted_number.zvt", 1, "record 1, ShutInFlag", "quoted text"},
        {"no_closing_quote.zvt", 1, "record 1, TestTitle", "no closing quote"},
        {"fluid_code_9.zvt", 1, "record 1, FluidFlags", "9 is not one of the codes 0 to 7"},
        {"flag_fraction.zvt", 1, "record 1, ShutInFlag", "0.5 is not one of the codes"},
        {"half_point.zvt", 5, "record 5, test point 2, TestPressure", "file ends before"},
        {"pairs_file.zvt", 1, "record 1, TestTitle", "not a test file"},
        {"prose.zvt", 1, "record 1, TestTitle", "not a test file"},
        {"stray_quote.zvt", 2, "record 3a, OilViscosity", "stray double quote"},
        {"huge_area.zvt", 2, "record 3a, DrainageArea (acres)", "beyond the range"},
        {"gas_without_record_2.zvt", 2, "record 3a, StartPressure", "file ends before"},
    };
    const AnalysisState before = typed(kGasDrawdown);
    for (const Case& c : cases) {
        AnalysisState s = before;
        const std::string path = kData + "broken/" + c.file;
        const OpenResult r = openTestFile(s, path);
        ASSERT_FALSE(r.ok) << c.file;
        EXPECT_EQ(r.error.file, path);
        EXPECT_EQ(r.error.line, c.line) << c.file << ": " << r.error.message();
        EXPECT_EQ(r.error.field, c.field) << c.file;
        EXPECT_NE(r.error.message().find(c.problem), std::string::npos) << r.error.message();
        expectSameTest(before, s, c.file);
    }
    AnalysisState s = before;
    const OpenResult missing = openTestFile(s, kData + "no_such_file.zvt");
    EXPECT_FALSE(missing.ok);
    EXPECT_NE(missing.error.message().find("cannot be opened"), std::string::npos);
}

// Save replaces the file in one step and keeps no temporary beside it; a save that
// cannot be made leaves the previous file as it was.
TEST(TestFile, SaveIsAtomic) {
    namespace fs = std::filesystem;
    const fs::path dir = fs::temp_directory_path() / "zorvekan_save_test";
    fs::remove_all(dir);
    fs::create_directories(dir);
    const std::string path = (dir / "well.zvt").string();
    FileError error;
    ASSERT_TRUE(saveTestFile(typed(kOilBuildup), path, error)) << error.message();
    ASSERT_TRUE(saveTestFile(typed(kGasDrawdown), path, error)) << error.message();
    EXPECT_EQ(fileText(path), fileText(kData + "gas_drawdown.zvt"));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 1);
    const std::string unwritable = (dir / "missing-folder" / "well.zvt").string();
    EXPECT_FALSE(saveTestFile(typed(kOilBuildup), unwritable, error));
    EXPECT_EQ(error.file, unwritable);
    EXPECT_NE(error.message().find("cannot be written"), std::string::npos);
    // A folder in place of the file cannot be replaced; the folder is untouched.
    fs::create_directories(dir / "taken.zvt" / "inner");
    EXPECT_FALSE(saveTestFile(typed(kOilBuildup), (dir / "taken.zvt").string(), error));
    EXPECT_TRUE(fs::is_directory(dir / "taken.zvt" / "inner"));
    EXPECT_EQ(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 2);
    fs::remove_all(dir);
}

} // namespace
} // namespace zorvekan
