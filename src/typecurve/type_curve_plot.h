// SPDX-License-Identifier: MIT
#pragma once

#include "core/analysis_state.h"
#include "core/canvas.h"
#include "core/plot_frame.h"
#include "typecurve/library_file.h"
#include "typecurve/type_curve_match.h"

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// The picture tcrv: a type-curve family on a square log-log grid with the test's pressure
// change and derivative laid over it. Plot units as in every plot (axis box 100 x 60).

// The user window of tcrv: the axis box with room for the decade labels and captions, in
// square units so that a decade is as long across as up at every size of the picture (a
// match is made by sliding the data without turning or stretching them).
inline constexpr UserWindow kTypeCurveWindow{-12, 66, 118, -76, true};

// The grid of one model: plot units per decade on both axes, and the log10 of the time group
// and of pD at the lower-left corner of the axis box. Single porosity: tD/CD 0.1..1E4 and pD
// 0.1..100 (20 units a decade, the span of the usual chart); dual porosity the same decades
// half a decade lower, so the derivative's transition dip stays on the grid; vertical
// fracture: tDxf 1E-3..1E3 (100/6 units a decade) and pD 0.01..40.
struct TypeCurveGrid {
    double scale = 20;
    double xOrigin = -1;
    double yOrigin = -1;
};
TypeCurveGrid typeCurveGrid(int model);

// The family a model draws and matches: ONETYPE for models 1 and 2, FRCTYPE for 3.
LibraryFile familyFile(int model);

// Where the data sit: the log10 of time and pressure change at the grid's lower-left corner
// (xd0, yd0) and the shift the engineer has given them (sx, sy), in plot units. A point is
// drawn at (sx + scale (log10 dt - xd0), sy + scale (log10 dp - yd0)).
struct DataPlacement {
    double xd0 = 0, yd0 = 0;
    double sx = 0, sy = 0;
};

// The placement the screen opens with. When the semilog screen handed over estimates
// (TypeCurveEstimateFlag 1, Permeability > 0 and WellboreStorage > 0, or FractureHalfLength
// > 0 for the fracture model), the data go where those estimates put them on the grid:
//   tD/CD = 0.000295 k h dt / (mu C)        tDxf = 0.000264 k dt / (phi mu ct xf^2)
//   pD = dp / (141.2 q B mu / (k h))        (or 1422 q (T + 460) / (k h) in pseudopressure)
// so xd0 = x0 - log10(time group per hour) and yd0 = y0 - log10(pD per unit dp), and a test
// that follows the model lies on its curve. Without estimates the first data point goes to
// the lower-left corner of the grid.
DataPlacement initialPlacement(const AnalysisState& s, int model);

// The curve the earlier estimates point to, when TypeCurveEstimateFlag is 1:
// - models 1 and 2: CDe2s = CD e^2s, CD = 0.894 C / (phi ct h rw^2) from WellboreStorage and
//   SkinFactor; curve 16, then each curve k = 15..1 whose threshold (the midpoint of its
//   CDe2s and the next one's) lies above CDe2s. Needs WellboreStorage > 0.
// - model 3: xe/xf = DrainageHalfLength / FractureHalfLength (xe = 0.5 sqrt(DrainageArea)
//   while DrainageHalfLength is 0); curve 9 (infinite), then 8..1 below 20, 12.5, 8.5, 6, 4,
//   2.5, 1.75, 1.25. Needs FractureHalfLength > 0.
// Nothing without the flag or the estimate.
std::optional<int> preselectCurve(const AnalysisState& s, int model);

// The type-curve and data coordinates of a click at (X, Y):
//   T_M = 10^(X / scale + x0), P_M = 10^(Y / scale + y0),
//   dt_M = 10^((X - sx) / scale + xd0), dp_M = 10^((Y - sy) / scale + yd0).
MatchPoint matchPointAt(const TypeCurveGrid& g, const DataPlacement& p, double x, double y);

// The curve under a click at (X, Y): every segment of every block (read again from the file)
// whose ends straddle X, with its height at X within 1 plot unit of Y, is a hit, and the last
// hit wins; a derivative block stands for its pressure curve. Only curves first..last count
// (last < 0: all). A click outside the axis box, or far from every curve, hits nothing.
std::optional<int> hitTestCurve(const std::filesystem::path& library, LibraryFile file,
                                const TypeCurveGrid& g, double x, double y, int firstCurve = 1,
                                int lastCurve = -1);

// A curve of a library file drawn over the family.
struct CurveRef {
    LibraryFile file;
    int curve;
};

// What tcrv shows besides the grid and the data.
struct TypeCurveView {
    int model = kSinglePorosityModel;
    DataPlacement placement;
    std::optional<int> selectedCurve;               // magenta and labelled
    bool familyShown = true;                        // the model's family in green
    bool transitionsShown = false;                  // TWOTYPE curves 13..25, dashed green
    std::vector<CurveRef> highlights;               // further curves in magenta
    std::optional<std::array<double, 2>> matchMark; // the match point, a small black cross
};

// Clears the picture and draws the model's family (the file read again: pressure blocks
// solid, derivative and TWOTYPE blocks dashed, green, width 1, clipped to the axis box), the
// selected and highlighted curves in magenta, the data overlay, the captions "log tD/CD" or
// "log tDxf" and, turned beside the y axis, "log pD, log pD'", the selected curve's label
// and the match point.
void DrawTypeCurves(Canvas& c, const AnalysisState& s, const LibraryLocation& library,
                    const TypeCurveView& view);

// The same data kept on the same type-curve coordinates when the grid changes (another
// model): the shift, in decades, and the data origins follow the new grid's scale and
// origins, so data matched on the ONETYPE curves of one storage model stay matched on the
// other's.
DataPlacement placementOnGrid(const DataPlacement& p, const TypeCurveGrid& from,
                              const TypeCurveGrid& to);

// What the cursor points at on tcrv, for the status line: the type-curve groups (tD/CD or
// tDxf, and pD) and, when the test has data, the time and pressure change that the data's
// placement puts there: hours of the plotted time (te, and the shut-in time dt it stands
// for when there is a producing time) and the change in the plotted unit (psi, m(p) in
// 1E6 psi2/cp, per unit rate change on a multi-rate drawdown).
std::string typeCurveReadout(const AnalysisState& s, const TypeCurveView& view, double x, double y);

// The prepared pressure change (blue) and derivative (light blue) as dots of width 2, at
// the placement's positions; points outside the axis box are not drawn.
void DrawTestDataOverlay(Canvas& c, const AnalysisState& s, const TypeCurveGrid& g,
                         const DataPlacement& p);

// The model of the last regression, prepared as the data are and placed where they are: its
// pressure change a solid and its derivative a dashed dark orange line under the data,
// "Regression" at the top left of the box. Nothing when the state holds no curve fitted to
// this test.
void drawFittedOverlay(Canvas& c, const AnalysisState& s, const TypeCurveGrid& g,
                       const DataPlacement& p);

} // namespace zorvekan
