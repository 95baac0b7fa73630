// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"
#include "typecurve/library_contents.h"
#include "typecurve/library_file.h"

#include "../support/raised.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <numbers>
#include <string>
#include <vector>

namespace zorvekan {
namespace {

namespace fs = std::filesystem;

const LibraryFile kFiles[] = {LibraryFile::OneType, LibraryFile::FrcType, LibraryFile::TwoType};

fs::path committed(LibraryFile file) {
    return fs::path(SOURCE_DIR) / "data" / libraryFileName(file);
}

std::vector<CurveBlock> readAll(LibraryFile file) {
    LibraryReader reader(committed(file), file);
    std::vector<CurveBlock> blocks;
    CurveBlock block;
    while (reader.next(block))
        blocks.push_back(block);
    return blocks;
}

// The curve a block draws and whether it is that curve's derivative block.
std::pair<int, bool> curveOf(LibraryFile file, int block) {
    const int n = libraryCurveCount(file);
    return block > n ? std::pair{block - n, true} : std::pair{block, false};
}

// A scratch directory of its own for each test, and for each run: other builds run the same
// tests at the same time.
class ScratchDirectory {
public:
    ScratchDirectory() {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        m_path =
            fs::temp_directory_path() / (std::string("zorvekan-") + info->test_suite_name() + "-" +
                                         info->name() + "-" + std::to_string(::getpid()));
        fs::remove_all(m_path);
        fs::create_directories(m_path);
    }
    ~ScratchDirectory() { fs::remove_all(m_path); }
    const fs::path& path() const { return m_path; }
    fs::path write(const std::string& name, const std::string& text) const {
        std::ofstream(m_path / name, std::ios::binary) << text;
        return m_path / name;
    }

private:
    fs::path m_path;
};

// The layout the screen relies on: N curves, 2N blocks (N for TWOTYPE), at most 60 points
// each, strictly ascending x, and each block over its curve's x range.
TEST(LibraryFile, CommittedFilesHaveTheLibraryLayout) {
    for (const LibraryFile file : kFiles) {
        LibraryReader reader(committed(file), file);
        const int n = libraryCurveCount(file);
        EXPECT_EQ(reader.curveCount(), n);
        EXPECT_EQ(reader.blockCount(), hasDerivativeBlocks(file) ? 2 * n : n);
        int blocks = 0;
        CurveBlock b;
        while (reader.next(b)) {
            ++blocks;
            ASSERT_EQ(b.number, blocks);
            EXPECT_EQ(b.pointCount, kMaxCurvePoints) << libraryFileName(file) << " " << blocks;
            const CurveDefinition c = curveDefinition(file, curveOf(file, b.number).first);
            EXPECT_NEAR(b.x[1], c.xFirst, 5e-7) << libraryFileName(file) << " " << blocks;
            EXPECT_NEAR(b.x[b.pointCount], c.xLast, 5e-7) << libraryFileName(file) << blocks;
            for (int j = 2; j <= b.pointCount; ++j)
                EXPECT_GT(b.x[j], b.x[j - 1]) << libraryFileName(file) << " block " << blocks;
        }
        EXPECT_EQ(blocks, reader.blockCount());
    }
}

// The files against the curve ends the engineer reads off a chart: ONETYPE starts near the
// unit slope (pD/T = 0.676 ... 0.9993 at T = 0.1) and ends near the derivative 0.5; FRCTYPE
// starts on the half slope sqrt(pi tDxf) with the derivative 0.301 decade below; the TWOTYPE
// transitions start and end at their chosen heights. A stale file or blocks written in the
// wrong order fail here even when the regeneration test is not run.
TEST(LibraryFile, CommittedCurvesStartAndEndOnTheirAsymptotes) {
    const auto one = readAll(LibraryFile::OneType);
    EXPECT_NEAR(one[0].y[1], std::log10(0.1 * 0.676), 5e-4);
    EXPECT_NEAR(one[15].y[1], std::log10(0.1 * 0.9993), 5e-4);
    for (int k = 16; k < 32; ++k)
        EXPECT_NEAR(one[k].y[60], std::log10(0.5), 0.0066) << "ONETYPE block " << k + 1;

    const auto frc = readAll(LibraryFile::FrcType);
    const double halfSlope = std::log10(std::sqrt(std::numbers::pi * 1e-3));
    for (int k = 0; k < 9; ++k) {
        EXPECT_NEAR(frc[k].y[1], halfSlope, 1e-6) << "FRCTYPE block " << k + 1;
        EXPECT_NEAR(frc[k + 9].y[1], halfSlope - std::log10(2.0), 1e-6);
    }

    const auto two = readAll(LibraryFile::TwoType);
    for (int k = 0; k < 12; ++k)
        EXPECT_NEAR(two[k].x[1] - two[k].y[1], std::log10(1.05), 1e-3) << "TWOTYPE " << k + 1;
    for (int k = 12; k < 18; ++k)
        EXPECT_NEAR(two[k].y[1], -0.323, 1e-3) << "TWOTYPE block " << k + 1;
    for (int k = 18; k < 25; ++k)
        EXPECT_NEAR(two[k].y[60], k == 18 ? -0.5002 : -0.323, 1e-3) << "TWOTYPE block " << k + 1;
}

// What is drawn and hit-tested is the chord between stored points: at every segment's
// middle it must stay within 1e-3 decade of the model (curvature-placed points give 8e-4).
TEST(LibraryFile, ChordsStayOnTheModelCurves) {
    for (const LibraryFile file : kFiles) {
        double worst = 0.0;
        for (const CurveBlock& b : readAll(file)) {
            const auto [curve, derivative] = curveOf(file, b.number);
            const CurveDefinition c = curveDefinition(file, curve);
            for (int j = 2; j <= b.pointCount; ++j) {
                const double x = 0.5 * (b.x[j - 1] + b.x[j]);
                const double chord = 0.5 * (b.y[j - 1] + b.y[j]);
                worst = std::max(worst, std::abs(c.logValues(x)[derivative ? 1 : 0] - chord));
            }
        }
        EXPECT_LT(worst, 1e-3) << libraryFileName(file);
    }
}

// Reading fills points 1..M of the same arrays block after block and never touches index 0.
TEST(LibraryReader, FillsPointsOneToMOfTheSameArrays) {
    const ScratchDirectory dir;
    // Free-format input: commas and line breaks both separate numbers.
    const auto path = dir.write("ONETYPE", "1\n3\n0,1\n1,2\n2,3.5\n2\n-1 ,+4E-1\n\n5,6\n");
    LibraryReader reader(path, LibraryFile::OneType);
    ASSERT_EQ(reader.blockCount(), 2);
    CurveBlock b;
    b.x[0] = b.y[0] = -99.0;
    ASSERT_TRUE(reader.next(b));
    EXPECT_EQ(b.number, 1);
    EXPECT_EQ(b.pointCount, 3);
    EXPECT_EQ(b.y[3], 3.5);
    ASSERT_TRUE(reader.next(b));
    EXPECT_EQ(b.number, 2);
    EXPECT_EQ(b.pointCount, 2);
    EXPECT_EQ(b.x[1], -1.0);
    EXPECT_EQ(b.y[1], 0.4);
    EXPECT_EQ(b.x[2], 5.0);
    EXPECT_EQ(b.x[0], -99.0);
    EXPECT_EQ(b.y[0], -99.0);
    EXPECT_FALSE(reader.next(b));
}

// Broken libraries are refused with a message naming the file, the block and the problem:
// a 61-point block is a subscript error, the rest are file errors; nothing crashes.
TEST(LibraryReader, RefusesBrokenFiles) {
    std::string sixtyOne = "1\n61\n";
    for (int j = 1; j <= 61; ++j)
        sixtyOne += std::to_string(j) + ",0\n";
    struct Row {
        const char* what;
        std::string text;
        Fault fault;
        const char* where;
        const char* problem;
    };
    const Row rows[] = {
        {"61 points", sixtyOne, Fault::SubscriptOutOfRange, "block 1 of 2", "exceeds 60"},
        {"truncated in a point", "1\n2\n0,1\n1,2\n3\n0,1\n1", Fault::File, "block 2 of 2",
         "ends where the y of point 2"},
        {"truncated before a block", "1\n1\n0,0\n", Fault::File, "block 2 of 2",
         "ends where the point count"},
        {"empty", "", Fault::File, "header", "ends where the curve count"},
        {"not a number", "1\n2\n0,1\n1,x2\n1\n0,0\n", Fault::File, "block 1 of 2",
         "y of point 2 is 'x2'"},
        {"empty field", "1\n1\n0,,1\n", Fault::File, "block 1 of 2", "y of point 1 is ''"},
        {"fractional count", "1\n2.5\n", Fault::File, "block 1 of 2", "2.5 is not a whole"},
        {"negative count", "1\n-3\n", Fault::File, "block 1 of 2", "-3 is not a whole"},
        {"no curves", "0\n", Fault::File, "header", "curve count is 0"},
        {"infinite value", "1\n1\n0,inf\n", Fault::File, "block 1 of 2", "'inf', not a number"},
    };
    const ScratchDirectory dir;
    for (const Row& row : rows) {
        const auto path = dir.write("ONETYPE", row.text);
        const testing::Raised r = testing::raised([&] {
            LibraryReader reader(path, LibraryFile::OneType);
            for (CurveBlock b; reader.next(b);) {
            }
        });
        EXPECT_EQ(r.fault, row.fault) << row.what << ": " << r.message;
        EXPECT_TRUE(r.says(path.string()) && r.says(row.where) && r.says(row.problem)) << r.message;
    }
    for (const auto& missing : {dir.path() / "TWOTYPE", dir.path()}) {
        const testing::Raised r =
            testing::raised([&] { LibraryReader(missing, LibraryFile::TwoType); });
        EXPECT_EQ(r.fault, Fault::File);
        EXPECT_TRUE(r.says(missing.string())) << r.message;
    }
}

// The application directory comes first and the directory of the executable second; one
// directory given twice is searched once, and an unset one not at all.
TEST(LibraryLookup, ApplicationDirectoryFirstThenBesideTheExecutable) {
    using Paths = std::vector<fs::path>;
    EXPECT_EQ(libraryCandidates("/work/tests", "/opt/zorvekan/bin", LibraryFile::FrcType),
              (Paths{"/work/tests/FRCTYPE", "/opt/zorvekan/bin/FRCTYPE"}));
    EXPECT_EQ(libraryCandidates("/opt/zorvekan/bin/", "/opt/zorvekan/bin", LibraryFile::OneType),
              (Paths{"/opt/zorvekan/bin/ONETYPE"}));
    EXPECT_EQ(libraryCandidates("", "/opt/zorvekan/bin", LibraryFile::TwoType),
              (Paths{"/opt/zorvekan/bin/TWOTYPE"}));
}

// Finding the file: a copy in the application directory wins over the delivered one; with
// neither, the message names the file and both places.
TEST(LibraryLookup, FindsTheFirstCopyThatExists) {
    const ScratchDirectory dir;
    fs::create_directories(dir.path() / "app");
    fs::create_directories(dir.path() / "bin");
    const auto app = dir.path() / "app";
    const auto bin = dir.path() / "bin";
    dir.write("bin/ONETYPE", "1\n0\n0\n");
    EXPECT_EQ(locateLibrary(app, bin, LibraryFile::OneType), bin / "ONETYPE");
    dir.write("app/ONETYPE", "1\n0\n0\n");
    EXPECT_EQ(locateLibrary(app, bin, LibraryFile::OneType), app / "ONETYPE");
    const testing::Raised r =
        testing::raised([&] { locateLibrary(app, bin, LibraryFile::FrcType); });
    EXPECT_EQ(r.fault, Fault::File);
    EXPECT_TRUE(r.says("FRCTYPE") && r.says(app.string()) && r.says(bin.string())) << r.message;
}

} // namespace
} // namespace zorvekan
