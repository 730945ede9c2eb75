#include "kvr/numeric/digit_value.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/image/hex_words.h"
#include "kvrimage/image/word_search.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/files/shown_runs.h"
#include "tools/kvrmem/files/words_as_json.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/standard_output.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::memory_image;
using kvrimage::word;

constexpr std::uint32_t bits_per_byte = 8;
constexpr std::uint32_t widest_line = 80;
constexpr std::uint32_t most_words_a_line = 16;
constexpr std::size_t column_title_size = 2; // "+F"

/// Returns the characters of a word in the text column; 0 if words are not text.
std::uint32_t characters_of_word(std::uint32_t width) {
    constexpr std::uint32_t ascii = 7;
    return width == ascii ? 1 : width % bits_per_byte == 0 ? width / bits_per_byte : 0;
}

/// Returns the byte of @p value above its lowest @p bits_below bits; NUL if it is not ASCII or has don't-care
/// bits.
char character_at(const word& value, std::uint32_t bits_below) {
    unsigned byte = 0;
    for (std::uint32_t bit = std::min(bits_below + bits_per_byte, value.width()); bit > bits_below; --bit) {
        const char digit = value.bit(bit - 1);
        byte = digit == 'X' ? 0x80U : 2 * byte + (digit == '1' ? 1U : 0U);
    }
    return byte < 0x80U ? static_cast<char>(byte) : '\0';
}

/// Returns the bytes of @p value as ASCII, most significant first; "." for unprintable bytes.
std::string characters_of(const word& value, std::size_t count) {
    std::string text(count, '\0');
    if (std::optional<std::string> bytes = value.to_bytes(kvrimage::byte_order::big)) {
        text = *std::move(bytes);
    } else {
        for (std::size_t index = 0; index < count; ++index) {
            text[index] = character_at(value, static_cast<std::uint32_t>(count - 1 - index) * bits_per_byte);
        }
    }
    std::ranges::replace_if(
        text, [](char byte) { return byte < ' ' || byte > '~'; }, '.');
    return text;
}

/// Appends the characters of @p digits, two digits each, like characters_of().
void append_characters(std::string_view digits, std::string& text) {
    for (std::size_t at = 0; at < digits.size(); at += 2) {
        const unsigned high = kvr::digit_value(digits[at]);
        const unsigned low = kvr::digit_value(digits[at + 1]);
        const unsigned byte = high << 4U | low;
        const bool is_shown = low < kvr::dont_care_digit && byte >= ' ' && byte <= '~';
        text += is_shown ? static_cast<char>(byte) : '.';
    }
}

/// The words of a table row.
struct row_of_words {
    std::string hex_words;                             ///< all words with all their digits; "": see others
    std::vector<std::optional<kvrimage::word>> others; ///< used if not all words can be shown so

    friend bool operator==(const row_of_words&, const row_of_words&) = default;
};

/// The table: one line for each row of words, "*" for rows equal to the previous one.
class dump_table {
public:
    dump_table(const kvrimage::read_result& memory, const address_range& shown, const word_radix& shown_radix,
               std::optional<std::uint32_t> words_a_line, const painter& colors)
        : result(memory),
          image(*memory.image),
          range(shown),
          radix(shown_radix),
          paint(colors),
          digits(most_characters_of_word(radix, image.width())),
          word_size(std::max(most_characters(), column_title_size)),
          address_size(std::max<std::size_t>(fmt::format("{:X}", range.last + 1).size(), 4)),
          text_size(characters_of_word(image.width())),
          columns(words_a_line.value_or(fitting_columns())),
          is_hex(radix.digits == kvrimage::radix::hex) {}

