// SPDX-License-Identifier: MIT
#include "input/text_file.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zorvekan {

namespace {

FileError systemError(const std::string& path, const char* doing, int code) {
    return FileError{path, 0, {}, std::string(doing) + " (" + std::strerror(code) + ")"};
}

const char* notAFile(mode_t mode) {
    if (S_ISDIR(mode))
        return "is a folder, not a file";
    if (S_ISFIFO(mode))
        return "is a named pipe, not a file: only a file on a disk can be read";
    if (S_ISCHR(mode) || S_ISBLK(mode))
        return "is a device, not a file: only a file on a disk can be read";
    if (S_ISSOCK(mode))
        return "is a socket, not a file: only a file on a disk can be read";
    return nullptr;
}

} // namespace

int openRegularFile(const std::string& path, long long& size, FileError& error) {
    // Looked at before it is opened: opening a named pipe waits for a writer.
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) {
        error = systemError(path, "cannot be opened", errno);
        return -1;
    }
    if (const char* kind = notAFile(info.st_mode)) {
        error = FileError{path, 0, {}, kind};
        return -1;
    }
    // O_NONBLOCK as well, should the file have been replaced by a pipe meanwhile.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        error = systemError(path, "cannot be opened", errno);
        return -1;
    }
    if (::fstat(fd, &info) != 0 || !S_ISREG(info.st_mode)) {
        const char* kind = notAFile(info.st_mode);
        error = FileError{path, 0, {}, kind ? kind : "is not a file that can be read"};
        ::close(fd);
        return -1;
    }
    size = static_cast<long long>(info.st_size);
    return fd;
}

bool readWholeFile(const std::string& path, std::size_t maxBytes, std::string& contents,
                   FileError& error) {
    long long size = 0;
    const int fd = openRegularFile(path, size, error);
    if (fd < 0)
        return false;
    contents.clear();
    // Read to the end, whatever the size said: the file may still be growing.
    std::size_t block = std::min<std::size_t>(static_cast<std::size_t>(size) + 1, maxBytes + 1);
    for (;;) {
        const std::size_t old = contents.size();
        contents.resize(old + block);
        const ssize_t got = ::read(fd, contents.data() + old, block);
        if (got < 0 && errno == EINTR) {
            contents.resize(old);
            continue;
        }
        if (got < 0) {
            error = systemError(path, "cannot be read", errno);
            ::close(fd);
            return false;
        }
        contents.resize(old + static_cast<std::size_t>(got));
        if (contents.size() > maxBytes) {
            error = FileError{path,
                              0,
                              {},
                              "holds more than " + std::to_string(maxBytes >> 20) +
                                  " MB, far more than a test file: not a test file"};
            ::close(fd);
            return false;
        }
        if (got == 0)
            break;
        block = std::size_t{1} << 16;
    }
    ::close(fd);
    return true;
}

std::optional<std::string> wideEncoding(std::string_view start) {
    auto at = [&](std::size_t i) {
        return i < start.size() ? static_cast<unsigned char>(start[i]) : 0x100u;
    };
    if (at(0) == 0xFF && at(1) == 0xFE && at(2) == 0 && at(3) == 0)
        return "UTF-32 (little-endian)";
    if (at(0) == 0 && at(1) == 0 && at(2) == 0xFE && at(3) == 0xFF)
        return "UTF-32 (big-endian)";
    if (at(0) == 0xFF && at(1) == 0xFE)
        return "UTF-16 (little-endian)";
    if (at(0) == 0xFE && at(1) == 0xFF)
        return "UTF-16 (big-endian)";
    // Without a mark: the zero bytes around an ASCII character.
    if (at(0) != 0 && at(0) < 0x80 && at(1) == 0 && at(2) == 0 && at(3) == 0)
        return "UTF-32 (little-endian)";
    if (at(0) == 0 && at(1) == 0 && at(2) == 0 && at(3) != 0 && at(3) < 0x80)
        return "UTF-32 (big-endian)";
    if (at(0) != 0 && at(0) < 0x80 && at(1) == 0 && at(2) != 0 && at(2) < 0x80 && at(3) == 0)
        return "UTF-16 (little-endian)";
    if (at(0) == 0 && at(1) != 0 && at(1) < 0x80 && at(2) == 0 && at(3) != 0 && at(3) < 0x80)
        return "UTF-16 (big-endian)";
    return std::nullopt;
}

std::size_t utf8MarkLength(std::string_view text) {
    return text.substr(0, 3) == "\xEF\xBB\xBF" ? 3 : 0;
}

FileError wideEncodingError(const std::string& file, const std::string& encoding) {
    return FileError{file,
                     0,
                     {},
                     "the file is written in " + encoding +
                         "; save it as plain text (UTF-8 or ANSI) and try again"};
}

FileError nulByteError(const std::string& file, std::string_view text, std::size_t offset,
                       long long firstLine, char lineBreak) {
    const std::string_view before = text.substr(0, offset);
    const auto breaks = std::count(before.begin(), before.end(), lineBreak);
    const std::size_t lineStart = before.find_last_of(lineBreak);
    const std::size_t column =
        lineStart == std::string_view::npos ? offset + 1 : offset - lineStart;
    const long long line = firstLine + breaks;
    return FileError{file,
                     static_cast<int>(std::min<long long>(line, 2147483647)),
                     {},
                     "a NUL byte at column " + std::to_string(column) +
                         ": the file is damaged or is not a text file"};
}

} // namespace zorvekan
