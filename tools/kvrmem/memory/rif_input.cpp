#include "tools/kvrmem/memory/rif_input.h"

#include "kvr/numeric/scanned_number.h"
#include "tools/kvrmem/memory/rif_line.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::uint32_t largest_size = std::numeric_limits<std::uint32_t>::max();

struct rif_place {
    std::uint64_t line;
    std::size_t column;
};

[[noreturn]] void fail_at(const input_file& file, const rif_place& place, const std::string& what) {
    throw tool_error(exit_code::bad_input,
                     fmt::format("{}:{}:{}: error: {}", file.name(), place.line, place.column, what));
}

/// The address of the line @p line, which holds an "@".
std::uint64_t parse_address(const input_file& file, std::string_view line, std::uint64_t number) {
    const rif_address_line parts = split_rif_address(line);
    const kvr::scanned_number address = kvr::scan_number(parts.digits, 16);
    if (!parts.is_proper || !address.is_address()) {
        fail_at(file, {number, parts.text.begin + 1},
                fmt::format("'{}' is no '@' with a hexadecimal address of at most 32 bits", parts.text.text));
    }
    return address.magnitude;
}

/// Calls @p take with the address, text and place of every word of @p file.
template <class Take>
void for_each_word(const input_file& file, Take&& take) {
    kvr::line_source lines = file.lines(kvr::line_source::unlimited);
    std::uint64_t address = 0;
    for (std::uint64_t number = 1; !lines.at_end(); ++number) {
        const std::string_view raw = lines.next_line();
        const std::string_view line = kvr::without_carriage_return(raw, lines.line_had_newline());
        if (is_rif_address_line(line)) {
            address = parse_address(file, line, number);
            continue;
        }
        for_each_rif_word(line, [&](const rif_piece& word) {
            take(address, word.text, rif_place{number, word.begin + 1});
            ++address;
        });
    }
    file.require_whole(lines);
}

std::string upper_case(std::string_view text) {
    std::string result(text);
    for (char& character : result) {
        if (character >= 'a' && character <= 'z') {
            character = static_cast<char>(character - 'a' + 'A');
        }
    }
    return result;
}

/// Throws for the first word of the file that is no word of @p width bits.
[[noreturn]] void fail_at_first_bad_word(const input_file& file, std::uint32_t width) {
    std::string word;
    for_each_word(file, [&](std::uint64_t, std::string_view text, const rif_place& place) {
        const auto error = make_word(text, RADIX_HEX, width, word);
        if (error) {
            fail_at(file, place, describe(*error, text, RADIX_HEX, width));
        }
    });
    throw tool_error(exit_code::bad_input, file.name() + ": changed while it was read");
}

void require_some_width(const input_file& file, std::uint64_t longest) {
    if (longest == 0) {
        throw tool_error(exit_code::bad_input, file.name() + ": error: the file holds no word");
    }
}

} // namespace

memory_image read_rif(const input_file& file, const input_options& options) {
    memory_image image;
    image.format = FILE_TYPE_RIF;
    image.words.resize(options.depth.value_or(largest_size), "");
    std::size_t longest = 0;
    for_each_word(file, [&](std::uint64_t address, std::string_view text, const rif_place& place) {
        if (address >= image.words.size()) {
            fail_at(file, place,
                    fmt::format("address {} is beyond the addresses 0 to {} of the memory", address,
                                image.words.size() - 1));
        }
        longest = std::max(longest, text.size());
        image.words.set(static_cast<std::uint32_t>(address), upper_case(text));
    });
    require_some_width(file, longest);
    if (longest > widest_word / bits_per_hex_digit) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: error: a word has {} digits; kvrmem takes up to {}", file.name(),
                                     longest, widest_word / bits_per_hex_digit));
    }
    image.width = options.width.value_or(static_cast<std::uint32_t>(longest * bits_per_hex_digit));
    image.note = options.width ? "" : "taken from the longest word";
    const bool all_words = image.words.transform([&image](std::string_view text, std::string& word) {
        word.clear();
        return text.empty() || !make_word(text, RADIX_HEX, image.width, word);
    });
    if (!all_words) {
        fail_at_first_bad_word(file, image.width);
    }
    return image;
}

std::uint64_t rif_line_that_sets(const input_file& file, std::uint32_t address) {
    std::uint64_t found = 0;
    for_each_word(file, [&](std::uint64_t at, std::string_view, const rif_place& place) {
        if (at == address) {
            found = place.line;
        }
    });
    return found;
}

} // namespace kvrmem
