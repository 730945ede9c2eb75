#pragma once

#include "tools/kvrmem/platform/terminal.h"

#include <string_view>

namespace kvrmem {

/// Writes @p text and a newline to standard error. Bytes of files and names in it are made safe for a
/// terminal, and the end of a very long text is cut off.
void print_message(std::string_view text);

/// print_message() after "kvrmem:", in red where @p choice allows it.
void print_failure(std::string_view text, color_choice choice);

/// Writes @p text to standard error unchanged.
void print_message_as_it_is(std::string_view text);

} // namespace kvrmem
