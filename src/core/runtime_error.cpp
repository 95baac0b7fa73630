// SPDX-License-Identifier: MIT
#include "core/runtime_error.h"

namespace zorvekan {

namespace {
std::string compose(Fault fault, const std::string& detail) {
    std::string text = RuntimeError::faultName(fault);
    if (!detail.empty())
        text += ": " + detail;
    return text;
}
} // namespace

RuntimeError::RuntimeError(Fault fault, const std::string& detail)
    : std::runtime_error(compose(fault, detail)), m_fault(fault) {}

const char* RuntimeError::faultName(Fault fault) noexcept {
    switch (fault) {
    case Fault::DivisionByZero:
        return "Division by zero";
    case Fault::Overflow:
        return "Overflow";
    case Fault::SubscriptOutOfRange:
        return "Subscript out of range";
    case Fault::InvalidArgument:
        return "Invalid procedure call or argument";
    case Fault::File:
        return "File error";
    case Fault::NoData:
        return "No data";
    }
    return "Run-time error";
}

} // namespace zorvekan
