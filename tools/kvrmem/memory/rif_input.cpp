#include "tools/kvrmem/memory/rif_input.h"

#include "kvr/memory/rif/rif_reader.h"
#include "kvr/numeric/scanned_number.h"
#include "kvr/util/letter_case.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/rif_line.h"
#include "tools/kvrmem/memory/rif_word_judge.h"
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

/// Ends the read at the first fault.
class rif_fault_thrower : public kvr::read_observer {
public:
    rif_fault_thrower(const input_file& from, std::uint64_t line) : file(from), number(line) {}
    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        fail_at(file, {number, fault.column}, describe_rif_fault(fault, text).message);
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}

private:
    const input_file& file;
    std::uint64_t number;
};

/// Refuses the line @p line where the library does, and tells of the place that it tells.
void require_words_only(const input_file& file, std::string_view line, std::uint64_t number) {
    if (!kvr::is_rif_data(line)) {
        kvr::rif_memory nowhere(nullptr);
        rif_fault_thrower thrower(file, number);
        kvr::line_source source(line);
        kvr::rif_reader(nowhere, &thrower).read(source);
    }
}

/// Calls @p take with the address, text and place of every word of @p file.
/// @throws tool_error at the first line that holds something else.
template <class Take>
void for_each_word(const input_file& file, Take&& take) {
    kvr::line_source lines = file.lines(kvr::line_source::unlimited);
    std::uint64_t address = 0;
    for (std::uint64_t number = 1; !lines.at_end(); ++number) {
        const std::string_view raw = lines.next_line();
        if (lines.line_was_cut()) {
            file.refuse_long_line(number);
        }
        const std::string_view line = kvr::without_carriage_return(raw, lines.line_had_newline());
        if (is_rif_address_line(line)) {
            address = parse_address(file, line, number);
            continue;
        }
        require_words_only(file, line, number);
        for_each_rif_word(line, [&](const rif_piece& word) {
            take(address, word.text, rif_place{number, word.begin + 1});
            ++address;
        });
    }
    file.require_whole(lines);
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
    rif_word_judge judge(options.width);
    for_each_word(file, [&](std::uint64_t address, std::string_view text, const rif_place& place) {
        if (address >= image.words.size()) {
            fail_at(file, place,
                    fmt::format("address {} is beyond the addresses 0 to {} of the memory", address,
                                image.words.size() - 1));
        }
        const auto fault = judge.judge(text);
        if (fault && (options.width || !fault->is_too_wide)) {
            fail_at(file, {place.line, place.column + fault->begin}, fault->message);
        }
        longest = std::max(longest, text.size());
        image.words.set(static_cast<std::uint32_t>(address), kvr::to_upper_case(text));
    });
    require_some_width(file, longest);
    if (longest > widest_word / bits_per_hex_digit) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: error: a word has {} digits; kvrmem takes up to {}", file.name(),
                                     longest, widest_word / bits_per_hex_digit));
    }
    image.width = options.width.value_or(static_cast<std::uint32_t>(longest * bits_per_hex_digit));
    image.note = options.width ? "" : "taken from the longest word";
    require_proportionate_words(file, image.words, image.width);
    // Each of them is a word: it was judged when its line was read.
    image.words.transform([&image](std::string_view text, std::string& word) {
        word.clear();
        return text.empty() || !make_word(text, RADIX_HEX, image.width, word);
    });
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
