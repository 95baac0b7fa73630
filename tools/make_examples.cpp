// SPDX-License-Identifier: MIT
// Writes the example test files of examples/ from an analytic reservoir solution
// with known permeability, skin and wellbore storage (examples/README.md lists them).
//
//   zorvekan-make-examples OUTPUT_DIRECTORY
//
// The examples come from the models of the type-curve library, in oilfield units:
//   tD = 0.0002637 k t / (phi mu ct rw^2),   CD = 0.8936 C / (phi ct h rw^2),
//   oil: dp = 141.2 q B mu / (k h) * pD,     gas: dm(p) = 1422 q T / (k h) * pD
// (m in psi^2/cp, T in deg R): a well with storage and skin in an infinite homogeneous
// reservoir (radialStoragePressure, the effective-radius form) for the first three, with
// superposition in time for the buildup and the two rates; an infinite-conductivity
// fracture centred in a closed square (fracturePressure, tDxf = 0.0002637 k t /
// (phi mu ct xf^2)) for the fractured drawdown; the double-porosity well with storage and
// skin (dualPorosityStoragePressure) for the dual-porosity buildup. Times are rounded to 4
// significant digits in the unit the file uses, pressures to the 0.01 psi of a gauge (the start
// pressure to the 0.1 psi of its box), so that opening a file and saving it again writes the same
// file.
#include "core/analysis_state.h"
#include "core/pseudopressure.h"
#include "input/entry_rules.h"
#include "input/input_rules.h"
#include "input/test_file.h"
#include "models/well_models.h"

