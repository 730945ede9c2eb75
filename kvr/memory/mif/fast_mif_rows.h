#pragma once

#include "kvr/memory/io/digit_pairs.h"
#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvr {

class output_file;

/// Whether adjacent equal words share a content line.
enum class equal_words { share_a_line, have_lines_of_their_own };

/// Writes the MIF content lines of many words at once: lines of one address, without a comment. Any other
/// line is for append_content_line(), which gives the same lines.
class fast_mif_rows {
public:
    fast_mif_rows(KVR_MEMORY_RADIXES address_radix, std::size_t address_width, equal_words equal);

    /// Writes a line for each word from the first of @p row on, the first with the address @p address. Where
    /// equal words share a line it stops before a word that equals the next one, and before the last word of
    /// the row, whose successor is unknown. It takes addresses of two digits and more only.
    ///
    /// @return the number of words that were written.
    std::uint32_t write(const word_row& row, std::uint32_t address, output_file& file);

private:
    [[nodiscard]] bool has_two_digits(std::uint32_t address) const noexcept;
    void use_head_of(std::uint32_t address);

    KVR_MEMORY_RADIXES radix;
    std::size_t width;
    equal_words equals;
    digit_pairs pairs; ///< the last two digits of an address

    // The part of a line before the word. It is the same for all addresses that differ in their last
    // two digits only.
    std::string head;
    std::size_t head_size = 0;
    std::size_t last_digits = 0;   ///< where these two digits stand
    std::uint32_t head_number = 0; ///< address / pairs.count()
};

} // namespace kvr
