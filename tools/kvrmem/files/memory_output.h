#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// Requires that write_image() can write the image of @p input.
/// @throws broken_file with the line of the file that sets the faulty word
void require_writable(const arguments& given, const memory_input& input,
                      const kvrimage::write_options& options);

/// Does the same for an image not from a file, to be written to @p target.
void require_writable(const arguments& given, const kvrimage::memory_image& image, const std::string& target,
                      const kvrimage::write_options& options);

/// Writes @p image, which require_writable() has accepted, to the file @p target atomically.
/// @throws kvrimage::file_error
void write_image(const std::string& target, const kvrimage::memory_image& image,
                 const kvrimage::write_options& options);

/// Does the same for a text.
void write_text(const std::string& target, std::string_view text);

/// Requires that the file @p path can be replaced by its changed text: not a pipe or device. Exceptions are
/// standard input, which is written to standard output, and --output, which names another file.
/// @throws tool_error (wrong usage)
void require_replaceable(const arguments& given, const std::string& path);

/// Returns whether @p path names an existing regular file.
[[nodiscard]] bool is_regular_file(const std::string& path);

/// Returns whether both paths name the same file, which need not exist. Standard input and output are not
/// files.
[[nodiscard]] bool name_one_file(const std::string& left, const std::string& right);

} // namespace kvrmem
