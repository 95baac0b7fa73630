// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "input/test_file.h"
#include "input/text_file.h"

#include <string>

namespace zorvekan {

// The recovery file keeps the test the engineer was working on when the program
// ended (Exit, a fatal error) in the test file format, so the next start can offer it.
inline constexpr const char* kRecoveryFileName = "unsaved-test.zvt";

// Writes the recovery file atomically: a crash while writing leaves the previous one.
// Every recovery write goes through here.
bool writeRecoveryFile(const AnalysisState& s, const std::string& path, FileError& error);

// Reads a recovery file back into `s` as Open reads a test file, whose refill gives
// back every value exactly. A file not read whole leaves `s` untouched.
OpenResult restoreRecoveryFile(AnalysisState& s, const std::string& path);

} // namespace zorvekan
