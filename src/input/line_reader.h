// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_error.h"

#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace zorvekan {

// The lines of a text file, read in blocks so that memory does not grow with the
// file: a gauge record of gigabytes is read through a buffer of one megabyte, once
// per pass (rewind starts the next). Lines end with LF or CRLF; a file with no LF in
// its first block but CRs ends them with CR (old Macintosh). A UTF-8 byte-order mark
// is skipped. A file in UTF-16 or UTF-32, a NUL byte (a damaged block, a binary file)
// or a line longer than 16 MB ends the reading with an error naming the encoding or
// the line and column.
class LineReader {
public:
    static constexpr std::size_t kBlock = std::size_t{1} << 20;
    static constexpr std::size_t kLongestLine = std::size_t{16} << 20;

    LineReader() = default;
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;
    ~LineReader();

    // Reads the regular file at `path` (openRegularFile); false with `error` filled.
    bool open(const std::string& path, FileError& error);
    // Reads `text`, held in memory for as long as the reader is used.
    void openText(std::string_view text, std::string name);

    // The next line without its line break; false at the end of the file or on an
    // error (then failed() is true and error() says what).
    bool next(std::string_view& line) {
        for (;;) {
            const auto* found =
                static_cast<const char*>(std::memchr(m_pos, m_break, std::size_t(m_end - m_pos)));
            if (found) {
                const char* end = found;
                if (m_break == '\n' && end > m_pos && end[-1] == '\r')
                    --end;
                line = std::string_view(m_pos, std::size_t(end - m_pos));
                m_pos = found + 1;
                ++m_line;
                return true;
            }
            if (!refill())
                return lastLine(line);
        }
    }

    // The lines read into the buffer and not yet returned, up to the last line break:
    // a pass that handles many lines at once scans them itself and then calls
    // consume. Empty at the end of the file (a last line without a line break is
    // left to next) or on an error.
    std::string_view completeLines();
    // Marks `lines`, returned by completeLines and holding `count` lines, as read.
    void consume(std::string_view lines, long long count) {
        m_pos = lines.data() + lines.size();
        m_line += count;
    }
    // The line break of the file: LF (lines may end in CR LF) or CR.
    char lineBreak() const { return m_break; }

    // The 1-based number of the line `next` returned last.
    long long lineNumber() const { return m_line; }
    // Where a line `next` returned starts in the file, for lineAt.
    long long offsetOf(std::string_view line) const {
        return m_consumed + (line.data() - (m_fd < 0 ? m_text.data() : m_buffer.data()));
    }
    // The line that starts at `offset` (offsetOf), read again without moving the
    // reader: a pass can note where a line is instead of copying every candidate.
    bool lineAt(long long offset, std::string& line);
    // The part of the file read so far, 0 to 1.
    double fraction() const;
    // Starts again at the first line. False with error() filled when the file cannot
    // be read again.
    bool rewind();

    bool failed() const { return m_failed; }
    const FileError& error() const { return m_error; }
    const std::string& name() const { return m_error.file; }

private:
    bool refill();
    bool lastLine(std::string_view& line);
    bool fail(FileError error);
    bool checkStart();
    bool checkNul(const char* from, const char* to);

    int m_fd = -1;
    long long m_size = 0;
    long long m_consumed = 0; // bytes of the file before m_buffer's first byte
    std::vector<char> m_buffer;
    std::string_view m_text; // the text of openText
    const char* m_pos = nullptr;
    const char* m_end = nullptr;
    bool m_atEnd = false;
    bool m_started = false;
    char m_break = '\n';
    long long m_line = 0;
    bool m_failed = false;
    FileError m_error;
};

} // namespace zorvekan
