#include "tools/kvrmem/command_line/option_table.h"

#include "kvrimage/formats/registry.h"
#include "kvrimage/generate/picture_words.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/operations/error_correction/ecc_scheme.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/numbers/checksum_name.h"
#include "tools/kvrmem/numbers/human_number.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <deque>
#include <limits>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::address_unit;
using kvrimage::byte_order;
using kvrimage::format;

constexpr std::uint32_t largest_column_count = 4096;
constexpr std::uint32_t largest_row_count = 1024;
constexpr std::uint32_t largest_picture_row = 1U << 16U;

constexpr const char* radix_choices = "bin oct dec uns hex";
constexpr const char* word_radix_choices = "bin oct dec uns hex fixed:";

[[noreturn]] void refuse(std::string_view name, std::string_view value, std::string_view what) {
    throw tool_error(exit_code::wrong_usage, fmt::format("--{} {}: {}", name, value, what));
}

kvrimage::radix parse_radix(std::string_view name, std::string_view value) {
    const auto radix = kvrimage::radix_of_name(value);
    if (!radix) {
        refuse(name, value, "a radix is bin, oct, dec, uns or hex");
    }
    return *radix;
}

word_radix parse_word_radix(std::string_view name, std::string_view value) {
    const auto radix = word_radix_of_name(value);
    if (!radix) {
        refuse(name, value,
               "a radix is bin, oct, dec, uns, hex, or fixed:I.F with I integer and F fraction bits");
    }
    return *radix;
}

std::uint64_t parse_number(std::string_view name, std::string_view value, std::uint64_t largest) {
    const auto number = read_human_size(value, largest);
    if (!number) {
        refuse(name, value, fmt::format("expected a number from 0 to {}", largest));
    }
    return *number;
}

std::uint64_t parse_size(std::string_view name, std::string_view value, std::uint64_t largest) {
    const auto number = read_human_size(value, largest);
    if (!number || *number == 0) {
        refuse(name, value, fmt::format("expected a number from 1 to {}", largest));
    }
    return *number;
}

/// Parses a 32-bit number.
std::uint32_t parse_small_size(std::string_view name, std::string_view value, std::uint32_t largest) {
    return static_cast<std::uint32_t>(parse_size(name, value, largest));
}

kvrimage::address_range parse_range(std::string_view name, std::string_view value) {
    const auto range = read_address_range(value);
    if (!range) {
        refuse(name, value,
               advice_on_range(value, "a range is FIRST..LAST, for example 0x10..0x1F, or one address"));
    }
    return *range;
}

/// Parses ranges separated by commas.
std::vector<kvrimage::address_range> parse_ranges(std::string_view name, std::string_view value) {
    std::vector<kvrimage::address_range> ranges;
    for (std::size_t begin = 0; begin <= value.size();) {
        const std::size_t end = std::min(value.find(',', begin), value.size());
        ranges.push_back(parse_range(name, value.substr(begin, end - begin)));
        begin = end + 1;
    }
    return ranges;
}

/// Appends ranges to those of earlier uses of the option.
void add_ranges(std::vector<kvrimage::address_range>& ranges, std::string_view name, std::string_view value) {
    const std::vector<kvrimage::address_range> more = parse_ranges(name, value);
    ranges.insert(ranges.end(), more.begin(), more.end());
}

std::uint64_t parse_address(std::string_view name, std::string_view value) {
    return parse_number(name, value, std::numeric_limits<std::uint64_t>::max());
}

kvrimage::bit_order parse_bit_order(std::string_view name, std::string_view value) {
    if (value != "low-first" && value != "high-first") {
        refuse(name, value, "expected low-first or high-first");
    }
    return value == "low-first" ? kvrimage::bit_order::low_first : kvrimage::bit_order::high_first;
}

report_format parse_report_format(std::string_view name, std::string_view value) {
    // In the order of report_format.
    constexpr std::array<std::string_view, 6> report_names = {"text",   "json",  "sarif",
                                                              "github", "junit", "gitlab"};
    const auto found = std::ranges::find(report_names, value);
    if (found == report_names.end()) {
        refuse(name, value, fmt::format("expected one of {}", fmt::join(report_names, ", ")));
    }
    return static_cast<report_format>(found - report_names.begin());
}

