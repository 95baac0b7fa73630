// SPDX-License-Identifier: MIT
#include "review/data_grids.h"

#include "core/display_mask.h"
#include "core/pseudopressure.h"
#include "core/runtime_error.h"
#include "input/entry_rules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace zorvekan {

namespace {

constexpr const char* kPseudoMask = "#####.##";

// Masks of columns 0 and 1 of each grid, by writer.
std::pair<const char*, const char*> masksOf(DataGrid g, GridFill fill) {
    switch (g) {
    case DataGrid::TestPoints:
        return {"###.##", "#####.#"};
    case DataGrid::Rates:
        if (fill == GridFill::Full)
            return {"####.##", "####.#"};
        if (fill == GridFill::CellEdit)
            return {"####.#", "###.#"};
        return {"###.##", "#####.#"};
    case DataGrid::PhaseRates:
        if (fill == GridFill::Full)
            return {"####.#", "####.#"};
        if (fill == GridFill::CellEdit)
            return {"###.#", "###.#"};
        return {"####.#", "###.#"};
    }
    return {"", ""};
}

int entryCount(const AnalysisState& s, DataGrid g) {
    return g == DataGrid::TestPoints ? s.TestPointCount : s.RateCount;
}

std::vector<std::vector<std::string>> headers(const AnalysisState& s, DataGrid g) {
    const int code = s.FluidFlags;
    switch (g) {
    case DataGrid::TestPoints:
        if (code == kGasPseudopressure)
            return {{"Time", "Pressure", "m(p)*1E6"}, {" hrs.", "  psi", "psi*psi/cp"}};
        return {{"Time", "Pressure"}, {" hrs.", "  psi"}};
    case DataGrid::Rates: {
        const bool gasAlone = code == kGasPseudopressure || code == kGasPressure;
        return {{"Time", code >= kOilGas ? "Oil Rate" : "Rate"},
                {" hrs.", gasAlone ? "MCF/day" : "STB/day"}};
    }
    case DataGrid::PhaseRates: {
        const bool gas = code != kOilWater, water = code != kOilGas;
        return {{gas ? " Gas Rate" : "", water ? "Wtr Rate" : ""},
                {gas ? "MCF/day" : "", water ? "STB/day" : ""}};
    }
    }
    return {};
}

bool columnApplies(const AnalysisState& s, DataGrid g, int column) {
    const auto h = headers(s, g);
    return column >= 0 && column < static_cast<int>(h[0].size()) &&
           !h[0][static_cast<std::size_t>(column)].empty();
}

// The stored value a cell writes: column 0 the time or the gas rate, any other column
// the pressure, rate or water rate (also the m(p) column of a test-point grid, which
// shows m(p) but takes a pressure, as every column after the first does).
double& slot(AnalysisState& s, DataGrid g, int column, int index) {
    switch (g) {
    case DataGrid::TestPoints:
        return column == 0 ? s.TestTime[index] : s.TestPressure[index];
    case DataGrid::Rates:
        return column == 0 ? s.RateTime[index] : s.Rate[index];
    case DataGrid::PhaseRates:
        break;
    }
    return column == 0 ? s.GasRate[index] : s.WaterRate[index];
}

// The stored value a cell shows.
double shown(const AnalysisState& s, DataGrid g, int column, int index) {
    switch (g) {
    case DataGrid::TestPoints:
        if (column == 2)
            return s.TestPseudoPressure[index];
        return column == 0 ? s.TestTime[index] : s.TestPressure[index];
    case DataGrid::Rates:
        return column == 0 ? s.RateTime[index] : s.Rate[index];
    case DataGrid::PhaseRates:
        break;
    }
    return column == 0 ? s.GasRate[index] : s.WaterRate[index];
}

// m(p) of every point again after the pressures changed, when the test is analysed in
// pseudopressure and the gas is described; a point still waiting for its pressure (0)
// keeps the m(p) it has until it gets one.
void refreshPseudopressures(AnalysisState& s) {
    if (!(usesPseudopressure(s) && s.ReservoirTemperature > 0 && s.GasGravity > 0 &&
          s.StartPressure > 0 && s.TestPointCount >= 1))
        return;
    for (int i = 1; i <= s.TestPointCount; ++i)
        if (!(s.TestPressure[i] > 0))
            return;
    ComputePseudopressures(s);
}

// Runs an edit on a copy of the state and keeps it only when it ran to the end, so a
// fault part-way (a subscript, a division by zero in the producing time) changes
// nothing.
template <class Edit> void transaction(AnalysisState& s, Edit&& edit) {
    AnalysisState next = s;
    std::forward<Edit>(edit)(next);
    s = std::move(next);
}

void afterRowsChanged(AnalysisState& s, DataGrid g) {
    if (g == DataGrid::TestPoints)
        refreshPseudopressures(s);
    else
        deriveFlowRateAndProducingTime(s);
}

void requireShiftingGrid(DataGrid g) {
    if (g == DataGrid::PhaseRates)
        throw RuntimeError(Fault::InvalidArgument,
                           "rows are inserted and deleted on the rate-history grid");
}

int limitOf(DataGrid g) {
    return g == DataGrid::TestPoints ? kMaxTestPoints : kMaxRates;
}

void setCount(AnalysisState& s, DataGrid g, int n) {
    (g == DataGrid::TestPoints ? s.TestPointCount : s.RateCount) = static_cast<std::int16_t>(n);
}

// dst[j] <- src[j'] for each array a grid row carries.
void moveEntry(AnalysisState& s, DataGrid g, int to, int from) {
    if (g == DataGrid::TestPoints) {
        s.TestTime[to] = s.TestTime[from];
        s.TestPressure[to] = s.TestPressure[from];
        s.TestPseudoPressure[to] = s.TestPseudoPressure[from];
    } else {
        s.RateTime[to] = s.RateTime[from];
        s.Rate[to] = s.Rate[from];
        s.GasRate[to] = s.GasRate[from];
        s.WaterRate[to] = s.WaterRate[from];
    }
}

void clearEntry(AnalysisState& s, DataGrid g, int index) {
    if (g == DataGrid::TestPoints) {
        s.TestTime[index] = s.TestPressure[index] = s.TestPseudoPressure[index] = 0;
    } else {
        s.RateTime[index] = s.Rate[index] = s.GasRate[index] = s.WaterRate[index] = 0;
    }
}

// A number as a spreadsheet reads it back unchanged: the shortest text that round-trips.
std::string roundTrip(double v) {
    std::array<char, 32> buf{};
    const auto r = std::to_chars(buf.data(), buf.data() + buf.size(), v);
    return std::string(buf.data(), r.ptr);
}

std::string_view trimmed(std::string_view t) {
    const auto first = t.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    return t.substr(first, t.find_last_not_of(" \t\r") - first + 1);
}

std::optional<double> strictNumber(std::string_view t) {
    t = trimmed(t);
    if (!t.empty() && t.front() == '+')
        t.remove_prefix(1);
    double v = 0;
    const auto r = std::from_chars(t.data(), t.data() + t.size(), v);
    if (t.empty() || r.ec != std::errc() || r.ptr != t.data() + t.size())
        return std::nullopt;
    return v;
}

// The fields of one clipboard line: split at tabs when it has any (a spreadsheet row),
// otherwise at commas, semicolons and runs of blanks.
std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    const bool tabs = line.find('\t') != std::string_view::npos;
    const std::string_view separators = tabs ? "\t" : ",; ";
    std::size_t start = 0;
    while (start <= line.size()) {
        const std::size_t end = std::min(line.find_first_of(separators, start), line.size());
        const std::string_view field = trimmed(line.substr(start, end - start));
        if (!field.empty() || tabs)
            fields.push_back(field);
        start = end + 1;
    }
    return fields;
}

