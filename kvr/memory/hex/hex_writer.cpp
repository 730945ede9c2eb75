#include "kvr/memory/hex/hex_writer.h"

#include "kvr/memory/hex/fast_hex_rows.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_record.h"
#include "kvr/memory/io/digit_pairs.h"
#include "kvr/memory/io/output_file.h"
#include "kvr/numeric/digit_value.h"
#include "kvr/numeric/radix_conversion.h"
#include "kvr/util/letter_case.h"

#include <algorithm>
#include <array>

namespace kvr {

namespace {

constexpr std::uint32_t words_per_page = 65536;
constexpr std::string_view end_record = ":00000001ff\n";

using character_map = std::array<char, 256>;

constexpr character_map make_character_map(bool in_lower_case) {
    character_map map{};
    for (std::size_t i = 0; i < map.size(); ++i) {
        const auto character = static_cast<char>(i);
        map[i] = in_lower_case ? lower_case_of(character) : character;
    }
    return map;
}

constexpr character_map as_it_is = make_character_map(false);
constexpr character_map to_lower = make_character_map(true);

char* put_byte(char* room, std::uint32_t byte) noexcept {
    room[0] = lower_hex_digits[byte >> 4 & 0xF];
    room[1] = lower_hex_digits[byte & 0xF];
    return room + 2;
}

char* put_text(char* room, std::string_view text) noexcept {
    return std::copy(text.begin(), text.end(), room);
}

/// Returns the checksum digits, which make the bytes add up to 0 modulo 256.
std::string checksum_of(std::uint32_t sum_of_other_bytes) {
    std::string digits;
    format_hex_value((0 - sum_of_other_bytes) & 0xFF, digits, 2);
    return digits;
}

void write_zeros(output_file& file, std::size_t count) {
    constexpr std::string_view zeros = "0000000000000000000000000000000000000000000000000000000000000000";
    for (; count > zeros.size(); count -= zeros.size()) {
        file.write(zeros);
    }
    file.write(zeros.substr(0, count));
}

std::size_t missing_digits(const hex_record_layout& layout, std::string_view word) noexcept {
    const std::size_t digits = std::size_t{2} * layout.bytes_per_word;
    return digits > word.size() ? digits - word.size() : 0;
}

std::string mapped(std::string_view word, const char* map) {
    std::string text(word);
    for (char& character : text) {
        character = map[static_cast<unsigned char>(character)];
    }
    return text;
}

/// Returns the hexadecimal digits of @p word, which is written in @p radix. The record adds leading zeros up
/// to the word size and more.
std::string hex_digits_of(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t word_size) {
    std::string bits = convert_to_binary_string(mapped(word, to_lower.data()), static_cast<int>(radix));
    if (word_size != 0 && bits.size() > word_size) {
        bits.erase(0, bits.size() - word_size);
    }
    return convert_from_binary_string(bits, RADIX_HEX);
}

/// Writes words in sequence from address 0 on, each as often as requested.
class word_writer {
public:
    word_writer(output_file& output, const hex_record_layout& record_layout)
        : file(output),
          layout(record_layout),
          rows(record_layout.bytes_per_word, letter_case::lower) {}

    /// Writes the hexadecimal words of @p row.
    void write(const word_row& row) {
        std::uint32_t written = 0;
        std::uint32_t at_once = 1;
        while (written < row.count && at_once != 0) {
            begin_page_if_full();
            at_once = rows.write(row.part(written, row.count - written), address, file);
            address += at_once;
            written += at_once;
        }
        for (; written < row.count; ++written) {
            write_word(row[written]);
        }
    }

    void write(std::string_view word, std::uint64_t count) {
        for (; count > 0; --count) {
            write_word(word);
        }
    }

private:
    void write_word(std::string_view word) {
        begin_page_if_full();
        const std::size_t size =
            format_fast_hex_record(layout, address, word, file.room(output_file::room_limit));
        if (size != 0) {
            file.used(size);
        } else {
            write_hex_record(layout, address, word, file);
        }
        ++address;
    }

    void begin_page_if_full() {
        if (address == words_per_page) {
            write_page_record(++page);
            address = 0;
        }
    }

    void write_page_record(std::uint32_t number) {
        std::string digits;
        const std::int32_t sum = format_hex_value(number, digits, 4);
        constexpr std::uint32_t length_and_type = 2 + 4;
        file.write(":02000004" + digits + checksum_of(static_cast<std::uint32_t>(sum) + length_and_type) +
                   '\n');
    }

