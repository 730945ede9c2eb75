#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// How the records of a format, or one kind of them, look: a mark, then hexadecimal digits of the count of
/// bytes, the address, the type, the data, and a checksum.
struct record_style {
    std::string_view mark;     ///< before the digits, 1 or 2 characters
    std::size_t address_bytes; ///< 4 at most
    std::string_view type;     ///< the bytes between address and data, 1 at most
    std::size_t counted;       ///< what the count has beyond the bytes of the data
    unsigned sum;              ///< of all bytes, modulo 256

    /// Bytes of the count, the address and the type.
    [[nodiscard]] constexpr std::size_t header_bytes() const noexcept {
        return 1 + address_bytes + type.size();
    }
    /// The number that these bytes are, the first one most significant. A larger address is a larger number.
    [[nodiscard]] constexpr std::uint64_t header(std::size_t data_bytes,
                                                 std::uint64_t address) const noexcept {
        const std::uint64_t fields = std::uint64_t{data_bytes + counted} << (8 * address_bytes) | address;
        return type.empty() ? fields : fields << 8U | static_cast<unsigned char>(type.front());
    }
    /// Characters of a record of @p data_bytes bytes of data, without its line end.
    [[nodiscard]] constexpr std::size_t length(std::size_t data_bytes) const noexcept {
        return mark.size() + 2 * (header_bytes() + data_bytes + 1);
    }
};

/// The data bytes of the longest record, whose count is one byte.
inline constexpr std::uint32_t most_record_bytes = 255;

} // namespace kvrimage