struct ClipboardRows {
    std::vector<std::pair<double, double>> rows;
    std::optional<std::string> error;
};

ClipboardRows parseClipboard(std::string_view text, const char* pairName) {
    ClipboardRows out;
    int lineNumber = 0;
    while (!text.empty()) {
        const std::size_t eol = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, eol);
        text.remove_prefix(std::min(eol + 1, text.size()));
        ++lineNumber;
        if (trimmed(line).empty())
            continue;
        const auto fields = fieldsOf(line);
        std::optional<double> a, b;
        if (fields.size() >= 2) {
            a = strictNumber(fields[0]);
            b = strictNumber(fields[1]);
        }
        if (a && b) {
            out.rows.emplace_back(*a, *b);
            continue;
        }
        const bool header = out.rows.empty() && (fields.empty() || !strictNumber(fields[0]));
        if (header)
            continue;
        out.error = "Line " + std::to_string(lineNumber) + " of the clipboard is not " + pairName +
                    ": \"" + std::string(trimmed(line)) + "\"";
        return out;
    }
    return out;
}

} // namespace

GridContents gridContents(const AnalysisState& s, DataGrid g, GridFill fill) {
    GridContents c;
    c.rows = headers(s, g);
    const std::size_t columns = c.rows[0].size();
    const int n = entryCount(s, g);
    for (int index = 1; index <= n; ++index) {
        std::vector<std::string> row(columns);
        for (std::size_t col = 0; col < columns; ++col)
            if (!c.rows[0][col].empty())
                row[col] = cellText(s, g, static_cast<int>(col),
                                    shown(s, g, static_cast<int>(col), index), fill);
        c.rows.push_back(std::move(row));
    }
    return c;
}

