// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_error.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvekan {

// Replaces the file at `path` with `contents` so that a full disk, a crash or a power
// cut never costs the file already there: the text goes to a temporary file in the
// same folder, every write, the sync and the close are checked, and only then is it
// renamed over `path`. On any failure the temporary file is removed, the file at
// `path` is untouched, and `error` names the file and the system's reason
// ("No space left on device"). A new file gets the permissions of any new file, a
// replaced one keeps its own; a symbolic link is followed, not replaced.
bool writeFileAtomically(const std::string& path, std::string_view contents, FileError& error);

// The calls that put the bytes on the disk, as the system's write(2) and fsync(2).
// Tests replace them to play a disk that fills up or fails; the program never does.
struct DiskCalls {
    long (*write)(int fd, const void* data, std::size_t size);
    int (*fsync)(int fd);
};

// Installs `calls` for the writes that follow and returns the ones they replace.
DiskCalls replaceDiskCalls(DiskCalls calls);

} // namespace zorvekan
