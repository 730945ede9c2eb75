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

// What "set", "fill" and "sum --put" have in common: they change words in the text of a file.

/// What was done at @p addresses, in the order of the operands, for a message: "2 words set".
using edit_summary = std::string (*)(const std::vector<kvrimage::address_range>& addresses);

/// What "set" and "fill" are.
struct edit_kind {
    const char* example; ///< what an operand looks like, for the message when one does not
    bool takes_ranges;   ///< an operand may name a range, and lists of values for it
    edit_summary summarize;
};

/// Reads the file that @p given names, makes the edits in its text, makes sure that the text then holds the
/// words that it is meant to hold, and writes it.
/// @throws tool_error (wrong usage), bad input for the lines of --from-file
void edit_file(const arguments& given, const edit_kind& kind);

/// The same for @p words at the addresses from @p first on of @p input, which was read as @p given says and
/// is in doubt afterwards.
void store_words(const arguments& given, memory_input& input, std::uint64_t first,
                 const std::vector<kvrimage::word>& words);

/// @throws tool_error (bad input) when the format of @p input has no edits
void require_edits(const memory_input& input);

/// --width and --depth are for files that do not say their sizes: the words of another width would not be
/// those of the file.
/// @throws tool_error (wrong usage) where @p given has one of them, and @p input says both
void refuse_sizes_said_twice(const arguments& given, const memory_input& input);

/// The options of "set" and "fill".
inline constexpr std::array<option_id, 10> edit_options = {
    option_id::from,   option_id::width,          option_id::depth,    option_id::unit,
    option_id::order,  option_id::from_file,      option_id::rounding, option_id::saturate,
    option_id::output, option_id::force_overwrite};

} // namespace kvrmem
