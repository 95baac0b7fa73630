// SPDX-License-Identifier: MIT
#include "input/record_reader.h"

#include "input/text_file.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace zorvekan {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

bool isLineBreak(char c) {
    return c == '\n' || c == '\r';
}

std::string_view trimmed(std::string_view t) {
    while (!t.empty() && isBlank(t.front()))
        t.remove_prefix(1);
    while (!t.empty() && isBlank(t.back()))
        t.remove_suffix(1);
    return t;
}

// A field's text as a message shows it: quoted, at most 40 characters.
std::string shown(std::string_view t) {
    constexpr std::size_t kMax = 40;
    std::string s(t.substr(0, kMax));
    if (t.size() > kMax)
        s += "...";
    return "\"" + s + "\"";
}

} // namespace

bool parseRecordNumber(std::string_view text, double& value) {
    text = trimmed(text);
    // The grammar of a written number is checked here, so that from_chars never sees
    // "inf", "nan" or hexadecimal; BASIC's D exponent of doubles is read as E.
    char buf[64];
    if (text.empty() || text.size() >= sizeof buf)
        return false;
    std::size_t i = 0, n = 0;
    auto digits = [&] {
        const std::size_t first = i;
        while (i < text.size() && text[i] >= '0' && text[i] <= '9')
            buf[n++] = text[i++];
        return i - first;
    };
    if (text[i] == '-')
        buf[n++] = text[i++];
    else if (text[i] == '+')
        ++i;
    std::size_t mantissa = digits();
    if (i < text.size() && text[i] == '.') {
        buf[n++] = text[i++];
        mantissa += digits();
    }
    if (mantissa == 0)
        return false;
    if (i < text.size() && (text[i] == 'E' || text[i] == 'e' || text[i] == 'D' || text[i] == 'd')) {
        buf[n++] = 'e';
        ++i;
        if (i < text.size() && (text[i] == '+' || text[i] == '-'))
            buf[n++] = text[i++];
        if (digits() == 0)
            return false;
    }
    if (i != text.size())
        return false;
    const auto [end, ec] = std::from_chars(buf, buf + n, value);
    return ec == std::errc() && end == buf + n && std::isfinite(value);
}

RecordReader::RecordReader(std::string_view text, std::string name) : m_text(text) {
    m_error.file = std::move(name);
}

bool RecordReader::failOnLine(int line, const std::string& field, const std::string& problem) {
    m_error.line = line;
    m_error.field = field;
    m_error.problem = problem;
    return false;
}

std::string RecordReader::fieldName(std::size_t i) const {
    return i < m_names.size() ? m_record + ", " + m_names[i] : m_record;
}

bool RecordReader::checkText() {
    if (const auto encoding = wideEncoding(m_text)) {
        m_error = wideEncodingError(m_error.file, *encoding);
        return false;
    }
    m_pos = utf8MarkLength(m_text);
    const std::string_view text = m_text.substr(m_pos);
    if (trimmed(text).find_first_not_of("\r\n") == std::string_view::npos)
        return fail({}, "the file is empty: not a test file");
    m_line = 1;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c == '\n' || (c == '\r' && (i + 1 == text.size() || text[i + 1] != '\n')))
            ++m_line;
        else if (c == 0) {
            m_error = nulByteError(m_error.file, text, i, 1);
            return false;
        } else if ((c < 0x20 && c != '\t' && c != '\r') || c == 0x7f) {
            char code[8];
            std::snprintf(code, sizeof code, "0x%02X", c);
            return fail({}, std::string("not a text file (byte ") + code + ")");
        }
    }
    if (!isLineBreak(text.back()))
        return fail({}, "the last line has no line break: the file was cut short while it was "
                        "written");
    m_line = 0;
    return true;
}

bool RecordReader::atEnd() {
    while (m_pos < m_text.size()) {
        const char c = m_text[m_pos];
        if (c == '\n' || (c == '\r' && (m_pos + 1 >= m_text.size() || m_text[m_pos + 1] != '\n')))
            ++m_nextLine;
        else if (!isBlank(c) && c != '\r')
            return false;
        ++m_pos;
    }
    m_line = m_nextLine;
    return true;
}

