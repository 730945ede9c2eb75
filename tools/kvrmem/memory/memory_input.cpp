#include "tools/kvrmem/memory/memory_input.h"

#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/hex_input.h"
#include "tools/kvrmem/memory/mif_input.h"
#include "tools/kvrmem/memory/rif_input.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrmem {

namespace {

memory_image read_format(const input_file& file, const input_options& options) {
    switch (options.format) {
    case FILE_TYPE_MIF:
        return read_mif(file, options);
    case FILE_TYPE_HEX:
        return read_hex(file, options);
    default:
        return read_rif(file, options);
    }
}

/// The address behind the last word that is set; 0 when none is.
std::uint64_t end_of_words(const kvr::word_store& words) {
    const auto bounds = bounds_of(words);
    return bounds ? std::uint64_t{bounds->highest} + 1 : 0;
}

} // namespace

KVR_FILE_TYPES format_for(const std::optional<KVR_FILE_TYPES>& given, const std::string& path,
                          const char* option) {
    if (given) {
        return *given;
    }
    const auto format = format_of_path(path);
    if (!format) {
        throw tool_error(
            exit_code::wrong_usage,
            fmt::format("{}: the name does not tell the format (.mif, .hex, .ihex, .rif); give {}", path,
                        option));
    }
    return *format;
}

void tell_of_other_extension(const std::string& path, KVR_FILE_TYPES format) {
    const auto named = format_of_path(path);
    if (named && *named != format) {
        tell(fmt::format("{}: note: the name says {}, what was written is {}", title_of_file(path),
                         format_title(*named), format_title(format)));
    }
}

input_options options_for(const arguments& given, const std::string& path) {
    return {format_for(given.from, path, "--from"), given.width, given.depth};
}

memory_image read_memory(const input_file& file, const input_options& options) {
    memory_image image = read_format(file, options);
    // The last word that is set is a visit to every run, of which there can be billions: it is looked for
    // only where something hangs on it.
    const bool may_be_too_deep = options.depth && (image.depth == 0 || *options.depth < image.depth);
    const std::uint64_t end = may_be_too_deep || image.depth == 0 ? end_of_words(image.words) : 0;
    if (options.depth && end > *options.depth) {
        const auto address = static_cast<std::uint32_t>(end - 1);
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}:{}: error: address {} is beyond the depth {} (0 to {})", file.name(),
                                     line_that_sets(file, options, address), address, *options.depth,
                                     *options.depth - 1));
    }
    const std::uint64_t found = image.depth != 0 ? image.depth : std::max<std::uint64_t>(end, 1);
    image.depth = options.depth.value_or(static_cast<std::uint32_t>(found));
    image.words.resize(image.depth, "");
    return image;
}

void require_proportionate_words(const input_file& file, const kvr::word_store& texts, std::uint32_t width) {
    constexpr std::uint32_t usual_width = 256; // what takes a few times the file is not looked at
    constexpr std::uint64_t always_granted = std::uint64_t{32} << 20U;
    constexpr std::uint64_t most_growth = 4;
    if (width <= usual_width) {
        return;
    }
    std::uint64_t words = 0;
    for_each_row_cycle_or_run(
        texts,
        [&words](const kvr::word_row& row, std::uint32_t) {
            words += row.count;
            return row.count;
        },
        [&words](const kvr::word_cycle& cycle) {
            words += cycle.period;
            return length_of(cycle);
        },
        [&words](const kvr::word_run&) { ++words; });
    const std::uint64_t size = words * (width / bits_per_hex_digit);
    if (size > always_granted && size / most_growth > file.size()) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: error: {} words of {} bits take {} MiB, and the file has {}",
                                     file.name(), words, width, size >> 20U, counted(file.size(), "byte")));
    }
}

address_range range_within(const arguments& given, const memory_image& image) {
    const address_range range = given.range.value_or(address_range{0, image.depth - 1});
    if (range.last >= image.depth) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("--range: address {} is beyond the depth {} (0 to {})", range.last,
                                     image.depth, image.depth - 1));
    }
    return range;
}

std::uint64_t line_that_sets(const input_file& file, const input_options& options, std::uint32_t address) {
    switch (options.format) {
    case FILE_TYPE_MIF:
        return mif_line_that_sets(file, address);
    case FILE_TYPE_HEX:
        return hex_line_that_sets(file, options, address);
    default:
        return rif_line_that_sets(file, address);
    }
}

} // namespace kvrmem