kvrimage::overlap_rule parse_overlap(std::string_view name, std::string_view value) {
    // In the order of overlap_rule.
    constexpr std::array<std::string_view, 4> overlap_names = {"error", "same", "first", "last"};
    const auto found = std::ranges::find(overlap_names, value);
    if (found == overlap_names.end()) {
        refuse(name, value, fmt::format("expected one of {}", fmt::join(overlap_names, ", ")));
    }
    return static_cast<kvrimage::overlap_rule>(found - overlap_names.begin());
}

std::vector<std::string_view> scheme_names() {
    std::vector<std::string_view> names;
    for (const kvrimage::ecc_scheme_name& each : kvrimage::ecc_scheme::known()) {
        names.push_back(each.name);
    }
    return names;
}

std::string parse_scheme(std::string_view name, std::string_view value) {
    const std::vector<std::string_view> names = scheme_names();
    if (!value.starts_with("masks:") && std::ranges::find(names, value) == names.end()) {
        refuse(name, value, fmt::format("a scheme is masks:FILE or one of {}", fmt::join(names, ", ")));
    }
    return std::string(value);
}

/// Appends an operation to those of @p into.
template <class Operation>
void add_operation(arguments& into, std::string_view name, const char* value, Operation&& what) {
    into.operations.push_back(
        {value != nullptr ? fmt::format("--{} {}", name, value) : fmt::format("--{}", name),
         std::forward<Operation>(what)});
}

/// Returns the --reshape that option @p name modifies.
reshape_words& reshape_before(arguments& into, std::string_view name) {
    reshape_words* const found = last_reshape(into.operations);
    if (found == nullptr) {
        usage_error(fmt::format("--{} must follow a --reshape", name));
    }
    return *found;
}

address_unit parse_unit(std::string_view name, std::string_view value) {
    if (value != "byte" && value != "word") {
        refuse(name, value, "expected byte or word");
    }
    return value == "byte" ? address_unit::byte : address_unit::word;
}

byte_order parse_order(std::string_view name, std::string_view value) {
    if (value != "little" && value != "big") {
        refuse(name, value, "the byte order is little (lowest byte first) or big");
    }
    return value == "little" ? byte_order::little : byte_order::big;
}

/// Parses names separated by commas.
std::vector<std::string> parse_consumers(std::string_view name, std::string_view value) {
    const std::vector<std::string> choices = consumer_choices();
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin <= value.size(); begin += names.back().size() + 1) {
        names.emplace_back(value.substr(begin, value.find(',', begin) - begin));
        if (std::ranges::find(choices, names.back()) == choices.end()) {
            refuse(name, names.back(), fmt::format("expected one of {}", fmt::join(choices, ", ")));
        }
    }
    return names;
}

kvrimage::rounding parse_rounding(std::string_view name, std::string_view value) {
    // In the order of rounding.
    constexpr std::array<std::string_view, 3> rounding_names = {"nearest", "even", "down"};
    const auto found = std::ranges::find(rounding_names, value);
    if (found == rounding_names.end()) {
        refuse(name, value, fmt::format("expected one of {}", fmt::join(rounding_names, ", ")));
    }
    return static_cast<kvrimage::rounding>(found - rounding_names.begin());
}

color_choice parse_color(std::string_view name, std::string_view value) {
    const auto color = color_choice_of_name(value);
    if (!color) {
        refuse(name, value, "expected auto, always or never");
    }
    return *color;
}

std::string parse_file_name(std::string_view name, std::string_view value) {
    if (value.empty()) {
        refuse(name, "''", "expected a file name");
    }
    return std::string(value);
}

kvrimage::pixel_format parse_pixel(std::string_view name, std::string_view value) {
    const auto pixel = kvrimage::pixel_format_of_name(value);
    if (!pixel) {
        refuse(name, value,
               fmt::format("a pixel is one of {}", fmt::join(kvrimage::pixel_format_names, ", ")));
    }
    return *pixel;
}

std::uint32_t parse_palette_size(std::string_view name, std::string_view value) {
    const auto colors = read_human_size(value, kvrimage::most_palette_colors);
    if (!colors || *colors < 2) {
        refuse(name, value, fmt::format("expected a number from 2 to {}", kvrimage::most_palette_colors));
    }
    return static_cast<std::uint32_t>(*colors);
}

/// The options of formats for reading or writing, and the arguments that store them.
struct choice_side {
    option_id id;
    std::span<const kvrimage::choice_kind> format::*kinds;
    bool (*is_for)(const format& one);
    void (*take)(arguments& into, std::string_view name, const char* value);
};

