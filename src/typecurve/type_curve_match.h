// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// TypeCurveModel codes: the family the type-curve screen draws and matches.
enum TypeCurveModelCode : std::int16_t {
    kSinglePorosityModel = 1,   // ONETYPE, parameter CDe2s
    kDualPorosityModel = 2,     // ONETYPE, then the TWOTYPE transition curves
    kVerticalFractureModel = 3, // FRCTYPE, parameter xe/xf
};

// One point of the picture read twice: on the type-curve grid and on the test's data.
struct MatchPoint {
    double typeCurveTime = 0;     // T_M: tD/CD, or tDxf for the fracture model
    double typeCurvePressure = 0; // P_M: pD
    double time = 0;              // dt_M, hours (the prepared time function)
    double deltaP = 0;            // dp_M, in the plotted unit (psi, 1E6 psi^2/cp, per unit rate)
};

// The prepared pressure change of a multi-rate drawdown (tp = 0, two or more rates) is
// already per unit rate change, so no rate multiplies the match.
bool matchIsPerUnitRate(const AnalysisState& s);

// Permeability of the principal phase for a pressure match ratio P_M / dp_M:
//   k = 141.2 q mu_o B_o / h * (P_M / dp_M)                 (FluidFlags > 0, md)
//   k = 1422 q (T + 460) / h * P_M / (1E6 dp_M)             (gas in pseudopressure)
// with q = FlowRate, or 1 when the change is per unit rate.
double matchPermeability(const AnalysisState& s, double pressureRatio);

// tD/CD per hour for a mobility lambda (md/cp) and storage C (bbl/psi):
// 0.000295 lambda h / C. Inverse of C = 0.000295 lambda h dt_M / T_M.
double storageTimeGroupPerHour(const AnalysisState& s, double mobility, double storage);

// tDxf per hour for a mobility and half-length xf (ft): 0.000264 lambda / (phi ct xf^2).
double fractureTimeGroupPerHour(const AnalysisState& s, double mobility, double halfLength);

// What a match point gives. Permeabilities in md, mobility md/cp; storage bbl/psi.
struct DualPorosityResults {
    double p1 = 0, p2 = 0;   // parameters of the picked transition curves
    double omega = 0;        // P2 / P1
    double lambda = 0;       // (1 - omega) P2 / CD
    double cde2sfm = 0;      // CDe2s(frac) * omega
    double skin = 0;         // 0.5 ln(CDe2sfm * 1.119 phi ct h rw^2 / C)
    double le2s = 0;         // lambda e^-2s
    int lateCurve = 0;       // ONETYPE curve of the fracture-plus-matrix system
    int transitionCurve = 0; // TWOTYPE pressure transition curve of Le-2s
};

struct TypeCurveResults {
    std::vector<std::string> lines; // the result lines, in printing order
    int model = kSinglePorosityModel;
    int curve = 0;        // the matched curve of the family
    double parameter = 0; // its CDe2s or xe/xf
    MatchPoint match;
    double permeability = 0, waterPermeability = 0, gasPermeability = 0;
    double mobility = 0;     // total mobility lambda_t
    double storage = 0;      // C = 0.000295 lambda_t h dt_M / T_M
    double storageGroup = 0; // CD = 0.8936 C / (phi ct h rw^2), dual porosity
    std::optional<double> skin;
    std::optional<double> fractureHalfLength; // sqrt(0.000264 lambda_t dt_M / (phi ct T_M))
    std::optional<DualPorosityResults> dual;
};

// Results of a match on curve `curve` of the model's family: permeability of each phase,
// total mobility, storage, and by model the skin (single porosity), CD (dual porosity,
// before the transition picks) or the fracture half-length (vertical fracture, also
// written to FractureHalfLength). The storage models end their lines with "Wellbore
// Storage =" C " bbl/psi." ("#.####", or "#.0E-00" below 0.001). Zero thickness,
// compressibility or storage are run-time faults.
TypeCurveResults ComputeMatchResults(AnalysisState& s, int model, int curve, const MatchPoint& m);

// Dual porosity after the transition picks: omega, lambda, CDe2sfm, skin and Le-2s from the
// descending curve (13..18, P1) and the ascending curve (19..25, P2), with the late ONETYPE
// curve and the TWOTYPE curve to draw; the lines are the match lines followed by "Omega =",
// "Lambda =", "CDe2sfm =", "Skin Factor =", "Le-2s =", with the storage line still last. A
// curve from the wrong group is Fault::InvalidArgument.
TypeCurveResults ComputeDualPorosityResults(const AnalysisState& s, const TypeCurveResults& match,
                                            int descendingCurve, int ascendingCurve);

// The ONETYPE curve drawn for the fracture-plus-matrix system, by intervals of CDe2sfm
// (lower bound excluded, upper included), curves 1..16:
//   <= 0.65, 2, 6.5, 55, 550, 5500, 1E5, 1E7, 1E9, 5E12, 5E17, 1E25, 1E35, 1E45, 1E55, above.
int lateCurveForCDe2sfm(double cde2sfm);

} // namespace zorvekan
