// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace zorvekan {

// One printed result: its caption (ending in " ="), the value as its display mask
// formats it, and the unit text (" md.", " ft.", "%", ...), as both the screens
// and the command line show it.
inline std::string resultLine(const std::string& caption, const std::string& value,
                              const std::string& unit = {}) {
    return caption + " " + value + unit;
}

} // namespace zorvekan
