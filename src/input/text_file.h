// SPDX-License-Identifier: MIT
#pragma once

#include "core/atomic_file.h"
#include "core/file_error.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace zorvekan {

// Opens `path` for reading when it is a regular file. A folder, a named pipe, a
// device (/dev/zero) or a socket is refused by name before anything is read, so
// Open and Import never wait on a pipe nor read without end. Returns the file
// descriptor and its size, or -1 with `error` filled.
int openRegularFile(const std::string& path, long long& size, FileError& error);

// Reads a whole regular file of at most `maxBytes` into `contents`. Returns false
// with `error` filled (not a regular file, larger than maxBytes, cannot be read).
bool readWholeFile(const std::string& path, std::size_t maxBytes, std::string& contents,
                   FileError& error);

// The encoding of a file whose first bytes show wide characters, from its byte-order
// mark or the zero bytes of ASCII characters in UTF-16 or UTF-32 ("UTF-16
// (little-endian)"); none for 8-bit text.
std::optional<std::string> wideEncoding(std::string_view start);

// The number of bytes of a UTF-8 byte-order mark at the start of `text` (3), or 0.
std::size_t utf8MarkLength(std::string_view text);

// The refusal of a file whose first bytes are wide characters (wideEncoding).
FileError wideEncodingError(const std::string& file, const std::string& encoding);

// The refusal of a NUL byte at `offset` of `text`, whose first line is `firstLine`
// and whose lines end with `lineBreak`: it names the line and column, so a gauge file
// with a damaged block is found.
FileError nulByteError(const std::string& file, std::string_view text, std::size_t offset,
                       long long firstLine, char lineBreak = '\n');

} // namespace zorvekan
