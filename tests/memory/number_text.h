#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvr_test {

/// Digits of @p value in @p base, 2 to 16, at least @p width of them.
inline std::string number_text(std::uint64_t value, unsigned base, std::size_t width, bool upper = true) {
    std::string digits;
    for (; value != 0 || digits.size() < width; value /= base) {
        digits.insert(digits.begin(), (upper ? "0123456789ABCDEF" : "0123456789abcdef")[value % base]);
    }
    return digits;
}

} // namespace kvr_test
