#include "kvr/memory/hex/fast_hex_rows.h"

#include "kvr/memory/io/copy_padded.h"
#include "kvr/memory/io/digit_pairs.h"
#include "kvr/memory/io/output_file.h"
#include "kvr/numeric/character_block.h"
#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>

namespace kvr {

namespace {

// A record consists of a head (colon, record length, address, type "00", leading zeros of the word), the
// word, and a tail (checksum, LF). Records with the same high byte of the address have the same head, except
// for the two digits of the low byte.
constexpr std::size_t plain_head = 1 + 2 + 4 + 2;
constexpr std::size_t low_address = 1 + 2 + 2;
constexpr std::size_t record_tail = 2 + 1;
constexpr std::size_t longest_word = 256;
constexpr std::size_t longest_head = plain_head + 2 * std::size_t{255};
constexpr std::uint32_t most_bytes = 255;
constexpr std::uint32_t low_addresses = 256;

/// The common parts of the records of adjacent words.
struct record_block {
    std::array<char, longest_head + copy_padding> head;
    std::size_t head_size;
    std::size_t word_length;
    std::uint32_t head_sum; ///< sum of the bytes of the head without the low byte of the address
    const digit_pairs* pairs;
};

/// Returns the mask of the last 1 to 8 characters of a word of @p length characters, which is read in blocks
/// of eight.
constexpr std::uint64_t mask_of_last(std::size_t length) noexcept {
    const std::size_t last = (length - 1) % sizeof(std::uint64_t) + 1;
    return ~std::uint64_t{0} >> (8 * (sizeof(std::uint64_t) - last));
}

/// The sums of the digits with even and with odd index, each in four lanes of 16 bits.
struct lane_sums {
    std::uint64_t even = 0;
    std::uint64_t odd = 0;

    /// Adds eight hexadecimal digits. NUL characters count as 0.
    void add(std::uint64_t digits) noexcept {
        constexpr std::uint64_t low_bytes = 0x00FF00FF00FF00FF;
        const std::uint64_t values = values_of_eight(digits);
        even += values & low_bytes;
        odd += (values >> 8U) & low_bytes;
    }
};

/// Returns the sum of the bytes that the @p length digits at @p word encode. If their number is odd, the
/// first digit is a byte of its own. copy_padding characters must follow.
std::uint32_t byte_sum(const char* word, std::size_t length, std::uint64_t last_mask) noexcept {
    lane_sums sums;
    constexpr std::size_t eight = 8;
    for (; length > eight; length -= eight, word += eight) {
        sums.add(load_eight(word));
    }
    sums.add(load_eight(word) & last_mask);
    return length % 2 == 0 ? sum_of_four(sums.even * 16 + sums.odd) : sum_of_four(sums.even + sums.odd * 16);
}

/// Does the same for a small even number of digits.
template <std::size_t length>
std::uint32_t short_byte_sum(const char* word) noexcept {
    if constexpr (length == sizeof(std::uint64_t)) {
        return sum_of_four(four_bytes(load_eight(word)));
    }
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < length; i += 2) {
        sum += digit_value(word[i]) * 16U + digit_value(word[i + 1]);
    }
    return sum;
}

/// Formats @p count records for the words at @p words. If @p known_length is not 0, it is the length of the
/// words, which then have no leading zeros.
template <std::size_t known_length>
char* format_records(const record_block& block, const char* words, std::uint32_t count, std::uint32_t low,
                     char* end) noexcept {
    const std::size_t length = known_length != 0 ? known_length : block.word_length;
    const std::size_t head_size = known_length != 0 ? plain_head : block.head_size;
    const std::uint64_t last_mask = mask_of_last(length);
    const digit_pairs& pairs = *block.pairs;
    for (const std::uint32_t after = low + count; low < after; ++low, words += length) {
        copy_padded(block.head.data(), head_size, end);
        pairs.put(low, end + low_address);
        end += head_size;
        copy_padded(words, length, end);
        const std::uint32_t word_sum =
            known_length != 0 ? short_byte_sum<known_length>(words) : byte_sum(words, length, last_mask);
        const std::uint32_t sum = block.head_sum + low + word_sum;
        pairs.put((0 - sum) & 0xFF, end + length);
        end[length + 2] = '\n';
        end += length + record_tail;
    }
    return end;
}

char* format_records(const record_block& block, const char* words, std::uint32_t count, std::uint32_t low,
                     char* end) noexcept {
    switch (block.head_size == plain_head ? block.word_length : 0) {
    case 2:
        return format_records<2>(block, words, count, low, end);
    case 4:
        return format_records<4>(block, words, count, low, end);
    case 8:
        return format_records<8>(block, words, count, low, end);
    default:
        return format_records<0>(block, words, count, low, end);
    }
}

} // namespace

fast_hex_rows::fast_hex_rows(std::uint32_t bytes_per_word, letter_case letter) noexcept
    : bytes(bytes_per_word),
      letters(letter) {}

std::uint32_t fast_hex_rows::write(const word_row& row, std::uint32_t address, output_file& file) const {
    const std::size_t digits = std::max<std::size_t>(row.length, 2 * std::size_t{bytes});
    if (row.length == 0 || row.length > longest_word || bytes > most_bytes || digits % 2 != 0) {
        return 0;
    }
    const std::size_t record_size = plain_head + digits + record_tail;
    const auto most_records = static_cast<std::uint32_t>(std::min(
        (output_file::room_limit - copy_padding) / record_size, hex_digit_block::capacity / row.length));
    const digit_pairs& pairs = letters == letter_case::lower ? lower_hex_pairs : upper_hex_pairs;

    record_block block{};
    block.pairs = &pairs;
    block.word_length = row.length;
    block.head_size = plain_head + digits - row.length;
    block.head.fill('0');
    block.head[0] = ':';
    pairs.put(bytes, &block.head[1]);

    hex_digit_block words{};
    constexpr std::uint32_t addresses = 65536;
    const std::uint32_t count = std::min(row.count, addresses - address);
    std::uint32_t written = 0;
    while (written < count) {
        const std::uint32_t low = address % low_addresses;
        const std::uint32_t records = std::min({count - written, low_addresses - low, most_records});
        if (!copy_hex_digits(row.part(written, records).all(), letters, words)) {
            break;
        }
        pairs.put(address / low_addresses, &block.head[3]);
        block.head_sum = bytes + address / low_addresses;
        char* const room = file.room(records * record_size + copy_padding);
        const char* const end = format_records(block, words.digits.data(), records, low, room);
        file.used(static_cast<std::size_t>(end - room));
        written += records;
        address += records;
    }
    return written;
}

} // namespace kvr
