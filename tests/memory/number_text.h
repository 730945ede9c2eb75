#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr_test {

/// @p value in base @p base, 2 to 16, with at least @p width digits.
inline std::string number_text(std::uint64_t value, unsigned base, std::size_t width, bool upper = true) {
    const std::string_view all = upper ? "0123456789ABCDEF" : "0123456789abcdef";
    std::string digits;
    for (; value != 0 || digits.size() < width; value /= base) {
        digits.insert(digits.begin(), all[value % base]);
    }
    return digits;
}

} // namespace kvr_test
