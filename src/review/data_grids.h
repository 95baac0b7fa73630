// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zorvekan {

// The three editable grids of the test data screen. Grid coordinates: rows 0 and 1 are
// the two header rows (quantity, unit), so grid row r holds the entry at array index
// r - 1; column 0 is the first data column. Every operation writes straight into the
// analysis state; there is no separate apply step and no undo.
enum class DataGrid { TestPoints = 1, Rates = 2, PhaseRates = 3 };

// Which writer fills the cells. The masks differ on purpose between the writers, and a
// cell keeps the text of the last writer until the next full refill:
//               test points          rate history        phase rates
//   Full        ###.## / #####.#     ####.## / ####.#    ####.# / ####.#
//   CellEdit    ###.## / #####.#     ####.#  / ###.#     ###.#  / ###.#
//   InsertDelete ###.## / #####.#    ###.##  / #####.#   ####.# / ###.#
// The m(p) column of a gas test in pseudopressure is always "#####.##".
enum class GridFill { Full, CellEdit, InsertDelete };

struct GridContents {
    // rows[r][c]: the two header rows, then one row per entry. A column whose quantity
    // header is empty does not apply to the fluids of the test.
    std::vector<std::vector<std::string>> rows;
};

// Headers and cell texts of a grid; the phase-rate grid applies only to tests with two
// or more phases (FluidFlags >= 4).
GridContents gridContents(const AnalysisState& s, DataGrid g, GridFill fill);

// The text a cell shows for a value, by the mask of the writer.
std::string cellText(const AnalysisState& s, DataGrid g, int column, double value, GridFill fill);

// The stored value behind a data cell; empty for a header row or a column the grid
// does not have.
std::optional<double> cellValue(const AnalysisState& s, DataGrid g, int row, int column);

// Accepting a typed value for the cell (row, column): column 0 is the time (test
// points, rate durations) or the gas rate, any other column the pressure, rate or water
// rate, written at index row - 1. Header row 1 writes the reserved slot 0; header row 0
// is a subscript fault and leaves the state untouched. A corrected rate derives
// FlowRate and ProducingTime again; a corrected pressure of a gas test in
// pseudopressure recomputes m(p). Returns the cell's new text (the CellEdit mask).
std::string acceptCellEdit(AnalysisState& s, DataGrid g, int row, int column, double value);

// True when the entry at grid row `row` of the test-point grid has both a time and a
// pressure other than 0 (an inserted point is drawn only once both are entered).
bool pointComplete(const AnalysisState& s, int row);

// INSERT at grid row r of the test-point or rate grid: entries r-1.. move down one index
// and a zero entry takes index r - 1; the count grows by one. DELETE removes the entry at
// index r - 1 (header row 1 removes the first entry into slot 0); the count drops by
// one. Test points shift TestTime, TestPressure and TestPseudoPressure together; rates
// shift RateTime, Rate, GasRate and WaterRate and derive FlowRate and ProducingTime
// again. Header row 0, an INSERT beyond 500 points or 25 rates, or any other fault
// raises a RuntimeError and leaves the state untouched. DELETE with no entry does
// nothing.
void insertGridRow(AnalysisState& s, DataGrid g, int row);
void deleteGridRow(AnalysisState& s, DataGrid g, int row);

// The cells of the rectangle top..bottom x left..right as tab-separated lines, as a
// spreadsheet takes them: header cells by their text, data cells by their stored value
// at full precision (not the rounded display).
std::string copyGridCells(const AnalysisState& s, DataGrid g, int top, int left, int bottom,
                          int right);

struct PasteOutcome {
    int pasted = 0;                     // entries written
    std::optional<std::string> message; // why nothing was pasted
    bool limit = false;                 // the message is the 500-point or 25-rate limit
};

// Pastes two columns from the clipboard into the test-point grid (time in hours,
// pressure in psia) or the rate grid (duration in hours, rate per day) from grid row
// `row` on (a header row pastes from the first entry): the entries there are
// overwritten in order and the count grows when the paste runs past the last entry.
// Lines hold two numbers separated by tabs, commas, semicolons or blanks; further
// columns are ignored, as are blank lines and header lines before the first numbers.
// Any other line, or a paste beyond 500 points or 25 rates, pastes nothing and says why.
PasteOutcome pasteGridRows(AnalysisState& s, DataGrid g, int row, std::string_view clipboard);

} // namespace zorvekan
