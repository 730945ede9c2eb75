#include "kvr/memory/rif/rif_writer.h"

#include "kvr/memory/io/copy_padded.h"
#include "kvr/memory/io/digit_pairs.h"
#include "kvr/memory/io/hex_digit_block.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/util/letter_case.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstring>

namespace kvr {

namespace {

constexpr std::uint32_t words_a_group = 8;
constexpr std::string_view upper_digits = "0123456789ABCDEF";

/// Maps each character of a hexadecimal word to the one written; characters that are no digits become "0".
constexpr std::array<char, 256> make_written_digits() {
    std::array<char, 256> written{};
    written.fill('0');
    for (const char same : std::string_view("123456789ABCDEFX")) {
        written[static_cast<unsigned char>(same)] = same;
    }
    for (const char lower : std::string_view("abcdefx")) {
        written[static_cast<unsigned char>(lower)] = upper_case_of(lower);
    }
    return written;
}

constexpr std::array<char, 256> written_digits = make_written_digits();

/// Returns the low @p bits (1 to 3) of a written digit, as a digit. A don't-care digit is unchanged.
char low_bits(char digit, std::uint32_t bits) {
    const std::size_t value = upper_digits.find(digit);
    return value == upper_digits.npos ? digit : upper_digits[value & ((1U << bits) - 1U)];
}

/// Formats a word of @p memory according to its radix. Returns false if there is no text.
bool format_word(const rif_memory& memory, std::string_view word, std::string& text) {
    if (memory.memory_radix == RADIX_HEX) {
        format_hexadecimal_word(word, memory.word_size, text);
        return true;
    }
    return convert_word_to_hexadecimal(word, memory.memory_radix, memory.word_size, text);
}

constexpr std::size_t longest_header = 16;

/// Formats the header of the group that begins at @p address and returns the position after it.
char* put_group_header(std::uint32_t address, char* end) noexcept {
    char* const limit = end + longest_header;
    *end++ = '\n';
    *end++ = '@';
    end = std::to_chars(end, limit, address, 16).ptr;
    *end++ = '\n';
    return end;
}

/// Formats the headers of consecutive groups. The digits they share are formatted once.
class group_headers {
public:
    char* put(std::uint32_t address, char* end) noexcept {
        if (address < 16) {
            return put_group_header(address, end);
        }
        if (address / 256 != number) {
            take_number(address / 256);
        }
        copy_padded(front.data(), front_size, end);
        end = lower_hex_pairs.put(address % 256, end + front_size);
        *end++ = '\n';
        return end;
    }

private:
    /// Formats the digits that addresses share. @p shared is not 0; for 0, the front is "@" without a digit.
    void take_number(std::uint32_t shared) noexcept {
        number = shared;
        const char* const end = put_group_header(number, front.data());
        front_size = static_cast<std::size_t>(end - front.data()) - 1; // without the LF
    }

