// SPDX-License-Identifier: MIT
#include "input/entry_rules.h"

#include <gtest/gtest.h>

namespace zorvekan {
namespace {

AnalysisState entering(int mode) {
    AnalysisState s;
    s.DatinMode = static_cast<std::int16_t>(mode);
    s.EntryCounter = 1;
    s.FluidFlags = kOil;
    s.OilFvf = 1.2;
    return s;
}

void row(AnalysisState& s, EntryDraft& draft, const char* a, const char* b, const char* c = " ",
         const char* d = " ") {
    storeEntryRow(s, draft, {a, b, c, d});
}

// With free gas and water beside the oil, every phase's reservoir volume counts and
// a negative free gas rate counts as none.
TEST(FinishRates, MultiphaseReservoirVolumes) {
    AnalysisState s = entering(1);
    s.ShutInFlag = 1;
    s.FluidFlags = kOilGasWater;
    s.GasFvf = 0.8;
    s.WaterFvf = 1.0;
    s.SolutionGor = 0.5;
    EntryDraft draft;
    row(s, draft, "10", "100", "30", "20"); // free gas 30 - 50 < 0: none
    row(s, draft, "20", "100", "80", "10"); // free gas 30 MCF/day
    finishEntry(s, draft);
    const double volume =
        (10 * 1.2 * 100 + 10 * 1.0 * 20) + (20 * 1.2 * 100 + 20 * 0.8 * 30 + 20 * 1.0 * 10);
    const double lastRate = 1.2 * 100 + 1.0 * 10 + 0.8 * 30;
    EXPECT_NEAR(s.ProducingTime, volume / lastRate, 1e-12);
}

} // namespace
} // namespace zorvekan