bool RecordReader::split(std::string_view line) {
    m_fields.clear();
    std::size_t pos = 0;
    for (;;) {
        while (pos < line.size() && isBlank(line[pos]))
            ++pos;
        Field f;
        const std::size_t i = m_fields.size();
        if (pos < line.size() && line[pos] == '"') {
            const std::size_t close = line.find('"', pos + 1);
            if (close == std::string_view::npos)
                return fail(fieldName(i), "the quoted text has no closing quote on its line");
            f.text = line.substr(pos + 1, close - pos - 1);
            f.quoted = true;
            pos = close + 1;
            while (pos < line.size() && isBlank(line[pos]))
                ++pos;
            if (pos < line.size() && line[pos] != ',')
                return fail(fieldName(i), "text follows the closing quote");
        } else {
            const std::size_t end = std::min(line.find(',', pos), line.size());
            f.text = trimmed(line.substr(pos, end - pos));
            if (f.text.find('"') != std::string_view::npos)
                return fail(fieldName(i), shown(f.text) + " has a stray double quote");
            pos = end;
        }
        m_fields.push_back(f);
        if (pos >= line.size())
            return true;
        ++pos; // the comma
    }
}

bool RecordReader::record(std::string record, std::span<const std::string> fields) {
    m_record = std::move(record);
    m_names.assign(fields.begin(), fields.end());
    if (atEnd()) {
        m_line = m_nextLine - 1; // the last line of the file
        return fail(m_record, "the file ends before this record: it was cut short");
    }
    m_line = m_nextLine;
    const std::size_t end = std::min(m_text.find_first_of("\r\n", m_pos), m_text.size());
    const std::string_view line = m_text.substr(m_pos, end - m_pos);
    m_pos = end; // atEnd counts the line break
    if (!split(line))
        return false;
    const std::size_t got = m_fields.size();
    if (got == fields.size())
        return true;
    std::string expected =
        std::to_string(fields.size()) + (fields.size() == 1 ? " field: " : " fields: ");
    for (std::size_t i = 0; i < fields.size(); ++i)
        expected += (i ? ", " : "") + fields[i];
    const std::string holds = "the line holds " + std::to_string(got) +
                              (got == 1 ? " field" : " fields") + " where the record has " +
                              expected;
    return got < fields.size() ? fail(fieldName(got), "missing: " + holds) : fail(m_record, holds);
}

bool RecordReader::title(std::size_t i, std::string& value) {
    const Field& f = m_fields[i];
    if (!f.quoted)
        return fail(fieldName(i), "a test file begins with the test title in double quotes, not " +
                                      shown(f.text) + ": not a test file");
    value.assign(f.text);
    return true;
}

bool RecordReader::number(std::size_t i, double& value) {
    const Field& f = m_fields[i];
    if (f.quoted)
        return fail(fieldName(i), "quoted text " + shown(f.text) + " where a number belongs");
    if (f.text.empty())
        return fail(fieldName(i), "the field is empty where a number belongs");
    if (!parseRecordNumber(f.text, value))
        return fail(fieldName(i), shown(f.text) + " is not a number");
    return true;
}

bool RecordReader::wholeNumber(std::size_t i, int lo, int hi, const std::string& range,
                               std::int16_t& value) {
    double v = 0;
    if (!number(i, v))
        return false;
    if (v != std::floor(v) || v < lo || v > hi) {
        char text[40];
        std::snprintf(text, sizeof text, "%.15g", v);
        return fail(fieldName(i), std::string(text) + " " + range);
    }
    value = static_cast<std::int16_t>(v);
    return true;
}

bool RecordReader::flag(std::size_t i, int lo, int hi, std::int16_t& value) {
    return wholeNumber(
        i, lo, hi, "is not one of the codes " + std::to_string(lo) + " to " + std::to_string(hi),
        value);
}

bool RecordReader::count(std::size_t i, int max, const char* noun, std::int16_t& value) {
    return wholeNumber(i, 0, max,
                       std::string(noun) + " declared; a test holds 0 to " + std::to_string(max),
                       value);
}

} // namespace zorvekan