    output_file& file;
    const hex_record_layout& layout;
    fast_hex_rows rows;
    std::uint32_t address = 0; ///< within the page
    std::uint32_t page = 0;
};

void write_words(const hex_memory& memory, output_file& file) {
    const bool is_hex = memory.memory_radix == RADIX_HEX;
    const hex_record_layout layout(memory.bytes_per_word(), is_hex);
    word_writer writer(file, layout);
    for (std::uint64_t address = 0; address < memory.data_words.size();) {
        const word_row row =
            is_hex ? memory.data_words.row_at(static_cast<std::uint32_t>(address)) : word_row();
        if (row.count != 0 && row.length != 0) {
            writer.write(row);
            address += row.count;
            continue;
        }
        const word_run run = memory.data_words.run_at(static_cast<std::uint32_t>(address));
        const std::uint64_t count = std::uint64_t{run.last} - run.first + 1;
        address += count;
        if (run.text.empty()) {
            continue;
        }
        if (is_hex) {
            writer.write(run.text, count);
        } else {
            writer.write(hex_digits_of(run.text, memory.memory_radix, memory.word_size), count);
        }
    }
}

} // namespace

bool write_hex_file(hex_memory& memory) {
    output_file file = output_file::create(memory.file_name);
    memory.file_not_found = !file.is_open();
    if (memory.file_not_found) {
        memory.report_not_found();
        memory.error_occurred = true;
        return false;
    }
    write_words(memory, file);
    file.write(end_record);
    const bool written = file.close();
    if (!written) {
        memory.report_write_failure();
    }
    memory.error_occurred = !written;
    return written;
}

std::int32_t format_hex_value(std::uint32_t value, std::string& out, std::uint32_t width) {
    out.clear();
    do {
        out.insert(out.begin(), lower_hex_digits[value & 0xF]);
        value >>= 4;
    } while (value != 0);
    if (out.size() < width) {
        out.insert(0, width - out.size(), '0');
    }
    std::uint32_t sum = 0;
    for (std::size_t i = 0; i < out.size(); i += 2) {
        sum += hex_number(std::string_view(out).substr(i, 2));
    }
    return static_cast<std::int32_t>(sum);
}

hex_record_layout::hex_record_layout(std::uint32_t bytes, bool lower_case)
    : bytes_per_word(bytes),
      data_digits(lower_case ? to_lower.data() : as_it_is.data()) {
    format_hex_value(bytes, length_digits, 2);
}

std::size_t format_fast_hex_record(const hex_record_layout& layout, std::uint32_t address,
                                   std::string_view word, char* room) noexcept {
    const std::size_t zeros = missing_digits(layout, word);
    const std::size_t around_data = 1 + layout.length_digits.size() + 4 + 2 + 2 + 1;
    if ((zeros + word.size()) % 2 != 0 || around_data + zeros + word.size() > output_file::room_limit) {
        return 0;
    }
    char* end = room;
    *end++ = ':';
    end = put_text(end, layout.length_digits);
    end = put_byte(end, address >> 8);
    end = put_byte(end, address);
    end = put_text(end, "00");
    end = std::fill_n(end, zeros, '0');
    std::uint32_t seen = 0;
    std::uint32_t sum = layout.bytes_per_word + (address >> 8) + (address & 0xFF);
    std::uint32_t weight = zeros % 2 == 0 ? 16 : 1;
    for (const char character : word) {
        const std::uint32_t digit = digit_value(character);
        seen |= digit;
        sum += weight * digit;
        weight = 17 - weight;
        *end++ = layout.data_digits[static_cast<unsigned char>(character)];
    }
    end = put_byte(end, 0 - sum);
    *end++ = '\n';
    return seen < 16 ? static_cast<std::size_t>(end - room) : 0;
}

void write_hex_record(const hex_record_layout& layout, std::uint32_t address, std::string_view word,
                      output_file& file) {
    constexpr std::size_t sum_piece = 8;
    const std::string data = mapped(word, layout.data_digits);
    const std::size_t zeros = missing_digits(layout, data);
    // Whole pieces of zeros add nothing to the sum; the remaining zeros shift the pieces of the word.
    const std::uint32_t data_sum = sum_of_bytes(std::string(zeros % sum_piece, '0') + data);
    std::string address_field;
    const std::int32_t address_sum = format_hex_value(address, address_field, 4);
    file.write(":" + layout.length_digits + address_field + "00");
    write_zeros(file, zeros);
    file.write(data);
    file.write(checksum_of(data_sum + layout.bytes_per_word + static_cast<std::uint32_t>(address_sum)));
    file.write('\n');
}

} // namespace kvr
