#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <string>
#include <string_view>

namespace kvrmem {

/// Makes sure that write_image() can write the image of @p input.
/// @throws broken_file with the line of the file that sets the word at fault
void require_writable(const arguments& given, const memory_input& input,
                      const kvrimage::write_options& options);

/// The same for an image that is not from a file, to be written to @p target.
void require_writable(const arguments& given, const kvrimage::memory_image& image, const std::string& target,
                      const kvrimage::write_options& options);

/// Writes @p image, which require_writable() has passed, to the file @p target, as a whole or not at all.
/// @throws kvrimage::file_error
void write_image(const std::string& target, const kvrimage::memory_image& image,
                 const kvrimage::write_options& options);

/// The same for a text.
void write_text(const std::string& target, std::string_view text);

/// Makes sure that the file @p path can take a changed text of its own: a pipe or a device cannot. Standard
/// input is written to standard output, and --output names another file.
/// @throws tool_error (wrong usage)
void require_replaceable(const arguments& given, const std::string& path);

/// True when @p path names a regular file that is there.
[[nodiscard]] bool is_regular_file(const std::string& path);

/// True when both names are of one file, which may not be there yet. Standard input and output are none.
[[nodiscard]] bool name_one_file(const std::string& left, const std::string& right);

} // namespace kvrmem
