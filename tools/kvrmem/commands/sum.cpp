#include "kvrimage/operations/checksum/checksum.h"
#include "tools/kvrmem/command_line/idle_options.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/edit/edit_command.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/numbers/checksum_name.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/counted.h"
#include "tools/kvrmem/platform/json.h"
#include "tools/kvrmem/platform/message.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/standard_output.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::address_range;
using kvrimage::memory_image;
using kvrimage::word;

/// A checksum, and how many words it covers.
struct computed_sum {
    word value;
    std::uint64_t counted_words = 0;
    std::uint64_t left_out = 0; ///< unset words
};

/// The place of a checksum in a memory: one word, or several words with a part each.
struct stored_place {
    const char* option; ///< "--put"
    std::uint64_t first;
};

void require_one_algorithm(const arguments& given) {
    const auto has = [&given](option_id id) {
        return std::ranges::find(given.options, id) != given.options.end();
    };
    if (has(option_id::sha256) && has(option_id::algorithm)) {
        usage_error("--sha256 and --algorithm exclude each other");
    }
}

std::optional<stored_place> place_of(const arguments& given) {
    if (given.put && given.verify) {
        usage_error("--put and --verify exclude each other");
    }
    if (given.put) {
        return stored_place{"--put", *given.put};
    }
    return given.verify ? std::optional(stored_place{"--verify", *given.verify}) : std::nullopt;
}

/// Returns the addresses of a checksum of @p bits bits stored at @p place.
address_range addresses_of(const stored_place& place, std::uint32_t bits, const memory_image& image) {
    if (bits > image.width() && bits % image.width() != 0) {
        usage_error(fmt::format("{}: a checksum of {} bits cannot be cut into words of {}", place.option,
                                bits, image.width()));
    }
    const std::uint64_t words = bits > image.width() ? bits / image.width() : 1;
    const bool is_within = place.first >= image.base() && place.first <= image.last_address() &&
                           words - 1 <= image.last_address() - place.first;
    if (!is_within) {
        usage_error(
            fmt::format("{} {}: a checksum of {} bits takes {} of {}, the memory has the addresses {} to "
                        "{}",
                        place.option, place.first, bits, counted(words, "word"),
                        counted(image.width(), "bit"), image.base(), image.last_address()));
    }
    return {place.first, place.first + words - 1};
}

/// Returns @p all without @p hole.
std::vector<address_range> ranges_without(const address_range& all,
                                          const std::optional<address_range>& hole) {
    if (!hole || hole->last < all.first || hole->first > all.last) {
        return {all};
    }
    std::vector<address_range> parts;
    if (all.first < hole->first) {
        parts.push_back({all.first, hole->first - 1});
    }
    if (hole->last < all.last) {
        parts.push_back({hole->last + 1, all.last});
    }
    return parts;
}

computed_sum compute_sum(const arguments& given, const memory_input& input, const sum_algorithm& what,
                         const std::optional<address_range>& stored) {
    const memory_image& image = input.image();
    kvrimage::checksum_options options;
    options.ranges = ranges_without(range_within(given, image), stored);
    if (options.ranges.empty()) {
        usage_error("there is no word besides those of the checksum");
    }
    options.order = given.order.value_or(input.result.facts.order.value_or(kvrimage::byte_order::little));
    if (given.fill) {
        options.unset = word_of_user(*given.fill, image.width(), "--fill " + *given.fill);
    }
    std::uint64_t words = 0;
    std::uint64_t set = 0;
    for (const address_range& range : options.ranges) {
        words += range.last - range.first + 1;
        set += image.count_set(range);
    }
    show_operation("checksum", input.name());
    try {
        return {what.compute(image, options), given.fill ? words : set, given.fill ? 0 : words - set};
    } catch (const std::domain_error& error) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: error: {}", input.name(), error.what()));
    } catch (const std::invalid_argument& error) {
        usage_error(fmt::format("--algorithm {}: {}", given.algorithm.value_or(""), error.what()));
    }
}

std::string hex_of(const word& value) {
    return value.to_text(kvrimage::radix::hex).value();
}

/// Returns the words of @p stored that hold @p value. In little-endian @p order the first word has the lowest
/// bits.
std::vector<word> words_of_sum(const word& value, const address_range& stored, std::uint32_t width,
                               kvrimage::byte_order order) {
    const std::string bits = value.to_text(kvrimage::radix::bin).value();
    const std::uint64_t count = stored.last - stored.first + 1;
    if (count == 1) {
        return {word::parse(bits, kvrimage::radix::bin, width).value.value()};
    }
    std::vector<word> words;
    for (std::size_t begin = 0; begin < bits.size(); begin += width) {
        words.push_back(word::parse(bits.substr(begin, width), kvrimage::radix::bin, width).value.value());
    }
    if (order == kvrimage::byte_order::little) {
        std::ranges::reverse(words);
    }
    return words;
}

