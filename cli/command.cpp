// SPDX-License-Identifier: MIT
#include "command.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace zorvekan::cli {

namespace {
std::map<std::string, Command>& registry() {
    static std::map<std::string, Command> r;
    return r;
}
} // namespace

const std::map<std::string, Command>& commands() {
    return registry();
}

Registration::Registration(Command command) {
    const std::string name = command.name;
    registry().emplace(name, std::move(command));
}

std::string fullPrecision(double value) {
    char buf[40];
    std::snprintf(buf, sizeof buf, "%.17g", value);
    return buf;
}

std::optional<double> parseNumber(const std::string& text) {
    if (text.empty())
        return std::nullopt;
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    if (end != text.c_str() + text.size() || !std::isfinite(v))
        return std::nullopt;
    return v;
}

Options::Options(const std::vector<std::string>& args, const std::vector<std::string>& valued,
                 const std::vector<std::string>& flags) {
    auto contains = [](const std::vector<std::string>& v, const std::string& s) {
        return std::find(v.begin(), v.end(), s) != v.end();
    };
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& a = args[i];
        if (a.rfind("--", 0) != 0 || a == "--") {
            m_positional.push_back(a);
            continue;
        }
        std::string name = a.substr(2);
        std::optional<std::string> inlineValue;
        if (const auto eq = name.find('='); eq != std::string::npos) {
            inlineValue = name.substr(eq + 1);
            name = name.substr(0, eq);
        }
        if (contains(flags, name) && !inlineValue) {
            m_flags.push_back(name);
        } else if (contains(valued, name)) {
            if (inlineValue) {
                m_values[name] = *inlineValue;
            } else if (i + 1 < args.size()) {
                m_values[name] = args[++i];
            } else {
                throw UsageError{"option --" + name + " needs a value"};
            }
        } else {
            throw UsageError{"unknown option --" + name};
        }
    }
}

bool Options::has(const std::string& name) const {
    return m_values.count(name) != 0 ||
           std::find(m_flags.begin(), m_flags.end(), name) != m_flags.end();
}

std::optional<std::string> Options::value(const std::string& name) const {
    const auto it = m_values.find(name);
    if (it == m_values.end())
        return std::nullopt;
    return it->second;
}

std::optional<double> Options::optionalNumber(const std::string& name) const {
    const auto text = value(name);
    if (!text)
        return std::nullopt;
    const auto v = parseNumber(*text);
    if (!v)
        throw UsageError{"--" + name + " expects a number, not '" + *text + "'"};
    return v;
}

double Options::number(const std::string& name) const {
    const auto v = optionalNumber(name);
    if (!v)
        throw UsageError{"missing --" + name};
    return *v;
}

} // namespace zorvekan::cli
