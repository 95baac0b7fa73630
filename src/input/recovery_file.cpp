// SPDX-License-Identifier: MIT
#include "input/recovery_file.h"

#include "core/runtime_error.h"
#include "input/entry_rules.h"
#include "input/input_refill.h"

#include <utility>

namespace zorvekan {

bool writeRecoveryFile(const AnalysisState& s, const std::string& path, FileError& error) {
    return saveTestFile(s, path, error);
}

OpenResult restoreRecoveryFile(AnalysisState& s, const std::string& path) {
    OpenResult result;
    std::string text;
    if (!readWholeFile(path, text, result.error))
        return result;
    AnalysisState copy = s;
    try {
        if (!parseTestFile(text, path, copy, result.error))
            return result;
        deriveFlowRateAndProducingTime(copy);
    } catch (const RuntimeError& e) {
        result.error = FileError{path, 0, {}, e.what()};
        return result;
    }
    copy.DerivativeSpan = 0.2;
    result.refill = refillExactly(copy);
    s = std::move(copy);
    result.ok = true;
    return result;
}

} // namespace zorvekan