/// Returns whether the words of @p stored are @p words. Reports the first one that differs.
bool is_stored(const memory_input& input, const std::vector<word>& words, const address_range& stored) {
    for (std::size_t index = 0; index < words.size(); ++index) {
        const std::uint64_t address = stored.first + index;
        const std::optional<word> found = input.image()[address];
        if (found != words[index]) {
            print_message(fmt::format("{}: error: the word at address {} is {}, expected {}", input.name(),
                                      address, shown_or_gap(found, {}), hex_of(words[index])));
            return false;
        }
    }
    return true;
}

/// @param verified whether the stored checksum is correct, if --verify was given
void print_sum(const arguments& given, const memory_input& input, const computed_sum& sum,
               std::optional<bool> verified) {
    const std::string name = given.algorithm.value_or("crc-32");
    if (given.json) {
        json_value answer = {{"schema", "kvrmem-sum-1"},  {"file", json_name(input.path)},
                             {"algorithm", name},         {"value", hex_of(sum.value)},
                             {"bits", sum.value.width()}, {"words", sum.counted_words},
                             {"left_out", sum.left_out}};
        if (verified) {
            answer["verified"] = *verified;
        }
        print_json(answer);
        return;
    }
    const std::string left_out =
        sum.left_out == 0 ? "" : fmt::format(", {} not set and omitted", counted(sum.left_out, "word"));
    print(fmt::format("{} {}  {}: {} of {}{}\n", name, hex_of(sum.value), input.name(),
                      counted(sum.counted_words, "word"), counted(input.image().width(), "bit"), left_out));
}

/// Options of sum that affect reading but are not supported by set are rejected.
void require_editable(const arguments& given) {
    if (given.files[0] == "-") {
        usage_error("--put needs a file with a name");
    }
    if (given.output == "-") {
        usage_error("--output -: standard output has the checksum");
    }
    if (given.base) {
        usage_error("--put and --base exclude each other: addresses are those of the file then");
    }
    refuse_idle_options(set_command, given);
}

exit_code run_sum(const arguments& given) {
    require_one_algorithm(given);
    const sum_algorithm what = checksum_of_user(given.algorithm.value_or("crc-32"));
    const std::optional<stored_place> place = place_of(given);
    if (given.output && !given.put) {
        usage_error("--output needs --put");
    }
    if (given.put) {
        require_editable(given);
    }
    memory_input input = read_memory(given, given.files[0]);
    if (given.put) {
        require_edits(input);
        refuse_sizes_said_twice(given, input);
    }
    std::optional<address_range> stored;
    if (place) {
        stored = addresses_of(*place, what.bits, input.image());
    }
    const computed_sum computed = compute_sum(given, input, what, stored);
    if (!stored) {
        print_sum(given, input, computed, std::nullopt);
        return exit_code::success;
    }
    const std::vector<word> words =
        words_of_sum(computed.value, *stored, input.image().width(),
                     given.order.value_or(input.result.facts.order.value_or(kvrimage::byte_order::little)));
    if (given.verify) {
        const bool is_right = is_stored(input, words, *stored);
        print_sum(given, input, computed, is_right);
        return is_right ? exit_code::success : exit_code::negative;
    }
    print_sum(given, input, computed, std::nullopt);
    store_words(given, input, stored->first, words);
    return exit_code::success;
}

constexpr auto sum_options = united_options(
    reading_options,
    std::array{option_id::range, option_id::fill, option_id::algorithm, option_id::sha256, option_id::put,
               option_id::verify, option_id::json, option_id::output, option_id::force_overwrite});

} // namespace

const command sum_command = {
    "sum",
    "FILE",
    "Compute a checksum, store it in the memory, or compare it with a stored one.",
    "  $ kvrmem sum boot.mif\n"
    "  $ kvrmem sum --algorithm crc-16-xmodem --range 0..0xFD boot.mif\n"
    "  $ kvrmem sum --fill 0xFF --put 0xFC boot.mif\n"
    "  $ kvrmem sum --fill 0xFF --verify 0xFC boot.mif\n",
    "The checksum covers the bytes of the words in order of addresses: (width + 7) / 8\n"
    "bytes per word, the lowest byte first unless --endian big is given. Words that are\n"
    "not set are omitted, unless --fill gives them a value. --put and --verify exclude\n"
    "the words that hold the checksum: one word, or as many as it needs, the lowest bits\n"
    "first unless --endian big is given. With --verify the exit code is 1 if they differ.\n"
    "\n"
    "The names of the checksums are\n"
    "{checksums}.\n"
    "sum-N and balance-N add bytes modulo 2^N, word-sum-N and word-balance-N add words; a\n"
    "balance makes the sum 0.\n",
    1,
    1,
    sum_options,
    run_sum};

} // namespace kvrmem
