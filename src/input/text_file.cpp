// SPDX-License-Identifier: MIT
#include "input/text_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <system_error>

#if defined(_WIN32)
#include <fstream>
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zorvekan {

std::string FileError::message() const {
    std::string text = file;
    if (line > 0)
        text += ": line " + std::to_string(line);
    if (!field.empty())
        text += ": " + field;
    return text + ": " + problem;
}

namespace {

FileError systemError(const std::string& path, const char* doing, int code) {
    return FileError{path, 0, {}, std::string(doing) + " (" + std::strerror(code) + ")"};
}

struct FileCloser {
    void operator()(std::FILE* f) const { std::fclose(f); }
};

} // namespace

bool readWholeFile(const std::string& path, std::string& contents, FileError& error) {
    std::error_code ec;
    if (std::filesystem::is_directory(path, ec)) {
        error = FileError{path, 0, {}, "is a folder, not a file"};
        return false;
    }
    std::unique_ptr<std::FILE, FileCloser> f(std::fopen(path.c_str(), "rb"));
    if (!f) {
        error = systemError(path, "cannot be opened", errno);
        return false;
    }
    contents.clear();
    const auto size = std::filesystem::file_size(path, ec);
    std::size_t block = ec ? std::size_t{1} << 20 : static_cast<std::size_t>(size) + 1;
    // Read until the end: the size known beforehand in one call, and whatever a file
    // still growing (a gauge still logging) has added after it.
    for (;;) {
        const std::size_t old = contents.size();
        contents.resize(old + block);
        const std::size_t got = std::fread(contents.data() + old, 1, block, f.get());
        contents.resize(old + got);
        if (got < block)
            break;
        block = std::size_t{1} << 20;
    }
    if (std::ferror(f.get())) {
        error = systemError(path, "cannot be read", errno ? errno : EIO);
        return false;
    }
    return true;
}

#if defined(_WIN32)

FileContents::~FileContents() = default;

bool FileContents::open(const std::string& path, FileError& error) {
    if (!readWholeFile(path, m_copy, error))
        return false;
    m_text = m_copy;
    return true;
}

bool writeFileAtomically(const std::string& path, std::string_view contents, FileError& error) {
    const std::string temporary = path + ".saving";
    {
        std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
        out.write(contents.data(), static_cast<std::streamsize>(contents.size()));
        out.flush();
        if (!out) {
            std::remove(temporary.c_str());
            error = FileError{path, 0, {}, "cannot be written"};
            return false;
        }
    }
    std::error_code ec;
    std::filesystem::rename(temporary, path, ec);
    if (ec) {
        std::remove(temporary.c_str());
        error = FileError{path, 0, {}, "cannot be replaced (" + ec.message() + ")"};
        return false;
    }
    return true;
}

#else

namespace {

bool writeAll(int fd, std::string_view contents) {
    const char* p = contents.data();
    std::size_t left = contents.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, left);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return true;
}

// Makes the rename itself durable; a folder that cannot be synced (some network
// file systems) does not make the save fail, the data are already on the disk.
void syncFolder(const std::filesystem::path& folder) {
    const int fd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

} // namespace

#if defined(MAP_POPULATE)
constexpr int kPopulate = MAP_POPULATE; // one read-ahead instead of a fault per page
#else
constexpr int kPopulate = 0;
#endif

FileContents::~FileContents() {
    if (m_map)
        ::munmap(m_map, m_mapSize);
}

bool FileContents::open(const std::string& path, FileError& error) {
    const int fd = ::open(path.c_str(), O_RDONLY);
    struct stat info {};
    if (fd >= 0 && ::fstat(fd, &info) == 0 && S_ISREG(info.st_mode) && info.st_size > 0) {
        const auto size = static_cast<std::size_t>(info.st_size);
        void* map = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE | kPopulate, fd, 0);
        if (map != MAP_FAILED) {
            ::madvise(map, size, MADV_SEQUENTIAL);
            ::close(fd);
            m_map = map;
            m_mapSize = size;
            m_text = std::string_view(static_cast<const char*>(map), size);
            return true;
        }
    }
    if (fd >= 0)
        ::close(fd);
    // Empty files, pipes and file systems without mapping are read the ordinary way.
    if (!readWholeFile(path, m_copy, error))
        return false;
    m_text = m_copy;
    return true;
}

bool writeFileAtomically(const std::string& path, std::string_view contents, FileError& error) {
    const std::filesystem::path target(path);
    const std::filesystem::path folder = target.parent_path();
    std::string hidden(1, '.'); // built by appending: GCC 12 -O3 misreads "." + string
    hidden.append(target.filename().string()).append(".XXXXXX");
    std::string temporary = (folder / hidden).string();
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        error = systemError(path, "cannot be written: no temporary file in its folder", errno);
        return false;
    }
    const bool written = writeAll(fd, contents) && ::fsync(fd) == 0;
    const int writeErrno = errno;
    const bool closed = ::close(fd) == 0;
    if (!written || !closed) {
        ::unlink(temporary.c_str());
        error = systemError(path, "cannot be written; the previous file is unchanged",
                            written ? errno : writeErrno);
        return false;
    }
    // mkstemp creates the file readable by its owner only: a replaced file keeps its
    // permissions, a new one gets those of any new file.
    struct stat existing {};
    if (::stat(path.c_str(), &existing) == 0) {
        ::chmod(temporary.c_str(), existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::chmod(temporary.c_str(), 0666 & ~mask);
    }
    if (::rename(temporary.c_str(), path.c_str()) != 0) {
        const int code = errno;
        ::unlink(temporary.c_str());
        error = systemError(path, "cannot be replaced; the previous file is unchanged", code);
        return false;
    }
    syncFolder(folder);
    return true;
}

#endif

} // namespace zorvekan
