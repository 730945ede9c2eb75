#pragma once

#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/surroundings/input_file.h"

#include <cstdint>
#include <optional>

namespace kvrmem {

/// What the person says of a file beyond its name.
struct input_options {
    KVR_FILE_TYPES format = FILE_TYPE_MIF;
    std::optional<std::uint32_t> width; ///< instead of the file's own, or what it does not say
    std::optional<std::uint32_t> depth;
};

/// The format that the person gave, or the one that the extension of @p path tells.
/// @throws tool_error (wrong usage), naming @p option, when neither tells it.
[[nodiscard]] KVR_FILE_TYPES format_for(const std::optional<KVR_FILE_TYPES>& given, const std::string& path,
                                        const char* option);

/// Tells, as a note on standard error, when the extension of @p path, which was written as @p format, says
/// that it is something else.
void tell_of_other_extension(const std::string& path, KVR_FILE_TYPES format);

/// What @p given says of the file @p path: format, width and depth.
/// @throws tool_error (wrong usage) when nothing tells the format.
[[nodiscard]] input_options options_for(const arguments& given, const std::string& path);

/// Reads @p file, strictly: what would be swapped, cut or dropped without a word is an error.
/// @throws tool_error with file, line and what is wrong there.
[[nodiscard]] memory_image read_memory(const input_file& file, const input_options& options);

/// Makes sure that the words of @p file, which get all the digits of @p width bits however short @p texts
/// write them, take no memory out of proportion to the file.
/// @throws tool_error (bad input)
void require_proportionate_words(const input_file& file, const kvr::word_store& texts, std::uint32_t width);

/// The addresses that --range names, or all of @p image.
/// @throws tool_error (wrong usage) when they are not in it.
[[nodiscard]] address_range range_within(const arguments& given, const memory_image& image);

/// The line of @p file that sets the word at @p address last; 0 when there is none. For messages about a
/// word, after read_memory() has read the file.
[[nodiscard]] std::uint64_t line_that_sets(const input_file& file, const input_options& options,
                                           std::uint32_t address);

} // namespace kvrmem
