// SPDX-License-Identifier: MIT
// Writes the type-curve library files ONETYPE, FRCTYPE and TWOTYPE into a directory.
//
//   zorvekan-typecurves OUTPUT_DIRECTORY
//
// Each curve is sampled at 1001 uniform x to find where it bends, then evaluated at its 60
// curvature-placed points; x is rounded to 6 decimals before y is computed, so every
// written pair lies on the model.
#include "core/runtime_error.h"
#include "typecurve/library_contents.h"
#include "typecurve/library_file.h"
#include "typecurve/point_placement.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace zorvekan {
namespace {

struct Point {
    double x, y;
};
using Block = std::vector<Point>;

double roundToSixDecimals(double v) {
    return std::round(v * 1e6) / 1e6 + 0.0; // + 0.0 turns -0 into 0
}

std::string sixDecimals(double v) {
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", roundToSixDecimals(v));
    return text;
}

// The pD block and, with derivative blocks, the derivative block of one curve.
std::vector<Block> curveBlocks(LibraryFile file, int curve) {
    const CurveDefinition c = curveDefinition(file, curve);
    const int blocks = hasDerivativeBlocks(file) ? 2 : 1;
    std::vector<std::vector<double>> samples(2);
    for (int i = 0; i < kPlacementSamples; ++i) {
        const auto v = c.logValues(placementSample(c.xFirst, c.xLast, i));
        samples[0].push_back(v[0]);
        samples[1].push_back(v[1]);
    }
    std::vector<Block> result;
    for (int b = 0; b < blocks; ++b) {
        Block block;
        for (double x : curvatureNodes(c.xFirst, c.xLast, samples[static_cast<std::size_t>(b)],
                                       kMaxCurvePoints)) {
            const double xr = roundToSixDecimals(x);
            block.push_back({xr, c.logValues(xr)[static_cast<std::size_t>(b)]});
        }
        result.push_back(std::move(block));
    }
    return result;
}

void writeLibrary(LibraryFile file, const std::filesystem::path& directory) {
    const int curves = libraryCurveCount(file);
    std::vector<Block> pressure, derivative;
    for (int k = 1; k <= curves; ++k) {
        auto blocks = curveBlocks(file, k);
        pressure.push_back(std::move(blocks[0]));
        if (blocks.size() > 1)
            derivative.push_back(std::move(blocks[1]));
    }
    const auto path = directory / libraryFileName(file);
    const auto partial = directory / (std::string(libraryFileName(file)) + ".partial");
    {
        std::ofstream out(partial, std::ios::binary | std::ios::trunc);
        out << curves << '\n';
        for (const auto* family : {&pressure, &derivative})
            for (const Block& block : *family) {
                out << block.size() << '\n';
                for (const Point& p : block)
                    out << sixDecimals(p.x) << ',' << sixDecimals(p.y) << '\n';
            }
        if (!out.flush())
            throw RuntimeError(Fault::File, "cannot write " + partial.string());
    }
    std::filesystem::rename(partial, path);
}

} // namespace
} // namespace zorvekan

int main(int argc, char** argv) {
    using namespace zorvekan;
    if (argc != 2) {
        std::cerr << "usage: zorvekan-typecurves OUTPUT_DIRECTORY\n";
        return 2;
    }
    try {
        const std::filesystem::path directory = argv[1];
        std::filesystem::create_directories(directory);
        for (LibraryFile file :
             {LibraryFile::OneType, LibraryFile::FrcType, LibraryFile::TwoType}) {
            const auto start = std::chrono::steady_clock::now();
            writeLibrary(file, directory);
            const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
            std::cout << libraryFileName(file) << ": " << took.count() << " s\n";
        }
    } catch (const std::exception& e) {
        std::cerr << "zorvekan-typecurves: " << e.what() << '\n';
        return 1;
    }
    return 0;
}
