#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kvrimage {

/// The places that share one cause: the first ten, and how many there are.
class places {
public:
    static constexpr std::size_t kept = 10;

    places() = default; ///< none: the file as a whole
    places(const span& only) { add(only); }

    void add(const span& where) {
        if (first_ones.size() < kept) {
            first_ones.push_back(where);
        }
        ++number;
    }
    [[nodiscard]] bool empty() const noexcept { return number == 0; }
    [[nodiscard]] std::uint64_t count() const noexcept { return number; }
    [[nodiscard]] const std::vector<span>& first() const noexcept { return first_ones; }

private:
    std::vector<span> first_ones;
    std::uint64_t number = 0;
};

} // namespace kvrimage
