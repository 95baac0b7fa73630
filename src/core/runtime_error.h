// SPDX-License-Identifier: MIT
#pragma once

#include <stdexcept>
#include <string>

namespace zorvekan {

// The arithmetic and bounds faults an analysis can run into. Each one stops the
// computation in progress and is reported to the engineer; none is ever turned
// into a silent NaN or infinity.
enum class Fault {
    DivisionByZero,
    Overflow,
    SubscriptOutOfRange,
    InvalidArgument, // logarithm or square root of a value outside its domain
    File,
    NoData, // a plot or computation that needs test points found none
};

class RuntimeError : public std::runtime_error {
public:
    explicit RuntimeError(Fault fault, const std::string& detail = {});

    Fault fault() const noexcept { return m_fault; }

    static const char* faultName(Fault fault) noexcept;

private:
    Fault m_fault;
};

} // namespace zorvekan