void set_read_choice(arguments& into, std::string_view name, const char* value) {
    into.read_choices.push_back({std::string(name), value != nullptr ? value : ""});
}

constexpr std::array<choice_side, 3> choice_sides = {{
    {option_id::read_choice, &format::read_choices, [](const format& /*one*/) { return true; },
     set_read_choice},
    {option_id::layout_choice, &format::read_choices,
     [](const format& one) { return one.lay_out != nullptr; }, set_read_choice},
    {option_id::write_choice, &format::write_choices, [](const format& /*one*/) { return true; },
     [](arguments& into, std::string_view name, const char* value) {
         into.write_choices.push_back({std::string(name), value != nullptr ? value : ""});
     }},
}};

/// Returns "ELF, CSV: read only the section NAME".
std::string help_of(const kvrimage::choice_kind& kind, const choice_side& side) {
    std::vector<std::string_view> titles;
    for (const format* each : kvrimage::formats()) {
        if (side.is_for(*each) &&
            std::ranges::find(each->*side.kinds, kind.name, &kvrimage::choice_kind::name) !=
                (each->*side.kinds).end()) {
            titles.push_back(each->title);
        }
    }
    return fmt::format("{}: {}", fmt::join(titles, ", "), kind.description);
}

/// Adds one option for each name that formats offer.
void add_choices(std::vector<option_entry>& table) {
    static std::deque<std::string> value_names;
    for (const choice_side& side : choice_sides) {
        const auto begin = static_cast<std::ptrdiff_t>(table.size());
        for (const format* each : kvrimage::formats()) {
            if (!side.is_for(*each)) {
                continue;
            }
            for (const kvrimage::choice_kind& kind : each->*side.kinds) {
                const auto known =
                    std::find_if(table.begin() + begin, table.end(),
                                 [&kind](const option_entry& entry) { return entry.name == kind.name; });
                if (known == table.end()) {
                    const char* const value =
                        kind.operand.empty() ? nullptr : value_names.emplace_back(kind.operand).c_str();
                    table.push_back({side.id, '\0', std::string(kind.name), value, std::string(kind.values),
                                     help_of(kind, side), side.take});
                }
            }
        }
    }
}

