// SPDX-License-Identifier: MIT
#include "core/display_mask.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace zorvekan {

namespace {

// A non-negative finite value as at most 15 significant decimal digits:
// value = 0.<digits> x 10^pointPos (digits without trailing zeros; empty for zero).
struct Decimal {
    std::string digits;
    int pointPos = 0;
};

Decimal decompose(double absValue) {
    Decimal d;
    if (absValue == 0.0)
        return d;
    char buf[64];
    std::snprintf(buf, sizeof buf, "%.14e", absValue);
    // buf: d.dddddddddddddde[+-]XX
    d.digits.push_back(buf[0]);
    const char* p = buf + 2;
    while (*p != 'e')
        d.digits.push_back(*p++);
    d.pointPos = std::atoi(p + 1) + 1;
    while (!d.digits.empty() && d.digits.back() == '0')
        d.digits.pop_back();
    return d;
}

// Adds one unit in the last place of a digit string; returns true on carry out.
bool incrementDigits(std::string& s) {
    for (auto it = s.rbegin(); it != s.rend(); ++it) {
        if (*it == '9') {
            *it = '0';
        } else {
            ++*it;
            return false;
        }
    }
    return true;
}

std::string stripLeadingZeros(const std::string& s) {
    const auto first = s.find_first_not_of('0');
    return first == std::string::npos ? std::string() : s.substr(first);
}

// Fixed-point digits of absValue rounded half away from zero to `decimals` places.
// The integer part has no leading zeros (empty for zero); the fraction has exactly
// `decimals` digits.
void fixedDigits(double absValue, int decimals, std::string& intPart, std::string& fracPart) {
    const Decimal d = decompose(absValue);
    const int len = static_cast<int>(d.digits.size());
    if (d.pointPos > 0) {
        intPart = d.digits.substr(0, static_cast<std::size_t>(std::min(d.pointPos, len)));
        if (d.pointPos > len)
            intPart.append(static_cast<std::size_t>(d.pointPos - len), '0');
        fracPart = d.pointPos < len ? d.digits.substr(static_cast<std::size_t>(d.pointPos)) : "";
    } else {
        intPart.clear();
        fracPart = std::string(static_cast<std::size_t>(-d.pointPos), '0') + d.digits;
    }
    if (static_cast<int>(fracPart.size()) > decimals) {
        const bool roundUp = fracPart[static_cast<std::size_t>(decimals)] >= '5';
        fracPart.resize(static_cast<std::size_t>(decimals));
        if (roundUp) {
            std::string all = intPart + fracPart;
            if (incrementDigits(all))
                all.insert(all.begin(), '1');
            intPart = all.substr(0, all.size() - static_cast<std::size_t>(decimals));
            fracPart = all.substr(all.size() - static_cast<std::size_t>(decimals));
        }
    }
    fracPart.resize(static_cast<std::size_t>(decimals), '0');
    intPart = stripLeadingZeros(intPart);
}

// Significant digits of absValue rounded to `count` digits, with the decimal
// exponent of the first digit (value = d.ddd x 10^exponent). Zero gives "000..", 0.
void significantDigits(double absValue, int count, std::string& digits, int& exponent) {
    Decimal d = decompose(absValue);
    if (d.digits.empty()) {
        digits.assign(static_cast<std::size_t>(count), '0');
        exponent = 0;
        return;
    }
    exponent = d.pointPos - 1;
    digits = d.digits;
    if (static_cast<int>(digits.size()) > count) {
        const bool roundUp = digits[static_cast<std::size_t>(count)] >= '5';
        digits.resize(static_cast<std::size_t>(count));
        if (roundUp && incrementDigits(digits)) {
            digits.insert(digits.begin(), '1');
            digits.resize(static_cast<std::size_t>(count));
            ++exponent;
        }
    }
    digits.resize(static_cast<std::size_t>(count), '0');
}

// The numeric body of one mask section, with its literal text around it.
struct MaskSection {
    std::string prefix, suffix;
    std::string intPlaceholders, fracPlaceholders, expPlaceholders;
    bool hasPoint = false;
    bool scientific = false;
    bool expSignAlways = false;
    char expLetter = 'E';
    bool percent = false;
};

MaskSection parseSection(std::string_view mask) {
    MaskSection m;
    enum class Zone { Int, Frac, Exp } zone = Zone::Int;
    bool seenPlaceholder = false;
    auto literal = [&](char c) { (seenPlaceholder ? m.suffix : m.prefix).push_back(c); };
    for (std::size_t i = 0; i < mask.size(); ++i) {
        const char c = mask[i];
        if (c == '"') {
            while (++i < mask.size() && mask[i] != '"')
                literal(mask[i]);
        } else if (c == '\\' && i + 1 < mask.size()) {
            literal(mask[++i]);
        } else if (c == '#' || c == '0') {
            seenPlaceholder = true;
            if (zone == Zone::Int)
                m.intPlaceholders.push_back(c);
            else if (zone == Zone::Frac)
                m.fracPlaceholders.push_back(c);
            else
                m.expPlaceholders.push_back(c);
        } else if (c == '.' && zone == Zone::Int) {
            m.hasPoint = true;
            seenPlaceholder = true;
            zone = Zone::Frac;
        } else if ((c == 'E' || c == 'e') && zone != Zone::Exp && i + 1 < mask.size() &&
                   (mask[i + 1] == '-' || mask[i + 1] == '+')) {
            m.scientific = true;
            m.expLetter = c;
            m.expSignAlways = mask[i + 1] == '+';
            zone = Zone::Exp;
            ++i;
        } else if (c == ',' && zone == Zone::Int && seenPlaceholder) {
            // Thousands separators are not shown by the program's masks.
        } else {
            if (c == '%')
                m.percent = true;
            literal(c);
        }
    }
    return m;
}

std::size_t requiredCount(const std::string& placeholders, bool fromLeft) {
    // Integer and exponent parts: every placeholder from the first '0' on is required.
    // Fraction part: every placeholder up to the last '0' is required.
    if (fromLeft) {
        const auto first = placeholders.find('0');
        return first == std::string::npos ? 0 : placeholders.size() - first;
    }
    const auto last = placeholders.rfind('0');
    return last == std::string::npos ? 0 : last + 1;
}

std::string trimFraction(std::string frac, std::size_t required) {
    while (frac.size() > required && frac.back() == '0')
        frac.pop_back();
    return frac;
}

std::string padLeft(std::string s, std::size_t width) {
    if (s.size() < width)
        s.insert(0, width - s.size(), '0');
    return s;
}

std::string formatFixed(double absValue, const MaskSection& m) {
    std::string intPart, fracPart;
    fixedDigits(absValue, static_cast<int>(m.fracPlaceholders.size()), intPart, fracPart);
    intPart = padLeft(intPart, requiredCount(m.intPlaceholders, true));
    fracPart = trimFraction(fracPart, requiredCount(m.fracPlaceholders, false));
    return intPart + (m.hasPoint ? "." : "") + fracPart;
}

std::string formatScientific(double absValue, const MaskSection& m) {
    const int intCount = std::max<int>(1, static_cast<int>(m.intPlaceholders.size()));
    const int fracCount = static_cast<int>(m.fracPlaceholders.size());
    std::string digits;
    int exponent = 0;
    significantDigits(absValue, intCount + fracCount, digits, exponent);
    std::string intPart = digits.substr(0, static_cast<std::size_t>(intCount));
    std::string fracPart = digits.substr(static_cast<std::size_t>(intCount));
    if (absValue != 0.0)
        exponent -= intCount - 1;
    intPart = padLeft(stripLeadingZeros(intPart), requiredCount(m.intPlaceholders, true));
    fracPart = trimFraction(fracPart, requiredCount(m.fracPlaceholders, false));

    std::string text = intPart + (m.hasPoint ? "." : "") + fracPart;
    text.push_back(m.expLetter);
    if (exponent < 0)
        text.push_back('-');
    else if (m.expSignAlways)
        text.push_back('+');
    text += padLeft(std::to_string(std::abs(exponent)), requiredCount(m.expPlaceholders, true));
    return text;
}

std::vector<std::string_view> splitSections(std::string_view mask) {
    std::vector<std::string_view> sections;
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t i = 0; i < mask.size(); ++i) {
        if (mask[i] == '"')
            quoted = !quoted;
        else if (mask[i] == ';' && !quoted) {
            sections.push_back(mask.substr(start, i - start));
            start = i + 1;
        }
    }
    sections.push_back(mask.substr(start));
    return sections;
}

} // namespace

