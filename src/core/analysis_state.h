// SPDX-License-Identifier: MIT
#pragma once

#include "core/bounded_array.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zorvekan {

inline constexpr int kMaxTestPoints = 500; // test points live at 1..500, index 0 reserved
inline constexpr int kMaxRates = 25;       // rate steps live at 1..25, index 0 reserved
inline constexpr int kGridPoints = 300;    // pseudopressure integration grid, 1..300

using PointArray = BoundedArray<double, kMaxTestPoints + 1>;
using RateArray = BoundedArray<double, kMaxRates + 1>;
using GridArray = BoundedArray<double, kGridPoints + 1>;

// FluidFlags codes: which phases flow and how gas is analysed.
enum FluidCode : std::int16_t {
    kGasPseudopressure = 0,
    kOil = 1,
    kGasPressure = 2,
    kWater = 3,
    kOilGas = 4,
    kOilWater = 5,
    kGasWater = 6,
    kOilGasWater = 7,
};

// Plot kinds of the semilog surface.
enum SemilogKind : std::int16_t { kSemilogPlot = 1, kSuperpositionPlot = 2 };

// The one analysis record of the program: the test description, the properties in
// analysis units (hours, ft, fraction, 1/psi, ft^2, rates per day), the rate history,
// the test points, the prepared series and the results the screens share.
// A property never entered is 0. The program owns one instance for its whole run and
// passes it by reference; tests make their own.
struct AnalysisState {
    // ---- test description and choices ----
    std::string TestTitle;
    std::int16_t ShutInFlag = 0;    // 1 buildup/falloff, 0 drawdown/injectivity
    std::int16_t InjectionFlag = 0; // 1 injectivity/falloff
    std::int16_t FluidFlags = 0;    // FluidCode
    std::int16_t RateTimeUnit = 0;  // 0 hours, 1 days
    std::int16_t TestTimeUnit = 0;  // 1 minutes, 0 hours
    double DerivativeSpan = 0.2;    // log cycles

    // ---- reservoir and fluid properties (stored units) ----
    double OilViscosity = 0;         // cp
    double OilFvf = 0;               // RB/STB
    double Thickness = 0;            // ft
    double WellboreRadius = 0;       // ft
    double Porosity = 0;             // fraction
    double TotalCompressibility = 0; // 1/psi
    double DrainageArea = 0;         // ft^2
    double DrainageRadius = 0;       // ft, sqrt(A / 3.1416)
    double StartPressure = 0;        // psia
    double ReservoirTemperature = 0; // deg F
    double GasGravity = 0;           // air = 1
    double WaterFvf = 0;             // RB/STB
    double WaterViscosity = 0;       // cp
    double GasFvf = 0;               // RB/MCF
    double GasViscosity = 0;         // cp
    double SolutionGor = 0;          // MCF/STB

    // ---- rate history (1..RateCount) ----
    RateArray RateTime;  // hours
    RateArray Rate;      // STB/day or MCF/day, principal phase
    RateArray GasRate;   // MCF/day
    RateArray WaterRate; // STB/day
    std::int16_t RateCount = 0;

    // ---- test points (1..TestPointCount) ----
    PointArray TestTime;     // hours
    PointArray TestPressure; // psia
    std::int16_t TestPointCount = 0;
    std::int16_t EntryCounter = 0;
    std::int16_t DatinMode = 0; // 1 rates, otherwise test points

    // ---- values derived from the history and the test points ----
    double ProducingTime = 0;      // tp, hours
    double FlowRate = 0;           // q of the analyses (last rate)
    PointArray TestPseudoPressure; // m(p), 1E6 psi^2/cp
    double StartPseudoPressure = 0;
    RateArray CumulativeTime; // end of each rate step, hours
    PointArray TimeFunction;  // hours
    PointArray DeltaP;        // psi or m(p) units, possibly per unit rate
    PointArray LogTime;
    PointArray LogDeltaP;
    BoundedArray<std::int16_t, kMaxTestPoints + 1>
        SourceIndex; // raw test point of each prepared one
    PointArray DerivativeLogTime;
    PointArray LogDerivative;
    std::int16_t DerivativeCount = 0;

    // ---- semilog / superposition series (1..PointCount) ----
    std::int16_t SemilogPlotKind = kSemilogPlot;
    PointArray SemilogX;    // log10 of the Horner ratio or time, or the summation term
    PointArray SemilogY;    // pressure, m(p) or rate-normalised change
    PointArray SemilogTime; // the elapsed or shut-in time each semilog point stands for
    std::int16_t PointCount = 0;

    // ---- plot extremes ----
    double SemilogXMin = 100, SemilogXMax = 0, SemilogYMin = 1000000, SemilogYMax = 0;
    double StorageXMin = 100, StorageXMax = 0, StorageYMin = 100, StorageYMax = 0; // log10
    double StorageScale = 0;
    double PlotPressureMax = 0, PlotPressureMin = 100000; // Cartesian plot

    // ---- results shared between screens ----
    double Permeability = 0; // md
    double SkinFactor = 0;
    double FractureSkin = 0;
    double FractureHalfLength = 0; // ft
    double DrainageHalfLength = 0; // ft
    double WellboreStorage = 0;    // bbl/psi
    std::int16_t TypeCurveModel = 0;
    std::int16_t TypeCurveEstimateFlag = 0;
    double EndOfTransientTime = 0; // hours
    double StartPssValue = 0;      // psi
    double PssDrainageRadius = 0;  // ft
    std::int16_t OilCorrelation = 0;
    std::int16_t GasKind = 0; // 0 wet, 1 dry

    // ---- pseudopressure working arrays, kept between runs ----
    PointArray WorkPressure;
    PointArray PointIntegrand;
    GridArray GridPressure;
    GridArray GridIntegrand;

    // Directory the type-curve library is read from (the working directory at start-up).
    std::string ApplicationDirectory;
    // The test file last opened or saved (empty for a test never saved), for the
    // heading of printed pages.
    std::string TestFileName;

    // ---- the model of the last regression, drawn over the data of the test it was fitted to ----
    std::vector<double> FittedTime;      // hours, as TestTime
    std::vector<double> FittedPressure;  // psia, or m(p) in 1E6 psi^2/cp in pseudopressure
    std::uint64_t FittedFingerprint = 0; // testFingerprint of that test
};

// True when the fluid code analyses gas in pseudopressure.
inline bool usesPseudopressure(const AnalysisState& s) {
    return s.FluidFlags == kGasPseudopressure;
}

} // namespace zorvekan
