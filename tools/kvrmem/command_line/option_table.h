#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/fixed_point.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/operations/merge.h"
#include "tools/kvrmem/generate/generator_options.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/operations/operation.h"
#include "tools/kvrmem/platform/terminal.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

struct command;

/// One entry for each line of the option table. An option with different meanings for different commands has
/// several entries.
enum class option_id : std::uint8_t {
    from,
    to,
    from_radix,
    to_radix,
    width,
    depth,
    depth_in_order, ///< the depth of the file, or, after an operation, another operation
    unit,
    order,
    base,
    pad,
    pad_in_order,  ///< for bytes of the file, or, after --reshape, for bits of its words
    read_choice,   ///< options of single formats; see kvrimage::choice_kind
    layout_choice, ///< the same, for formats with layout rules
    write_choice,  ///< the same, for the output
    keep_going,
    data_radix,
    address_radix,
    fill,
    expression,
    ramp_start,
    ramp_step,
    random,
    seed,
    text,
    text_file,
    picture_file,
    picture_columns, ///< for drawings
    pixel,
    palette_colors,
    palette_file,
    dither,
    sound_file,
    channel,
    only,
    except,
    move_to,
    fill_rest,
    mask,
    reverse_bits,
    swap_bytes,
    invert,
    reshape,
    bit_order,
    protect,
    strip_protection,
    check_protection,
    lane_bits,
    banks,
    blocks,
    manifest,
    overlap,
    no_runs,
    output,
    json,
    report, ///< for check
    fix,
    layout_check, ///< for format
    consumer,
    strict,
    from_file,
    rounding,
    saturate,
    radix,
    columns,
    rows, ///< for drawings
    range,
    compared_ranges, ///< for diff: several ranges
    ignored_ranges,
    summary,
    stat,
    statistics,
    is_signed,
    algorithm,
    sha256,
    put,
    verify,
    quiet,
    git,
    git_text, ///< for dump
    force,
    force_conversion,
    force_overwrite,
    library,
    color,
    help,
};

/// The output format of `check`.
enum class report_format : std::uint8_t { text, json, sarif, github, junit, gitlab };

/// The options and operands of any command.
struct arguments {
    const command* which = nullptr;
    std::vector<std::string> words;           ///< the unparsed words, beginning with the command's name
    std::vector<std::string> files;           ///< and other operands
    std::vector<option_id> options;           ///< the options given
    std::vector<std::string> reading_options; ///< the options given that affect reading, such as "--width 8"
    const kvrimage::format* from = nullptr;   ///< null if not given
    const kvrimage::format* to = nullptr;
    std::optional<std::uint32_t> width;
    std::optional<std::uint64_t> depth;
    std::optional<kvrimage::address_unit> unit;
    std::optional<kvrimage::byte_order> order;
    std::optional<std::uint64_t> base;
    std::optional<std::uint8_t> pad;
    std::vector<kvrimage::choice> read_choices;
    std::vector<kvrimage::choice> write_choices;
    std::optional<kvrimage::radix> data_radix;
    std::optional<kvrimage::radix> address_radix;
    std::optional<std::string> fill;
    generator_options generator;
    std::optional<std::uint32_t> picture_columns;
    std::vector<operation> operations;     ///< in command-line order
    std::optional<std::string> protection; ///< scheme to check
    std::optional<std::uint64_t> lane_bits;
    std::optional<std::uint64_t> banks;
    std::optional<std::uint64_t> blocks;
    std::optional<std::string> manifest;
    kvrimage::overlap_rule overlap = kvrimage::overlap_rule::refuse;
    std::optional<std::string> output;
    std::optional<word_radix> radix;
    std::optional<word_radix> from_radix;
    std::optional<word_radix> to_radix;
    std::optional<std::uint32_t> columns;
    std::optional<std::uint32_t> rows;
    std::optional<kvrimage::address_range> range;
    std::vector<kvrimage::address_range> compared_ranges; ///< empty: all
    std::vector<kvrimage::address_range> ignored_ranges;
    std::optional<std::vector<std::string>> consumers; ///< empty list for "none"
    std::vector<std::string> assignment_files;
    std::optional<kvrimage::rounding> round; ///< of fractions
    std::optional<std::string> algorithm;    ///< for a checksum
    std::optional<std::uint64_t> put;        ///< address at which to store a checksum
    std::optional<std::uint64_t> verify;     ///< address of a stored checksum
    color_choice color = color_choice::automatic;
    report_format report = report_format::text;
    bool only_checks_layout = false;
    bool saturate = false;
    bool no_runs = false;
    bool json = false;
    bool fix = false;
    bool keep_going = false;
    bool strict = false;
    bool quiet = false;
    bool git = false;
    bool force = false;
    bool library = false;
    bool is_signed = false;
    bool statistics = false;
    bool summary = false;
    bool stat = false;
    bool help = false;
};

/// An option for the parser, the help, the manual page and the completions.
struct option_entry {
    option_id id;
    char letter; ///< short form, or NUL
    std::string name;
    const char* value; ///< placeholder for its value in the help; null if it takes none
    /// The values for completion, separated by blanks; "FILE" for a path, or "".
    std::string choices;
    std::string help;
    /// Parses the value into @p into. Throws tool_error (wrong usage).
    void (*take)(arguments& into, std::string_view name, const char* value);
};

/// Formats @p format with the letter of @p entry; "" for an option without a letter.
[[nodiscard]] std::string with_letter(fmt::format_string<char> format, const option_entry& entry);

/// Returns all options in the order of the help.
[[nodiscard]] std::span<const option_entry> option_table();

} // namespace kvrmem
