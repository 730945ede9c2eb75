#include "kvr/memory/rif_writer.h"

#include "kvr/numeric/radix_conversion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

namespace kvr {

namespace {

constexpr std::uint32_t words_a_group = 8;
constexpr std::string_view upper_digits = "0123456789ABCDEF";

/// How each character of a hexadecimal word is written: what is no digit is "0".
constexpr std::array<char, 256> make_written_digits() {
    std::array<char, 256> written{};
    written.fill('0');
    for (const char same : std::string_view("123456789ABCDEFX")) {
        written[static_cast<unsigned char>(same)] = same;
    }
    for (const char lower : std::string_view("abcdefx")) {
        written[static_cast<unsigned char>(lower)] = static_cast<char>(lower - 'a' + 'A');
    }
    return written;
}

constexpr std::array<char, 256> written_digits = make_written_digits();

/// The low @p bits (1 to 3) of a written digit, as a digit; a don't-care digit stays one.
char low_bits(char digit, std::uint32_t bits) {
    const std::size_t value = upper_digits.find(digit);
    return value == upper_digits.npos ? digit : upper_digits[value & ((1U << bits) - 1U)];
}

/// Formats a word of @p memory in the way that fits its radix. False when there is none.
bool format_word(const rif_memory& memory, std::string_view word, std::string& text) {
    if (memory.memory_radix == RADIX_HEX) {
        format_hexadecimal_word(word, memory.word_size, text);
        return true;
    }
    return convert_word_to_hexadecimal(word, memory.memory_radix, memory.word_size, text);
}

void write_group_header(std::uint32_t address, output_file& file) {
    constexpr std::size_t longest = 16;
    char* const start = file.room(longest);
    char* end = start;
    *end++ = '\n';
    *end++ = '@';
    end = std::to_chars(end, start + longest, address, 16).ptr;
    *end++ = '\n';
    file.used(static_cast<std::size_t>(end - start));
}

void report_unwritten_word(const rif_memory& memory, std::uint32_t address, std::string_view word) {
    memory.report("Data width is wider than the specified word size of the RIF file. Data value at address " +
                  decimal(address) + " is " + std::string(word) + " word size is " +
                  decimal(memory.word_size));
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
        const word_run run = memory.data_words.run_at(address);
        const bool written = format_word(memory, run.text, text);
        text += ' ';
        for (; address <= run.last; ++address) {
            if (address % words_a_group == 0) {
                write_group_header(address, file);
            }
            if (written) {
                file.write(text);
            } else {
                report_unwritten_word(memory, address, run.text);
            }
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