    std::array<char, longest_header + copy_padding> front{'\n', '@'}; ///< all but the last two digits
    std::size_t front_size = 2;
    std::uint32_t number = 0; ///< the number that these digits encode
};

/// Writes the header of a group if one begins at @p address.
void begin_group_at(std::uint32_t address, output_file& file) {
    if (address % words_a_group == 0) {
        char* const start = file.room(longest_header);
        file.used(static_cast<std::size_t>(put_group_header(address, start) - start));
    }
}

/// True for words of hexadecimal digits that format_hexadecimal_word() would not change, except for letter
/// case.
bool is_plain_row(const rif_memory& memory, const word_row& row) {
    return row.count != 0 && memory.memory_radix == RADIX_HEX && memory.word_size % 4 == 0 &&
           row.length != 0 && (memory.word_size == 0 || row.length == memory.word_size / 4);
}

/// Formats @p count packed words of @p length characters, each followed by a blank.
template <std::size_t known_length>
char* put_words(const char* words, std::size_t word_length, std::uint32_t count, char* end) noexcept {
    const std::size_t length = known_length != 0 ? known_length : word_length;
    for (; count > 0; --count, words += length) {
        if (known_length != 0) {
            std::memcpy(end, words, known_length);
        } else {
            copy_padded(words, length, end);
        }
        end[length] = ' ';
        end += length + 1;
    }
    return end;
}

char* put_words(const char* words, std::size_t length, std::uint32_t count, char* end) noexcept {
    switch (length) {
    case 2:
        return count == words_a_group ? put_words<2>(words, length, words_a_group, end)
                                      : put_words<2>(words, length, count, end);
    case 8:
        return put_words<8>(words, length, count, end);
    default:
        return put_words<0>(words, length, count, end);
    }
}

void report_unwritten_word(const rif_memory& memory, std::uint32_t address, std::string_view word) {
    memory.report("Data width is wider than the specified word size of the RIF file. Data value at address " +
                  decimal(address) + " is " + std::string(word) + " word size is " +
                  decimal(memory.word_size));
}

/// Writes words one by one on the exact path.
void write_words(const rif_memory& memory, const word_row& row, std::uint32_t address, output_file& file) {
    std::string text;
    for (std::uint32_t i = 0; i < row.count; ++i, ++address) {
        begin_group_at(address, file);
        format_hexadecimal_word(row[i], memory.word_size, text);
        text += ' ';
        file.write(text);
    }
}

/// The most words that are written at once.
constexpr std::uint32_t most_words_at_once = 512;
static_assert(hex_digit_block::capacity + most_words_at_once +
                  (most_words_at_once / words_a_group + 1) * longest_header + 2 * copy_padding <=
              output_file::room_limit);

/// Writes words in which only the letter case changes, at most `most_words_at_once` from a block of digits.
void write_digits(const char* digits, const word_row& row, std::uint32_t address, output_file& file) {
    group_headers headers;
    char* const start = file.room(output_file::room_limit);
    char* end = start;
    for (std::uint32_t done = 0; done < row.count;) {
        const std::uint32_t place = address % words_a_group;
        const std::uint32_t count = std::min(words_a_group - place, row.count - done);
        if (place == 0) {
            end = headers.put(address, end);
        }
        end = put_words(digits + std::size_t{done} * row.length, row.length, count, end);
        done += count;
        address += count;
    }
    file.used(static_cast<std::size_t>(end - start));
}

static_assert(word_row::longest <= hex_digit_block::capacity);

/// Writes the words of a row for which is_plain_row() holds.
void write_row(const rif_memory& memory, const word_row& row, std::uint32_t address, output_file& file) {
    const auto most_words =
        std::min(most_words_at_once, static_cast<std::uint32_t>(hex_digit_block::capacity / row.length));
    hex_digit_block block{};
    for (std::uint32_t done = 0; done < row.count; done += most_words) {
        const word_row part = row.part(done, std::min(most_words, row.count - done));
        if (copy_hex_digits(part.all(), letter_case::upper, block)) {
            write_digits(block.digits.data(), part, address + done, file);
        } else {
            write_words(memory, part, address + done, file);
        }
    }
}

} // namespace

bool write_rif_file(rif_memory& memory) {
    output_file file = output_file::create(memory.file_name);
    const bool opened = file.is_open();
    memory.file_not_found = !opened;
    if (!opened) {
        memory.report_not_found();
    } else {
        write_rif_words(memory, file);
        if (!file.close()) {
            memory.report_write_failure();
        }
    }
    memory.error_occurred = !opened;
    return opened;
}

void write_rif_words(const rif_memory& memory, output_file& file) {
    std::string text;
    std::uint32_t address = 0;
    while (address < memory.data_words.size()) {
        const word_row row = memory.data_words.row_at(address);
        if (is_plain_row(memory, row)) {
            write_row(memory, row, address, file);
            address += row.count;
            continue;
        }
        const word_run run = memory.data_words.run_at(address);
        // Before the conversion: if it throws, the header is in the file.
        begin_group_at(address, file);
        const bool written = format_word(memory, run.text, text);
        text += ' ';
        for (;;) {
            if (written) {
                file.write(text);
            } else {
                report_unwritten_word(memory, address, run.text);
            }
            if (address++ == run.last) {
                break;
            }
            begin_group_at(address, file);
        }
    }
}

void format_hexadecimal_word(std::string_view word, std::uint32_t width, std::string& text) {
    const std::size_t digits = width == 0 ? word.size() : (std::size_t{width} + 3) / 4;
    const std::string_view kept = word.substr(word.size() - std::min(word.size(), digits));
    text.assign(digits - kept.size(), '0');
    for (const char character : kept) {
        text += written_digits[static_cast<unsigned char>(character)];
    }
    if (width % 4 != 0) {
        text.front() = low_bits(text.front(), width % 4);
    }
}

bool convert_word_to_hexadecimal(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width,
                                 std::string& text) {
    return kvr_radix_conversion(std::string(word), &text, radix, RADIX_HEX, width);
}

} // namespace kvr
