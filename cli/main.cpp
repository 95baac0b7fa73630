// SPDX-License-Identifier: MIT
// zorvekan-cli: the analyses of the desktop program without a window.
#include "command.h"

#include "core/runtime_error.h"

#include <iostream>
#include <string>
#include <vector>

using namespace zorvekan::cli;

namespace {

void printHelp(std::ostream& out) {
    out << "zorvekan-cli - pressure-transient analysis of well tests, without a window\n\n"
           "Usage: zorvekan-cli COMMAND [OPTIONS]\n"
           "       zorvekan-cli COMMAND --help\n\n"
           "Commands:\n";
    for (const auto& [name, command] : commands())
        out << "  " << name << std::string(name.size() < 12 ? 12 - name.size() : 1, ' ')
            << command.synopsis << '\n';
    out << "\nUnits are oilfield units: psia, hours, ft, md, cp, STB/day, MCF/day, deg F.\n"
           "Exit status: 0 success, 1 the computation failed (message on stderr),\n"
           "2 a bad command line.\n";
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (args.empty()) {
        printHelp(std::cerr);
        return kExitUsage;
    }
    if (args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
        printHelp(std::cout);
        return kExitOk;
    }
    const auto it = commands().find(args[0]);
    if (it == commands().end()) {
        std::cerr << "zorvekan-cli: unknown command '" << args[0]
                  << "' (zorvekan-cli --help lists the commands)\n";
        return kExitUsage;
    }
    const Command& command = it->second;
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    for (const auto& a : rest)
        if (a == "--help" || a == "-h") {
            std::cout << "Usage: zorvekan-cli " << command.name << ' ' << command.help;
            return kExitOk;
        }
    try {
        return command.run(rest, std::cout, std::cerr);
    } catch (const UsageError& e) {
        std::cerr << "zorvekan-cli " << command.name << ": " << e.message << '\n';
        return kExitUsage;
    } catch (const zorvekan::RuntimeError& e) {
        std::cerr << "zorvekan-cli " << command.name << ": " << e.what() << '\n';
        return kExitFailure;
    } catch (const std::exception& e) {
        std::cerr << "zorvekan-cli " << command.name << ": " << e.what() << '\n';
        return kExitFailure;
    }
}
