// SPDX-License-Identifier: MIT
// Open must survive any file a user points it at: no crash, hang or sanitizer report,
// a refused file leaves the state untouched, and an accepted one saves to a file that
// opens again to the same state (saving it once more writes the same text).
#include "input/test_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zorvekan;
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    AnalysisState s;
    s.TestTitle = "before";
    s.TestPointCount = 3;
    const OpenResult first = loadTestFile(s, text, "fuzz.zvt");
    if (!first.ok) {
        if (s.TestTitle != "before" || s.TestPointCount != 3 || first.error.problem.empty())
            std::abort();
        return 0;
    }
    if (s.TestPointCount < 0 || s.TestPointCount > kMaxTestPoints || s.RateCount < 0 ||
        s.RateCount > kMaxRates)
        std::abort();
    const std::string saved = testFileText(s);
    AnalysisState again;
    if (!loadTestFile(again, saved, "saved.zvt").ok)
        std::abort();
    if (testFileText(again) != saved)
        std::abort();
    return 0;
}
