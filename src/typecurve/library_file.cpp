// SPDX-License-Identifier: MIT
#include "typecurve/library_file.h"

#include "core/runtime_error.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <limits>
#include <sstream>

namespace zorvekan {

namespace {

// The curve and point counts are 16-bit integers in the file.
constexpr int kMaxCurveCount = std::numeric_limits<std::int16_t>::max();

std::string describe(double v) {
    std::ostringstream text;
    text << v;
    return text.str();
}

// Free-format input: numbers separated by white space and/or one comma.
bool readField(std::istream& in, std::string& field) {
    field.clear();
    in >> std::ws;
    if (in.peek() == std::char_traits<char>::eof())
        return false;
    for (int c = in.peek(); c != std::char_traits<char>::eof() && c != ',' && !std::isspace(c);
         c = in.peek())
        field.push_back(static_cast<char>(in.get()));
    in >> std::ws;
    if (in.peek() == ',')
        in.get();
    return true;
}

bool parseNumber(const std::string& field, double& value) {
    const char* first = field.data();
    const char* last = field.data() + field.size();
    if (first != last && *first == '+')
        ++first;
    const auto [end, ec] = std::from_chars(first, last, value);
    return ec == std::errc() && end == last && first != last && std::isfinite(value);
}

} // namespace

const char* libraryFileName(LibraryFile file) {
    switch (file) {
    case LibraryFile::OneType:
        return "ONETYPE";
    case LibraryFile::TwoType:
        return "TWOTYPE";
    case LibraryFile::FrcType:
        return "FRCTYPE";
    }
    return "";
}

int libraryCurveCount(LibraryFile file) {
    switch (file) {
    case LibraryFile::OneType:
        return 16;
    case LibraryFile::TwoType:
        return 25;
    case LibraryFile::FrcType:
        return 9;
    }
    return 0;
}

bool hasDerivativeBlocks(LibraryFile file) {
    return file != LibraryFile::TwoType;
}

std::vector<std::filesystem::path>
libraryCandidates(const std::filesystem::path& applicationDirectory,
                  const std::filesystem::path& executableDirectory, LibraryFile file) {
    std::vector<std::filesystem::path> candidates;
    for (const auto& dir : {applicationDirectory, executableDirectory}) {
        if (dir.empty())
            continue;
        auto path = (dir / libraryFileName(file)).lexically_normal();
        if (std::find(candidates.begin(), candidates.end(), path) == candidates.end())
            candidates.push_back(std::move(path));
    }
    return candidates;
}

std::filesystem::path locateLibrary(const std::filesystem::path& applicationDirectory,
                                    const std::filesystem::path& executableDirectory,
                                    LibraryFile file) {
    const auto candidates = libraryCandidates(applicationDirectory, executableDirectory, file);
    std::string searched;
    for (const auto& path : candidates) {
        std::error_code ec;
        if (std::filesystem::is_regular_file(path, ec))
            return path;
        searched += (searched.empty() ? "" : " nor ") + path.parent_path().string();
    }
    throw RuntimeError(Fault::File, std::string("type-curve library ") + libraryFileName(file) +
                                        " not found in " +
                                        (searched.empty() ? "any directory" : searched));
}

LibraryReader::LibraryReader(const std::filesystem::path& path, LibraryFile file)
    : m_name(path.string()) {
    std::error_code ec;
    if (!std::filesystem::exists(path, ec))
        fail("opening", "no such file");
    if (std::filesystem::is_directory(path, ec))
        fail("opening", "a directory, not a library file");
    m_in.open(path, std::ios::binary);
    if (!m_in)
        fail("opening", "the file cannot be read");
    m_curveCount = readCount("header", "curve count", kMaxCurveCount);
    if (m_curveCount == 0)
        fail("header", "the curve count is 0");
    m_blockCount = hasDerivativeBlocks(file) ? 2 * m_curveCount : m_curveCount;
}

bool LibraryReader::next(CurveBlock& block) {
    if (m_blocksRead == m_blockCount)
        return false;
    const int number = m_blocksRead + 1;
    const std::string where =
        "block " + std::to_string(number) + " of " + std::to_string(m_blockCount);
    const int count = readCount(where, "point count", kMaxCurvePoints);
    block.number = number;
    block.pointCount = 0;
    for (int j = 1; j <= count; ++j) {
        const std::string point = " of point " + std::to_string(j);
        block.x[j] = readNumber(where, "x" + point);
        block.y[j] = readNumber(where, "y" + point);
    }
    block.pointCount = count;
    m_blocksRead = number;
    return true;
}

double LibraryReader::readNumber(const std::string& where, const std::string& what) {
    std::string field;
    if (!readField(m_in, field))
        fail(where, "the file ends where the " + what + " should be");
    double value = 0.0;
    if (!parseNumber(field, value))
        fail(where, "the " + what + " is '" + field + "', not a number");
    return value;
}

int LibraryReader::readCount(const std::string& where, const std::string& what, int limit) {
    const double value = readNumber(where, what);
    if (value != std::floor(value) || value < 0.0)
        fail(where, "the " + what + " " + describe(value) + " is not a whole number >= 0");
    if (value > limit) {
        const std::string problem =
            "the " + what + " " + describe(value) + " exceeds " + std::to_string(limit);
        if (limit == kMaxCurvePoints)
            throw RuntimeError(Fault::SubscriptOutOfRange, m_name + ": " + where + ": " + problem);
        fail(where, problem);
    }
    return static_cast<int>(value);
}

void LibraryReader::fail(const std::string& where, const std::string& problem) const {
    throw RuntimeError(Fault::File, m_name + ": " + where + ": " + problem);
}

} // namespace zorvekan
