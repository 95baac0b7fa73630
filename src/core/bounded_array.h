// SPDX-License-Identifier: MIT
#pragma once

#include "core/runtime_error.h"

#include <array>
#include <concepts>
#include <cstddef>
#include <string>

namespace zorvekan {

// A fixed-size array whose every subscript is checked. The analysis arrays have
// fixed bounds (0..500 test points, 0..25 rates); an index outside them is a
// run-time fault reported to the user, never a write past the end.
template <typename T, std::size_t N> class BoundedArray {
public:
    static constexpr int kSize = static_cast<int>(N);

    template <std::integral I> T& operator[](I i) {
        return m_values[checked(static_cast<long long>(i))];
    }
    template <std::integral I> const T& operator[](I i) const {
        return m_values[checked(static_cast<long long>(i))];
    }

    static constexpr int size() { return kSize; }
    static constexpr int upperBound() { return kSize - 1; }
    void fill(const T& value) { m_values.fill(value); }
    T* data() { return m_values.data(); }
    const T* data() const { return m_values.data(); }
    bool operator==(const BoundedArray&) const = default;

private:
    static std::size_t checked(long long i) {
        if (i < 0 || i >= kSize)
            throw RuntimeError(Fault::SubscriptOutOfRange, "index " + std::to_string(i) +
                                                               " outside 0.." +
                                                               std::to_string(kSize - 1));
        return static_cast<std::size_t>(i);
    }

    std::array<T, N> m_values{};
};

} // namespace zorvekan
