// SPDX-License-Identifier: MIT
// zorvekan-cli resave: a test file opened as the input screen's Open does and written
// as its Save does.
#include "command.h"

#include "core/analysis_state.h"
#include "input/test_file.h"

#include <ostream>

namespace zorvekan::cli {

namespace {

int runResave(const std::vector<std::string>& args, std::ostream&, std::ostream& err) {
    const Options o(args, {}, {});
    if (o.positional().size() != 2)
        throw UsageError{"two files expected, IN and OUT, got " +
                         std::to_string(o.positional().size())};
    AnalysisState s;
    const OpenResult opened = openTestFile(s, o.positional()[0]);
    if (!opened.ok) {
        err << opened.error.message() << '\n';
        return kExitFailure;
    }
    FileError error;
    if (!saveTestFile(s, o.positional()[1], error)) {
        err << error.message() << '\n';
        return kExitFailure;
    }
    return kExitOk;
}

const Registration registration{
    Command{"resave", "opens a test file as Open does and writes it as Save does",
            "IN OUT\n\n"
            "Reads the test file IN exactly as the input screen's Open does (the same checks,\n"
            "the same refill of the property boxes) and writes the test to OUT exactly as its\n"
            "Save does. A file written by Save comes back byte for byte, so resave shows that a\n"
            "test survives the round trip; an older file is written in today's form. OUT may\n"
            "be IN. OUT is replaced atomically: if it cannot be written whole (a full disk),\n"
            "the file already there is unchanged.\n\n"
            "A file that cannot be opened or written prints the file, line, field and fault\n"
            "and exits with 1.\n",
            runResave}};

} // namespace

} // namespace zorvekan::cli
