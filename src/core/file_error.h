// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace zorvekan {

// What went wrong with a file a user chose, precise enough to find the spot:
// "wells/b1.zvt: line 3: record 3a, WellboreRadius: \"abc\" is not a number".
struct FileError {
    std::string file;    // the path as the user gave it
    int line = 0;        // 1-based; 0 when the fault is not on one line
    std::string field;   // record and field, empty when the whole line or file is meant
    std::string problem; // what was wrong, in plain words

    std::string message() const;
};

} // namespace zorvekan
