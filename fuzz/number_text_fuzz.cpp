// SPDX-License-Identifier: MIT
// Every text box goes through Val and every displayed number through Format: neither
// may crash, hang or return a non-finite value on any input.
#include "core/display_mask.h"
#include "core/runtime_error.h"
#include "core/val.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    double v = 0;
    try {
        v = zorvekan::Val(text);
    } catch (const zorvekan::RuntimeError&) {
        return 0; // overflow is a reported fault
    }
    if (!std::isfinite(v))
        std::abort();
    // The same bytes serve as a mask for the value read.
    const std::string formatted = zorvekan::Format(v, text.substr(0, 64));
    const std::string plain = zorvekan::Str(v);
    if (plain.empty())
        std::abort();
    (void)formatted;
    return 0;
}
