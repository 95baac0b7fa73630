// SPDX-License-Identifier: MIT
#include "core/val.h"

#include "core/checked_math.h"
#include "core/runtime_error.h"

#include <cctype>
#include <cstdlib>
#include <string>

namespace zorvekan {

namespace {

bool isSkipped(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

std::string withoutBlanks(std::string_view text) {
    std::string s;
    s.reserve(text.size());
    for (char c : text)
        if (!isSkipped(c))
            s.push_back(c);
    return s;
}

double radixValue(const std::string& s, int radix, std::size_t& used) {
    double v = 0.0;
    std::size_t pos = 2;
    for (; pos < s.size(); ++pos) {
        const char c = static_cast<char>(std::tolower(static_cast<unsigned char>(s[pos])));
        int digit = -1;
        if (c >= '0' && c <= '9')
            digit = c - '0';
        else if (radix == 16 && c >= 'a' && c <= 'f')
            digit = c - 'a' + 10;
        if (digit < 0 || digit >= radix)
            break;
        v = v * radix + digit;
    }
    used = pos;
    return finite(v, "number");
}

// Reads the leading number of `s` (blanks already removed); `used` is how many
// characters it took.
double leadingNumber(const std::string& s, std::size_t& used) {
    used = 0;
    if (s.size() >= 2 && s[0] == '&') {
        const char k = static_cast<char>(std::tolower(static_cast<unsigned char>(s[1])));
        if (k == 'h' || k == 'o')
            return radixValue(s, k == 'h' ? 16 : 8, used);
    }

    // Copy the longest leading part that reads as a number into a C-locale form.
    std::string number;
    std::size_t i = 0;
    if (i < s.size() && (s[i] == '+' || s[i] == '-'))
        number.push_back(s[i++]);
    bool digits = false;
    while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
        number.push_back(s[i++]);
        digits = true;
    }
    if (i < s.size() && s[i] == '.') {
        number.push_back(s[i++]);
        while (i < s.size() && std::isdigit(static_cast<unsigned char>(s[i]))) {
            number.push_back(s[i++]);
            digits = true;
        }
    }
    if (!digits)
        return 0.0;
    used = i;
    if (i < s.size() && (s[i] == 'e' || s[i] == 'E' || s[i] == 'd' || s[i] == 'D')) {
        std::size_t j = i + 1;
        std::string exponent = "e";
        if (j < s.size() && (s[j] == '+' || s[j] == '-'))
            exponent.push_back(s[j++]);
        bool expDigits = false;
        while (j < s.size() && std::isdigit(static_cast<unsigned char>(s[j]))) {
            exponent.push_back(s[j++]);
            expDigits = true;
        }
        if (expDigits) {
            number += exponent;
            used = j;
        }
    }
    return finite(std::strtod(number.c_str(), nullptr), "number");
}

} // namespace

double Val(std::string_view text) {
    std::size_t used = 0;
    return leadingNumber(withoutBlanks(text), used);
}

bool ValTakesWholeText(std::string_view text) {
    const std::string s = withoutBlanks(text);
    std::size_t used = 0;
    try {
        leadingNumber(s, used);
    } catch (const RuntimeError&) {
        return true; // a whole number too large for a double: the overflow says so
    }
    return used == s.size();
}

} // namespace zorvekan
