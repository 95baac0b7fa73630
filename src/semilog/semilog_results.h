// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/straight_line.h"
#include "semilog/semilog_plots.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// What the semilog results need besides the state: the straight line picked on the
// semilog plot (in plot units, with that plot's scales) and what the linear-flow,
// bilinear-flow and log-log picks have found so far (0 when not picked).
struct SemilogInputs {
    StraightLine line;
    PlotScales scales;
    double linearSlope = 0;     // m_lf, psi/sqrt(hr)
    double linearIntercept = 0; // p_lf0, psi at zero time
    double bilinearSlope = 0;   // m_bf, psi/hr^0.25
    double endBilinearDeltaP = 0;
};

// The red marks showing where the semilog straight line is valid, in plot x.
struct ValidityMarks {
    double startX = 0, endX = 0;
};

struct SemilogResults {
    std::vector<std::string> lines; // the result lines, in printing order
    double slope = 0;               // m, per log cycle, signed
    double intercept = 0;           // b, the line at x = 0 (p* on a Horner plot)
    double fractureFactor = 1;      // F
    double permeability = 0, waterPermeability = 0, gasPermeability = 0;
    double mobility = 0; // lambda, md/cp
    double skin = 0;
    std::optional<double> fractureHalfLength, fractureSkin, fractureCapacity;
    std::optional<double> mbhPressure, dietzPressure, flowEfficiency; // psia and %
    std::optional<ValidityMarks> marks;
};

// Permeability, skin, fracture, average-pressure and efficiency results of the semilog
// straight line (Horner, MDH, multi-rate and superposition analysis), with every
// result line as the screen prints it. Writes Permeability, SkinFactor,
// FractureHalfLength, FractureSkin, DrainageHalfLength and TypeCurveModel back to the
// state.
SemilogResults ComputeSemilogResults(AnalysisState& s, const SemilogInputs& in);

// End of the transient picked on the semilog plot at plot x: the time it stands for
// (back from the Horner ratio, the time axis or the summation term), stored as
// EndOfTransientTime, and the radius investigated r = 0.032*sqrt(k*t/(phi*mu*ct))
// when a permeability is known.
struct TransientPick {
    double time = 0;                       // hours
    std::optional<std::string> radiusLine; // "Radius Investigated = ... ft."
    std::string markLabel;                 // "Transient -->" or "<-- Transient"
};
TransientPick pickEndOfTransient(AnalysisState& s, double x, const PlotScales& scales);

// Gas pseudopressure (1E6 psi^2/cp) back to pressure (psia): 51 rows of m(p) against
// p, linear interpolation between neighbouring rows (beyond the ends, along the end
// rows). The rows span the test's pressures and the m(p) values from `lowest` to
// `highest`, so they are as close together as the results allow; each row's m(p) is
// the program's own pseudopressure of that pressure (the 50-psi grid from 14.7 psia
// closed by one trapezoid). Building the table uses the gas routines but leaves
// OilFvf and OilViscosity as they were.
class PseudoPressureTable {
public:
    PseudoPressureTable(AnalysisState& s, double lowest, double highest);
    double pressure(double pseudoPressure) const;

private:
    static constexpr int kRows = 51;
    std::array<double, kRows> m_pressure{}, m_pseudo{};
};

// One value through a table spanning the test and that value.
double PseudoPressureToPressure(AnalysisState& s, double pseudoPressure);

} // namespace zorvekan
