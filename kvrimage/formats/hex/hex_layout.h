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

/// How the records of @p type, a byte, look.
[[nodiscard]] constexpr record_style hex_style_of_type(std::string_view type) {
    return {.mark = ":", .address_bytes = 2, .type = type, .counted = 0, .sum = 0};
}

/// How words are in the records of an Intel HEX file. Each word takes whole bytes. What an address counts is
/// a cell: a word, or a byte of one.
struct hex_layout {
    std::uint32_t width = 0; ///< bits a word; 0: not known
    address_unit unit = address_unit::word;
    byte_order order = byte_order::big; ///< of the bytes of a word; big where addresses count words

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

/// Finds how many bytes an address counts, where one record goes on at the address at which the one before it
/// ends.
class width_finder {
public:
    /// Takes a data record of @p bytes bytes at @p address.
    void take(std::uint64_t address, std::uint32_t bytes) {
        const std::uint64_t step = address - previous_address;
        // Nearly all records are like the one before.
        if ((step != known_step || previous_bytes != known_bytes) && address > previous_address) {
            see(step);
        }
        previous_address = address;
        previous_bytes = bytes;
    }
    /// Bytes an address; 0 when the records do not say, or contradict each other.
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
    std::uint64_t known_step = 0; ///< what was seen last
    std::uint32_t known_bytes = 0;
    std::uint32_t found_bytes = 0;
    bool found = false;
    bool consistent = true;
};

/// The digits of the bytes of a word, two each, most significant first, as @p order puts them in a file, and
/// the reverse.
[[nodiscard]] std::string in_byte_order(std::string_view digits, byte_order order);

/// The layout with which read() has read a file as @p ours, which has an image.
[[nodiscard]] hex_layout layout_of(const read_result& ours);
/// That with which read() takes @p contents, a file without broken diagnostics whose addresses count words; a
/// width of 0 where it does not.
[[nodiscard]] hex_layout layout_of_words(std::string_view contents, const read_options& options);

} // namespace kvrimage
