// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zorvekan::cli {

// Exit codes of zorvekan-cli.
inline constexpr int kExitOk = 0;
inline constexpr int kExitFailure = 1; // the computation itself failed (message printed)
inline constexpr int kExitUsage = 2;   // bad command line

// Thrown for a bad command line; main prints "zorvekan-cli: <message>" and exits with 2.
struct UsageError {
    std::string message;
};

// A sub-command ("gas", "series", ...). Each cli/*.cpp registers its own with a
// static Registration object, so adding a command touches only its own file.
struct Command {
    std::string name;
    std::string synopsis; // one line for --help
    std::string help;     // the full description
    std::function<int(const std::vector<std::string>& args, std::ostream& out, std::ostream& err)>
        run;
};

const std::map<std::string, Command>& commands();

struct Registration {
    explicit Registration(Command command);
};

// Options of the form --name value (or --name=value) and bare flags, parsed against
// the names a command accepts; anything else is a UsageError.
class Options {
public:
    Options(const std::vector<std::string>& args, const std::vector<std::string>& valued,
            const std::vector<std::string>& flags);

    bool has(const std::string& name) const;
    std::optional<std::string> value(const std::string& name) const;
    // A required numeric option; text that is not entirely a number is a UsageError.
    double number(const std::string& name) const;
    std::optional<double> optionalNumber(const std::string& name) const;
    const std::vector<std::string>& positional() const { return m_positional; }

private:
    std::map<std::string, std::string> m_values;
    std::vector<std::string> m_flags;
    std::vector<std::string> m_positional;
};

// A number with every digit a double holds (%.17g), for output read back by programs.
std::string fullPrecision(double value);

// Strict number parsing for the command line (unlike the lenient text boxes):
// the whole text must be a finite number.
std::optional<double> parseNumber(const std::string& text);

} // namespace zorvekan::cli
