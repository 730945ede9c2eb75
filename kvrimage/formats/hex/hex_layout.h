#pragma once

#include "kvrimage/bytes/record_style.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word_text.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrimage {

inline constexpr std::uint32_t hex_page_shift = 16; ///< the address field counts within a page
inline constexpr std::uint64_t hex_page_size = std::uint64_t{1} << hex_page_shift;

/// Returns the record style of @p type, a byte in hex digits.
[[nodiscard]] constexpr record_style hex_style_of_type(std::string_view type) {
    return {.mark = ":", .address_bytes = 2, .type = type, .counted = 0, .sum = 0};
}

/// The layout of words in the records of an Intel HEX file. Each word has whole bytes. A cell is the unit of
/// the addresses: a word, or one byte of it.
struct hex_layout {
    std::uint32_t width = 0; ///< in bits; 0: unknown
    address_unit unit = address_unit::word;
    byte_order order = byte_order::big; ///< byte order within a word; big if addresses count words

    [[nodiscard]] std::uint32_t bytes_per_word() const noexcept {
        return (width + bits_per_byte - 1) / bits_per_byte;
    }
    [[nodiscard]] bool counts_bytes() const noexcept { return unit == address_unit::byte; }
    [[nodiscard]] std::uint32_t bytes_per_cell() const noexcept {
        return counts_bytes() ? 1 : bytes_per_word();
    }
    [[nodiscard]] std::uint32_t cells_per_word() const noexcept {
        return counts_bytes() ? bytes_per_word() : 1;
    }
};

/// Determines how many bytes an address counts, from records that continue at the end of the previous one.
class width_finder {
public:
    /// Adds a data record of @p bytes bytes at @p address. A record without data shows nothing.
    void take(std::uint64_t address, std::uint32_t bytes) {
        if (bytes == 0) {
            return;
        }
        const std::uint64_t step = address - previous_address;
        // Fast path: nearly all records resemble the previous one.
        if ((step != known_step || previous_bytes != known_bytes) && address > previous_address) {
            see(step);
        }
        previous_address = address;
        previous_bytes = bytes;
    }
    /// Returns the bytes per address; 0 if the records do not show it or contradict each other.
    [[nodiscard]] std::uint32_t bytes() const { return found && consistent ? found_bytes : 0; }

private:
    void see(std::uint64_t step) {
        if (step > previous_bytes) {
            return;
        }
        const std::uint32_t bytes =
            previous_bytes % step == 0 ? static_cast<std::uint32_t>(previous_bytes / step) : 0;
        consistent = consistent && bytes != 0 && (!found || found_bytes == bytes);
        found_bytes = bytes;
        found = true;
        known_step = step;
        known_bytes = previous_bytes;
    }

    std::uint64_t previous_address = ~std::uint64_t{0};
    std::uint32_t previous_bytes = 0;
    std::uint64_t known_step = 0; ///< of the last record examined
    std::uint32_t known_bytes = 0;
    std::uint32_t found_bytes = 0;
    bool found = false;
    bool consistent = true;
};

/// Converts the digits of a word, two per byte, between most significant byte first and the byte order
/// @p order of a file. The conversion is its own inverse.
[[nodiscard]] std::string in_byte_order(std::string_view digits, byte_order order);

/// Returns the layout that read() used for @p ours, which must have an image.
[[nodiscard]] hex_layout layout_of(const read_result& ours);
/// Returns the layout that read() uses for @p contents, a file without broken diagnostics. The width is 0 if
/// read() cannot determine it.
[[nodiscard]] hex_layout layout_of_words(std::string_view contents, const read_options& options);

} // namespace kvrimage
