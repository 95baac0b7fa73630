// SPDX-License-Identifier: MIT
#include "input/test_file.h"

#include "core/runtime_error.h"
#include "input/entry_rules.h"
#include "input/record_reader.h"

#include <cmath>
#include <cstdio>

namespace zorvekan {

namespace {

constexpr double kSquareFeetPerAcre = 43560.0;
constexpr double kDrainagePi = 3.1416; // the program's drainage radius uses 3.1416

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
    w.number(s.WellboreRadius * 12.0).number(s.Porosity);
    w.number(s.TotalCompressibility * 1e6).number(s.StartPressure);
    w.number(kDrainagePi * s.DrainageRadius * s.DrainageRadius / kSquareFeetPerAcre);
    if (s.FluidFlags >= 4) {
        w.number(s.WaterFvf).number(s.WaterViscosity).number(s.GasFvf).number(s.GasViscosity);
        w.number(s.SolutionGor);
    }
    w.end();
}

// ---- reading ----

bool readDescription(RecordReader& r, AnalysisState& s) {
    return r.title("record 1, TestTitle", s.TestTitle) &&
           r.flag("record 1, InjectionFlag", 0, 1, s.InjectionFlag) &&
           r.flag("record 1, ShutInFlag", 0, 1, s.ShutInFlag) &&
           r.flag("record 1, FluidFlags", kGasPseudopressure, kOilGasWater, s.FluidFlags) &&
           r.reserved("record 1, reserved field 5") &&
           r.flag("record 1, TestTimeUnit", 0, 1, s.TestTimeUnit) &&
           r.flag("record 1, RateTimeUnit", 0, 1, s.RateTimeUnit) &&
           r.reserved("record 1, reserved field 8") && r.reserved("record 1, reserved field 9");
}

bool readGasRecord(RecordReader& r, AnalysisState& s) {
    return r.number("record 2, GasGravity", s.GasGravity) &&
           r.number("record 2, ReservoirTemperature", s.ReservoirTemperature);
}

bool readProperties(RecordReader& r, AnalysisState& s) {
    const char* rec = s.FluidFlags >= 4 ? "record 3b, " : "record 3a, ";
    auto name = [&](const char* field) { return std::string(rec) + field; };
    double rw = 0, ct = 0, acres = 0;
    if (!(r.count(name("RateCount"), kMaxRates, "rates", s.RateCount) &&
          r.number(name("OilViscosity"), s.OilViscosity) && r.number(name("OilFvf"), s.OilFvf) &&
          r.number(name("Thickness"), s.Thickness) && r.number(name("WellboreRadius (in.)"), rw) &&
          r.number(name("Porosity"), s.Porosity) &&
          r.number(name("TotalCompressibility (microsips)"), ct) &&
          r.number(name("StartPressure"), s.StartPressure) &&
          r.number(name("DrainageArea (acres)"), acres)))
        return false;
    s.WellboreRadius = rw / 12.0;
    s.TotalCompressibility = ct * 1e-6;
    s.DrainageArea = acres * kSquareFeetPerAcre;
    if (!std::isfinite(s.DrainageArea))
        return r.fail(r.fieldLine(), name("DrainageArea (acres)"),
                      "the area is beyond the range "
                      "of numbers in square feet");
    s.DrainageRadius = s.DrainageArea >= 0 ? std::sqrt(s.DrainageArea / kDrainagePi) : 0.0;
    if (s.FluidFlags < 4)
        return true;
    return r.number(name("WaterFvf"), s.WaterFvf) &&
           r.number(name("WaterViscosity"), s.WaterViscosity) &&
           r.number(name("GasFvf"), s.GasFvf) && r.number(name("GasViscosity"), s.GasViscosity) &&
           r.number(name("SolutionGor"), s.SolutionGor);
}

bool readRates(RecordReader& r, AnalysisState& s) {
    const bool multiphase = s.FluidFlags >= 4;
    const bool days = s.RateTimeUnit == 1;
    for (int j = 1; j <= s.RateCount; ++j) {
        const std::string rec = "record 4, rate " + std::to_string(j) + ", ";
        double duration = 0;
        if (!(r.number(rec + "Rate", s.Rate[j]) &&
              r.number(rec + (days ? "duration (days)" : "duration (hrs.)"), duration)))
            return false;
        s.RateTime[j] = days ? duration * 24.0 : duration;
        if (!std::isfinite(s.RateTime[j]))
            return r.fail(r.fieldLine(), rec + "duration (days)",
                          "the duration is beyond the range of numbers in hours");
        if (multiphase && !(r.number(rec + "WaterRate", s.WaterRate[j]) &&
                            r.number(rec + "GasRate", s.GasRate[j])))
            return false;
    }
    return true;
}

// Test points run to the end of the file; a file holding more than 500 is counted
// through so the message can say how many it holds.
bool readTestPoints(RecordReader& r, AnalysisState& s) {
    const bool minutes = s.TestTimeUnit == 1;
    const char* timeName = minutes ? "time (min.)" : "time (hrs.)";
    int n = 0;
    int firstExcessLine = 0;
    while (!r.atEnd()) {
        ++n;
        const std::string rec = "record 5, test point " + std::to_string(n) + ", ";
        double t = 0, p = 0;
        if (n == kMaxTestPoints + 1)
            firstExcessLine = r.line();
        if (!(r.number(rec + timeName, t) && r.number(rec + "TestPressure", p)))
            return false;
        if (n <= kMaxTestPoints) {
            s.TestTime[n] = minutes ? t / 60.0 : t; // as entry stores minutes
            s.TestPressure[n] = p;
        }
    }
    if (n > kMaxTestPoints)
        return r.fail(firstExcessLine, "record 5, test point " + std::to_string(kMaxTestPoints + 1),
                      "the file holds " + std::to_string(n) +
                          " test points; a test holds at most " + std::to_string(kMaxTestPoints));
    s.TestPointCount = static_cast<std::int16_t>(n);
    return true;
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
    if (!readWholeFile(path, text, result.error))
        return result;
    return loadTestFile(s, text, path);
}

} // namespace zorvekan
