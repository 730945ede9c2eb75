#pragma once

#include "tools/kvrmem/input_file.h"
#include "tools/kvrmem/memory_image.h"

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

/// Reads @p file, strictly: what would be swapped, cut or dropped without a word is an error.
/// @throws tool_error with file, line and what is wrong there.
[[nodiscard]] memory_image read_memory(const input_file& file, const input_options& options);

/// The line of @p file that sets the word at @p address last; 0 when there is none. For messages about a
/// word, after read_memory() has read the file.
[[nodiscard]] std::uint64_t line_that_sets(const input_file& file, const input_options& options,
                                           std::uint32_t address);

} // namespace kvrmem