    void print() {
        print_head();
        for (std::uint64_t row = range.first;;) {
            const std::uint64_t rows = print_row(row) ? 1 : like_rows(row);
            if ((range.last - row) / columns < rows) {
                break;
            }
            row += rows * columns;
        }
        output.write(paint.paint(style::dim, fmt::format("{:0{}X}", range.last + 1, address_size)) + "\n");
        output.finish();
    }

private:
    /// Returns the length of the longest word shown. A word with a don't-care bit that the radix cannot
    /// represent is shown in binary with "0b".
    [[nodiscard]] std::size_t most_characters() const {
        const auto unshown =
            kvrimage::find_unshown_word(image.words(), image.width(), radix.digits,
                                        range.first - image.base(), range.last - image.base() + 1);
        return unshown ? std::max<std::size_t>(digits, image.width() + 2) : digits;
    }
    [[nodiscard]] std::uint32_t fitting_columns() const {
        std::uint32_t fitting = most_words_a_line;
        while (fitting > 1 && address_size + fitting * (1 + word_size + text_size) + 4 > widest_line) {
            fitting /= 2;
        }
        return fitting;
    }
    void print_head() {
        std::string titles = fmt::format("{:{}} ", "", address_size);
        for (std::uint32_t column = 0; column < columns; ++column) {
            titles += fmt::format(" {:>{}}", fmt::format("+{:X}", column), word_size);
        }
        output.write(paint.paint(style::dim, titles) + "\n");
    }
    /// Sets @p words to the row from address @p row on.
    void find_words(std::uint64_t row, row_of_words& words) const {
        const address_range addresses{row, row + std::min<std::uint64_t>(columns - 1, range.last - row)};
        words.hex_words.clear();
        words.others.clear();
        if (is_hex && append_hex_words(image, addresses, words.hex_words)) {
            return;
        }
        for (const kvrimage::run& run : image.runs(addresses)) {
            words.others.insert(words.others.end(), run.addresses.last - run.addresses.first + 1, run.value);
        }
    }
    /// Prints a row. Returns false if it equals the previous one; the first such row prints "*".
    bool print_row(std::uint64_t row) {
        find_words(row, words_here);
        if (words_here == before && !is_unreadable(row, row + columns - 1)) {
            output.write(folding ? "" : "*\n");
            folding = true;
            return false;
        }
        folding = false;
        std::swap(before, words_here);
        print_words(row);
        return true;
    }
    void print_words(std::uint64_t row) {
        line.clear();
        characters.clear();
        append_address(row);
        line += ' ';
        const std::size_t count = before.others.empty() ? append_hex_cells() : append_cells(row);
        if (text_size > 0) {
            line.append((columns - count) * (word_size + 1), ' ');
            line.append("  |").append(characters).append("|");
        }
        line += '\n';
        output.write(line);
    }
    void append_address(std::uint64_t address) {
        if (paint.colored()) {
            line += paint.paint(style::dim, fmt::format("{:0{}X}", address, address_size));
        } else {
            fmt::format_to(std::back_inserter(line), "{:0{}X}", address, address_size);
        }
    }
    /// Append the cells of a row and collect its characters. Both return the number of words.
    std::size_t append_hex_cells() {
        for (std::size_t at = 0; at < before.hex_words.size(); at += digits) {
            line.append(1 + word_size - digits, ' ').append(before.hex_words, at, digits);
        }
        if (text_size > 0) {
            append_characters(before.hex_words, characters);
        }
        return before.hex_words.size() / digits;
    }
    std::size_t append_cells(std::uint64_t row) {
        for (std::size_t index = 0; index < before.others.size(); ++index) {
            const std::optional<word>& value = before.others[index];
            line += ' ';
            line += word_cell(value, row + index);
            if (text_size > 0) {
                characters += value ? characters_of(*value, text_size) : std::string(text_size, ' ');
            }
        }
        return before.others.size();
    }
    /// Returns how many rows from @p row on, at least 1, consist of one repeated word or of words that repeat
    /// from row to row. They equal the previous row and need no comparison.
    [[nodiscard]] std::uint64_t like_rows(std::uint64_t row) const {
        const kvrimage::repetition found = image.repetition_at(row);
        const std::uint64_t last = std::min(found.last, range.last);
        const bool repeats = columns % found.period == 0 && !is_unreadable(row, last);
        return repeats ? std::max<std::uint64_t>((last - row + 1) / columns, 1) : 1;
    }
    [[nodiscard]] bool is_unreadable(std::uint64_t first, std::uint64_t last) const {
        bool found = false;
        for_each_part({first, std::min(last, range.last)}, result.unreadable,
                      [&found](const address_range&, bool is_unreadable) { found = found || is_unreadable; });
        return found;
    }
    [[nodiscard]] std::string word_cell(const std::optional<word>& value, std::uint64_t address) const {
        if (value) {
            return fmt::format("{:>{}}", shown_or_gap(value, radix), word_size);
        }
        const bool has_all_digits =
            radix.digits != kvrimage::radix::dec && radix.digits != kvrimage::radix::uns;
        const std::string gap(has_all_digits ? digits : 1, is_unreadable(address, address) ? '?' : '-');
        return paint.paint(style::dim, fmt::format("{:>{}}", gap, word_size));
    }

