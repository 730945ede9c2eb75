#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The layout of the records of a format, or of one kind of them: a mark, then in hexadecimal digits the byte
/// count, the address, the type, the data and a checksum.
struct record_style {
    std::string_view mark;     ///< mark before the digits, 1 or 2 characters
    std::size_t address_bytes; ///< bytes of the address, at most 4
    std::string_view type;     ///< bytes between address and data, at most 1
    std::size_t counted;       ///< added to the number of data bytes in the byte count
    unsigned sum;              ///< required sum of all bytes modulo 256

    /// Returns the bytes of count, address and type.
    [[nodiscard]] constexpr std::size_t header_bytes() const noexcept {
        return 1 + address_bytes + type.size();
    }
    /// Returns these bytes as a number, first byte most significant. A larger address gives a larger number.
    [[nodiscard]] constexpr std::uint64_t header(std::size_t data_bytes,
                                                 std::uint64_t address) const noexcept {
        const std::uint64_t fields = std::uint64_t{data_bytes + counted} << (8 * address_bytes) | address;
        return type.empty() ? fields : fields << 8U | static_cast<unsigned char>(type.front());
    }
    /// Returns the characters of a record with @p data_bytes bytes of data, without its line end.
    [[nodiscard]] constexpr std::size_t length(std::size_t data_bytes) const noexcept {
        return mark.size() + 2 * (header_bytes() + data_bytes + 1);
    }
};

/// The most data bytes of a record, since its count has one byte.
inline constexpr std::uint32_t most_record_bytes = 255;

} // namespace kvrimage
