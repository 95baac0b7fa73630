// SPDX-License-Identifier: MIT
#include "input/test_file.h"

#include "core/runtime_error.h"
#include "input/entry_rules.h"
#include "input/input_rules.h"
#include "input/record_reader.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <span>

namespace zorvekan {

namespace {

constexpr double kSquareFeetPerAcre = 43560.0;
// Far more than a test of 25 rates and 500 points needs: a larger file is not one.
constexpr std::size_t kLargestTestFile = std::size_t{16} << 20;

// ---- writing ----

class RecordWriter {
public:
    explicit RecordWriter(std::string& out) : m_out(out) {}
    RecordWriter& number(double v) { return field(testFileNumber(v)); }
    RecordWriter& integer(int v) { return field(std::to_string(v)); }
    RecordWriter& text(const std::string& t) {
        std::string quoted = "\"";
        for (const char c : t)
            quoted += c == '"' ? '\'' : (c == '\n' || c == '\r') ? ' ' : c;
        return field(quoted + '"');
    }
    void end() {
        m_out += '\n';
        m_first = true;
    }

private:
    RecordWriter& field(const std::string& f) {
        if (!m_first)
            m_out += ',';
        m_out += f;
        m_first = false;
        return *this;
    }
    std::string& m_out;
    bool m_first = true;
};

void writeProperties(const AnalysisState& s, RecordWriter& w) {
    w.integer(s.RateCount).number(s.OilViscosity).number(s.OilFvf).number(s.Thickness);
    w.number(typedValue(s, PropertyBox::WellRadius)).number(s.Porosity);
    w.number(typedValue(s, PropertyBox::Compressibility)).number(s.StartPressure);
    w.number(drainageAreaAcres(s));
    if (s.FluidFlags >= 4) {
        w.number(s.WaterFvf).number(s.WaterViscosity).number(s.GasFvf).number(s.GasViscosity);
        w.number(s.SolutionGor);
    }
    w.end();
}

// ---- reading ----

// Field names of the records, as the messages of a refused file name them.
const std::string kDescriptionFields[] = {"TestTitle",    "InjectionFlag",    "ShutInFlag",
                                          "FluidFlags",   "reserved field 5", "TestTimeUnit",
                                          "RateTimeUnit", "reserved field 8", "reserved field 9"};
const std::string kGasFields[] = {"GasGravity", "ReservoirTemperature"};
const std::string kPropertyFields[] = {"RateCount",
                                       "OilViscosity",
                                       "OilFvf",
                                       "Thickness",
                                       "WellboreRadius (in.)",
                                       "Porosity",
                                       "TotalCompressibility (microsips)",
                                       "StartPressure",
                                       "DrainageArea (acres)",
                                       "WaterFvf",
                                       "WaterViscosity",
                                       "GasFvf",
                                       "GasViscosity",
                                       "SolutionGor"};
const std::string kRateFields[2][4] = {{"Rate", "duration (hrs.)", "WaterRate", "GasRate"},
                                       {"Rate", "duration (days)", "WaterRate", "GasRate"}};
const std::string kPointFields[2][2] = {{"time (hrs.)", "TestPressure"},
                                        {"time (min.)", "TestPressure"}};

bool readDescription(RecordReader& r, AnalysisState& s) {
    // A line that does not begin with a quoted title is no test file at all: say so
    // rather than count its fields.
    if (!r.record("record 1", kDescriptionFields)) {
        if (r.fieldsOnLine() > 0 && r.error().field != r.fieldName(0))
            r.title(0, s.TestTitle); // the error becomes "not a test file" when unquoted
        return false;
    }
    return r.title(0, s.TestTitle) && r.flag(1, 0, 1, s.InjectionFlag) &&
           r.flag(2, 0, 1, s.ShutInFlag) &&
           r.flag(3, kGasPseudopressure, kOilGasWater, s.FluidFlags) &&
           r.flag(5, 0, 1, s.TestTimeUnit) && r.flag(6, 0, 1, s.RateTimeUnit);
}

bool readGasRecord(RecordReader& r, AnalysisState& s) {
    if (!r.record("record 2", kGasFields)) {
        if (r.fieldsOnLine() == 9)
            r.explain(" (record 3a: record 2 of a gas test in pseudopressure is missing)");
        return false;
    }
    return r.number(0, s.GasGravity) && r.number(1, s.ReservoirTemperature);
}

bool readProperties(RecordReader& r, AnalysisState& s) {
    const bool multiphase = s.FluidFlags >= 4;
    const std::span<const std::string> fields(kPropertyFields, multiphase ? 14 : 9);
    if (!r.record(multiphase ? "record 3b" : "record 3a", fields))
        return false;
    double typed[14] = {};
    if (!r.count(0, kMaxRates, "rates", s.RateCount))
        return false;
    for (std::size_t i = 1; i < fields.size(); ++i)
        if (!r.number(i, typed[i]))
            return false;
    const double acres = typed[8];
    if (acres < 0)
        return r.fail(r.fieldName(8), "a drainage area cannot be negative");
    if (!std::isfinite(acres * kSquareFeetPerAcre))
        return r.fail(r.fieldName(8), "the area is beyond the range of numbers in square feet");
    s.OilViscosity = typed[1];
    s.OilFvf = typed[2];
    s.Thickness = typed[3];
    s.Porosity = typed[5]; // the fraction, as stored
    s.StartPressure = typed[7];
    // Inches, microsips and acres converted by the boxes' own rules.
    applyTypedValue(s, PropertyBox::WellRadius, typed[4]);
    applyTypedValue(s, PropertyBox::Compressibility, typed[6]);
    applyTypedValue(s, PropertyBox::DrainageArea, acres);
    if (multiphase) {
        s.WaterFvf = typed[9];
        s.WaterViscosity = typed[10];
        s.GasFvf = typed[11];
        s.GasViscosity = typed[12];
        s.SolutionGor = typed[13]; // its rule runs once the rates are read (refill)
    }
    return true;
}

bool readRates(RecordReader& r, AnalysisState& s) {
    const bool multiphase = s.FluidFlags >= 4;
    const std::span<const std::string> fields(kRateFields[s.RateTimeUnit == 1 ? 1 : 0],
                                              multiphase ? 4 : 2);
    for (int j = 1; j <= s.RateCount; ++j) {
        if (!r.record("record 4, rate " + std::to_string(j), fields)) {
            if (multiphase && r.fieldsOnLine() == 2)
                r.explain(" (a test point? RateCount " + std::to_string(s.RateCount) +
                          " says more rates than the file holds)");
            return false;
        }
        double duration = 0;
        if (!(r.number(0, s.Rate[j]) && r.number(1, duration)))
            return false;
        s.RateTime[j] = s.RateTimeUnit == 1 ? duration * 24.0 : duration;
        if (!std::isfinite(s.RateTime[j]))
            return r.fail(r.fieldName(1), "the duration is beyond the range of numbers in hours");
        if (multiphase && !(r.number(2, s.WaterRate[j]) && r.number(3, s.GasRate[j])))
            return false;
    }
    return true;
}

// Test points run to the end of the file; a file holding more than 500 is counted
// through so the message can say how many it holds.
bool readTestPoints(RecordReader& r, AnalysisState& s) {
    const bool minutes = s.TestTimeUnit == 1;
    const std::span<const std::string> fields(kPointFields[minutes ? 1 : 0]);
    int n = 0;
    int firstExcessLine = 0;
    while (!r.atEnd()) {
        ++n;
        if (!r.record("record 5, test point " + std::to_string(n), fields)) {
            if (s.FluidFlags >= 4 && r.fieldsOnLine() == 4)
                r.explain(" (a rate record? the file holds more rates than its RateCount " +
                          std::to_string(s.RateCount) + ")");
            return false;
        }
        double t = 0, p = 0;
        if (!(r.number(0, t) && r.number(1, p)))
            return false;
        if (n == kMaxTestPoints + 1)
            firstExcessLine = r.line();
        if (n <= kMaxTestPoints) {
            s.TestTime[n] = minutes ? t / 60.0 : t; // as entry stores minutes
            s.TestPressure[n] = p;
        }
    }
    if (n > kMaxTestPoints)
        return r.failOnLine(
            firstExcessLine, "record 5, test point " + std::to_string(kMaxTestPoints + 1),
            "the file holds " + std::to_string(n) + " test points; a test holds at most " +
                std::to_string(kMaxTestPoints));
    s.TestPointCount = static_cast<std::int16_t>(n);
    return true;
}

// Titles are saved in UTF-8. A title that is not valid UTF-8 (a file written by an
// older program in a Western code page) is read as Latin-1, so no character is lost
// to a replacement mark.
bool validUtf8(std::string_view t) {
    std::size_t i = 0;
    while (i < t.size()) {
        const auto c = static_cast<unsigned char>(t[i]);
        std::size_t more = 0;
        std::uint32_t code = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if (c >= 0xC2 && c <= 0xDF) {
            more = 1;
            code = c & 0x1Fu;
        } else if (c >= 0xE0 && c <= 0xEF) {
            more = 2;
            code = c & 0x0Fu;
        } else if (c >= 0xF0 && c <= 0xF4) {
            more = 3;
            code = c & 0x07u;
        } else {
            return false;
        }
        if (i + more >= t.size())
            return false;
        for (std::size_t k = 1; k <= more; ++k) {
            const auto d = static_cast<unsigned char>(t[i + k]);
            if ((d & 0xC0u) != 0x80u)
                return false;
            code = (code << 6) | (d & 0x3Fu);
        }
        const std::uint32_t least[] = {0, 0x80, 0x800, 0x10000};
        if (code < least[more] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false;
        i += more + 1;
    }
    return true;
}

std::string utf8Title(const std::string& bytes) {
    if (validUtf8(bytes))
        return bytes;
    std::string text;
    for (const char ch : bytes) {
        const auto c = static_cast<unsigned char>(ch);
        if (c < 0x80) {
            text += ch;
        } else {
            text += static_cast<char>(0xC0 | (c >> 6));
            text += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return text;
}

} // namespace

std::string testFileNumber(double value) {
    if (!std::isfinite(value))
        throw RuntimeError(Fault::Overflow, "a number to be saved is not finite");
    if (value == 0.0)
        return "0"; // also for -0
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.15g", value);
    std::string text(buf);
    if (const auto e = text.find('e'); e != std::string::npos)
        text[e] = 'E';
    return text;
}

std::string testFileText(const AnalysisState& s) {
    std::string out;
    RecordWriter w(out);
    w.text(s.TestTitle).integer(s.InjectionFlag).integer(s.ShutInFlag).integer(s.FluidFlags);
    w.integer(0).integer(s.TestTimeUnit).integer(s.RateTimeUnit).integer(0).integer(0).end();
    if (s.FluidFlags == kGasPseudopressure) {
        w.number(s.GasGravity).number(s.ReservoirTemperature).end();
    }
    writeProperties(s, w);
    const bool multiphase = s.FluidFlags >= 4;
    for (int j = 1; j <= s.RateCount; ++j) {
        w.number(s.Rate[j]).number(s.RateTimeUnit == 1 ? s.RateTime[j] / 24.0 : s.RateTime[j]);
        if (multiphase)
            w.number(s.WaterRate[j]).number(s.GasRate[j]);
        w.end();
    }
    const double unitsPerTestHour = s.TestTimeUnit == 1 ? 60.0 : 1.0;
    for (int i = 1; i <= s.TestPointCount; ++i)
        w.number(s.TestTime[i] * unitsPerTestHour).number(s.TestPressure[i]).end();
    return out;
}

bool saveTestFile(const AnalysisState& s, const std::string& path, FileError& error) {
    return writeFileAtomically(path, testFileText(s), error);
}

bool parseTestFile(std::string_view text, const std::string& name, AnalysisState& s,
                   FileError& error) {
    RecordReader r(text, name);
    const bool ok = r.checkText() && readDescription(r, s) &&
                    (s.FluidFlags != kGasPseudopressure || readGasRecord(r, s)) &&
                    readProperties(r, s) && readRates(r, s) && readTestPoints(r, s);
    if (!ok)
        error = r.error();
    else
        s.TestTitle = utf8Title(s.TestTitle);
    return ok;
}

OpenResult loadTestFile(AnalysisState& s, std::string_view text, const std::string& name) {
    OpenResult result;
    AnalysisState copy = s;
    try {
        if (!parseTestFile(text, name, copy, result.error))
            return result;
        result.refill = refillInputScreen(copy);
    } catch (const RuntimeError& e) {
        // A value that overflows once converted (1E308 acres) is a fault of the file.
        result.error = FileError{name, 0, {}, e.what()};
        return result;
    }
    try {
        deriveFlowRateAndProducingTime(copy);
    } catch (const RuntimeError& e) {
        result.error = FileError{name, 0, "record 4",
                                 std::string("no producing time follows from the rate history (") +
                                     e.what() + ")"};
        return result;
    }
    copy.DerivativeSpan = 0.2;
    copy.FractureSkin = 0; // belonged to the semilog line of the test before
    s = std::move(copy);
    result.ok = true;
    return result;
}

OpenResult openTestFile(AnalysisState& s, const std::string& path) {
    OpenResult result;
    std::string text;
    if (!readWholeFile(path, kLargestTestFile, text, result.error))
        return result;
    return loadTestFile(s, text, path);
}

} // namespace zorvekan