std::string cellText(const AnalysisState&, DataGrid g, int column, double value, GridFill fill) {
    if (g == DataGrid::TestPoints && column == 2 && fill != GridFill::CellEdit)
        return Format(value, kPseudoMask);
    const auto [first, other] = masksOf(g, fill);
    return Format(value, column == 0 ? first : other);
}

std::optional<double> cellValue(const AnalysisState& s, DataGrid g, int row, int column) {
    if (row < 2 || row - 1 > entryCount(s, g) || !columnApplies(s, g, column))
        return std::nullopt;
    return shown(s, g, column, row - 1);
}

std::string acceptCellEdit(AnalysisState& s, DataGrid g, int row, int column, double value) {
    transaction(s, [&](AnalysisState& next) {
        slot(next, g, column, row - 1) = value;
        if (g == DataGrid::TestPoints)
            refreshPseudopressures(next);
        else
            deriveFlowRateAndProducingTime(next);
    });
    return cellText(s, g, column, value, GridFill::CellEdit);
}

bool pointComplete(const AnalysisState& s, int row) {
    return s.TestTime[row - 1] != 0 && s.TestPressure[row - 1] != 0;
}

void insertGridRow(AnalysisState& s, DataGrid g, int row) {
    requireShiftingGrid(g);
    const int n = entryCount(s, g);
    if (n + 1 > limitOf(g))
        throw RuntimeError(
            Fault::SubscriptOutOfRange,
            "index " + std::to_string(n + 1) + " outside 0.." + std::to_string(limitOf(g)) + ": " +
                (g == DataGrid::TestPoints ? "a test holds at most 500 points"
                                           : "a rate history holds at most 25 rates"));
    transaction(s, [&](AnalysisState& next) {
        for (int j = n + 1; j >= row; --j)
            moveEntry(next, g, j, j - 1);
        clearEntry(next, g, row - 1);
        setCount(next, g, n + 1);
        if (g == DataGrid::Rates)
            deriveFlowRateAndProducingTime(next);
    });
}

void deleteGridRow(AnalysisState& s, DataGrid g, int row) {
    requireShiftingGrid(g);
    const int n = entryCount(s, g);
    if (n < 1 || row > n + 1)
        return; // no entry at that row
    transaction(s, [&](AnalysisState& next) {
        for (int j = row; j <= n; ++j)
            moveEntry(next, g, j - 1, j);
        setCount(next, g, n - 1);
        afterRowsChanged(next, g);
    });
}

std::string copyGridCells(const AnalysisState& s, DataGrid g, int top, int left, int bottom,
                          int right) {
    const GridContents c = gridContents(s, g, GridFill::Full);
    std::string text;
    for (int r = top; r <= bottom; ++r) {
        for (int col = left; col <= right; ++col) {
            if (col > left)
                text += '\t';
            if (r < 2 && r >= 0 && col >= 0 && col < static_cast<int>(c.rows[0].size()))
                text += trimmed(c.rows[static_cast<std::size_t>(r)][static_cast<std::size_t>(col)]);
            else if (const auto v = cellValue(s, g, r, col))
                text += roundTrip(*v);
        }
        text += '\n';
    }
    return text;
}

PasteOutcome pasteGridRows(AnalysisState& s, DataGrid g, int row, std::string_view clipboard) {
    requireShiftingGrid(g);
    const bool points = g == DataGrid::TestPoints;
    PasteOutcome out;
    const ClipboardRows parsed =
        parseClipboard(clipboard, points ? "a time and a pressure" : "a duration and a rate");
    if (parsed.error) {
        out.message = parsed.error;
        return out;
    }
    if (parsed.rows.empty()) {
        out.message = points ? "The clipboard holds no time and pressure pairs."
                             : "The clipboard holds no duration and rate pairs.";
        return out;
    }
    const int first = std::max(row - 1, 1);
    const int last = first + static_cast<int>(parsed.rows.size()) - 1;
    if (last > limitOf(g)) {
        out.message = points ? testPointLimitMessage() : rateLimitMessage();
        out.limit = true;
        return out;
    }
    transaction(s, [&](AnalysisState& next) {
        for (int i = first; i <= last; ++i) {
            const auto& [a, b] = parsed.rows[static_cast<std::size_t>(i - first)];
            slot(next, g, 0, i) = a;
            slot(next, g, 1, i) = b;
        }
        setCount(next, g, std::max(entryCount(next, g), last));
        afterRowsChanged(next, g);
    });
    out.pasted = last - first + 1;
    return out;
}

} // namespace zorvekan
