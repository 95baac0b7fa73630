// SPDX-License-Identifier: MIT
#include "properties/property_calculator.h"

#include "core/display_mask.h"
#include "core/result_line.h"
#include "input/input_rules.h"
#include "input/input_screen_rules.h"
#include "properties/oil_pvt.h"
#include "properties/rock_compressibility.h"
#include "properties/water_properties.h"

#include <cmath>

namespace zorvekan {

namespace {

constexpr const char* kMicrosips = " microsips";

std::string line(const char* caption, double value, const char* mask, const char* unit) {
    return resultLine(caption, Format(value, mask), unit);
}

// A reading outside the data behind a correlation is shown beside its values.
void addRemarks(std::vector<std::string>& lines, const std::vector<std::string>& remarks) {
    for (const std::string& r : remarks)
        lines.push_back("  (" + r + ")");
}

struct OilPart {
    std::optional<double> compressibility;
};

OilPart calculateOil(const AnalysisState& s, const PropertyInputs& in,
                     const std::optional<GasCalculation>& gas, PropertyCalculation& out) {
    OilPart part;
    if (!(in.api > 0) && !(in.gor > 0) && !(in.bubblePoint > 0))
        return part; // no oil described: nothing to say
    const auto code = oilCorrelation(s.OilCorrelation);
    if (!code) {
        out.notes.emplace_back("No oil correlation chosen.");
        return part;
    }
    out.oilStandards = oilStandardsUsed(*code);
    OilInput oil{in.api, in.gasGravity, in.temperature, in.pressure, in.gor, in.bubblePoint};
    if (const auto problem = oilInputProblem(oil)) {
        out.notes.push_back(*problem);
        return part;
    }
    const OilProperties o = oilProperties(*code, oil);
    std::vector<std::string>& l = out.oilLines;
    if (o.bubblePoint)
        l.push_back(line("Bubble Point Pressure =", *o.bubblePoint, "#####.", " psia"));
    l.push_back(line("Sol'n GOR at Pb =", o.gorAtBubblePoint, "#####.", " scf/STB"));
    l.push_back(line("Sol'n GOR =", o.gor, "#####.", " scf/STB"));
    l.push_back(line("Oil FVF at Pb =", o.fvfAtBubblePoint, "#.####", " RB/STB"));
    l.push_back(line("Oil FVF =", o.fvf, "#.####", " RB/STB"));
    part.compressibility = o.compressibility;
    if (!o.undersaturated) {
        // Below the bubble point the gas coming out of solution adds to the oil's
        // compressibility, which needs the gas FVF of the gas part.
        if (gas)
            part.compressibility = saturatedOilCompressibility(*code, oil, gas->bg);
        else
            out.notes.emplace_back("Oil compressibility below the bubble point needs the gas FVF "
                                   "(enter the gas gravity).");
    }
    if (part.compressibility)
        l.push_back(
            line("Oil Compressibility =", *part.compressibility * 1e6, "####.##", kMicrosips));
    l.push_back(line("Dead Oil Viscosity =", o.deadViscosity, "####.###", " cp"));
    l.push_back(line("Oil Viscosity at Pb =", o.bubblePointViscosity, "####.###", " cp"));
    l.push_back(line("Oil Viscosity =", o.viscosity, "####.###", " cp"));
    l.push_back(line("Oil Density =", o.density, "####.##", " lb/cu ft"));
    addRemarks(l, o.rangeNotes);
    out.values.oilFvf = o.fvf;
    out.values.oilViscosity = o.viscosity;
    return part;
}

std::optional<double> calculateWater(const PropertyInputs& in, PropertyCalculation& out) {
    const WaterInput water{in.temperature, in.pressure, in.salinity};
    if (const auto problem = waterInputProblem(water)) {
        out.notes.push_back(*problem);
        return std::nullopt;
    }
    const WaterProperties w = waterProperties(water);
    std::vector<std::string>& l = out.waterLines;
    l.push_back(line("Water FVF =", w.fvf, "#.####", " RB/STB"));
    l.push_back(line("Water Sol'n Gas =", w.solutionGas, "###.##", " scf/STB"));
    l.push_back(line("Water Compressibility =", w.compressibility * 1e6, "####.##", kMicrosips));
    l.push_back(line("Water Viscosity =", w.viscosity, "#.####", " cp"));
    l.push_back(line("Water Density =", w.density, "####.##", " lb/cu ft"));
    addRemarks(l, w.rangeNotes);
    out.values.waterFvf = w.fvf;
    out.values.waterViscosity = w.viscosity;
    return w.compressibility;
}

std::optional<double> calculateFormation(const PropertyInputs& in, PropertyCalculation& out) {
    const FormationCompressibility f =
        formationCompressibility(in.formation, in.rockClass, in.porosity);
    out.formationRemark = f.remark;
    if (!f.value) {
        out.notes.push_back(f.remark + ".");
        return std::nullopt;
    }
    out.rockLines.push_back(
        line("Formation Compressibility =", *f.value * 1e6, "####.##", kMicrosips));
    return f.value;
}

void calculateTotal(const PropertyInputs& in, std::optional<double> co, std::optional<double> cw,
                    std::optional<double> cg, std::optional<double> cf, PropertyCalculation& out) {
    const double sum = in.oilSaturation + in.waterSaturation + in.gasSaturation;
    const auto ct = totalCompressibility(in, co, cw, cg, cf);
    if (!ct) {
        out.notes.emplace_back("Total compressibility needs the compressibility of every "
                               "phase with a saturation, and the formation's.");
        return;
    }
    out.rockLines.push_back(line("Total Compressibility =", *ct * 1e6, "####.##", kMicrosips));
    if (std::fabs(sum - 1.0) > 0.005)
        out.rockLines.push_back("  (saturations add up to " + Format(sum * 100, "###.#") +
                                " %, not 100 %)");
    out.values.totalCompressibility = ct;
}

} // namespace

std::optional<double> totalCompressibility(const PropertyInputs& in, std::optional<double> co,
                                           std::optional<double> cw, std::optional<double> cg,
                                           std::optional<double> cf) {
    if (!cf)
        return std::nullopt;
    double ct = *cf;
    const std::pair<double, std::optional<double>> terms[] = {
        {in.oilSaturation, co}, {in.waterSaturation, cw}, {in.gasSaturation, cg}};
    for (const auto& [saturation, c] : terms) {
        if (!(saturation > 0))
            continue;
        if (!c)
            return std::nullopt;
        ct += saturation * *c;
    }
    return ct;
}

PropertyCalculation calculateProperties(AnalysisState& s, const PropertyInputs& in) {
    PropertyCalculation out;
    out.gas = calculateGasPart(s, in.gasGravity, in.temperature, in.pressure);
    if (out.gas.fatal)
        return out;
    if (out.gas.note)
        out.notes.push_back(*out.gas.note);
    std::optional<double> cg;
    if (out.gas.values) {
        out.values.gasFvf = out.gas.values->bg;
        out.values.gasViscosity = out.gas.values->viscosity;
        cg = out.gas.values->compressibility;
    }
    const OilPart oil = calculateOil(s, in, out.gas.values, out);
    const std::optional<double> cw = calculateWater(in, out);
    // The rock and ct are computed once the engineer has described the rock or the
    // saturations; before that their absence is not worth a message.
    const bool saturations = in.oilSaturation + in.waterSaturation + in.gasSaturation > 0;
    if (!(in.porosity > 0) && !saturations)
        return out;
    const std::optional<double> cf = calculateFormation(in, out);
    if (saturations)
        calculateTotal(in, oil.compressibility, cw, cg, cf, out);
    return out;
}

namespace {

// The precision a copied property is typed with: that of the calculator's own lines.
const char* copyMask(PropertyBox box) {
    switch (box) {
    case PropertyBox::Fvf:
    case PropertyBox::WaterFvf:
        return "#.####";
    case PropertyBox::GasFvf:
        return "##.####";
    case PropertyBox::GasViscosity:
        return "#.#####";
    case PropertyBox::Compressibility:
        return "###.###";
    default:
        return "##.###";
    }
}

} // namespace

std::vector<BoxValue> inputBoxValues(std::int16_t fluidFlags, const PhaseValues& v,
                                     std::vector<std::string>& missing) {
    const FluidChoice f = fluidChoiceOf(fluidFlags);
    const InputBoxVisibility shown = inputBoxVisibility(f, false);
    using B = PropertyBox;
    std::vector<BoxValue> boxes;
    auto put = [&](B box, std::optional<double> value, double factor, const char* what) {
        if (!shown.box[static_cast<std::size_t>(box)])
            return;
        if (!value) {
            missing.emplace_back(what);
            return;
        }
        const PropertyBoxInfo& info = propertyBox(box);
        boxes.push_back({info.objectName, Format(*value * factor, copyMask(box))});
    };
    if (f.oil) {
        put(B::Fvf, v.oilFvf, 1.0, "oil FVF");
        put(B::Viscosity, v.oilViscosity, 1.0, "oil viscosity");
    } else if (f.water) {
        put(B::Fvf, v.waterFvf, 1.0, "water FVF");
        put(B::Viscosity, v.waterViscosity, 1.0, "water viscosity");
    } else {
        put(B::Fvf, v.gasFvf, 1.0, "gas FVF");
        put(B::Viscosity, v.gasViscosity, 1.0, "gas viscosity");
    }
    put(B::GasFvf, v.gasFvf, 1.0, "gas FVF");
    put(B::GasViscosity, v.gasViscosity, 1.0, "gas viscosity");
    if (f.oil || f.gas) {
        put(B::WaterFvf, v.waterFvf, 1.0, "water FVF");
        put(B::WaterViscosity, v.waterViscosity, 1.0, "water viscosity");
    }
    put(B::Compressibility, v.totalCompressibility, 1e6, "total compressibility");
    return boxes;
}

} // namespace zorvekan
