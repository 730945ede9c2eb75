#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/standard_output.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <string>

namespace kvrmem {

namespace {

constexpr std::uint32_t widest_line = 80;
constexpr std::uint32_t most_words_a_line = 16;
constexpr std::size_t column_title_size = 2; // "+F"

/// Characters of a word that the text column shows; 0 when words are no text.
std::uint32_t characters_of_word(std::uint32_t width) {
    constexpr std::uint32_t ascii = 7;
    return width == ascii ? 1 : width % bits_per_byte == 0 ? width / bits_per_byte : 0;
}

/// The table: a line for every row of words, "*" for rows that are like the one before.
class dump_table {
public:
    dump_table(const memory_image& memory, const address_range& shown, const word_radix& shown_radix,
               std::optional<std::uint32_t> words_a_line, const painter& colors)
        : image(memory),
          range(shown),
          radix(shown_radix),
          paint(colors),
          digits(most_characters_of_word(radix, image.width)),
          word_size(std::max(digits, column_title_size)),
          address_size(std::max<std::size_t>(fmt::format("{:X}", std::uint64_t{range.last} + 1).size(), 4)),
          text_size(characters_of_word(image.width)),
          columns(words_a_line.value_or(fitting_columns())) {}

    void print() {
        print_head();
        for (std::uint64_t row = range.first; row <= range.last;) {
            row += print_row(row) ? columns : columns * skip_like_rows(row);
        }
        output.write(
            paint.paint(style::dim, fmt::format("{:0{}X}", std::uint64_t{range.last} + 1, address_size)) +
            "\n");
        output.finish();
    }

private:
    [[nodiscard]] std::uint32_t fitting_columns() const {
        std::uint32_t fitting = most_words_a_line;
        while (fitting > 1 && address_size + fitting * (1 + word_size + text_size) + 4 > widest_line) {
            fitting /= 2;
        }
        return fitting;
    }
    void print_head() {
        std::string line = fmt::format("{:{}} ", "", address_size);
        for (std::uint32_t column = 0; column < columns; ++column) {
            line += fmt::format(" {:>{}}", fmt::format("+{:X}", column), word_size);
        }
        output.write(paint.paint(style::dim, line) + "\n");
    }
    /// False, with "*" in its place where it is the first such, when the row is like the one before.
    bool print_row(std::uint64_t row) {
        if (row != range.first && is_like_the_row_before(row)) {
            output.write(folding ? "" : "*\n");
            folding = true;
            return false;
        }
        folding = false;
        std::string line = paint.paint(style::dim, fmt::format("{:0{}X}", row, address_size)) + " ";
        std::string characters;
        for (std::uint64_t address = row; address < row + columns; ++address) {
            line += ' ';
            if (address <= range.last) {
                line += word_cell(address);
                if (text_size > 0) {
                    characters += characters_at(address);
                }
            } else {
                line.append(word_size, ' ');
            }
        }
        if (text_size > 0) {
            line += "  |" + characters + "|";
        } else {
            line.erase(line.find_last_not_of(' ') + 1);
        }
        output.write(line + "\n");
        return true;
    }
    [[nodiscard]] bool is_like_the_row_before(std::uint64_t row) const {
        if (row + columns - 1 > range.last) {
            return false;
        }
        for (std::uint64_t address = row; address < row + columns; ++address) {
            if (word_at(address) != word_at(address - columns)) {
                return false;
            }
        }
        return true;
    }
    /// How many rows from @p row on, at least 1, hold one and the same word throughout, or words that repeat
    /// from row to row: all of them are like the row before, without a look at each.
    [[nodiscard]] std::uint64_t skip_like_rows(std::uint64_t row) const {
        const kvr::word_cycle cycle = image.words.cycle_at(static_cast<std::uint32_t>(row));
        if (cycle.period > 1 && columns % cycle.period == 0) {
            return std::max<std::uint64_t>(
                (std::min<std::uint64_t>(cycle.last, range.last) + 1 - row) / columns, 1);
        }
        const kvr::word_run run = image.words.run_at(static_cast<std::uint32_t>(row));
        return std::max<std::uint64_t>((std::min<std::uint64_t>(run.last, range.last) + 1 - row) / columns,
                                       1);
    }
    [[nodiscard]] std::string_view word_at(std::uint64_t address) const {
        return image.words[static_cast<std::uint32_t>(address)];
    }
    [[nodiscard]] std::string word_cell(std::uint64_t address) const {
        const std::string_view word = word_at(address);
        const bool has_all_digits =
            radix.radix == RADIX_HEX || radix.radix == RADIX_OCT || radix.radix == RADIX_BIN;
        if (word.empty()) {
            const std::string gap(has_all_digits ? digits : 1, '-');
            return paint.paint(style::dim, fmt::format("{:>{}}", gap, word_size));
        }
        std::string text;
        show_word_or_gap(word, radix, image.width, text);
        return fmt::format("{:>{}}", text, word_size);
    }
    /// The bytes of a word as ASCII, the most significant one first; "." for what cannot be shown.
    [[nodiscard]] std::string characters_at(std::uint64_t address) const {
        const std::string_view word = word_at(address);
        std::string characters(text_size, word.empty() ? ' ' : '.');
        std::string bits;
        if (word.empty()) {
            return characters;
        }
        show_word(word, RADIX_BIN, image.width, bits);
        bits.insert(0, std::size_t{text_size} * bits_per_byte - bits.size(), '0');
        for (std::size_t index = 0; index < characters.size(); ++index) {
            const char byte =
                character_of(std::string_view(bits).substr(index * bits_per_byte, bits_per_byte));
            characters[index] = byte >= ' ' && byte <= '~' ? byte : '.';
        }
        return characters;
    }
    static char character_of(std::string_view bits) {
        unsigned value = 0;
        for (const char bit : bits) {
            value = bit == 'X' ? 0x80U : 2 * value + (bit == '1' ? 1U : 0U);
        }
        return value < 0x80U ? static_cast<char>(value) : '\0';
    }

