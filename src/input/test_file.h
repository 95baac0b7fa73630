// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "input/input_refill.h"
#include "input/text_file.h"

#include <string>
#include <string_view>

namespace zorvekan {

// The test file: one whole test as comma-separated records, one record a line,
// text in double quotes, in the units the engineer types:
//   1   "TestTitle",InjectionFlag,ShutInFlag,FluidFlags,0,TestTimeUnit,RateTimeUnit,0,0
//   2   GasGravity,ReservoirTemperature (F)                       gas in m(p) only
//   3a  RateCount,OilViscosity,OilFvf,Thickness,rw (in.),Porosity (fraction),
//       ct (microsips),StartPressure,area (acres = 3.1416*re^2/43560)
//   3b  3a, then WaterFvf,WaterViscosity,GasFvf,GasViscosity,SolutionGor   FluidFlags >= 4
//   4   per rate: Rate,duration[,WaterRate,GasRate (FluidFlags >= 4)]
//       the duration in days when RateTimeUnit is 1, else hours
//   5   per test point to the end of the file: time,TestPressure
//       the time in minutes when TestTimeUnit is 1, else hours
// The three literal zeros of record 1 are reserved and ignored on reading.

inline constexpr const char* kTestFileExtension = "zvt";

// A number as the test file writes it: at most 15 significant digits with no
// trailing zeros, so the noise of a unit conversion disappears (0.354 ft * 12 is
// written 4.248, 1.5e-5 1/psi * 1e6 is written 15); exponent form "1.5E-05" below
// 1E-4 and from 1E15 on. A non-finite value is an overflow fault.
std::string testFileNumber(double value);

// Records 1 to 5 of the state. A double quote in the title becomes a single quote
// and a line break a blank, so the title always reads back as one text field.
std::string testFileText(const AnalysisState& s);

// Save of the input screen and of zorvekan-cli resave: testFileText written by
// writeFileAtomically, so a failure (a full disk) leaves the file already at `path`
// as it was and `error` names the file and the system's reason.
bool saveTestFile(const AnalysisState& s, const std::string& path, FileError& error);

// Reads records 1 to 5 into `s`, converting days, minutes, inches, microsips and
// acres to the stored units with the unit choices of record 1. One record a line,
// fields separated by commas, quotes stripped, but stricter than a BASIC Input #:
// each line must hold exactly the fields of its record for the fluid code (a rate
// line of the wrong width or a RateCount the lines contradict is refused), the title
// must be quoted, every number must be a whole number (no "12abc"), flags and counts
// must be in range (at most 25 rates and 500 test points), the file must be 8-bit
// text ending with a line break, so a truncated, corrupt or foreign file is refused.
// A title that is not UTF-8 is taken as Latin-1 and stored in UTF-8.
// On failure `s` is partly written: call it on a copy (loadTestFile does).
bool parseTestFile(std::string_view text, const std::string& name, AnalysisState& s,
                   FileError& error);

struct OpenResult {
    bool ok = false;
    FileError error;    // when !ok: file, line, field and what was wrong
    InputRefill refill; // when ok: what the input screen's controls now show
};

// Open of the input screen on file text: parses into a copy of `s`, refills the
// property boxes through their change rules (refillInputScreen), derives FlowRate
// and ProducingTime from the rate history (deriveFlowRateAndProducingTime), sets
// DerivativeSpan to 0.2, and only then commits the copy. A file that was not read
// whole leaves `s` untouched. Fields the file does not carry keep their values.
OpenResult loadTestFile(AnalysisState& s, std::string_view text, const std::string& name);

// Open of the input screen and of zorvekan-cli resave: loadTestFile on the contents
// of `path`, which must be a regular file (readWholeFile).
OpenResult openTestFile(AnalysisState& s, const std::string& path);

} // namespace zorvekan
