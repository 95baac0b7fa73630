// SPDX-License-Identifier: MIT
#include "core/atomic_file.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zorvekan {

namespace {

long systemWrite(int fd, const void* data, std::size_t size) {
    return static_cast<long>(::write(fd, data, size));
}

int systemFsync(int fd) {
    return ::fsync(fd);
}

DiskCalls g_disk{systemWrite, systemFsync};

// Writes everything or returns the errno of the write that failed. A write that
// stops short (the disk is full) is repeated for the rest; the repeat then reports
// why. A write that reports no progress and no error is taken as a full disk.
int writeAll(int fd, std::string_view contents) {
    const char* p = contents.data();
    std::size_t left = contents.size();
    while (left > 0) {
        const long n = g_disk.write(fd, p, left);
        if (n < 0 && errno == EINTR)
            continue;
        if (n < 0)
            return errno != 0 ? errno : EIO;
        if (n == 0)
            return ENOSPC;
        p += n;
        left -= static_cast<std::size_t>(n);
    }
    return 0;
}

// The file a path names once symbolic links are followed, so Save writes through a
// link instead of replacing it; a dangling link or any other oddity keeps the path.
std::filesystem::path resolvedTarget(const std::string& path) {
    std::error_code ec;
    if (!std::filesystem::is_symlink(path, ec))
        return path;
    const std::filesystem::path real = std::filesystem::canonical(path, ec);
    return ec ? std::filesystem::path(path) : real;
}

FileError saveError(const std::string& path, const std::string& what, int code) {
    return FileError{
        path, 0, {}, what + " (" + std::strerror(code) + "); the file already there is unchanged"};
}

} // namespace

DiskCalls replaceDiskCalls(DiskCalls calls) {
    const DiskCalls previous = g_disk;
    g_disk = calls;
    return previous;
}

bool writeFileAtomically(const std::string& path, std::string_view contents, FileError& error) {
    const std::filesystem::path target = resolvedTarget(path);
    const std::filesystem::path folder = target.parent_path();
    std::string hidden(1, '.'); // built by appending: GCC 12 -O3 misreads "." + string
    hidden.append(target.filename().string()).append(".XXXXXX");
    std::string temporary = (folder / hidden).string();
    const int fd = ::mkstemp(temporary.data());
    if (fd < 0) {
        error = saveError(path, "cannot be written: no temporary file can be made in its folder",
                          errno);
        return false;
    }
    // mkstemp makes the file readable by its owner only: a replaced file keeps its
    // permissions, a new one gets those of any new file.
    struct stat existing {};
    if (::stat(target.c_str(), &existing) == 0) {
        ::fchmod(fd, existing.st_mode & 07777);
    } else {
        const mode_t mask = ::umask(0);
        ::umask(mask);
        ::fchmod(fd, 0666 & ~mask);
    }
    int code = writeAll(fd, contents);
    const char* failed = "cannot be written";
    if (code == 0 && g_disk.fsync(fd) != 0) {
        code = errno != 0 ? errno : EIO;
        failed = "cannot be written to the disk";
    }
    // Some file systems (NFS) report a failed write only when the file is closed.
    if (::close(fd) != 0 && code == 0) {
        code = errno != 0 ? errno : EIO;
        failed = "cannot be written to the disk";
    }
    if (code == 0 && ::rename(temporary.c_str(), target.c_str()) != 0) {
        code = errno;
        failed = "cannot be replaced";
    }
    if (code != 0) {
        ::unlink(temporary.c_str());
        error = saveError(path, failed, code);
        return false;
    }
    // Makes the rename itself durable. The new file is in place whatever happens
    // here, so a folder that cannot be synced (some network file systems refuse)
    // does not turn the save into a failure.
    const int dir = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
    if (dir >= 0) {
        ::fsync(dir);
        ::close(dir);
    }
    return true;
}

} // namespace zorvekan
