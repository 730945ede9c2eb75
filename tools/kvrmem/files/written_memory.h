#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <cstddef>
#include <string>

namespace kvrmem {

/// Returns the options in @p given for writing the file @p target. Radixes not given are those of @p like.
/// @throws tool_error (wrong usage) if the format is unknown
[[nodiscard]] kvrimage::write_options write_options_for(const arguments& given, const std::string& target,
                                                        const kvrimage::file_facts& like);

/// Copies the start address in @p facts to @p options, if the format supports it and the operations of
/// @p given keep addresses unchanged.
void keep_start_address(const arguments& given, const kvrimage::file_facts& facts,
                        kvrimage::write_options& options);

/// Notes on standard error that the start address of @p input is lost, because the output combines it with
/// other files or has a part of it.
void note_lost_start(const memory_input& input);

/// Returns "; start address 80000000 is left out" if @p facts have a start address and @p options do not;
/// else "".
[[nodiscard]] std::string lost_start_address(const kvrimage::file_facts& facts,
                                             const kvrimage::write_options& options);

/// Return the format as read or written: "MIF in HEX", "Intel HEX, byte addresses".
///@{
[[nodiscard]] std::string title_of_read(const memory_input& input);
[[nodiscard]] std::string title_of_written(const kvrimage::write_options& options);
///@}

/// Returns "16 words of 8 bits", or "2 of 16 words of 8 bits" for a format that does not state the depth and
/// thus has only the set words.
[[nodiscard]] std::string written_words(const kvrimage::memory_image& image, const kvrimage::format& written);

/// The origin of an output, for messages.
struct output_source {
    std::string name;          ///< "in.mif"; "" without an input
    std::size_t file_size = 0; ///< bytes of all inputs
};

/// Requires that writing @p image to @p target neither loses comments there nor takes unexpectedly much
/// space.
/// @throws tool_error (wrong usage) with everything that --force would accept
void require_harmless(const kvrimage::memory_image& image, const output_source& source,
                      const kvrimage::write_options& options, const std::string& target);

} // namespace kvrmem
