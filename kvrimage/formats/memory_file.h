#pragma once

#include "kvrimage/export.h"
#include "kvrimage/formats/format.h"

#include <cstddef>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Reads a file of any format.
/// @throws std::system_error when the file cannot be read, or has a line of more than 32 MiB in a
/// format that has lines (of what has no
/// end, a pipe or a device, at most 32 MiB are read); what() is a sentence that names the file
[[nodiscard]] KVRIMAGE_API read_result read(const std::filesystem::path& file,
                                            const read_options& options = {});
/// Reads the contents of a file; without a format in @p options, they say which it is.
[[nodiscard]] KVRIMAGE_API read_result parse(std::string_view contents, const read_options& options = {});

/// How a file is checked.
struct check_options {
    read_options read = {}; ///< how it is read
    /// Names of consumers ("kvr") whose reading is compared with ours; a name that the format does not know
    /// is left out.
    std::vector<std::string> consumers = {"kvr"};
};

/// What read() finds, what the consumers make of it, and what is missing (gaps), in file order. The image is
/// that of read().
[[nodiscard]] KVRIMAGE_API read_result check(std::string_view contents, const check_options& options = {});

/// A file after all certain repairs.
struct repaired {
    std::string contents;            ///< with the repairs
    std::vector<diagnostic> repairs; ///< what was repaired, in the order in which it was done
    read_result left;                ///< what check() finds now
};
/// @throws std::invalid_argument when there is no format that can check
[[nodiscard]] KVRIMAGE_API repaired repair(std::string contents, const check_options& options = {});

/// @p contents with @p edits, which are in order and do not overlap.
[[nodiscard]] KVRIMAGE_API std::string with_edits(std::string contents, std::span<const text_edit> edits);

/// Why @p image cannot be written so; empty when it can.
[[nodiscard]] KVRIMAGE_API std::vector<diagnostic> can_write(const memory_image& image,
                                                             const write_options& options);

/// Writes a file, whole or not at all: an old one is replaced when the new one is complete.
/// @throws std::system_error when the file cannot be written
/// @throws std::invalid_argument when can_write() has a diagnostic, with its message, or nothing shows the
/// format
KVRIMAGE_API void write(const memory_image& image, const std::filesystem::path& file,
                        const write_options& options = {});
/// Writes @p contents as a file, whole or not at all, as write() does.
/// @throws std::system_error when the file cannot be written
KVRIMAGE_API void write_contents(std::string_view contents, const std::filesystem::path& file);
/// The text of the file.
[[nodiscard]] KVRIMAGE_API std::string to_text(const memory_image& image, const write_options& options);

} // namespace kvrimage
