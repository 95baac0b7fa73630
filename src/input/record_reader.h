// SPDX-License-Identifier: MIT
#pragma once

#include "core/file_error.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zorvekan {

// Reads a comma-separated record file, one record a line, in the manner of BASIC's
// Input # but strictly, so that a damaged or foreign file is refused instead of
// being read with its fields shifted: each record must hold exactly its fields on
// its own line; blanks around a field are dropped, double quotes are stripped from
// text, blank lines between records are skipped; numbers must be whole numbers with
// nothing after them, quoted text must close on its line, and a quote in place of a
// number is an error. Every reader function returns false after recording the first
// error (file, line, field, what was expected).
class RecordReader {
public:
    RecordReader(std::string_view text, std::string name);

    // The file is 8-bit text (not UTF-16 or UTF-32, no NUL or other control bytes),
    // is not empty and ends with a line break, as every saved file does; a file cut
    // short mid-line does not. A UTF-8 byte-order mark is skipped.
    bool checkText();

    // Takes the next line that is not blank as the record `record` ("record 1") with
    // the fields `fields`, named in order; the line must hold exactly those fields.
    bool record(std::string record, std::span<const std::string> fields);

    // The fields of the record read last, by position.
    bool title(std::size_t i, std::string& value);
    bool number(std::size_t i, double& value);
    // A whole number within lo..hi.
    bool flag(std::size_t i, int lo, int hi, std::int16_t& value);
    // A count 0..max of `noun` ("rates"); beyond max the file is refused, not truncated.
    bool count(std::size_t i, int max, const char* noun, std::int16_t& value);

    // True when only blank lines are left.
    bool atEnd();
    // Line of the record read last (of the next one after atEnd).
    int line() const { return m_line; }
    // The number of fields on the line read last, whether or not it was accepted.
    std::size_t fieldsOnLine() const { return m_fields.size(); }
    // "record 3a, WellboreRadius (in.)": the record read last and its field i.
    std::string fieldName(std::size_t i) const;

    // Records an error on the line read last; `field` empty when the line is meant.
    bool fail(const std::string& field, const std::string& problem) {
        return failOnLine(m_line, field, problem);
    }
    bool failOnLine(int line, const std::string& field, const std::string& problem);
    // Adds to the problem of the error recorded, to say what the line may be instead.
    void explain(const std::string& more) { m_error.problem += more; }
    const FileError& error() const { return m_error; }

private:
    struct Field {
        std::string_view text;
        bool quoted = false;
    };
    bool split(std::string_view line);
    bool wholeNumber(std::size_t i, int lo, int hi, const std::string& range, std::int16_t& value);

    std::string_view m_text;
    std::size_t m_pos = 0;
    int m_line = 0;     // of the record read last
    int m_nextLine = 1; // of the line at m_pos
    std::string m_record;
    std::vector<std::string> m_names;
    std::vector<Field> m_fields;
    FileError m_error;
};

// A number field: optional sign, digits with at most one decimal point, optional
// exponent (E or D, as BASIC writes doubles), blanks around it; nothing else.
// Overflow and non-finite values are refused.
bool parseRecordNumber(std::string_view text, double& value);

} // namespace zorvekan
