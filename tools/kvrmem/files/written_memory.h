#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <cstddef>
#include <string>

namespace kvrmem {

/// How @p given wants the file @p target written, in the radixes of @p like where it does not say them.
/// @throws tool_error (wrong usage) when nothing shows the format
[[nodiscard]] kvrimage::write_options write_options_for(const arguments& given, const std::string& target,
                                                        const kvrimage::file_facts& like);

/// Lets @p options keep the start address of the file with @p facts, as far as the format holds it and the
/// operations of @p given leave the addresses as they are.
void keep_start_address(const arguments& given, const kvrimage::file_facts& facts,
                        kvrimage::write_options& options);

/// Reports on standard error where the file @p input has a start address, which the memory that is made of it
/// and others, or of a part of it, has not.
void note_lost_start(const memory_input& input);

/// "; start address 80000000 is left out" where the file with @p facts has one and @p options do not; else
/// "".
[[nodiscard]] std::string lost_start_address(const kvrimage::file_facts& facts,
                                             const kvrimage::write_options& options);

/// "MIF in HEX", "Intel HEX, byte addresses": what @p input was read as, and what is written with @p options.
///@{
[[nodiscard]] std::string title_of_read(const memory_input& input);
[[nodiscard]] std::string title_of_written(const kvrimage::write_options& options);
///@}

/// "16 words of 8 bits". A format that does not state the depth holds the words that are set, "2 of 16 words
/// of 8 bits".
[[nodiscard]] std::string written_words(const kvrimage::memory_image& image, const kvrimage::format& written);

/// What an output is made from, for messages.
struct output_source {
    std::string name;          ///< "in.mif"; "" where there is no input
    std::size_t file_size = 0; ///< bytes of all inputs
};

/// Makes sure that writing @p image to @p target neither loses comments there, nor takes more space than its
/// user may know.
/// @throws tool_error (wrong usage) with all that --force gives up
void require_harmless(const kvrimage::memory_image& image, const output_source& source,
                      const kvrimage::write_options& options, const std::string& target);

} // namespace kvrmem
