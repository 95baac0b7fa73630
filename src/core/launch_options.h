// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zorvekan {

// One page to write without showing a window: `--export SCREEN=PATH`.
struct PageExport {
    std::string screen; // object name of the screen, e.g. "inp"
    std::string path;   // ends in .pdf or .png
};

enum class PageFormat { Pdf, Png };

// What the desktop program was asked to do on its command line:
//   zorvekan [FILE]
//   zorvekan --export SCREEN=PATH [--export SCREEN=PATH ...] [FILE]
//   zorvekan --help
struct LaunchOptions {
    std::vector<PageExport> exports;
    std::optional<std::string> file; // a test file to open at start
    bool help = false;
    std::optional<std::string> error; // a usage error, to be printed with the usage text
};

// Parses the arguments after the program name. "--export=SCREEN=PATH" is accepted as
// well; "--" ends the options.
LaunchOptions parseLaunchOptions(const std::vector<std::string>& args);

// The page format from the extension of a path (case-insensitive), none for others.
std::optional<PageFormat> pageFormatOf(const std::string& path);

std::string launchUsage();

} // namespace zorvekan