#include <date/date.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace zorvekan {
namespace {

struct Well {
    double k;    // md
    double skin; // dimensionless
    double c;    // wellbore storage, bbl/psi
    double h;    // ft
    double phi;  // fraction
    double mu;   // cp
    double ct;   // 1/psi
    double rw;   // ft
};

double timeGroup(const Well& w) { // tD per hour
    return 0.0002637 * w.k / (w.phi * w.mu * w.ct * w.rw * w.rw);
}

double storageGroup(const Well& w) { // CD
    return 0.8936 * w.c / (w.phi * w.ct * w.h * w.rw * w.rw);
}

// Dimensionless pressure pD (skin included) after t hours at unit rate.
double pD(const Well& w, double hours) {
    if (hours <= 0)
        return 0.0;
    const double cd = storageGroup(w);
    return radialStoragePressure(cd * std::exp(2 * w.skin), timeGroup(w) * hours / cd);
}

double significant4(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.4g", v);
    return std::strtod(text, nullptr);
}

double toGauge(double p) {
    return std::round(p * 100.0) / 100.0;
}

// n times evenly spaced in log time from `first` to `last`, in the file's unit,
// rounded to 4 significant digits (duplicates after rounding dropped).
std::vector<double> logTimes(double first, double last, int n) {
    std::vector<double> t;
    for (int i = 0; i < n; ++i) {
        const double v = significant4(first * std::pow(last / first, i / double(n - 1)));
        if (t.empty() || v > t.back())
            t.push_back(v);
    }
    return t;
}

// The input screen as the engineer fills it; boxes typed as text go through their rules.
AnalysisState described(const char* title, const char* testType, int fluid, int rateTimeUnit,
                        int testTimeUnit,
                        const std::vector<std::pair<PropertyBox, double>>& boxes) {
    AnalysisState s;
    s.TestTitle = title;
    applyTestType(s, testType);
    s.FluidFlags = static_cast<std::int16_t>(fluid);
    s.RateTimeUnit = static_cast<std::int16_t>(rateTimeUnit);
    s.TestTimeUnit = static_cast<std::int16_t>(testTimeUnit);
    for (const auto& [box, typed] : boxes) {
        char text[32];
        std::snprintf(text, sizeof text, "%.15g", typed);
        applyPropertyText(s, box, text);
    }
    return s;
}

void addRate(AnalysisState& s, double rate, double typedDuration) {
    const int j = ++s.RateCount;
    s.Rate[j] = rate;
    s.RateTime[j] = s.RateTimeUnit == 1 ? typedDuration * 24.0 : typedDuration;
}

void addPoint(AnalysisState& s, double typedTime, double pressure) {
    const int i = ++s.TestPointCount;
    s.TestTime[i] = s.TestTimeUnit == 1 ? typedTime / 60.0 : typedTime; // as entry stores it
    s.TestPressure[i] = pressure;
}

// ---- oil buildup after 3 days of production ----
const Well kBuildupWell{100, 3, 0.01, 50, 0.2, 0.8, 15e-6, 0.354};
constexpr double kBuildupRate = 400, kBuildupFvf = 1.25, kBuildupInitial = 4000;

AnalysisState oilBuildup() {
    const Well& w = kBuildupWell;
    AnalysisState s =
        described("Example oil buildup: k 100 md, skin 3, C 0.01 bbl/psi", "Buildup", kOil, 1, 1,
                  {{PropertyBox::Viscosity, w.mu},
                   {PropertyBox::Fvf, kBuildupFvf},
                   {PropertyBox::NetPay, w.h},
                   {PropertyBox::WellRadius, w.rw * 12},
                   {PropertyBox::Porosity, w.phi * 100},
                   {PropertyBox::Compressibility, w.ct * 1e6},
                   {PropertyBox::DrainageArea, 640}});
    addRate(s, kBuildupRate, 3); // days
    const double tp = s.RateTime[1];
    const double unitDrop = 141.2 * kBuildupRate * kBuildupFvf * w.mu / (w.k * w.h);
    const double flowing = std::round((kBuildupInitial - unitDrop * pD(w, tp)) * 10.0) / 10.0;
    applyPropertyText(s, PropertyBox::StartPressure, std::to_string(flowing));
    for (const double minutes : logTimes(0.06, 4320, 100)) {
        const double dt = minutes / 60.0;
        const double rise = unitDrop * (pD(w, tp) - pD(w, tp + dt) + pD(w, dt));
        addPoint(s, minutes, toGauge(s.StartPressure + rise));
    }
    return s;
}

// ---- gas drawdown analysed in pseudopressure ----
const Well kGasWell{10, 2, 0.01, 50, 0.12, 0 /* mu_g at p_i, below */, 120e-6, 0.354};
constexpr double kGasRate = 4000, kGasTemperature = 200, kGasGravity = 0.7, kGasInitial = 5000;

// p / (mu z) with the program's own gas properties: the integrand of m(p) / 2.
double integrand(AnalysisState& gas, double p) {
    const double z = GasZFactor(gas, p);
    return p / (GasViscosityAndFvf(gas, p, z).viscosity * z);
}

// The pressure below `from` whose trapezoid (f(from) + f(p)) (from - p), the step by
// which the program integrates m(p) along the data, equals `increment` (psi^2/cp).
double pressureBelow(AnalysisState& gas, double from, double increment) {
    const double fFrom = integrand(gas, from);
    double lo = 14.7, hi = from;
    for (int pass = 0; pass < 200 && hi - lo > 1e-9; ++pass) {
        const double mid = 0.5 * (lo + hi);
        if ((fFrom + integrand(gas, mid)) * (from - mid) > increment)
            lo = mid;
        else
            hi = mid;
    }
    return 0.5 * (lo + hi);
}

AnalysisState gasDrawdown() {
    AnalysisState gas;
    gas.ReservoirTemperature = kGasTemperature;
    gas.GasGravity = kGasGravity;
    // The preparation of a gas test leaves mu_g at the start pressure in the viscosity
    // the analyses read, so the example's tD uses exactly that value.
    const double zi = GasZFactor(gas, kGasInitial);
    Well w = kGasWell;
    w.mu = GasViscosityAndFvf(gas, kGasInitial, zi).viscosity;
    AnalysisState s = described("Example gas drawdown: k 10 md, skin 2, C 0.01 bbl/psi", "Drawdown",
                                kGasPseudopressure, 0, 0,
                                {{PropertyBox::Viscosity, std::round(w.mu * 1000) / 1000},
                                 {PropertyBox::NetPay, w.h},
                                 {PropertyBox::WellRadius, w.rw * 12},
                                 {PropertyBox::Porosity, w.phi * 100},
                                 {PropertyBox::Compressibility, w.ct * 1e6},
                                 {PropertyBox::DrainageArea, 640},
                                 {PropertyBox::StartPressure, kGasInitial},
                                 {PropertyBox::Temperature, kGasTemperature},
                                 {PropertyBox::GasGravity, kGasGravity}});
    addRate(s, kGasRate, 72); // hours
    const double unitDrop = 1422.0 * kGasRate * (kGasTemperature + 460) / (w.k * w.h);
    // Each pressure continues the m(p) integral from the previous (rounded) one, so
    // the pseudopressure the program computes from the file reproduces dm(p).
    double previous = kGasInitial, reached = 0;
    for (const double hours : logTimes(0.001, 72, 100)) {
        const double target = unitDrop * pD(w, hours);
        const double p = toGauge(pressureBelow(gas, previous, target - reached));
        reached += (integrand(gas, previous) + integrand(gas, p)) * (previous - p);
        addPoint(s, hours, p);
        previous = p;
    }
    return s;
}

// ---- two-rate oil drawdown ----
const Well kTwoRateWell{60, 4, 0.005, 50, 0.18, 1.0, 12e-6, 0.354};
constexpr double kFirstRate = 300, kSecondRate = 500, kTwoRateFvf = 1.2, kTwoRateInitial = 3500;

AnalysisState twoRateDrawdown() {
    const Well& w = kTwoRateWell;
    AnalysisState s = described("Example two-rate drawdown: k 60 md, skin 4, C 0.005 bbl/psi",
                                "Drawdown", kOil, 1, 0,
                                {{PropertyBox::Viscosity, w.mu},
                                 {PropertyBox::Fvf, kTwoRateFvf},
                                 {PropertyBox::NetPay, w.h},
                                 {PropertyBox::WellRadius, w.rw * 12},
                                 {PropertyBox::Porosity, w.phi * 100},
                                 {PropertyBox::Compressibility, w.ct * 1e6},
                                 {PropertyBox::DrainageArea, 640},
                                 {PropertyBox::StartPressure, kTwoRateInitial}});
    addRate(s, kFirstRate, 0.5);  // days
    addRate(s, kSecondRate, 2.5); // days
    const double change = s.RateTime[1];
    const double unitDrop = 141.2 * kTwoRateFvf * w.mu / (w.k * w.h);
    for (const double hours : logTimes(0.001, 72, 110)) {
        if (hours == change)
            continue; // a point on the rate change belongs to neither step
        const double drop = unitDrop * (kFirstRate * pD(w, hours) +
                                        (kSecondRate - kFirstRate) * pD(w, hours - change));
        addPoint(s, hours, toGauge(kTwoRateInitial - drop));
    }
    return s;
}

// ---- fractured-well oil drawdown, fracture centred in a closed square ----
constexpr double kFracK = 5, kFracH = 30, kFracPhi = 0.1, kFracMu = 0.5, kFracCt = 15e-6;
constexpr double kFracXf = 100, kFracXeOverXf = 10, kFracRate = 200, kFracFvf = 1.3;
constexpr double kFracInitial = 3000;

AnalysisState fracturedDrawdown() {
    // The square of side 2 xe = 2000 ft, 91.83 acres, as the area box keeps it (0.1 acre).
    constexpr double acres = 91.8;
    AnalysisState s = described("Example fractured-well drawdown: k 5 md, xf 100 ft, xe/xf 10",
                                "Drawdown", kOil, 0, 0,
                                {{PropertyBox::Viscosity, kFracMu},
                                 {PropertyBox::Fvf, kFracFvf},
                                 {PropertyBox::NetPay, kFracH},
                                 {PropertyBox::WellRadius, 0.354 * 12},
                                 {PropertyBox::Porosity, kFracPhi * 100},
                                 {PropertyBox::Compressibility, kFracCt * 1e6},
                                 {PropertyBox::DrainageArea, acres},
                                 {PropertyBox::StartPressure, kFracInitial}});
    addRate(s, kFracRate, 500); // hours
    const double tdxfPerHour =
        0.0002637 * kFracK / (kFracPhi * kFracMu * kFracCt * kFracXf * kFracXf);
    const double unitDrop = 141.2 * kFracRate * kFracFvf * kFracMu / (kFracK * kFracH);
    for (const double hours : logTimes(0.006, 500, 100))
        addPoint(s, hours,
                 toGauge(kFracInitial -
                         unitDrop * fracturePressure(kFracXeOverXf, tdxfPerHour * hours)));
    return s;
}

// ---- dual-porosity oil buildup after 90 days of production, an acidized well ----
// omega 0.1 and lambda chosen so that lambda CD / (omega (1 - omega)) = 1E-3 and
// lambda CD / (1 - omega) = 1E-4, two of the library's transition curves; CD e^2s of the
// fissures alone, CD e^2s / omega = 100, is one of its storage curves.
const Well kDualWell{100, -2.3, 0.004, 50, 0.08, 1.0, 10e-6, 0.3};
constexpr double kDualOmega = 0.1, kDualP2 = 1e-4;
constexpr double kDualRate = 1000, kDualFvf = 1.2, kDualInitial = 4000;

double dualLambda() {
    return kDualP2 * (1 - kDualOmega) / storageGroup(kDualWell);
}

double dualPD(double hours) {
    if (hours <= 0)
        return 0.0;
    const Well& w = kDualWell;
    const double cd = storageGroup(w);
    return dualPorosityStoragePressure(cd * std::exp(2 * w.skin),
                                       dualLambda() * std::exp(-2 * w.skin), kDualOmega,
                                       timeGroup(w) * hours / cd);
}

AnalysisState dualPorosityBuildup() {
    const Well& w = kDualWell;
    AnalysisState s =
        described("Example dual-porosity buildup: k 100 md, skin -2.3, omega 0.1, lambda 9.1E-08",
                  "Buildup", kOil, 1, 1,
                  {{PropertyBox::Viscosity, w.mu},
                   {PropertyBox::Fvf, kDualFvf},
                   {PropertyBox::NetPay, w.h},
                   {PropertyBox::WellRadius, w.rw * 12},
                   {PropertyBox::Porosity, w.phi * 100},
                   {PropertyBox::Compressibility, w.ct * 1e6},
                   {PropertyBox::DrainageArea, 640}});
    addRate(s, kDualRate, 90); // days
    const double tp = s.RateTime[1];
    const double unitDrop = 141.2 * kDualRate * kDualFvf * w.mu / (w.k * w.h);
    const double flowing = std::round((kDualInitial - unitDrop * dualPD(tp)) * 10.0) / 10.0;
    applyPropertyText(s, PropertyBox::StartPressure, std::to_string(flowing));
    for (const double minutes : logTimes(0.01, 24000, 100)) {
        const double dt = minutes / 60.0;
        const double rise = unitDrop * (dualPD(tp) - dualPD(tp + dt) + dualPD(dt));
        addPoint(s, minutes, toGauge(s.StartPressure + rise));
    }
    return s;
}

// ---- a downhole gauge's record of the oil buildup's whole test ----
// The buildup well read by a memory gauge: an hour at the initial pressure, 72 h of
// flow at 400 STB/day from 19:00 on 27 February 2024 (across the leap day and the end
// of the month), then 48 h of buildup from the shut-in at 19:00 on 1 March. The gauge
// writes day/month/year dates, the pressure to 0.01 psi and the temperature to 0.01
// deg F, fast at each rate change and slower later, as gauges are programmed.
constexpr double kStaticHours = 1, kFlowHours = 72, kBuildupHours = 48;

// The sampling of one period: every `fast` seconds for its first `fastFor` seconds,
// every `middle` seconds until `middleFor`, then every `slow` seconds to its end.
std::vector<int> sampleSeconds(double hours, int fast, int fastFor, int middle, int middleFor,
                               int slow) {
    std::vector<int> seconds;
    const int end = static_cast<int>(hours * 3600);
    for (int t = 0; t < end; t += t < fastFor ? fast : t < middleFor ? middle : slow)
        seconds.push_back(t);
    return seconds;
}

std::string gaugeRecord() {
    const Well& w = kBuildupWell;
    const double unitDrop = 141.2 * kBuildupRate * kBuildupFvf * w.mu / (w.k * w.h);
    const auto first = date::sys_days{date::year{2024} / 2 / 27} + std::chrono::hours{18};
    std::string text = "Gauge export: example well A-1, downhole memory gauge\n"
                       "Gauge serial: 4471-X, run 27/02/2024 to 03/03/2024\n"
                       "Test: flow at 400 STB/day, then buildup\n"
                       "Date Time,Pressure (psia),Temperature (degF)\n";
    auto reading = [&](int second, double pressure, double temperature) {
        const auto at = first + std::chrono::seconds{second};
        char line[64];
        std::snprintf(line, sizeof line, ",%.2f,%.2f\n", toGauge(pressure),
                      std::round(temperature * 100) / 100);
        text += date::format("%d/%m/%Y %H:%M:%S", at) + line;
    };
    const int flowStart = static_cast<int>(kStaticHours * 3600);
    const int shutIn = flowStart + static_cast<int>(kFlowHours * 3600);
    for (const int t : sampleSeconds(kStaticHours, 300, 0, 300, 0, 300))
        reading(t, kBuildupInitial, 205);
    for (const int t : sampleSeconds(kFlowHours, 60, 3600, 600, 3600, 600)) {
        const double hours = t / 3600.0;
        reading(flowStart + t, kBuildupInitial - unitDrop * pD(w, hours),
                205 + 3 * (1 - std::exp(-hours / 2)));
    }
    const double tp = kFlowHours;
    for (const int t : sampleSeconds(kBuildupHours + 1.0 / 3600, 5, 600, 60, 7200, 300)) {
        const double dt = t / 3600.0;
        const double p = t == 0 ? kBuildupInitial - unitDrop * pD(w, tp)
                                : kBuildupInitial - unitDrop * (pD(w, tp + dt) - pD(w, dt));
        reading(shutIn + t, p, 205 + 3 * (1 - std::exp(-tp / 2)) * std::exp(-dt / 3));
    }
    return text;
}

bool writeText(const std::filesystem::path& dir, const char* name, const std::string& text) {
    std::ofstream out(dir / name, std::ios::binary);
    out << text;
    if (out.flush())
        return true;
    std::cerr << "zorvekan-make-examples: " << (dir / name).string() << ": cannot be written\n";
    return false;
}

bool write(const std::filesystem::path& dir, const char* name, const AnalysisState& s) {
    AnalysisState finished = s;
    deriveFlowRateAndProducingTime(finished);
    FileError error;
    if (!saveTestFile(finished, (dir / name).string(), error)) {
        std::cerr << "zorvekan-make-examples: " << error.message() << '\n';
        return false;
    }
    return true;
}

} // namespace
} // namespace zorvekan

int main(int argc, char** argv) {
    using namespace zorvekan;
    if (argc != 2) {
        std::cerr << "usage: zorvekan-make-examples OUTPUT_DIRECTORY\n";
        return 2;
    }
    const std::filesystem::path dir = argv[1];
    std::error_code ec;
    std::filesystem::create_directories(dir, ec);
    try {
        const bool ok = write(dir, "oil-buildup.zvt", oilBuildup()) &&
                        write(dir, "gas-drawdown.zvt", gasDrawdown()) &&
                        write(dir, "two-rate-drawdown.zvt", twoRateDrawdown()) &&
                        write(dir, "fractured-drawdown.zvt", fracturedDrawdown()) &&
                        write(dir, "dual-porosity-buildup.zvt", dualPorosityBuildup()) &&
                        writeText(dir, "oil-gauge-record.csv", gaugeRecord());
        return ok ? 0 : 1;
    } catch (const std::exception& e) {
        std::cerr << "zorvekan-make-examples: " << e.what() << '\n';
        return 1;
    }
}