std::string Format(double value, std::string_view mask) {
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : "Infinity";

    const auto sections = splitSections(mask);
    std::string_view chosen = sections[0];
    bool showMinus = value < 0;
    if (value < 0 && sections.size() >= 2 && !sections[1].empty()) {
        chosen = sections[1];
        showMinus = false;
    } else if (value == 0 && sections.size() >= 3 && !sections[2].empty()) {
        chosen = sections[2];
    }

    const MaskSection m = parseSection(chosen);
    double absValue = std::fabs(value);
    if (m.percent)
        absValue *= 100.0;
    if (std::isinf(absValue)) // a percentage of a value near the double limit
        return showMinus ? "-Infinity" : "Infinity";
    if (m.intPlaceholders.empty() && m.fracPlaceholders.empty() && !m.hasPoint)
        return (showMinus ? "-" : "") + m.prefix + m.suffix;
    const std::string body =
        m.scientific ? formatScientific(absValue, m) : formatFixed(absValue, m);
    return (showMinus ? "-" : "") + m.prefix + body + m.suffix;
}

std::string Str(double value) {
    if (std::isnan(value))
        return "NaN";
    if (std::isinf(value))
        return value < 0 ? "-Infinity" : " Infinity";
    const std::string sign = value < 0 ? "-" : " ";
    const double absValue = std::fabs(value);
    if (absValue == 0.0)
        return " 0";

    std::string digits;
    int exponent = 0;
    significantDigits(absValue, 15, digits, exponent);
    while (digits.size() > 1 && digits.back() == '0')
        digits.pop_back();

    if (exponent < -4 || exponent >= 15) {
        std::string text = sign;
        text.push_back(digits[0]);
        if (digits.size() > 1) {
            text.push_back('.');
            text.append(digits, 1);
        }
        char expText[16];
        std::snprintf(expText, sizeof expText, "E%c%02d", exponent < 0 ? '-' : '+',
                      std::abs(exponent));
        return text + expText;
    }
    std::string intPart, fracPart;
    if (exponent >= 0) {
        intPart = digits.substr(0, std::min(digits.size(), static_cast<std::size_t>(exponent + 1)));
        if (static_cast<int>(intPart.size()) < exponent + 1)
            intPart.append(static_cast<std::size_t>(exponent + 1) - intPart.size(), '0');
        if (static_cast<int>(digits.size()) > exponent + 1)
            fracPart = digits.substr(static_cast<std::size_t>(exponent + 1));
    } else {
        fracPart = std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    }
    std::string text = sign + intPart;
    if (!fracPart.empty()) {
        text.push_back('.');
        text += fracPart;
    }
    return text;
}

} // namespace zorvekan
