#pragma once

#include "kvr/memory/io/digit_pairs.h"
#include "kvr/memory/memory_types.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace kvr {

class output_file;

/// Whether equal adjacent words share a content line.
enum class equal_words { share_a_line, have_lines_of_their_own };

/// Writes the MIF content lines of many words at once: lines with one address and no comment.
/// append_content_line() writes all other lines, and would write the same.
class fast_mif_rows {
public:
    fast_mif_rows(KVR_MEMORY_RADIXES address_radix, std::size_t address_width, equal_words equal);

    /// Writes one line for each word of @p row, the first with the address @p address. If equal words share a
    /// line, it stops before a word that equals the next one, and before the last word of the row, whose
    /// successor is unknown. Addresses must have at least two digits.
    ///
    /// @return the number of words written
    std::uint32_t write(const word_row& row, std::uint32_t address, output_file& file);

private:
    [[nodiscard]] bool has_two_digits(std::uint32_t address) const noexcept;
    void use_head_of(std::uint32_t address);

    KVR_MEMORY_RADIXES radix;
    std::size_t width;
    equal_words equals;
    digit_pairs pairs; ///< the last two digits of an address

    // The part of a line before the word. It is the same for all addresses that differ in their last two
    // digits only.
    std::string head;
    std::size_t head_size = 0;
    std::size_t last_digits = 0;   ///< position of these two digits
    std::uint32_t head_number = 0; ///< address / pairs.count()
};

} // namespace kvr
