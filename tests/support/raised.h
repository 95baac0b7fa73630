// SPDX-License-Identifier: MIT
// The run-time fault a call raises, for the tests of fault paths.
#pragma once

#include "core/runtime_error.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace zorvekan::testing {

struct Raised {
    std::optional<Fault> fault; // empty when the call raised nothing
    std::string message;

    // True when the message contains the text.
    bool says(const std::string& text) const { return message.find(text) != std::string::npos; }
};

// Runs f and returns the RuntimeError it raised; a call that raises none fails the test.
template <class F> Raised raised(F&& f) {
    try {
        f();
    } catch (const RuntimeError& e) {
        return {e.fault(), e.what()};
    }
    ADD_FAILURE() << "no fault raised";
    return {};
}

} // namespace zorvekan::testing
