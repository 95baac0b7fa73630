// SPDX-License-Identifier: MIT
#pragma once

#include "input/text_file.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvekan {

// Reads the fields of a comma-separated record file in the manner of BASIC's
// Input #: fields end at a comma or a line break, blank lines between fields are
// skipped, blanks around a field are dropped and double quotes are stripped from
// text. Stricter than Input # so that a foreign or damaged file is refused: numbers
// must be whole numbers with nothing after them, quoted text must close on its own
// line, and a quote in place of a number is an error. Every reader function
// returns false after recording the first error (file, line, field, problem).
class RecordReader {
public:
    RecordReader(std::string_view text, std::string name);

    // The whole file is text (no NUL or other control bytes), is not empty and ends
    // with a line break, as every saved file does; a file cut short mid-line does not.
    bool checkText();

    bool title(const std::string& field, std::string& value);
    bool number(const std::string& field, double& value);
    // A whole number within lo..hi.
    bool flag(const std::string& field, int lo, int hi, std::int16_t& value);
    // A count 0..max of `noun` ("rates"); beyond max the file is refused, not truncated.
    bool count(const std::string& field, int max, const char* noun, std::int16_t& value);
    // A field that must be present; its content is ignored.
    bool reserved(const std::string& field);

    // True when only blanks and line breaks are left.
    bool atEnd();
    // Line of the next field (after atEnd).
    int line() const { return m_line; }
    // Line of the field read last.
    int fieldLine() const { return m_lastLine; }

    bool fail(int line, const std::string& field, const std::string& problem);
    const FileError& error() const { return m_error; }

private:
    struct Field {
        std::string_view text;
        bool quoted = false;
        int line = 0;
    };
    bool next(const std::string& field, Field& f);
    bool wholeNumber(const std::string& field, int lo, int hi, const std::string& range,
                     std::int16_t& value);

    std::string_view m_text;
    std::size_t m_pos = 0;
    int m_line = 1;
    int m_lastLine = 1;
    FileError m_error;
};

// A number field: optional sign, digits with at most one decimal point, optional
// exponent (E or D, as BASIC writes doubles), blanks around it; nothing else.
// Overflow and non-finite values are refused.
bool parseRecordNumber(std::string_view text, double& value);

} // namespace zorvekan
