#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// Bytes of a file.
struct span {
    std::uint64_t offset = 0; ///< of the first one
    std::uint64_t length = 0; ///< how many

    /// The offset of the byte after the last one.
    [[nodiscard]] std::uint64_t end() const noexcept { return offset + length; }
    /// These bytes of @p text, which is the contents of the file; cut where that ends.
    /// @throws std::out_of_range when it ends before `offset`
    [[nodiscard]] std::string_view in(std::string_view text) const {
        return text.substr(static_cast<std::size_t>(offset), static_cast<std::size_t>(length));
    }
};

} // namespace kvrimage
