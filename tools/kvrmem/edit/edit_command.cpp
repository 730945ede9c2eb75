#include "tools/kvrmem/edit/edit_command.h"

#include "kvr/memory/mif/mif_reader.h"
#include "tools/kvrmem/edit/hex_edit.h"
#include "tools/kvrmem/edit/mif_edit.h"
#include "tools/kvrmem/edit/rif_edit.h"
#include "tools/kvrmem/memory/lost_comments.h"
#include "tools/kvrmem/memory/memory_input.h"
#include "tools/kvrmem/memory/word_runs.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/message.h"
#include "tools/kvrmem/surroundings/replacement_file.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <limits>
#include <string_view>
#include <utility>

namespace kvrmem {

namespace {

constexpr std::uint32_t unlimited_depth = std::numeric_limits<std::uint32_t>::max();
/// Intel HEX and RIF have no ranges: words that they get are written one by one, in memory.
constexpr std::uint64_t most_single_words = std::uint64_t{1} << 24U;
constexpr std::uint64_t most_single_digits = std::uint64_t{1} << 29U;

/// Reads @p file; the image has as many words as an edit may reach.
memory_image read_whole(const input_file& file, const input_options& options) {
    memory_image image = read_memory(file, options);
    if (options.format != FILE_TYPE_MIF) {
        image.depth = options.depth.value_or(unlimited_depth);
        image.words.resize(image.depth, "");
    }
    return image;
}

void require_reasonable_size(const memory_image& image, const std::vector<word_edit>& edits) {
    std::uint64_t words = 0;
    for (const word_edit& edit : edits) {
        words += std::uint64_t{edit.last} - edit.first + 1;
    }
    const std::uint64_t most =
        std::min(most_single_words, most_single_digits / most_characters_of_word({RADIX_HEX}, image.width));
    if (image.format != FILE_TYPE_MIF && words > most) {
        throw tool_error(
            exit_code::wrong_usage,
            fmt::format("{} words are too many for a format without ranges (at most {})", words, most));
    }
}

std::vector<text_change> changes_for(KVR_FILE_TYPES format, std::string_view text, const memory_image& image,
                                     const std::vector<word_edit>& edits) {
    const edit_pieces pieces(edits);
    switch (format) {
    case FILE_TYPE_MIF:
        return mif_changes(text, image, pieces);
    case FILE_TYPE_HEX:
        return hex_changes(text, image, pieces);
    default:
        return rif_changes(text, image, pieces);
    }
}

void apply(const std::vector<word_edit>& edits, memory_image& image) {
    for (const word_edit& edit : edits) {
        const std::vector<std::string_view> words(edit.words.begin(), edit.words.end());
        image.words.fill(edit.first, edit.last, words);
    }
}

bool same_words(const kvr::word_store& left, const kvr::word_store& right) {
    if (left.size() != right.size()) {
        return false;
    }
    bool same = true;
    for_each_differing_run(left, right, std::equal_to<>(), [&same](auto&&...) { same = false; });
    return same;
}

/// A word with more digits than the one before it makes its line longer.
void require_short_lines(const std::string& name, std::string_view text) {
    std::uint64_t number = 1;
    for (std::size_t begin = 0; begin < text.size(); ++number) {
        if (end_of_line(text, begin) - begin > kvr::mif_reader::line_limit) {
            throw tool_error(exit_code::bad_input,
                             fmt::format("{}:{}: error: the line would be longer than {} characters; nothing "
                                         "was written",
                                         name, number, kvr::mif_reader::line_limit));
        }
        begin = next_line(text, begin);
    }
}

/// Reads @p edited, the new text of the file @p name, as any command would, and compares.
void verify(const std::string& name, const std::string& edited, const input_options& options,
            const memory_image& expected) {
    input_options exact = options;
    if (options.format != FILE_TYPE_MIF) {
        exact.width = expected.width;
    }
    try {
        const memory_image found = read_whole(input_file(name, edited), exact);
        if (found.width == expected.width && same_words(found.words, expected.words)) {
            return;
        }
    } catch (const tool_error& error) {
        throw tool_error(
            exit_code::internal,
            fmt::format("the edit would make the file unreadable, nothing was written: {}", error.message()));
    }
    throw tool_error(exit_code::internal,
                     name + ": the edit would change other words too, nothing was written");
}

void write(const std::string& target, const std::string& text) {
    replacement_file file(target);
    file.output().write(text);
    file.commit();
}

} // namespace

void edit_file(const arguments& given, edit_maker make_edits, edit_summary summarize) {
    const std::string& path = given.files[0];
    const input_options options = options_for(given, path);
    const input_file source(path);
    const input_file input(source.name(), source.contents());
    const std::string text = input.contents();
    memory_image image = read_whole(input, options);
    const std::vector<word_edit> edits = make_edits({given.files.begin() + 1, given.files.end()}, image);
    require_reasonable_size(image, edits);

    const std::vector<text_change> changes = changes_for(options.format, text, image, edits);
    const std::string edited = with_changes(text, changes);
    apply(edits, image);
    if (options.format == FILE_TYPE_MIF) {
        require_short_lines(input.name(), edited);
    }
    verify(input.name(), edited, options, image);
    const bool in_place = !given.output || *given.output == path;
    if (!in_place && !given.force) {
        require_no_lost_comments(*given.output, edited);
    }
    if (!changes.empty() || !in_place || path == "-") {
        write(given.output.value_or(path), edited);
    }
    if (!image.note.empty()) {
        tell(fmt::format("{}: note: width {}", input.name(), image.note));
    }
    std::string files = input.name();
    if (!in_place) {
        files += " -> " + *given.output;
    }
    tell(fmt::format("{}: {}{}", files, summarize(edits), changes.empty() ? ", as they were already" : ""));
    if (!in_place) {
        tell_of_other_extension(*given.output, options.format);
    }
}

assignment read_assignment(const std::string& operand, const memory_image& image, const char* example) {
    const std::size_t equals = operand.find('=');
    const auto range = read_address_range(std::string_view(operand).substr(0, equals));
    if (equals == std::string::npos || !range) {
        throw tool_error(exit_code::wrong_usage, fmt::format("'{}' is not of the form {}", operand, example));
    }
    if (range->last >= image.depth) {
        throw tool_error(exit_code::wrong_usage,
                         fmt::format("{}: address {} is beyond the depth {} (0 to {})", operand, range->last,
                                     image.depth, image.depth - 1));
    }
    return {*range, operand.substr(equals + 1)};
}

} // namespace kvrmem