    const memory_image& image;
    address_range range;
    word_radix radix;
    const painter& paint;
    std::size_t digits;    ///< of a word
    std::size_t word_size; ///< of the column that it stands in
    std::size_t address_size;
    std::uint32_t text_size;
    std::uint32_t columns;
    output_stream output;
    bool folding = false;
};

/// A line is put together in memory.
void require_short_lines(const arguments& given, const word_radix& radix, std::uint32_t width) {
    constexpr std::size_t longest_line = std::size_t{16} << 20U;
    const std::size_t columns = given.columns.value_or(1);
    if (columns > 1 && columns * most_characters_of_word(radix, width) > longest_line) {
        usage_error(fmt::format("--columns {}: a line of so many words of {} would be longer than {} MiB",
                                columns, counted(width, "bit"), longest_line >> 20U));
    }
}

exit_code dump(const arguments& given) {
    const input_file input(given.files[0]);
    const memory_image image = read_memory(input, options_for(given, given.files[0]));
    const word_radix radix = given.radix.value_or(word_radix{RADIX_HEX});
    require_fitting(radix, image.width);
    require_short_lines(given, radix, image.width);
    const painter paint = painter_for(stdout, given.color);
    dump_table(image, range_within(given, image), radix, given.columns, paint).print();
    return exit_code::fine;
}

constexpr std::array dump_options = {option_id::from,  option_id::width,   option_id::depth,
                                     option_id::radix, option_id::columns, option_id::range};

} // namespace

const command dump_command = {
    "dump",
    "FILE",
    "Show a memory as a table of addresses, words and characters.",
    "  $ kvrmem dump sine.mif\n"
    "  $ kvrmem dump --radix dec --columns 8 sine.mif\n"
    "  $ kvrmem dump --range 0x40..0x7F boot.hex\n"
    "  $ git config diff.memory.textconv 'kvrmem dump'\n",
    "Addresses are hexadecimal, words too unless --radix says otherwise; '--' is a\n"
    "word that was never set. Rows like the one above are folded into '*'. The\n"
    "last line is the address behind the last word.\n",
    1,
    1,
    dump_options,
    dump};

} // namespace kvrmem
