// SPDX-License-Identifier: MIT
#include "input/record_reader.h"

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

bool RecordReader::fail(int line, const std::string& field, const std::string& problem) {
    m_error.line = line;
    m_error.field = field;
    m_error.problem = problem;
    return false;
}

bool RecordReader::checkText() {
    if (trimmed(m_text).find_first_not_of("\r\n") == std::string_view::npos)
        return fail(0, {}, "the file is empty: not a test file");
    int line = 1;
    for (const char ch : m_text) {
        const auto c = static_cast<unsigned char>(ch);
        if (c == '\n')
            ++line;
        else if ((c < 0x20 && c != '\t' && c != '\r') || c == 0x7f) {
            char code[8];
            std::snprintf(code, sizeof code, "0x%02X", c);
            return fail(line, {}, std::string("not a text file (byte ") + code + ")");
        }
    }
    if (!isLineBreak(m_text.back()))
        return fail(line, {},
                    "the last line has no line break: the file was cut short while it was "
                    "written");
    return true;
}

bool RecordReader::atEnd() {
    while (m_pos < m_text.size()) {
        const char c = m_text[m_pos];
        if (c == '\n' || (c == '\r' && (m_pos + 1 >= m_text.size() || m_text[m_pos + 1] != '\n')))
            ++m_line;
        else if (!isBlank(c) && c != '\r')
            return false;
        ++m_pos;
    }
    return true;
}

bool RecordReader::next(const std::string& field, Field& f) {
    if (atEnd())
        return fail(m_lastLine, field, "the file ends before this field: it was cut short");
    f.line = m_line;
    m_lastLine = m_line;
    const std::string_view rest = m_text.substr(m_pos);
    std::size_t end = 0;
    if (rest.front() == '"') {
        const std::size_t close = rest.find_first_of("\"\r\n", 1);
        if (close == std::string_view::npos || rest[close] != '"')
            return fail(f.line, field, "the quoted text has no closing quote on its line");
        f.text = rest.substr(1, close - 1);
        f.quoted = true;
        end = close + 1;
        while (end < rest.size() && isBlank(rest[end]))
            ++end;
        if (end < rest.size() && rest[end] != ',' && !isLineBreak(rest[end]))
            return fail(f.line, field, "text follows the closing quote");
    } else {
        end = rest.find_first_of(",\r\n");
        if (end == std::string_view::npos)
            end = rest.size();
        f.text = trimmed(rest.substr(0, end));
        if (!f.text.empty() && f.text.find('"') != std::string_view::npos)
            return fail(f.line, field, shown(f.text) + " has a stray double quote");
    }
    if (end < rest.size() && rest[end] == ',')
        ++end;
    m_pos += end;
    return true;
}

bool RecordReader::title(const std::string& field, std::string& value) {
    Field f;
    if (!next(field, f))
        return false;
    if (!f.quoted)
        return fail(f.line, field,
                    "a test file begins with the test title in double quotes, not " +
                        shown(f.text) + ": not a test file");
    value.assign(f.text);
    return true;
}

bool RecordReader::number(const std::string& field, double& value) {
    Field f;
    if (!next(field, f))
        return false;
    if (f.quoted)
        return fail(f.line, field, "quoted text " + shown(f.text) + " where a number belongs");
    if (f.text.empty())
        return fail(f.line, field, "the field is empty where a number belongs");
    if (!parseRecordNumber(f.text, value))
        return fail(f.line, field, shown(f.text) + " is not a number");
    return true;
}

bool RecordReader::wholeNumber(const std::string& field, int lo, int hi, const std::string& range,
                               std::int16_t& value) {
    double v = 0;
    if (!number(field, v))
        return false;
    if (v != std::floor(v) || v < lo || v > hi) {
        char text[40];
        std::snprintf(text, sizeof text, "%.15g", v);
        return fail(m_lastLine, field, std::string(text) + " " + range);
    }
    value = static_cast<std::int16_t>(v);
    return true;
}

bool RecordReader::flag(const std::string& field, int lo, int hi, std::int16_t& value) {
    return wholeNumber(
        field, lo, hi,
        "is not one of the codes " + std::to_string(lo) + " to " + std::to_string(hi), value);
}

bool RecordReader::count(const std::string& field, int max, const char* noun, std::int16_t& value) {
    return wholeNumber(field, 0, max,
                       std::string(noun) + " declared; a test holds 0 to " + std::to_string(max),
                       value);
}

bool RecordReader::reserved(const std::string& field) {
    Field f;
    return next(field, f);
}

} // namespace zorvekan
