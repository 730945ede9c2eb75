#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

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

} // namespace kvrimage
