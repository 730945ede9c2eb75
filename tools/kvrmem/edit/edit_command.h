#pragma once

#include "kvrimage/formats/format.h"
#include "tools/kvrmem/command_line/option_table.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace kvrmem {

// What "set" and "fill" have in common: they change words in the text of a file.

/// What the user has written before and after the first "=" of an operand.
struct edit_operand {
    std::string text; ///< the whole operand, for messages
    kvrimage::address_range addresses;
    std::string values;
};

/// Makes an assignment of an operand for words of @p width bits.
/// @throws tool_error (wrong usage)
using assignment_maker = kvrimage::assignment (*)(const edit_operand& operand, std::uint32_t width);

/// What was done, for a message: "2 words set".
using edit_summary = std::string (*)(const std::vector<kvrimage::assignment>& assignments);

/// What one of the two commands is.
struct edit_kind {
    const char* example; ///< what an operand looks like, for the message when one does not
    assignment_maker make;
    edit_summary summarize;
};

/// Reads the file that @p given names, makes the edits in its text, makes sure that the text then holds the
/// words that it is meant to hold, and writes it.
void edit_file(const arguments& given, const edit_kind& kind);

/// The options of both commands.
inline constexpr std::array edit_options = {option_id::from,           option_id::width, option_id::depth,
                                            option_id::unit,           option_id::order, option_id::output,
                                            option_id::force_overwrite};

} // namespace kvrmem
