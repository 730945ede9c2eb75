#pragma once

#include "kvrimage/files/input_file.h"
#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <functional>
#include <string>
#include <vector>

namespace kvrmem {

/// A file that a command has read.
struct memory_input {
    std::string path; ///< as the user gave it
    kvrimage::input_file file;
    kvrimage::read_options options; ///< `as` is null until the file is parsed, unless the user gave it
    kvrimage::read_result result;

    [[nodiscard]] const std::string& name() const noexcept { return file.name(); } ///< as messages show it
    [[nodiscard]] const kvrimage::memory_image& image() const { return result.image.value(); }
};

/// The options with which @p given has the file @p path read; "" stands for no name.
[[nodiscard]] kvrimage::read_options read_options_of(const arguments& given, const std::string& path);

/// The bytes of the file @p path, and what @p given says of it.
/// @throws kvrimage::file_error when it cannot be read; tool_error (wrong usage) when nothing shows the
/// format
[[nodiscard]] memory_input open_memory(const arguments& given, const std::string& path);

/// Reads what open_memory() has opened into @p input.result, and notes the format.
void parse(memory_input& input);

/// What a command will have against a file that was read with @p given as @p result.
using later_obstacles = std::function<std::vector<kvrimage::diagnostic>(const arguments& given,
                                                                        const kvrimage::read_result& result)>;

/// Reads the file @p path, which has an image then. What was kept from the image with --keep-going, and how
/// many diagnostics are suspect, is reported on standard error.
/// @throws broken_file when a diagnostic is broken, without --keep-going or where nothing can be read
/// @throws what open_memory() does
/// @param later for a command line to try, which has the options for that then
[[nodiscard]] memory_input read_memory(const arguments& given, const std::string& path,
                                       const later_obstacles& later = {});

/// What is given, for one of two files that are compared: --from is for a name that does not show its format.
[[nodiscard]] arguments for_compared_file(const arguments& given, const std::string& path);

/// read_memory() of one of two files that are compared.
[[nodiscard]] memory_input read_compared_memory(const arguments& given, const std::string& path);

/// Reports on standard error, in one line, how many suspect diagnostics check has of @p input, if reading it
/// has found one: that words are not set is no news of its own.
void note_suspect_ones(const arguments& given, const memory_input& input);

/// Reports on standard error where the width is from, if the file does not say it.
void note_width(const memory_input& input);

/// What is wrong with @p range: "address 8 is beyond the depth 8 (0 to 7)", when it is not in @p image; else
/// "".
[[nodiscard]] std::string range_fault(const kvrimage::address_range& range,
                                      const kvrimage::memory_image& image);

/// The addresses that --range names, or all of @p image.
/// @throws tool_error (wrong usage) when they are not in it
[[nodiscard]] kvrimage::address_range range_within(const arguments& given,
                                                   const kvrimage::memory_image& image);

} // namespace kvrmem
