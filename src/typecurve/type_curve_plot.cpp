// SPDX-License-Identifier: MIT
#include "typecurve/type_curve_plot.h"

#include "core/checked_math.h"
#include "core/display_mask.h"
#include "core/fitted_curve.h"
#include "core/runtime_error.h"
#include "semilog/plot_readouts.h"
#include "typecurve/curve_parameters.h"

#include <array>
#include <cmath>
#include <functional>

namespace zorvekan {

namespace {

constexpr Rgb kGridGrey{225, 225, 225};
constexpr double kHitTolerance = 1.0; // plot units

// xe/xf below which curves 1..8 of the fracture family are preselected.
constexpr std::array<double, 8> kFractureThresholds = {1.25, 1.75, 2.5, 4, 6, 8.5, 12.5, 20};

// The CDe2s below which curve k (1..15) is preselected: the midpoint of its own CDe2s and
// that of curve k + 1. Curve 11 has always been computed with 10^152 subtracted in place of
// 10^15, which makes its threshold negative: the 1E15 curve is never preselected and a CDe2s
// between the thresholds of curves 10 and 12 keeps the 1E20 curve. The program keeps it, so
// that it preselects what it always has.
double singlePorosityThreshold(int k) {
    const double a = kSinglePorosityCDe2s[static_cast<std::size_t>(k - 1)];
    const double b = kSinglePorosityCDe2s[static_cast<std::size_t>(k)];
    const double subtracted = k == 11 ? std::pow(10.0, 152) : a;
    return (b - subtracted) / 2 + a;
}

double rockStorage(const AnalysisState& s) {
    return s.Porosity * s.TotalCompressibility * s.Thickness * s.WellboreRadius * s.WellboreRadius;
}

struct Groups {
    double timePerHour; // time group per hour of the prepared time function
    double pdPerUnit;   // pD per plotted unit of pressure change
};

// The groups the semilog estimates give, or nothing when they are missing or unusable.
std::optional<Groups> estimatedGroups(const AnalysisState& s, int model) {
    if (s.TypeCurveEstimateFlag != 1 || !(s.Permeability > 0))
        return std::nullopt;
    const bool fracture = model == kVerticalFractureModel;
    if (fracture ? !(s.FractureHalfLength > 0) : !(s.WellboreStorage > 0))
        return std::nullopt;
    try {
        const double mobility = divide(s.Permeability, s.OilViscosity);
        const double time = fracture ? fractureTimeGroupPerHour(s, mobility, s.FractureHalfLength)
                                     : storageTimeGroupPerHour(s, mobility, s.WellboreStorage);
        const double pd = divide(s.Permeability, matchPermeability(s, 1.0));
        if (time > 0 && pd > 0)
            return Groups{time, pd};
    } catch (const RuntimeError&) {
        // A property still zero: the data start at the corner instead.
    }
    return std::nullopt;
}

double toPlotX(const TypeCurveGrid& g, double x) {
    return g.scale * (x - g.xOrigin);
}

double toPlotY(const TypeCurveGrid& g, double y) {
    return g.scale * (y - g.yOrigin);
}

bool insideBox(double x, double y) {
    return x >= 0 && x <= kAxisWidth && y >= 0 && y <= kAxisHeight;
}

// The pressure curve a block belongs to.
int curveOfBlock(const LibraryReader& reader, LibraryFile file, int block) {
    const int n = reader.curveCount();
    return hasDerivativeBlocks(file) && block > n ? block - n : block;
}

// Reads the file once and draws the blocks of the curves `wanted` accepts.
void drawCurves(Canvas& c, const std::filesystem::path& path, LibraryFile file,
                const TypeCurveGrid& g, Rgb colour, const std::function<bool(int)>& wanted) {
    LibraryReader reader(path, file);
    c.setPenWidth(1);
    c.setPenColor(colour);
    CurveBlock b;
    while (reader.next(b)) {
        if (!wanted(curveOfBlock(reader, file, b.number)))
            continue;
        c.setDashed(!hasDerivativeBlocks(file) || b.number > reader.curveCount());
        for (int j = 2; j <= b.pointCount; ++j) {
            double x1 = toPlotX(g, b.x[j - 1]), y1 = toPlotY(g, b.y[j - 1]);
            double x2 = toPlotX(g, b.x[j]), y2 = toPlotY(g, b.y[j]);
            if (clipToAxisBox(x1, y1, x2, y2))
                c.line(x1, y1, x2, y2);
        }
    }
    c.setDashed(false);
}

const char* familyTitle(int model) {
    switch (model) {
    case kDualPorosityModel:
        return "Dual Porosity Type Curves";
    case kVerticalFractureModel:
        return "Vertical Fracture Type Curves";
    default:
        return "Single Porosity Type Curves";
    }
}

// Light decade lines, the axes, and every whole decade inside the box labelled with its
// exponent (the axes are captioned "log ..."). A label that would cover another is left out
// by the surface rather than drawn over it.
void drawGrid(Canvas& c, const TypeCurveGrid& g) {
    const double xEnd = g.xOrigin + kAxisWidth / g.scale;
    const double yEnd = g.yOrigin + kAxisHeight / g.scale;
    c.setPenColor(kGridGrey);
    for (double e = std::ceil(g.xOrigin); e <= xEnd + 1e-9; ++e)
        c.line(toPlotX(g, e), 0, toPlotX(g, e), kAxisHeight);
    for (double e = std::ceil(g.yOrigin); e <= yEnd + 1e-9; ++e)
        c.line(0, toPlotY(g, e), kAxisWidth, toPlotY(g, e));
    c.setPenColor(kBlack);
    c.line(0, 0, 0, kAxisHeight);
    c.line(0, 0, kAxisWidth, 0);
    c.line(kAxisWidth, 0, kAxisWidth, kAxisHeight);
    c.line(0, kAxisHeight, kAxisWidth, kAxisHeight);
    for (double e = std::ceil(g.xOrigin); e <= xEnd + 1e-9; ++e) {
        const double x = toPlotX(g, e);
        c.line(x, -1, x, 1);
        c.tickLabel(x - 2, -2, Str(e));
    }
    for (double e = std::ceil(g.yOrigin); e <= yEnd + 1e-9; ++e) {
        const double y = toPlotY(g, e);
        c.line(-1, y, 1, y);
        c.tickLabel(-4.5, y + 1, Str(e));
    }
}

const char* timeGroupName(int model) {
    return model == kVerticalFractureModel ? "tDxf" : "tD/CD";
}

// The unit of the overlaid pressure change.
std::string plottedUnit(const AnalysisState& s) {
    std::string unit = usesPseudopressure(s) ? "(1E6) psi2/cp" : "psi";
    if (matchIsPerUnitRate(s)) {
        const bool gasAlone = s.FluidFlags == kGasPseudopressure || s.FluidFlags == kGasPressure;
        unit += gasAlone ? "/(MCF/D)" : "/(STB/D)";
    }
    return unit;
}

} // namespace

TypeCurveGrid typeCurveGrid(int model) {
    switch (model) {
    case kDualPorosityModel:
        return {20, -1, -1.5};
    case kVerticalFractureModel:
        return {kAxisWidth / 6, -3, -2};
    default:
        return {20, -1, -1};
    }
}

LibraryFile familyFile(int model) {
    return model == kVerticalFractureModel ? LibraryFile::FrcType : LibraryFile::OneType;
}

DataPlacement initialPlacement(const AnalysisState& s, int model) {
    const TypeCurveGrid g = typeCurveGrid(model);
    if (const auto groups = estimatedGroups(s, model))
        return {g.xOrigin - Log10(groups->timePerHour), g.yOrigin - Log10(groups->pdPerUnit)};
    if (s.TestPointCount < 1)
        return {g.xOrigin, g.yOrigin};
    return {s.LogTime[1], s.LogDeltaP[1]};
}

std::optional<int> preselectCurve(const AnalysisState& s, int model) {
    if (s.TypeCurveEstimateFlag != 1)
        return std::nullopt;
    if (model == kVerticalFractureModel) {
        if (!(s.FractureHalfLength > 0))
            return std::nullopt;
        // xe as the semilog results keep it, or half the side of the drainage square when
        // they have not set it; with no drainage area at all the reservoir is infinite.
        const double xe =
            s.DrainageHalfLength > 0 ? s.DrainageHalfLength : 0.5 * std::sqrt(s.DrainageArea);
        if (!(xe > 0))
            return 9;
        const double xeOverXf = xe / s.FractureHalfLength;
        int curve = 9;
        for (int k = 8; k >= 1; --k)
            if (xeOverXf < kFractureThresholds[static_cast<std::size_t>(k - 1)])
                curve = k;
        return curve;
    }
    if (!(s.WellboreStorage > 0))
        return std::nullopt;
    const double cd = divide(0.894 * s.WellboreStorage, rockStorage(s));
    const double cde2s = finite(cd * std::exp(2 * s.SkinFactor), "CD e^2s");
    int curve = 16;
    for (int k = 15; k >= 1; --k)
        if (cde2s < singlePorosityThreshold(k))
            curve = k;
    return curve;
}

MatchPoint matchPointAt(const TypeCurveGrid& g, const DataPlacement& p, double x, double y) {
    const auto power = [](double e, const char* what) { return finite(std::pow(10.0, e), what); };
    return {power(x / g.scale + g.xOrigin, "time group at the match point"),
            power(y / g.scale + g.yOrigin, "pD at the match point"),
            power((x - p.sx) / g.scale + p.xd0, "time at the match point"),
            power((y - p.sy) / g.scale + p.yd0, "pressure change at the match point")};
}

std::optional<int> hitTestCurve(const std::filesystem::path& library, LibraryFile file,
                                const TypeCurveGrid& g, double x, double y, int firstCurve,
                                int lastCurve) {
    if (!insideBox(x, y))
        return std::nullopt;
    LibraryReader reader(library, file);
    const int last = lastCurve < 0 ? reader.curveCount() : lastCurve;
    std::optional<int> hit;
    CurveBlock b;
    while (reader.next(b)) {
        const int curve = curveOfBlock(reader, file, b.number);
        if (curve < firstCurve || curve > last)
            continue;
        for (int j = 2; j <= b.pointCount; ++j) {
            const double x1 = toPlotX(g, b.x[j - 1]), x2 = toPlotX(g, b.x[j]);
            if (!(x1 <= x && x <= x2) || x1 == x2)
                continue;
            const double y1 = toPlotY(g, b.y[j - 1]), y2 = toPlotY(g, b.y[j]);
            const double m = (y2 - y1) / (x2 - x1);
            if (std::fabs(y - (y1 - m * x1 + m * x)) < kHitTolerance) {
                hit = curve;
                break;
            }
        }
    }
    return hit;
}

void DrawTestDataOverlay(Canvas& c, const AnalysisState& s, const TypeCurveGrid& g,
                         const DataPlacement& p) {
    const auto dot = [&](double logTime, double logValue) {
        const double x = p.sx + g.scale * (logTime - p.xd0);
        const double y = p.sy + g.scale * (logValue - p.yd0);
        if (insideBox(x, y))
            c.dot(x, y);
    };
    c.setPenWidth(2);
    c.setPenColor(kDataBlue);
    for (int i = 1; i <= s.TestPointCount; ++i)
        dot(s.LogTime[i], s.LogDeltaP[i]);
    c.setPenColor(kLightBlue);
    for (int k = 1; k <= s.DerivativeCount; ++k)
        dot(s.DerivativeLogTime[k], s.LogDerivative[k]);
    c.setPenWidth(1);
    c.setPenColor(kBlack);
}

void drawFittedOverlay(Canvas& c, const AnalysisState& s, const TypeCurveGrid& g,
                       const DataPlacement& p) {
    if (const std::optional<AnalysisState> fitted = preparedFittedCurve(s))
        drawFittedLogLog(
            c, *fitted,
            [&](double logTime, double logValue) {
                return std::array<double, 2>{p.sx + g.scale * (logTime - p.xd0),
                                             p.sy + g.scale * (logValue - p.yd0)};
            },
            1, 59);
}

void DrawTypeCurves(Canvas& c, const AnalysisState& s, const LibraryLocation& library,
                    const TypeCurveView& view) {
    const TypeCurveGrid g = typeCurveGrid(view.model);
    const LibraryFile family = familyFile(view.model);
    beginPlot(c, kTypeCurveWindow, familyTitle(view.model));
    drawGrid(c, g);
    const std::filesystem::path familyPath = library.of(family);
    if (view.familyShown)
        drawCurves(c, familyPath, family, g, kCurveGreen, [](int) { return true; });
    if (view.transitionsShown)
        drawCurves(c, library.of(LibraryFile::TwoType), LibraryFile::TwoType, g, kCurveGreen,
                   [](int k) { return k >= kFirstDescendingCurve; });
    if (view.selectedCurve)
        drawCurves(c, familyPath, family, g, kMagenta,
                   [&](int k) { return k == *view.selectedCurve; });
    for (const CurveRef& ref : view.highlights)
        drawCurves(c, library.of(ref.file), ref.file, g, kMagenta,
                   [&](int k) { return k == ref.curve; });
    drawFittedOverlay(c, s, g, view.placement);
    DrawTestDataOverlay(c, s, g, view.placement);

    c.setPenColor(kBlack);
    if (view.matchMark) {
        const auto [x, y] = *view.matchMark;
        c.line(x - 1.5, y, x + 1.5, y);
        c.line(x, y - 1.5, x, y + 1.5);
    }
    c.text(44, -6, std::string("log ") + timeGroupName(view.model));
    drawYAxisTitle(c, "log pD, log pD'", -10);
    if (view.selectedCurve)
        c.text(64, 66, curveLabel(family, *view.selectedCurve));
}

DataPlacement placementOnGrid(const DataPlacement& p, const TypeCurveGrid& from,
                              const TypeCurveGrid& to) {
    // A point at log time u is drawn at sx + k (u - xd0), i.e. at the type-curve decade
    // u + x0 - xd0 + sx / k: keeping x0 - xd0 and sx / k keeps every point's decade.
    return {p.xd0 + to.xOrigin - from.xOrigin, p.yd0 + to.yOrigin - from.yOrigin,
            p.sx * to.scale / from.scale, p.sy * to.scale / from.scale};
}

std::string typeCurveReadout(const AnalysisState& s, const TypeCurveView& view, double x,
                             double y) {
    const TypeCurveGrid g = typeCurveGrid(view.model);
    const DataPlacement& p = view.placement;
    const auto power = [](double e) { return std::pow(10.0, e); };
    std::string text = std::string(timeGroupName(view.model)) + " = " +
                       readoutNumber(power(x / g.scale + g.xOrigin)) +
                       "  pD = " + readoutNumber(power(y / g.scale + g.yOrigin));
    if (s.TestPointCount < 1)
        return text; // no data: the data axes stand for nothing
    const double te = power((x - p.sx) / g.scale + p.xd0);
    const double dp = power((y - p.sy) / g.scale + p.yd0);
    const double tp = s.ProducingTime;
    const auto hours = [](const char* name, double t) {
        return std::string(name) + " = " + readoutNumber(t) + " hrs.";
    };
    text += "    ";
    if (tp > 0) {
        text += hours("te", te);
        if (te < tp)
            text += "  " + hours("dt", tp * te / (tp - te));
    } else {
        text += hours(s.RateCount >= 2 ? "te" : "t", te);
    }
    const char* change = usesPseudopressure(s) ? "dm(p)" : "dp";
    return text + "  " + change + (matchIsPerUnitRate(s) ? "/dq" : "") + " = " + readoutNumber(dp) +
           " " + plottedUnit(s);
}

} // namespace zorvekan