// NOLINTNEXTLINE(readability-function-size): a table
std::vector<option_entry> make_table() {
    const std::string schemes = fmt::format("{}", fmt::join(scheme_names(), " "));
    const std::string with_radixes = format_titles([](const format& one) { return one.states_radix; });
    return {
        {option_id::from, '\0', "from", "FORMAT", readable_formats(),
         "input format, as listed by kvrmem formats (default: from name and contents)",
         [](arguments& into, std::string_view, const char* value) {
             into.from = kvrimage::format_of_name(value);
         }},
        {option_id::to, '\0', "to", "FORMAT", writable_formats(), "output format (default: from the name)",
         [](arguments& into, std::string_view, const char* value) {
             into.to = kvrimage::format_of_name(value);
         }},
        {option_id::from_radix, '\0', "from", "RADIX", word_radix_choices,
         "radix of VALUE: bin, oct, dec, uns, hex, fixed:I.F (default: from its prefix)",
         [](arguments& into, std::string_view name, const char* value) {
             into.from_radix = parse_word_radix(name, value);
         }},
        {option_id::to_radix, '\0', "to", "RADIX", word_radix_choices,
         "radix of the result (default: all radixes)",
         [](arguments& into, std::string_view name, const char* value) {
             into.to_radix = parse_word_radix(name, value);
         }},
        {option_id::width, 'w', "width", "BITS", "",
         "word width, if the file does not state it, or a new width",
         [](arguments& into, std::string_view name, const char* value) {
             into.width = parse_small_size(name, value, kvrimage::widest_word);
         }},
        {option_id::depth, 'd', "depth", "WORDS", "",
         "number of words (default: the file's own, or up to its highest address)",
         [](arguments& into, std::string_view name, const char* value) {
             into.depth = parse_size(name, value, kvrimage::deepest_memory);
         }},
        {option_id::depth_in_order, 'd', "depth", "WORDS", "",
         "words of IN (default: its own, or up to its highest address); after an operation, of OUT",
         [](arguments& into, std::string_view name, const char* value) {
             const std::uint64_t depth = parse_size(name, value, kvrimage::deepest_memory);
             if (change_words(into.operations)) {
                 add_operation(into, name, value, change_depth{depth});
             } else {
                 into.depth = depth;
             }
         }},
        {option_id::unit, '\0', "address-unit", "UNIT", "byte word",
         "unit of the addresses, if the file does not state it: byte, word",
         [](arguments& into, std::string_view name, const char* value) {
             into.unit = parse_unit(name, value);
         }},
        {option_id::order, '\0', "endian", "ORDER", "little big",
         "byte order of words, if the file does not state it: little, big",
         [](arguments& into, std::string_view name, const char* value) {
             into.order = parse_order(name, value);
         }},
        {option_id::base, '\0', "base", "ADDRESS", "", "address in the file that becomes word 0",
         [](arguments& into, std::string_view name, const char* value) {
             into.base = parse_number(name, value, std::numeric_limits<std::uint64_t>::max());
         }},
        {option_id::pad, '\0', "pad", "BYTE", "", "value for the missing bytes of a word",
         [](arguments& into, std::string_view name, const char* value) {
             into.pad = static_cast<std::uint8_t>(parse_number(name, value, 0xFF));
         }},
        {option_id::pad_in_order, '\0', "pad", "VALUE", "",
         "value for missing bytes of a word of IN; after --reshape, for missing bits of its words",
         [](arguments& into, std::string_view name, const char* value) {
             if (reshape_words* const reshape = last_reshape(into.operations)) {
                 reshape->pad = value;
             } else {
                 into.pad = static_cast<std::uint8_t>(parse_number(name, value, 0xFF));
             }
         }},
        {option_id::keep_going, '\0', "keep-going", nullptr, "",
         "read a broken file as far as possible, and mark words in doubt",
         [](arguments& into, std::string_view, const char*) { into.keep_going = true; }},
        {option_id::data_radix, '\0', "data-radix", "RADIX", radix_choices,
         fmt::format("radix of the words in a {}: bin, oct, dec, uns, hex", with_radixes),
         [](arguments& into, std::string_view name, const char* value) {
             into.data_radix = parse_radix(name, value);
         }},
        {option_id::address_radix, '\0', "address-radix", "RADIX", radix_choices,
         fmt::format("radix of the addresses in a {}: bin, oct, dec, uns, hex", with_radixes),
         [](arguments& into, std::string_view name, const char* value) {
             into.address_radix = parse_radix(name, value);
         }},
        {option_id::fill, '\0', "fill", "VALUE", "",
         "value for words that are never set: 31, -5, 0x1F, 0b1010, 0o17",
         [](arguments& into, std::string_view, const char* value) { into.fill = value; }},
        {option_id::expression, '\0', "expr", "FORMULA", "",
         "compute each word by a formula of its address a, the depth n and the width w",
         [](arguments& into, std::string_view, const char* value) { into.generator.expression = value; }},
        {option_id::ramp_start, '\0', "ramp", "START", "",
         "make words that count up from START, and wrap after the highest word",
         [](arguments& into, std::string_view, const char* value) { into.generator.ramp_start = value; }},
        {option_id::ramp_step, '\0', "step", "STEP", "", "of --ramp: count by STEP, such as -2 (default: 1)",
         [](arguments& into, std::string_view, const char* value) { into.generator.ramp_step = value; }},
        {option_id::random, '\0', "random", nullptr, "", "make random words, always the same ones for a seed",
         [](arguments&, std::string_view, const char*) {}},
        {option_id::seed, '\0', "seed", "S", "", "of --random: the seed (default: 0)",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.seed = parse_number(name, value, std::numeric_limits<std::uint64_t>::max());
         }},
        {option_id::text, '\0', "text", "TEXT", "", "make a word of each byte of TEXT",
         [](arguments& into, std::string_view, const char* value) { into.generator.text = value; }},
        {option_id::text_file, '\0', "text-file", "FILE", "FILE", "make a word of each byte of FILE",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.text_file = parse_file_name(name, value);
         }},
        {option_id::picture_file, '\0', "image", "FILE", "FILE",
         "make a word of each pixel of a PNG, BMP or JPEG, row by row",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.picture_file = parse_file_name(name, value);
         }},
        {option_id::picture_columns, '\0', "image", "W", "",
         "show the words as the pixels of a picture, W of them a row",
         [](arguments& into, std::string_view name, const char* value) {
             into.picture_columns = parse_small_size(name, value, largest_picture_row);
         }},
        {option_id::pixel, '\0', "pixel", "FORMAT",
         fmt::format("{}", fmt::join(kvrimage::pixel_format_names, " ")),
         fmt::format("of --image: format of a pixel: {}", fmt::join(kvrimage::pixel_format_names, ", ")),
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.pixel = parse_pixel(name, value);
         }},
        {option_id::palette_colors, '\0', "palette", "N", "",
         "of --image: words are indexes into a palette of N colors",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.palette_colors = parse_palette_size(name, value);
         }},
        {option_id::palette_file, '\0', "palette-out", "FILE", "FILE",
         "of --palette: also write the colors as a memory",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.palette_file = parse_file_name(name, value);
         }},
        {option_id::dither, '\0', "dither", nullptr, "",
         "of --image: spread the color error of a pixel over its neighbors",
         [](arguments& into, std::string_view, const char*) { into.generator.dither = true; }},
        {option_id::sound_file, '\0', "wav", "FILE", "FILE", "make a word of each sample of a WAV file",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.sound_file = parse_file_name(name, value);
         }},
        {option_id::channel, '\0', "channel", "N", "", "of --wav: number of the channel, from 1 on",
         [](arguments& into, std::string_view name, const char* value) {
             into.generator.channel = parse_small_size(name, value, 0xFFFF);
         }},
        {option_id::only, '\0', "only", "A..B,...", "", "keep these addresses only: 0x10..0x1F, 5..9,12",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, only_words{parse_ranges(name, value)});
         }},
        {option_id::except, '\0', "except", "A..B,...", "", "omit these addresses",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, except_words{parse_ranges(name, value)});
         }},
        {option_id::move_to, '\0', "move-to", "ADDRESS", "",
         "move all words: the first address of the last --only, or the lowest word, goes to ADDRESS",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, move_words{parse_address(name, value)});
         }},
        {option_id::fill_rest, '\0', "fill", "VALUE", "",
         "value for words that are not set: 31, -5, 0x1F, 0b1010, 0o17",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, fill_rest{value});
         }},
        {option_id::mask, '\0', "mask", "BITS", "", "clear the bits of each word that are 0 in BITS",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, mask_words{value});
         }},
        {option_id::reverse_bits, '\0', "reverse-bits", nullptr, "", "reverse the bits of each word",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, reverse_bits{});
         }},
        {option_id::swap_bytes, '\0', "swap-bytes", nullptr, "", "reverse the bytes of each word",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, swap_bytes{});
         }},
        {option_id::invert, '\0', "invert", nullptr, "", "invert all bits",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, invert_words{});
         }},
        {option_id::reshape, '\0', "reshape", "BITS", "", "join or split the words to words of BITS bits",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value,
                           reshape_words{parse_small_size(name, value, kvrimage::widest_word)});
         }},
        {option_id::bit_order, '\0', "order", "ORDER", "low-first high-first",
         "of --reshape: the first word is the low end (low-first) or the high end (high-first)",
         [](arguments& into, std::string_view name, const char* value) {
             reshape_before(into, name).order = parse_bit_order(name, value);
         }},
        {option_id::protect, '\0', "ecc", "SCHEME", schemes,
         "add check bits: hamming, hsiao-39-32, even-parity or another scheme, or masks:FILE",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, protect_words{parse_scheme(name, value)});
         }},
        {option_id::strip_protection, '\0', "ecc-strip", "SCHEME", schemes,
         "remove check bits, and correct single wrong bits",
         [](arguments& into, std::string_view name, const char* value) {
             add_operation(into, name, value, strip_protection{parse_scheme(name, value)});
         }},
        {option_id::check_protection, '\0', "ecc", "SCHEME", schemes,
         "verify the check bits of each word; kvrmem help convert lists the schemes",
         [](arguments& into, std::string_view name, const char* value) {
             into.protection = parse_scheme(name, value);
         }},
        {option_id::lane_bits, '\0', "bits", "N", "", "lanes: each file has N bits of the words",
         [](arguments& into, std::string_view name, const char* value) {
             into.lane_bits = parse_size(name, value, kvrimage::widest_word);
         }},
        {option_id::banks, '\0', "every", "N", "", "banks: N files take the words in turn",
         [](arguments& into, std::string_view name, const char* value) {
             into.banks = parse_size(name, value, kvrimage::deepest_memory);
         }},
        {option_id::blocks, '\0', "blocks", "N", "", "blocks: N files of consecutive words",
         [](arguments& into, std::string_view name, const char* value) {
             into.blocks = parse_size(name, value, kvrimage::deepest_memory);
         }},
        {option_id::manifest, '\0', "manifest", "FILE", "FILE",
         "JSON file that states the files and how the memory was split",
         [](arguments& into, std::string_view name, const char* value) {
             into.manifest = parse_file_name(name, value);
         }},
        {option_id::overlap, '\0', "overlap", "RULE", "error same first last",
         "addresses that several files set: error (default), same, first, last",
         [](arguments& into, std::string_view name, const char* value) {
             into.overlap = parse_overlap(name, value);
         }},
        {option_id::no_runs, '\0', "no-runs", nullptr, "",
         fmt::format("write each address of a {} on a line of its own",
                     format_titles([](const format& one) { return one.holds_ranges; })),
         [](arguments& into, std::string_view, const char*) { into.no_runs = true; }},
        {option_id::output, 'o', "output", "FILE", "FILE", "write to FILE; - is standard output",
         [](arguments& into, std::string_view name, const char* value) {
             into.output = parse_file_name(name, value);
         }},
        {option_id::json, '\0', "json", nullptr, "", "print JSON",
         [](arguments& into, std::string_view, const char*) { into.json = true; }},
        {option_id::report, '\0', "format", "HOW", "text json sarif github junit gitlab",
         "kind of output: text (default), json, sarif, github, junit, gitlab",
         [](arguments& into, std::string_view name, const char* value) {
             into.report = parse_report_format(name, value);
         }},
        {option_id::layout_check, '\0', "check", nullptr, "",
         "change nothing, and list the files that would change",
         [](arguments& into, std::string_view, const char*) { into.only_checks_layout = true; }},
        {option_id::fix, '\0', "fix", nullptr, "",
         "make the certain repairs, and write the file to --output FILE",
         [](arguments& into, std::string_view, const char*) { into.fix = true; }},
        {option_id::consumer, '\0', "for", "READERS", fmt::format("{}", fmt::join(consumer_choices(), " ")),
         "readers to compare with, such as icarus,yosys; kvr is the library (default: kvr)",
         [](arguments& into, std::string_view name, const char* value) {
             into.consumers = parse_consumers(name, value);
         }},
        {option_id::strict, '\0', "strict", nullptr, "", "warnings count for the exit code, too",
         [](arguments& into, std::string_view, const char*) { into.strict = true; }},
        {option_id::from_file, '\0', "from-file", "FILE", "FILE",
         "first make the assignments in FILE, one per line; - is standard input",
         [](arguments& into, std::string_view name, const char* value) {
             into.assignment_files.push_back(parse_file_name(name, value));
         }},
        {option_id::rounding, '\0', "round", "HOW", "nearest even down",
         "how fractions are rounded: nearest (default), even, down",
         [](arguments& into, std::string_view name, const char* value) {
             into.round = parse_rounding(name, value);
         }},
        {option_id::saturate, '\0', "saturate", nullptr, "", "values out of range become the nearest word",
         [](arguments& into, std::string_view, const char*) { into.saturate = true; }},
        {option_id::radix, 'r', "radix", "RADIX", word_radix_choices,
         "show words in bin, oct, dec (signed), uns, hex or fixed:I.F",
         [](arguments& into, std::string_view name, const char* value) {
             into.radix = parse_word_radix(name, value);
         }},
        {option_id::columns, 'c', "columns", "N", "",
         "N words or characters per line (default: as many as fit)",
         [](arguments& into, std::string_view name, const char* value) {
             into.columns = parse_small_size(name, value, largest_column_count);
         }},
        {option_id::rows, '\0', "rows", "N", "",
         "height of the picture (default: 16 rows), or the most rows of a bit map",
         [](arguments& into, std::string_view name, const char* value) {
             into.rows = parse_small_size(name, value, largest_row_count);
         }},
        {option_id::range, '\0', "range", "A..B", "", "only the addresses A to B: 0x10..0x1F, 5..9, 7",
         [](arguments& into, std::string_view name, const char* value) {
             into.range = parse_range(name, value);
         }},
        {option_id::compared_ranges, '\0', "range", "A..B,...", "", "compare these addresses only",
         [](arguments& into, std::string_view name, const char* value) {
             add_ranges(into.compared_ranges, name, value);
         }},
        {option_id::ignored_ranges, '\0', "ignore", "A..B,...", "", "do not compare these addresses",
         [](arguments& into, std::string_view name, const char* value) {
             add_ranges(into.ignored_ranges, name, value);
         }},
        {option_id::summary, '\0', "summary", nullptr, "",
         "one line: the numbers of words and bits that differ",
         [](arguments& into, std::string_view, const char*) { into.summary = true; }},
        {option_id::stat, '\0', "stat", nullptr, "",
         "the numbers of words and bits that differ, by block of addresses and by bit",
         [](arguments& into, std::string_view, const char*) { into.stat = true; }},
        {option_id::statistics, '\0', "statistics", nullptr, "",
         "also the most frequent values, entropy, toggle rate, longest run, width needed, repetition",
         [](arguments& into, std::string_view, const char*) { into.statistics = true; }},
        {option_id::is_signed, '\0', "signed", nullptr, "", "read words as two's complement numbers",
         [](arguments& into, std::string_view, const char*) { into.is_signed = true; }},
        {option_id::algorithm, 'a', "algorithm", "NAME", checksum_choices(),
         "checksum to compute, or crc:WIDTH,POLY,INIT,REFIN,REFOUT,XOROUT (default: crc-32)",
         [](arguments& into, std::string_view, const char* value) { into.algorithm = value; }},
        {option_id::sha256, '\0', "sha256", nullptr, "", "the same as --algorithm sha-256",
         [](arguments& into, std::string_view, const char*) { into.algorithm = "sha-256"; }},
        {option_id::put, '\0', "put", "ADDRESS", "", "store the checksum at ADDRESS, which it does not cover",
         [](arguments& into, std::string_view name, const char* value) {
             into.put = parse_number(name, value, std::numeric_limits<std::uint64_t>::max());
         }},
        {option_id::verify, '\0', "verify", "ADDRESS", "",
         "compare with the checksum stored at ADDRESS, which it does not cover",
         [](arguments& into, std::string_view name, const char* value) {
             into.verify = parse_number(name, value, std::numeric_limits<std::uint64_t>::max());
         }},
        {option_id::quiet, 'q', "quiet", nullptr, "", "print nothing; the exit code is the answer",
         [](arguments& into, std::string_view, const char*) { into.quiet = true; }},
        {option_id::git, '\0', "git", nullptr, "",
         "accept the seven operands that git passes to a diff driver",
         [](arguments& into, std::string_view, const char*) { into.git = true; }},
        {option_id::git_text, '\0', "git", nullptr, "",
         "convert to text for git: an unreadable file is shown unchanged, and the exit code is 0",
         [](arguments& into, std::string_view, const char*) { into.git = true; }},
        {option_id::force, '\0', "force", nullptr, "", "replace an existing file",
         [](arguments& into, std::string_view, const char*) { into.force = true; }},
        {option_id::force_conversion, '\0', "force", nullptr, "",
         "write even if comments are lost or OUT becomes huge",
         [](arguments& into, std::string_view, const char*) { into.force = true; }},
        {option_id::force_overwrite, '\0', "force", nullptr, "",
         "replace the file of --output even if its comments are lost",
         [](arguments& into, std::string_view, const char*) { into.force = true; }},
        {option_id::library, '\0', "library", nullptr, "", "show the result of the library's own conversion",
         [](arguments& into, std::string_view, const char*) { into.library = true; }},
        {option_id::color, '\0', "color", "WHEN", "auto always never",
         "color: auto (on a terminal), always, never",
         [](arguments& into, std::string_view name, const char* value) {
             into.color = parse_color(name, value);
         }},
        {option_id::help, 'h', "help", nullptr, "", "show this help",
         [](arguments& into, std::string_view, const char*) { into.help = true; }},
    };
}

} // namespace

std::string with_letter(fmt::format_string<char> format, const option_entry& entry) {
    if (entry.letter == '\0') {
        return "";
    }
    return fmt::format(format, char{entry.letter});
}

std::span<const option_entry> option_table() {
    static const std::vector<option_entry> table = [] {
        std::vector<option_entry> made = make_table();
        const auto help = made.end() - 2; // the options of all commands are last
        std::vector<option_entry> last(std::make_move_iterator(help), std::make_move_iterator(made.end()));
        made.erase(help, made.end());
        add_choices(made);
        std::ranges::move(last, std::back_inserter(made));
        return made;
    }();
    return table;
}

} // namespace kvrmem
