// SPDX-License-Identifier: MIT
#include "input/line_reader.h"

#include "input/text_file.h"

#include <algorithm>
#include <cerrno>
#include <string.h> // memrchr
#include <unistd.h>

namespace zorvekan {

LineReader::~LineReader() {
    if (m_fd >= 0)
        ::close(m_fd);
}

bool LineReader::open(const std::string& path, FileError& error) {
    m_error.file = path;
    m_fd = openRegularFile(path, m_size, error);
    if (m_fd < 0)
        return false;
    m_buffer.resize(kBlock);
    if (rewind())
        return true;
    error = m_error;
    return false;
}

void LineReader::openText(std::string_view text, std::string name) {
    m_error.file = std::move(name);
    m_text = text;
    m_size = static_cast<long long>(text.size());
    rewind();
}

bool LineReader::rewind() {
    m_line = 0;
    m_consumed = 0;
    m_started = false;
    if (m_fd < 0) {
        m_pos = m_text.data();
        m_end = m_text.data() + m_text.size();
        m_atEnd = true;
        return checkStart() && checkNul(m_pos, m_end);
    }
    if (::lseek(m_fd, 0, SEEK_SET) != 0)
        return fail(FileError{m_error.file, 0, {}, "cannot be read again"});
    m_pos = m_end = m_buffer.data();
    m_atEnd = false;
    return true;
}

double LineReader::fraction() const {
    if (m_size <= 0)
        return 1.0;
    const char* start = m_fd < 0 ? m_text.data() : m_buffer.data();
    return static_cast<double>(m_consumed + (m_pos - start)) / static_cast<double>(m_size);
}

bool LineReader::fail(FileError error) {
    m_failed = true;
    error.file = m_error.file;
    m_error = std::move(error);
    m_pos = m_end;
    m_atEnd = true;
    return false;
}

bool LineReader::checkStart() {
    m_started = true;
    const std::string_view start(m_pos, std::size_t(m_end - m_pos));
    if (const auto encoding = wideEncoding(start))
        return fail(wideEncodingError(m_error.file, *encoding));
    m_pos += utf8MarkLength(start);
    const std::size_t size = std::size_t(m_end - m_pos);
    m_break = std::memchr(m_pos, '\n', size) || !std::memchr(m_pos, '\r', size) ? '\n' : '\r';
    return true;
}

bool LineReader::checkNul(const char* from, const char* to) {
    const void* nul = std::memchr(from, '\0', std::size_t(to - from));
    if (!nul)
        return true;
    const std::string_view text(m_pos, std::size_t(to - m_pos));
    return fail(nulByteError(m_error.file, text, std::size_t(static_cast<const char*>(nul) - m_pos),
                             m_line + 1, m_break));
}

// Moves the unread part of the buffer to its start and reads behind it. False at the
// end of the file (nothing more was read) or on an error.
bool LineReader::refill() {
    if (m_atEnd)
        return false;
    const std::size_t tail = std::size_t(m_end - m_pos);
    m_consumed += m_pos - m_buffer.data();
    std::memmove(m_buffer.data(), m_pos, tail);
    if (tail == m_buffer.size()) {
        if (m_buffer.size() >= kLongestLine)
            return fail(FileError{m_error.file,
                                  static_cast<int>(std::min(m_line + 1, 2147483647LL)),
                                  {},
                                  "the line is longer than 16 MB: the file is not a text file of "
                                  "lines"});
        m_buffer.resize(m_buffer.size() * 2);
    }
    char* const data = m_buffer.data();
    m_pos = data;
    m_end = data + tail;
    ssize_t got = 0;
    do
        got = ::read(m_fd, data + tail, m_buffer.size() - tail);
    while (got < 0 && errno == EINTR);
    if (got < 0)
        return fail(FileError{
            m_error.file, 0, {}, std::string("cannot be read (") + std::strerror(errno) + ")"});
    if (got == 0) {
        m_atEnd = true;
        return false;
    }
    const char* const fresh = m_end;
    m_end += got;
    if (!m_started && !checkStart())
        return false;
    return checkNul(std::max<const char*>(fresh, m_pos), m_end);
}

std::string_view LineReader::completeLines() {
    // Text in memory is handed out in blocks of the buffer's size as well, so a pass
    // over it reports its progress as often as over a file.
    if (m_fd < 0 && std::size_t(m_end - m_pos) > kBlock)
        if (const void* last = ::memrchr(m_pos, m_break, kBlock))
            return std::string_view(m_pos, std::size_t(static_cast<const char*>(last) + 1 - m_pos));
    for (;;) {
        const void* last = ::memrchr(m_pos, m_break, std::size_t(m_end - m_pos));
        if (last)
            return std::string_view(m_pos, std::size_t(static_cast<const char*>(last) + 1 - m_pos));
        if (!refill())
            return {};
    }
}

bool LineReader::lineAt(long long offset, std::string& line) {
    line.clear();
    if (m_fd < 0) {
        line = m_text.substr(std::size_t(offset));
    } else {
        char block[4096];
        while (line.size() < kLongestLine && line.find_first_of("\r\n") == std::string::npos) {
            const ssize_t got = ::pread(m_fd, block, sizeof block, offset + long(line.size()));
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0)
                break;
            line.append(block, std::size_t(got));
        }
    }
    line.resize(std::min(line.find_first_of("\r\n"), line.size()));
    return true;
}

bool LineReader::lastLine(std::string_view& line) {
    if (m_failed || m_pos == m_end)
        return false;
    const char* end = m_end;
    if (m_break == '\n' && end[-1] == '\r')
        --end;
    line = std::string_view(m_pos, std::size_t(end - m_pos));
    m_pos = m_end;
    ++m_line;
    return true;
}

} // namespace zorvekan
