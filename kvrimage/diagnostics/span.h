#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// A range of bytes in a file.
struct span {
    std::uint64_t offset = 0; ///< of the first byte
    std::uint64_t length = 0; ///< in bytes

    /// Returns the offset after the last byte.
    [[nodiscard]] std::uint64_t end() const noexcept { return offset + length; }
    /// Returns these bytes of @p text, the contents of the file, cut at its end.
    /// @throws std::out_of_range if @p text ends before `offset`
    [[nodiscard]] std::string_view in(std::string_view text) const {
        return text.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
    }
};

} // namespace kvrimage
