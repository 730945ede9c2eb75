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

/// One name for each line of the option table. An option that means one thing to one command and another
/// thing to the next has two.
enum class option_id : std::uint8_t {
    from,
    to,
    from_radix,
    to_radix,
    width,
    depth,
    depth_in_order, ///< how deep the file is, or, after an operation, one more of them
    unit,
    order,
    base,
    pad,
    pad_in_order,  ///< for bytes of the file, or, after --reshape, for bits of its words
    read_choice,   ///< one of several options: what the formats leave open; see kvrimage::choice_kind
    layout_choice, ///< the same of formats with rules for their layout
    write_choice,  ///< the same for the output
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
    picture_columns, ///< of a drawing
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
    report, ///< of check
    fix,
    layout_check, ///< of format
    consumer,
    strict,
    from_file,
    rounding,
    saturate,
    radix,
    columns,
    rows, ///< of a drawing
    range,
    compared_ranges, ///< of diff: several
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
    git_text, ///< of dump
    force,
    force_conversion,
    force_overwrite,
    library,
    color,
    help,
};

/// What `check` prints.
enum class report_format : std::uint8_t { text, json, sarif, github, junit, gitlab };

/// What the user may write after a command, whichever command it is.
struct arguments {
    const command* which = nullptr;           ///< the command itself
    std::vector<std::string> words;           ///< all of them as they were given, the command's name first
    std::vector<std::string> files;           ///< and the other operands
    std::vector<option_id> options;           ///< those that were given
    std::vector<std::string> reading_options; ///< "--width 8": those that say how a file is to be read
    const kvrimage::format* from = nullptr;   ///< null where it was not given
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
    std::vector<operation> operations;     ///< in the order of the command line
    std::optional<std::string> protection; ///< the scheme to check
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
    std::vector<kvrimage::address_range> compared_ranges; ///< none: all
    std::vector<kvrimage::address_range> ignored_ranges;
    std::optional<std::vector<std::string>> consumers; ///< "none" for none
    std::vector<std::string> assignment_files;
    std::optional<kvrimage::rounding> round; ///< of fractions
    std::optional<std::string> algorithm;    ///< of a checksum
    std::optional<std::uint64_t> put;        ///< where a checksum goes
    std::optional<std::uint64_t> verify;     ///< where a checksum is
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

/// An option, for the parser, the help, the manual page and the completions.
struct option_entry {
    option_id id;
    char letter; ///< its short form, or NUL
    std::string name;
    const char* value; ///< what the help calls its value; null when it takes none
    std::string
        choices; ///< the values that a completion offers, separated by blanks, "FILE" for a path, or ""
    std::string help;
    /// Takes the value, or throws tool_error (wrong usage).
    void (*take)(arguments& into, std::string_view name, const char* value);
};

/// @p format with the letter of @p entry in its place; "" for an option without one.
[[nodiscard]] std::string with_letter(fmt::format_string<char> format, const option_entry& entry);

/// All options, in the order in which the help shows them.
[[nodiscard]] std::span<const option_entry> option_table();

} // namespace kvrmem
