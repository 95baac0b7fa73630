// SPDX-License-Identifier: MIT
#include "input/recovery_file.h"

namespace zorvekan {

bool writeRecoveryFile(const AnalysisState& s, const std::string& path, FileError& error) {
    return saveTestFile(s, path, error);
}

OpenResult restoreRecoveryFile(AnalysisState& s, const std::string& path) {
    return openTestFile(s, path);
}

} // namespace zorvekan
