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
    std::string path; ///< as given by the user
    kvrimage::input_file file;
    kvrimage::read_options options; ///< `as` is null until the file is parsed, unless given by the user
    kvrimage::read_result result;

    [[nodiscard]] const std::string& name() const noexcept { return file.name(); } ///< for messages
    [[nodiscard]] const kvrimage::memory_image& image() const { return result.image.value(); }
};

/// Returns the options of @p given for reading the file @p path; "" stands for no name.
[[nodiscard]] kvrimage::read_options read_options_of(const arguments& given, const std::string& path);

/// Opens the file @p path with the options of @p given.
/// @throws kvrimage::file_error if it cannot be read; tool_error (wrong usage) if the format is unknown
[[nodiscard]] memory_input open_memory(const arguments& given, const std::string& path);

/// Parses an opened file into @p input.result and stores its format in the options.
void parse(memory_input& input);

/// Returns the later obstacles of a command for a file that was read with @p given as @p result.
using later_obstacles = std::function<std::vector<kvrimage::diagnostic>(const arguments& given,
                                                                        const kvrimage::read_result& result)>;

/// Reads the file @p path; the result has an image. Reports on standard error what --keep-going removed from
/// the image, and the number of suspect diagnostics.
/// @throws broken_file if a diagnostic is broken and --keep-going is not given, or if nothing is readable
/// @throws the exceptions of open_memory()
/// @param later obstacles to resolve in the suggested command line
[[nodiscard]] memory_input read_memory(const arguments& given, const std::string& path,
                                       const later_obstacles& later = {});

/// Returns @p given for one of two compared files: --from applies to a file name that does not show its
/// format.
[[nodiscard]] arguments for_compared_file(const arguments& given, const std::string& path);

/// Reads one of two compared files like read_memory().
[[nodiscard]] memory_input read_compared_memory(const arguments& given, const std::string& path);

/// Reports the number of suspect diagnostics of check() on standard error, in one line, if reading @p input
/// has found one. Unset words alone are not reported.
void note_suspect_ones(const arguments& given, const memory_input& input);

/// Reports on standard error how the width was determined, if the file does not state it.
void note_width(const memory_input& input);

/// Returns "address 8 is beyond the depth 8 (0 to 7)" if @p range is not within @p image; else "".
[[nodiscard]] std::string range_fault(const kvrimage::address_range& range,
                                      const kvrimage::memory_image& image);

/// Returns the addresses of --range, or all addresses of @p image.
/// @throws tool_error (wrong usage) if they are not within it
[[nodiscard]] kvrimage::address_range range_within(const arguments& given,
                                                   const kvrimage::memory_image& image);

} // namespace kvrmem