    const kvrimage::read_result& result;
    const memory_image& image;
    address_range range;
    word_radix radix;
    const painter& paint;
    std::size_t digits;    ///< of a word
    std::size_t word_size; ///< of a column
    std::size_t address_size;
    std::uint32_t text_size;
    std::uint32_t columns;
    bool is_hex;
    row_of_words words_here;
    row_of_words before;    ///< last row printed
    std::string line;       ///< the line under construction
    std::string characters; ///< text column of the line
    output_stream output;
    bool folding = false;
};

/// A line is built in memory, so its length is limited.
void require_short_lines(const arguments& given, const word_radix& radix, std::uint32_t width) {
    constexpr std::size_t longest_line = std::size_t{16} << 20U;
    const std::uint64_t columns = given.columns.value_or(1);
    if (columns > 1 && columns * most_characters_of_word(radix, width) > longest_line) {
        usage_error(fmt::format("--columns {}: a line of that many words of {} would be longer than {} MiB",
                                columns, counted(width, "bit"), longest_line >> 20U));
    }
}

exit_code dump_memory(const arguments& given, const memory_input& input) {
    const word_radix radix = given.radix.value_or(word_radix{});
    require_fitting(radix, input.image().width());
    if (given.json) {
        const address_range range = range_within(given, input.image());
        static_cast<void>(print_words_as_json("kvrmem-dump-1", input, std::span(&range, 1), radix));
        return exit_code::success;
    }
    require_short_lines(given, radix, input.image().width());
    const painter paint = painter_for(stdout, given.color);
    dump_table(input.result, range_within(given, input.image()), radix, given.columns, paint).print();
    return exit_code::success;
}

/// Returns " at 6:5: error: ..." without the name of git's temporary file, which varies.
std::string without_name(const std::string& message, const std::string& path) {
    const std::string name = kvrimage::title_of_input(path) + ":";
    const std::string rest = message.starts_with(name) ? message.substr(name.size()) : " " + message;
    return (rest.starts_with(' ') ? ":" : " at ") + rest;
}

/// Returns whether @p error is caused by the file, not by the options.
bool is_about_the_file(const arguments& given, const tool_error& error) {
    // Without --from, the format may also be undetermined.
    const bool may_be_unknown = given.from == nullptr && dynamic_cast<const broken_file*>(&error) == nullptr;
    return error.code() == exit_code::bad_input || (error.code() == exit_code::wrong_usage && may_be_unknown);
}

/// Reads the memory. If the file is not readable as a memory, prints the file unchanged and returns nothing:
/// git treats a nonzero exit code as a crash and skips the following files.
std::optional<memory_input> read_or_print(const arguments& given) {
    try {
        return read_memory(given, given.files[0]);
    } catch (const tool_error& error) {
        if (!is_about_the_file(given, error)) {
            throw;
        }
        print(fmt::format("* cannot be read as a memory{}\n", without_name(error.message(), given.files[0])));
    }
    const kvrimage::input_file file(given.files[0]);
    const std::string_view contents = file.contents();
    if (contents.find('\0') == std::string_view::npos) {
        print(contents);
    }
    return std::nullopt;
}

exit_code dump(const arguments& given) {
    if (!given.git) {
        return dump_memory(given, read_memory(given, given.files[0]));
    }
    const std::optional<memory_input> input = read_or_print(given);
    return input ? dump_memory(given, *input) : exit_code::success;
}

constexpr auto dump_options =
    united_options(reading_options, std::array{option_id::radix, option_id::columns, option_id::range,
                                               option_id::json, option_id::keep_going, option_id::git_text});

} // namespace

const command dump_command = {
    "dump",
    "FILE",
    "Show a memory as a table of addresses, words and characters.",
    "  $ kvrmem dump sine.mif\n"
    "  $ kvrmem dump --radix dec --columns 8 sine.mif\n"
    "  $ kvrmem dump --range 0x40..0x7F boot.hex\n"
    "  $ git config diff.memory.textconv 'kvrmem dump --git'\n",
    "Addresses are hexadecimal, and words too unless --radix selects another radix. '--'\n"
    "is a word that is not set, and with --keep-going '?' is a word in doubt. Rows equal\n"
    "to the previous one are folded into '*'. The last line is the address after the last\n"
    "word. --json has an entry for each run of equal words instead.\n",
    1,
    1,
    dump_options,
    dump};

} // namespace kvrmem
