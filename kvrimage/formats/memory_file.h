#pragma once

#include "kvrimage/edit/with_edits.h"
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
/// @throws std::system_error if the file cannot be read, or if it has a line of more than 32 MiB in a format
/// that has lines. At most 32 MiB are read from a pipe or device. what() is a sentence that names the file.
[[nodiscard]] KVRIMAGE_API read_result read(const std::filesystem::path& file,
                                            const read_options& options = {});
/// Parses the contents of a file. Without a format in @p options, the contents determine it.
[[nodiscard]] KVRIMAGE_API read_result parse(std::string_view contents, const read_options& options = {});

/// How to check a file.
struct check_options {
    read_options read = {}; ///< how to read it
    /// Names of the consumers ("kvr") whose reading is compared with ours. Names unknown to the format are
    /// ignored.
    std::vector<std::string> consumers = {"kvr"};
};

/// Reads @p contents and adds the diagnostics of the consumers and the gaps (words not set), in file order.
/// The image is that of read().
[[nodiscard]] KVRIMAGE_API read_result check(std::string_view contents, const check_options& options = {});

/// A file after all certain repairs.
struct repaired {
    std::string contents;            ///< the repaired contents
    std::vector<diagnostic> repairs; ///< the repaired faults, in the order of the repairs
    read_result left;                ///< the result of check() for the repaired contents
};
/// Makes all certain repairs of @p contents.
/// @throws std::invalid_argument if no format can check the contents
[[nodiscard]] KVRIMAGE_API repaired repair(std::string contents, const check_options& options = {});

/// Returns why @p image cannot be written with @p options; empty if it can.
[[nodiscard]] KVRIMAGE_API std::vector<diagnostic> can_write(const memory_image& image,
                                                             const write_options& options);

/// Writes a file atomically: an existing file is replaced only when the new one is complete.
/// @throws std::system_error if the file cannot be written
/// @throws std::invalid_argument if can_write() has a diagnostic (with its message), or if no format is known
KVRIMAGE_API void write(const memory_image& image, const std::filesystem::path& file,
                        const write_options& options = {});
/// Writes @p contents to a file atomically, as write() does.
/// @throws std::system_error if the file cannot be written
KVRIMAGE_API void write_contents(std::string_view contents, const std::filesystem::path& file);
/// Returns the text of the file that write() would write.
[[nodiscard]] KVRIMAGE_API std::string to_text(const memory_image& image, const write_options& options);

} // namespace kvrimage
