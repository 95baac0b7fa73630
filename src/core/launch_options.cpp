// SPDX-License-Identifier: MIT
#include "core/launch_options.h"

#include <algorithm>
#include <cctype>

namespace zorvekan {

namespace {

bool endsWithNoCase(const std::string& text, const std::string& suffix) {
    if (text.size() < suffix.size())
        return false;
    return std::equal(suffix.rbegin(), suffix.rend(), text.rbegin(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) ==
               std::tolower(static_cast<unsigned char>(b));
    });
}

std::optional<std::string> addExport(LaunchOptions& o, const std::string& argument) {
    const auto eq = argument.find('=');
    if (eq == std::string::npos || eq == 0 || eq + 1 == argument.size())
        return "--export needs SCREEN=PATH, got '" + argument + "'";
    PageExport e{argument.substr(0, eq), argument.substr(eq + 1)};
    if (!pageFormatOf(e.path))
        return "the page of " + e.screen + " can be written as .pdf or .png, not '" + e.path + "'";
    o.exports.push_back(std::move(e));
    return std::nullopt;
}

} // namespace

std::optional<PageFormat> pageFormatOf(const std::string& path) {
    if (endsWithNoCase(path, ".pdf"))
        return PageFormat::Pdf;
    if (endsWithNoCase(path, ".png"))
        return PageFormat::Png;
    return std::nullopt;
}

LaunchOptions parseLaunchOptions(const std::vector<std::string>& args) {
    LaunchOptions o;
    bool optionsEnded = false;
    for (std::size_t i = 0; i < args.size() && !o.error; ++i) {
        const std::string& a = args[i];
        if (!optionsEnded && a == "--") {
            optionsEnded = true;
        } else if (!optionsEnded && (a == "--help" || a == "-h")) {
            o.help = true;
        } else if (!optionsEnded && a == "--export") {
            if (i + 1 == args.size())
                o.error = "--export needs SCREEN=PATH";
            else
                o.error = addExport(o, args[++i]);
        } else if (!optionsEnded && a.rfind("--export=", 0) == 0) {
            o.error = addExport(o, a.substr(9));
        } else if (!optionsEnded && a.size() > 1 && a[0] == '-') {
            o.error = "unknown option '" + a + "'";
        } else if (o.file) {
            o.error = "only one test file can be opened, got '" + *o.file + "' and '" + a + "'";
        } else {
            o.file = a;
        }
    }
    return o;
}

std::string launchUsage() {
    return "usage: zorvekan [FILE]\n"
           "       zorvekan --export SCREEN=PATH [--export SCREEN=PATH ...] [FILE]\n"
           "\n"
           "Without options the desktop program starts. --export writes the printed page of\n"
           "the screen with that object name (inp: the input screen) to PATH, as PDF or PNG by\n"
           "the extension, without showing a window, and exits.\n";
}

} // namespace zorvekan
