// SPDX-License-Identifier: MIT
// Import must survive any file and any choice of unit, date order, pressure column and
// start: no crash, hang or sanitizer report; a failed import leaves the state untouched
// and names a line within the file; a successful one stores 1 to 500 points with
// positive finite times that do not decrease, exactly the points the log-time
// selection keeps from all the readings after the start held at once, and the start
// pressure of the last reading at or before the start.
#include "input/importer.h"
#include "input/log_time_selection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

namespace {

using namespace zorvekan;

// All readings of the file at once, with the start as Import places it: the reference
// for its two passes.
struct Reference {
    std::vector<double> hours, pressures;
    std::optional<double> startPressure;
};

Reference readAtOnce(std::string_view text, const ImportOptions& options, DateOrder order,
                     bool minutes) {
    LineReader lines;
    lines.openText(text, "fuzz.txt");
    DataLineReader reader(order, options.pressureColumn);
    DataLine line;
    LineFault fault;
    std::vector<double> times, pressures;
    for (std::string_view t; lines.next(t);)
        if (!reader.read(t, line, fault))
            std::abort(); // the import read this file whole
        else if (line.kind == DataLine::Kind::Data) {
            times.push_back(line.time);
            pressures.push_back(line.pressure);
        }
    const bool clock = reader.form() == TimeForm::Clock;
    const double perHour = clock ? kMicrosPerHour : minutes ? 60.0 : 1.0;
    double start = clock ? times.front() : 0.0;
    if (options.start) {
        double moment = 0;
        bool isNumber = false;
        std::string problem;
        if (!reader.readMoment(*options.start, moment, isNumber, problem))
            std::abort();
        start = clock && isNumber ? times.front() + std::round(moment * kMicrosPerHour) : moment;
    }
    Reference r;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const bool atOrBefore =
            options.start || clock ? !((times[i] - start) / perHour > 0) : i == 0 && times[i] == 0;
        if (atOrBefore) {
            r.startPressure = pressures[i];
        } else {
            r.hours.push_back((times[i] - start) / perHour);
            r.pressures.push_back(pressures[i]);
        }
    }
    return r;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    // The first byte chooses the unit (bit 0), the date order (bits 1-2), the pressure
    // column (bits 3-4: the first numeric one, 2, 3 or 4) and whether the first line of
    // the rest is the start (bit 5); the rest is the file.
    const std::uint8_t choice = data[0];
    const bool minutes = choice & 1;
    std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    ImportOptions options;
    options.dateOrder = static_cast<DateOrder>(std::min((choice >> 1) & 3, 2));
    options.pressureColumn = (choice >> 3 & 3) == 0 ? 0 : (choice >> 3 & 3) + 1;
    if (choice & 0x20) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos)
            return 0;
        options.start = std::string(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    AnalysisState s;
    s.TestTimeUnit = minutes ? 1 : 0;
    s.TestPointCount = 7;
    s.StartPressure = 1234;
    const ImportResult r = importTestData(s, text, "fuzz.txt", options);
    if (!r.ok) {
        if (s.TestPointCount != 7 || s.StartPressure != 1234 || r.error.problem.empty() ||
            r.error.line < 0 || static_cast<std::size_t>(r.error.line) > size)
            std::abort();
        return 0;
    }
    const DateOrder order =
        r.summary.dateOrder != DateOrder::Unknown ? r.summary.dateOrder : options.dateOrder;
    const Reference ref = readAtOnce(text, options, order, minutes);
    const std::vector<std::size_t> kept = logTimeSelection(ref.hours, kMaxTestPoints);
    const int n = s.TestPointCount;
    if (n < 1 || n > kMaxTestPoints || n != r.summary.pairsKept ||
        static_cast<std::size_t>(n) != kept.size() ||
        static_cast<std::size_t>(r.summary.pairsInFile) != ref.hours.size() ||
        r.summary.startPressure != ref.startPressure)
        std::abort();
    for (int i = 1; i <= n; ++i)
        if (!(s.TestTime[i] > 0) || !std::isfinite(s.TestTime[i]) ||
            !std::isfinite(s.TestPressure[i]) || (i > 1 && s.TestTime[i] < s.TestTime[i - 1]) ||
            s.TestTime[i] != ref.hours[kept[i - 1]] ||
            s.TestPressure[i] != ref.pressures[kept[i - 1]])
            std::abort();
    return 0;
}
