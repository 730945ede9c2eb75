#pragma once

#include "tools/kvrmem/command_line/option_table.h"
#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/memory/memory_image.h"
#include "tools/kvrmem/numbers/human_number.h"

#include <array>
#include <string>
#include <vector>

namespace kvrmem {

// What "set" and "fill" have in common: they change words in the text of a file.

/// Makes edits of the operands behind the file's name. The image tells the width and how many words the
/// memory may have.
using edit_maker = std::vector<word_edit> (*)(const std::vector<std::string>& operands,
                                              const memory_image& image);

/// What was done, for a message: "2 words set".
using edit_summary = std::string (*)(const std::vector<word_edit>& edits);

/// Reads the file that @p given names, makes the edits in its text, makes sure that the text then holds the
/// words that it is meant to hold, and writes it.
void edit_file(const arguments& given, edit_maker make_edits, edit_summary summarize);

/// @p operand taken apart at its first "=".
struct assignment {
    address_range range;
    std::string values;
};

/// @param example what an operand looks like, for the message when @p operand does not.
/// @throws tool_error (wrong usage), also for addresses that @p image does not have.
[[nodiscard]] assignment read_assignment(const std::string& operand, const memory_image& image,
                                         const char* example);

/// The options of both commands.
inline constexpr std::array edit_options = {option_id::from, option_id::width, option_id::depth,
                                            option_id::output, option_id::force_overwrite};

} // namespace kvrmem
