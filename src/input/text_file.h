// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

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

// Reads a whole file into `contents`. Returns false with `error` filled (the file
// cannot be opened or read, or is a directory) and `contents` unspecified.
bool readWholeFile(const std::string& path, std::string& contents, FileError& error);

// The contents of a file for a fast single pass: mapped into memory where the
// system allows it (no copy of a large gauge file), read into memory otherwise.
class FileContents {
public:
    FileContents() = default;
    FileContents(const FileContents&) = delete;
    FileContents& operator=(const FileContents&) = delete;
    ~FileContents();

    // False with `error` filled when the file cannot be opened or read.
    bool open(const std::string& path, FileError& error);
    std::string_view text() const { return m_text; }

private:
    void* m_map = nullptr;
    std::size_t m_mapSize = 0;
    std::string m_copy;
    std::string_view m_text;
};

// Replaces `path` with `contents` so that a crash, a full disk or a power cut never
// leaves a half-written file: the text goes to a temporary file in the same folder,
// is flushed and synced to the disk, and only then renamed over `path` (the folder
// is synced too). The previous file stays intact on any failure. Returns false with
// `error` filled; the temporary file is removed.
bool writeFileAtomically(const std::string& path, std::string_view contents, FileError& error);

} // namespace zorvekan
