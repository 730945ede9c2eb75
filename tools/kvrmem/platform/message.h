#pragma once

#include "tools/kvrmem/platform/terminal.h"

#include <string_view>

namespace kvrmem {

/// Writes @p text and a newline to standard error, as far as a terminal may show it. It may hold bytes of
/// files and names; of a very long one the end is cut off.
void print_message(std::string_view text);

/// print_message() after "kvrmem:", in red where @p choice allows it.
void print_failure(std::string_view text, color_choice choice);

/// Writes @p text to standard error as it is.
void print_message_as_it_is(std::string_view text);

} // namespace kvrmem
