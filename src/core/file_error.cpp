// SPDX-License-Identifier: MIT
#include "core/file_error.h"

namespace zorvekan {

std::string FileError::message() const {
    std::string text = file;
    if (line > 0)
        text += ": line " + std::to_string(line);
    if (!field.empty())
        text += ": " + field;
    return text + ": " + problem;
}

} // namespace zorvekan
