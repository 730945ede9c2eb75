#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/image_words.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Makes words of the bytes of a file whose addresses count these.
class hex_word_joiner {
public:
    /// @param to takes the words, and is as large as they need
    hex_word_joiner(std::string_view file, const hex_layout& of, image_words& to);

    /// @param bytes two digits each
    void join(const image_words& bytes);
    /// Reports the words of which only some bytes are set.
    void report(diagnostic_list& diagnostics) const;
    /// Their addresses, in order.
    [[nodiscard]] const std::vector<address_range>& partial() const noexcept { return partial_words; }

private:
    void put(std::uint64_t address, std::string_view digits);
    void finish_word();

    std::string_view contents;
    hex_layout layout;
    image_words& words;
    std::uint32_t bytes_per_word;
    std::uint64_t current = 0; ///< the word whose bytes are being taken
    std::string digits_of_word;
    std::uint32_t bytes_found = 0;
    std::uint32_t bytes_of_first_partial = 0;
    std::vector<address_range> partial_words;
};

/// The digits of the bytes of a word, two each, most significant first, as @p order puts them in a file, and
/// the reverse.
[[nodiscard]] std::string in_byte_order(std::string_view digits, byte_order order);

} // namespace kvrimage
