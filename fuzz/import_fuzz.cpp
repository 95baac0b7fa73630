// SPDX-License-Identifier: MIT
// Import must survive any file: no crash, hang or sanitizer report; a failed import
// leaves the state untouched and names a line within the file; a successful one
// stores 1 to 500 points with positive finite times that do not decrease, exactly
// the points the log-time selection keeps from all pairs of the file held at once.
#include "input/importer.h"
#include "input/log_time_selection.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvekan;
    if (size == 0)
        return 0;
    // The first byte chooses the test-time unit, the rest is the file.
    const bool minutes = data[0] & 1;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    AnalysisState s;
    s.TestTimeUnit = minutes ? 1 : 0;
    s.TestPointCount = 7;
    s.StartPressure = 1234;
    const ImportResult r = importTestData(s, text, "fuzz.txt");
    if (!r.ok) {
        if (s.TestPointCount != 7 || s.StartPressure != 1234 || r.error.problem.empty() ||
            r.error.line < 0 || static_cast<std::size_t>(r.error.line) > size)
            std::abort();
        return 0;
    }
    // All pairs at once, the reference for the two passes of the import.
    std::vector<double> time, pressure;
    LineReader lines;
    lines.openText(text, "fuzz.txt");
    PairLineReader reader;
    PairLine pair;
    std::string problem;
    for (std::string_view line; lines.next(line);)
        if (!reader.read(line, pair, problem))
            std::abort();
        else if (pair.kind == PairLine::Kind::Pair && pair.time > 0) {
            time.push_back(minutes ? pair.time / 60.0 : pair.time);
            pressure.push_back(pair.pressure);
        }
    const std::vector<std::size_t> kept = logTimeSelection(time, kMaxTestPoints);
    const int n = s.TestPointCount;
    if (n < 1 || n > kMaxTestPoints || n != r.summary.pairsKept ||
        static_cast<std::size_t>(n) != kept.size() ||
        static_cast<std::size_t>(r.summary.pairsInFile) != time.size())
        std::abort();
    for (int i = 1; i <= n; ++i)
        if (!(s.TestTime[i] > 0) || !std::isfinite(s.TestTime[i]) ||
            !std::isfinite(s.TestPressure[i]) || (i > 1 && s.TestTime[i] < s.TestTime[i - 1]) ||
            s.TestTime[i] != time[kept[i - 1]] || s.TestPressure[i] != pressure[kept[i - 1]])
            std::abort();
    return 0;
}
