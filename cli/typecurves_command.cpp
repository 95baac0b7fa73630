// SPDX-License-Identifier: MIT
// zorvekan-cli typecurves: what the type-curve library holds, read as the program reads it.
#include "command.h"

#include "core/display_mask.h"
#include "typecurve/curve_parameters.h"
#include "typecurve/library_file.h"

#include <filesystem>
#include <ostream>
#include <string>
#include <vector>

namespace zorvekan::cli {

namespace {

struct Range {
    double first = 0.0;
    double last = 0.0;
};

// The files each type-curve model draws: dual porosity uses the single-porosity family
// for its base curves and TWOTYPE for the transitions.
std::vector<LibraryFile> filesOfModel(const std::string& model) {
    if (model == "single")
        return {LibraryFile::OneType};
    if (model == "dual")
        return {LibraryFile::OneType, LibraryFile::TwoType};
    if (model == "fracture")
        return {LibraryFile::FrcType};
    throw UsageError{"--model must be single, dual or fracture, not '" + model + "'"};
}

std::filesystem::path executableDirectory() {
    std::error_code ec;
    const auto exe = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::filesystem::path() : exe.parent_path();
}

// Left-aligned in a column of `width`, at least one blank after it.
std::string column(const std::string& text, std::size_t width) {
    return text + std::string(text.size() < width ? width - text.size() : 1, ' ');
}

std::string range(const Range& r) {
    return Format(r.first, "0.000") + " to " + Format(r.last, "0.000");
}

void listLibrary(LibraryFile file, std::ostream& out) {
    std::error_code ec;
    const auto path = locateLibrary(std::filesystem::current_path(ec), executableDirectory(), file);
    LibraryReader reader(path, file);
    std::vector<Range> ranges;
    CurveBlock block;
    while (reader.next(block))
        ranges.push_back(block.pointCount > 0 ? Range{block.x[1], block.x[block.pointCount]}
                                              : Range{});

    const int n = reader.curveCount();
    const bool derivatives = hasDerivativeBlocks(file);
    const std::string axis = file == LibraryFile::FrcType ? "log tDxf" : "log tD/CD";
    out << libraryFileName(file) << ": " << n << " curves, read from " << path.string() << '\n';
    out << "curve  " << column("parameter", 19)
        << (derivatives ? column("pD, " + axis, 20) + "pD', " + axis : axis) << '\n';
    for (int k = 1; k <= n; ++k) {
        const std::string number = std::to_string(k);
        const std::string label = k <= libraryCurveCount(file) ? curveLabel(file, k) : "";
        const std::string pressure = range(ranges[static_cast<std::size_t>(k - 1)]);
        out << std::string(number.size() < 5 ? 5 - number.size() : 0, ' ') << number << "  "
            << column(label, 19)
            << (derivatives
                    ? column(pressure, 20) + range(ranges[static_cast<std::size_t>(n + k - 1)])
                    : pressure)
            << '\n';
    }
}

int runTypeCurves(const std::vector<std::string>& args, std::ostream& out, std::ostream&) {
    const Options o(args, {"model"}, {});
    if (!o.positional().empty())
        throw UsageError{"unexpected argument '" + o.positional().front() + "'"};
    const std::vector<LibraryFile> files =
        o.value("model")
            ? filesOfModel(*o.value("model"))
            : std::vector{LibraryFile::OneType, LibraryFile::TwoType, LibraryFile::FrcType};
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (i > 0)
            out << '\n';
        listLibrary(files[i], out);
    }
    return kExitOk;
}

const Registration registration{Command{
    "typecurves", "list the curves of the type-curve library",
    "[--model single|dual|fracture]\n\n"
    "Lists each curve of the type-curve library with its number, parameter and the x range\n"
    "(log of the time group) of its pD and derivative blocks, reading the files as the\n"
    "type-curve screen does: ONETYPE, TWOTYPE and FRCTYPE from the working directory, or\n"
    "else from beside the program.\n\n"
    "  --model single    ONETYPE, the storage-and-skin curves (parameter CDe2s)\n"
    "  --model dual      ONETYPE and the TWOTYPE transition curves (Le-2s, P1, P2)\n"
    "  --model fracture  FRCTYPE, the vertical-fracture curves (xe/xf)\n\n"
    "Without --model all three files are listed. A missing or damaged library prints what\n"
    "is wrong and exits with 1.\n",
    runTypeCurves}};

} // namespace

} // namespace zorvekan::cli
