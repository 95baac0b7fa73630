// SPDX-License-Identifier: MIT
// Import must survive any file: no crash, hang or sanitizer report; a failed import
// leaves the state untouched and names a line within the file; a successful one
// stores 1 to 500 points with positive finite times, the first and last pairs of
// the file among them.
#include "input/importer.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

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
    ImportedPairs pairs;
    FileError parseError;
    const ParseStatus status = parseImportText(text, "fuzz.txt", minutes, pairs, parseError);
    const ImportResult r = importTestData(s, text, "fuzz.txt");
    if (r.ok != (status == ParseStatus::Ok))
        std::abort();
    if (!r.ok) {
        if (s.TestPointCount != 7 || s.StartPressure != 1234 || r.error.problem.empty() ||
            r.error.line < 0 || static_cast<std::size_t>(r.error.line) > size)
            std::abort();
        return 0;
    }
    const int n = s.TestPointCount;
    if (n < 1 || n > kMaxTestPoints || n != r.summary.pairsKept ||
        static_cast<std::size_t>(r.summary.pairsInFile) != pairs.time.size())
        std::abort();
    for (int i = 1; i <= n; ++i)
        if (!(s.TestTime[i] > 0) || !std::isfinite(s.TestTime[i]) ||
            !std::isfinite(s.TestPressure[i]))
            std::abort();
    if (s.TestTime[1] != pairs.time.front() || s.TestTime[n] != pairs.time.back() ||
        s.TestPressure[n] != pairs.pressure.back())
        std::abort();
    return 0;
}
