#include "kvr/memory/mif/fast_mif_rows.h"

#include "kvr/memory/io/copy_padded.h"
#include "kvr/memory/io/output_file.h"
#include "kvr/memory/memory_state.h"
#include "kvr/memory/mif/mif_writer.h"
#include "kvr/memory/store/packed_words.h"

#include <algorithm>
#include <cstring>

namespace kvr {

namespace {

constexpr std::size_t line_tail = 2; ///< ";" and LF

/// The start of a line, and how to change it for the address @p low further on.
struct line_block {
    const char* head;
    std::size_t head_size;
    std::size_t last_digits;
    const digit_pairs* pairs;
    std::size_t word_length;
};

/// Formats lines for the words of @p row up to the first one that equals the next word, and returns their
/// number. If @p known_length is not 0, it is the length of the words.
template <std::size_t known_length, equal_words equal>
std::uint32_t format_lines(const line_block& block, const word_row& row, std::uint32_t low,
                           char* end) noexcept {
    const std::size_t length = known_length != 0 ? known_length : block.word_length;
    const char* word = row.texts;
    for (std::uint32_t i = 0; i < row.count; ++i, word += length) {
        if (equal == equal_words::share_a_line && std::memcmp(word, word + length, length) == 0) {
            return i;
        }
        copy_padded(block.head, block.head_size, end);
        block.pairs->put(low + i, end + block.last_digits);
        end += block.head_size;
        copy_characters(word, length, end);
        end += length;
        std::memcpy(end, ";\n", line_tail);
        end += line_tail;
    }
    return row.count;
}

template <equal_words equal>
std::uint32_t format_lines(const line_block& block, const word_row& row, std::uint32_t low,
                           char* end) noexcept {
    switch (row.length) {
    case 2:
        return format_lines<2, equal>(block, row, low, end);
    case 4:
        return format_lines<4, equal>(block, row, low, end);
    case 8:
        return format_lines<8, equal>(block, row, low, end);
    default:
        return format_lines<0, equal>(block, row, low, end);
    }
}

} // namespace

fast_mif_rows::fast_mif_rows(KVR_MEMORY_RADIXES address_radix, std::size_t address_width, equal_words equal)
    : radix(address_radix),
      width(address_width),
      equals(equal),
      pairs(radix_base(address_radix), lower_hex_digits) {}

/// True if the last two characters of an address are digits that count up over all addresses with the same
/// leading digits. Addresses without zero padding have two digits only from the base on.
bool fast_mif_rows::has_two_digits(std::uint32_t address) const noexcept {
    const std::uint32_t base = radix_base(radix);
    return address >= base || (base != 10 && width >= 2);
}

void fast_mif_rows::use_head_of(std::uint32_t address) {
    if (!head.empty() && head_number == address / pairs.count()) {
        return;
    }
    std::string digits;
    append_address(digits, address, radix, width);
    head.clear();
    append_content_line(head, address, address, {}, radix, width, {});
    last_digits = 1 + digits.size() - 2;
    head_size = head.size() - line_tail;
    head_number = address / pairs.count();
    head.append(copy_padding, ' ');
}

std::uint32_t fast_mif_rows::write(const word_row& row, std::uint32_t address, output_file& file) {
    const std::uint32_t count = equals == equal_words::share_a_line ? std::max(row.count, 1U) - 1 : row.count;
    std::uint32_t written = 0;
    while (written < count && has_two_digits(address)) {
        use_head_of(address);
        const std::size_t line_size = head_size + row.length + line_tail;
        const std::size_t most_lines = (output_file::room_limit - copy_padding) / line_size;
        const std::uint32_t low = address % pairs.count();
        const auto lines = static_cast<std::uint32_t>(
            std::min<std::size_t>(most_lines, std::min(count - written, pairs.count() - low)));
        if (lines == 0) {
            break;
        }
        const line_block block = {head.data(), head_size, last_digits, &pairs, row.length};
        const word_row part = row.part(written, lines);
        char* const room = file.room(lines * line_size + copy_padding);
        const std::uint32_t done =
            equals == equal_words::share_a_line
                ? format_lines<equal_words::share_a_line>(block, part, low, room)
                : format_lines<equal_words::have_lines_of_their_own>(block, part, low, room);
        file.used(done * line_size);
        written += done;
        address += done;
        if (done < lines) {
            break;
        }
    }
    return written;
}

} // namespace kvr
