#pragma once

#include "kvrimage/diagnostics/diagnostic.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Bytes of a file.
struct span {
    std::uint64_t offset = 0;
    std::uint64_t length = 0;

    [[nodiscard]] std::uint64_t end() const noexcept { return offset + length; }
    [[nodiscard]] std::string_view in(std::string_view text) const {
        return text.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
    }
};

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
