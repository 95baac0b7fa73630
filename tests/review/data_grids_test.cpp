// SPDX-License-Identifier: MIT
#include "review/data_grids.h"

#include "core/analysis_data.h"

#include "../support/raised.h"

#include <gtest/gtest.h>

#include <vector>

namespace zorvekan {
namespace {

using testing::raised;

// Three points at 1, 2 and 3 h (pressures 3000 + 10 t, m(p) 100 t); a value in the
// reserved slot 0 shows where a header-row INSERT or DELETE leaves it. Two rates of a
// buildup: 24 h at 100 STB/d, then 12 h at 200 STB/d.
AnalysisState threePoints() {
    AnalysisState s;
    s.FluidFlags = kOil;
    s.ShutInFlag = 1;
    s.TestPointCount = 3;
    s.TestTime[0] = 0.5;
    s.TestPseudoPressure[0] = 50;
    for (int i = 1; i <= 3; ++i) {
        s.TestTime[i] = i;
        s.TestPressure[i] = 3000 + 10 * i;
        s.TestPseudoPressure[i] = 100 * i;
    }
    s.RateCount = 2;
    s.RateTime[1] = 24;
    s.Rate[1] = 100;
    s.RateTime[2] = 12;
    s.Rate[2] = 200;
    return s;
}

std::vector<double> times(const AnalysisState& s) {
    std::vector<double> t;
    for (int i = 1; i <= s.TestPointCount; ++i)
        t.push_back(s.TestTime[i]);
    return t;
}

// INSERT and DELETE index arithmetic at the first row, the last row and the header
// rows: the right points move, the count follows, m(p) travels with its point, and
// header row 0 (index -1) is a subscript fault that changes nothing.
TEST(GridRows, InsertAndDeleteShiftTheRightEntries) {
    struct Row {
        bool insert;
        int gridRow;
        std::vector<double> times; // empty: a fault
        double slot0;
    } rows[] = {
        {true, 2, {0, 1, 2, 3}, 0.5}, {true, 4, {1, 2, 0, 3}, 0.5}, {true, 1, {0.5, 1, 2, 3}, 0},
        {true, 0, {}, 0.5},           {false, 2, {2, 3}, 0.5},      {false, 4, {1, 2}, 0.5},
        {false, 1, {2, 3}, 1},        {false, 0, {}, 0.5},
    };
    for (const Row& row : rows) {
        AnalysisState s = threePoints();
        const AnalysisState before = s;
        auto op = [&] {
            (row.insert ? insertGridRow : deleteGridRow)(s, DataGrid::TestPoints, row.gridRow);
        };
        if (row.times.empty()) {
            EXPECT_EQ(raised(op).fault, Fault::SubscriptOutOfRange);
            EXPECT_EQ(times(s), times(before));
            EXPECT_EQ(s.TestPointCount, 3);
            continue;
        }
        op();
        EXPECT_EQ(times(s), row.times) << row.insert << " at row " << row.gridRow;
        EXPECT_EQ(s.TestTime[0], row.slot0);
        for (int i = 1; i <= s.TestPointCount; ++i) {
            if (s.TestTime[i] != 0) {
                EXPECT_EQ(s.TestPseudoPressure[i], 100 * s.TestTime[i]) << "m(p) of point " << i;
            }
        }
    }
}

// The bounds: an INSERT at 500 points or 25 rates is refused with the state untouched;
// a rate-grid DELETE derives the flow rate and producing time of what is left.
TEST(GridRows, LimitsAndTheRateHistory) {
    AnalysisState s = threePoints();
    s.TestPointCount = 500;
    EXPECT_TRUE(raised([&] { insertGridRow(s, DataGrid::TestPoints, 2); }).says("500 points"));
    EXPECT_EQ(s.TestPointCount, 500);
    s.RateCount = 25;
    EXPECT_TRUE(raised([&] { insertGridRow(s, DataGrid::Rates, 2); }).says("25 rates"));
    EXPECT_EQ(s.RateCount, 25);

    s = threePoints();
    deleteGridRow(s, DataGrid::Rates, 3); // the second rate goes: 24 h at 100 STB/d
    EXPECT_EQ(s.RateCount, 1);
    EXPECT_EQ(s.FlowRate, 100);
    EXPECT_EQ(s.ProducingTime, 24);
    insertGridRow(s, DataGrid::Rates, 2); // a zero rate before it: q stays the last rate
    EXPECT_EQ(s.RateCount, 2);
    EXPECT_EQ(s.Rate[2], 100);
    EXPECT_EQ(s.FlowRate, 100);
}

// Accepting a value: header row 1 writes the reserved slot; a corrected rate gives
// Horner's producing time tp = 24 V / q again, a corrected gas pressure its m(p).
TEST(GridEdit, AcceptDerivesWhatDependsOnTheValue) {
    AnalysisState s = threePoints();
    acceptCellEdit(s, DataGrid::TestPoints, 1, 0, 0.25);
    EXPECT_EQ(s.TestTime[0], 0.25);
    acceptCellEdit(s, DataGrid::Rates, 3, 1, 300); // last rate 300: tp = (2400+3600)/300 h
    EXPECT_EQ(s.FlowRate, 300);
    EXPECT_DOUBLE_EQ(s.ProducingTime, 20);

    AnalysisState gas = threePoints();
    gas.FluidFlags = kGasPseudopressure;
    gas.ShutInFlag = 0;
    gas.ReservoirTemperature = 200;
    gas.GasGravity = 0.7;
    gas.StartPressure = 3100;
    acceptCellEdit(gas, DataGrid::TestPoints, 4, 1, 2500);
    AnalysisState fresh = gas;
    PrepareAnalysisData(fresh);
    EXPECT_DOUBLE_EQ(gas.TestPseudoPressure[3], fresh.TestPseudoPressure[3]);
    EXPECT_LT(gas.TestPseudoPressure[3], gas.TestPseudoPressure[2]);
}

// The headers follow the fluids: m(p) for gas in pseudopressure, MCF/day for gas alone,
// "Oil Rate" beside other phases, and only the phase rates that flow.
TEST(GridContents, HeadersFollowTheFluids) {
    AnalysisState s = threePoints();
    s.FluidFlags = kGasPressure;
    EXPECT_EQ(gridContents(s, DataGrid::Rates, GridFill::Full).rows[1],
              (std::vector<std::string>{" hrs.", "MCF/day"}));
    struct Row {
        std::int16_t code;
        std::vector<std::string> points, rates, phases;
    } rows[] = {
        {kGasPseudopressure, {"Time", "Pressure", "m(p)*1E6"}, {"Time", "Rate"}, {}},
        {kOilGas, {"Time", "Pressure"}, {"Time", "Oil Rate"}, {" Gas Rate", ""}},
        {kOilWater, {"Time", "Pressure"}, {"Time", "Oil Rate"}, {"", "Wtr Rate"}},
        {kOilGasWater, {"Time", "Pressure"}, {"Time", "Oil Rate"}, {" Gas Rate", "Wtr Rate"}},
    };
    for (const Row& row : rows) {
        s.FluidFlags = row.code;
        EXPECT_EQ(gridContents(s, DataGrid::TestPoints, GridFill::Full).rows[0], row.points);
        EXPECT_EQ(gridContents(s, DataGrid::Rates, GridFill::Full).rows[0], row.rates);
        if (!row.phases.empty()) {
            EXPECT_EQ(gridContents(s, DataGrid::PhaseRates, GridFill::Full).rows[0], row.phases);
        }
    }
}

// Paste of a 3-row spreadsheet clipboard (a header line, tab, comma and blank
// separators) overwrites from the clicked row and extends the test; a bad line or a
// paste past 500 points changes nothing and says why; copy and paste round-trip the
// stored values at full precision.
TEST(GridClipboard, PasteAndCopy) {
    AnalysisState s = threePoints();
    pasteGridRows(s, DataGrid::TestPoints, 3,
                  "Time\tPressure\n2.5\t3100.25\n3.5, 3200\n4.5 3300\n");
    EXPECT_EQ(times(s), (std::vector<double>{1, 2.5, 3.5, 4.5}));
    EXPECT_EQ(s.TestPressure[2], 3100.25);

    const AnalysisState before = s;
    PasteOutcome bad = pasteGridRows(s, DataGrid::TestPoints, 2, "1\t2\nabc\t3\n");
    EXPECT_EQ(bad.message, "Line 2 of the clipboard is not a time and a pressure: \"abc\t3\"");
    s.TestPointCount = 499;
    bad = pasteGridRows(s, DataGrid::TestPoints, 500, "1\t2\n3\t4\n5\t6\n");
    EXPECT_TRUE(bad.limit);
    EXPECT_EQ(bad.message, "Maximum of  500Test Points Allowed");
    s.TestPointCount = before.TestPointCount;
    EXPECT_EQ(times(s), times(before));

    EXPECT_EQ(pasteGridRows(s, DataGrid::Rates, 2, "48\t150\n").pasted, 1);
    EXPECT_EQ(s.FlowRate, 200); // the last rate is still the second

    s.TestTime[1] = 0.1 + 0.2; // no short decimal form
    const std::string copied = copyGridCells(s, DataGrid::TestPoints, 0, 0, 5, 1);
    EXPECT_EQ(copied.substr(0, 26), "Time\tPressure\nhrs.\tpsi\n0.3");
    AnalysisState pasted;
    pasteGridRows(pasted, DataGrid::TestPoints, 2, copied);
    EXPECT_EQ(times(pasted), times(s));
    EXPECT_EQ(pasted.TestPressure[4], s.TestPressure[4]);
}

} // namespace
} // namespace zorvekan
