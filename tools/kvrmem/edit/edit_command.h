#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/image/word.h"
#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/files/memory_input.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

// Common parts of "set", "fill" and "sum --put", which change words in the text of a file.

/// Returns a message about the addresses set, in the order of the operands: "2 words set".
using edit_summary = std::string (*)(const std::vector<kvrimage::address_range>& addresses);

/// The properties of "set" or "fill".
struct edit_kind {
    const char* example; ///< example of an operand, for messages
    bool accepts_ranges; ///< an operand may have a range and lists of values
    edit_summary summarize;
};

/// Reads the file named in @p given, edits its text, verifies that the text then contains the new words, and
/// writes it.
/// @throws tool_error (wrong usage); bad input for lines of --from-file
void edit_file(const arguments& given, const edit_kind& kind);

/// Does the same for @p words at the addresses from @p first on of @p input, which was read with the options
/// of @p given. The state of @p input is undefined afterwards.
void store_words(const arguments& given, memory_input& input, std::uint64_t first,
                 const std::vector<kvrimage::word>& words);

/// @throws tool_error (bad input) if the format of @p input does not support edits
void require_edits(const memory_input& input);

/// Rejects --width and --depth if the file states both sizes: words of another width would not be those of
/// the file.
/// @throws tool_error (wrong usage) if @p given has one of them and @p input states both
void refuse_sizes_said_twice(const arguments& given, const memory_input& input);

/// The options of "set" and "fill".
inline constexpr std::array<option_id, 10> edit_options = {
    option_id::from,   option_id::width,          option_id::depth,    option_id::unit,
    option_id::order,  option_id::from_file,      option_id::rounding, option_id::saturate,
    option_id::output, option_id::force_overwrite};

} // namespace kvrmem
