// SPDX-License-Identifier: MIT
#pragma once

#include "core/bounded_array.h"

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace zorvekan {

// The three type-curve library files. Each holds N, then blocks of M followed by M pairs
// x,y (x = log10 of the time group, y = log10 of pD or of the derivative group, ascending
// x, at most 60 points). ONETYPE and FRCTYPE hold 2N blocks (pD curves 1..N, then their
// derivative curves N+1..2N); TWOTYPE holds N blocks of transition curves.
enum class LibraryFile { OneType, TwoType, FrcType };

inline constexpr int kMaxCurvePoints = 60;

const char* libraryFileName(LibraryFile file); // "ONETYPE", "TWOTYPE", "FRCTYPE"
int libraryCurveCount(LibraryFile file);       // N as delivered: 16, 25, 9
bool hasDerivativeBlocks(LibraryFile file);    // ONETYPE and FRCTYPE

// Where a library file is looked for, in order: the application directory (the working
// directory at start-up), then the directory of the executable, where the build and the
// installation put the delivered files. Empty directories are skipped, a repeated one is
// listed once.
std::vector<std::filesystem::path>
libraryCandidates(const std::filesystem::path& applicationDirectory,
                  const std::filesystem::path& executableDirectory, LibraryFile file);

// The first candidate that exists; Fault::File naming the file and the places searched
// when there is none.
std::filesystem::path locateLibrary(const std::filesystem::path& applicationDirectory,
                                    const std::filesystem::path& executableDirectory,
                                    LibraryFile file);

// The two places a library file is looked for (see libraryCandidates), kept by whoever reads
// the library again and again; `of` locates the file anew on each call.
struct LibraryLocation {
    std::filesystem::path applicationDirectory;
    std::filesystem::path executableDirectory;

    std::filesystem::path of(LibraryFile file) const {
        return locateLibrary(applicationDirectory, executableDirectory, file);
    }
};

// One block as the drawing and hit-test loops use it: points 1..pointCount, index 0 never
// filled. Every block read overwrites the same arrays.
struct CurveBlock {
    int number = 0; // block number, from 1
    int pointCount = 0;
    BoundedArray<double, kMaxCurvePoints + 1> x;
    BoundedArray<double, kMaxCurvePoints + 1> y;
};

// Reads a library file block by block, keeping nothing but the open stream: a drawing
// opens one, reads every block into the same CurveBlock and lets it go.
// A missing file, a value that is not a number, a count out of range or a file that ends
// early is Fault::File, and a block of more than 60 points Fault::SubscriptOutOfRange; the
// message names the file, the block and what was wrong.
class LibraryReader {
public:
    LibraryReader(const std::filesystem::path& path, LibraryFile file);

    int curveCount() const { return m_curveCount; } // N
    int blockCount() const { return m_blockCount; } // 2N, or N for TWOTYPE

    // Reads the next block into `block`; false once every block has been read.
    bool next(CurveBlock& block);

private:
    double readNumber(const std::string& where, const std::string& what);
    int readCount(const std::string& where, const std::string& what, int limit);
    [[noreturn]] void fail(const std::string& where, const std::string& problem) const;

    std::string m_name;
    std::ifstream m_in;
    int m_curveCount = 0;
    int m_blockCount = 0;
    int m_blocksRead = 0;
};

} // namespace zorvekan
