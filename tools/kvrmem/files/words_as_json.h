#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/numbers/word_radix.h"

#include <span>
#include <string_view>

namespace kvrmem {

/// Prints the words of @p ranges, in their order, as runs, which are written as they are found: there may be
/// more of them than memory. The document has the schema @p schema.
/// @return false when one of the words is not set
/// @throws kvrimage::file_error when not everything could be written
bool print_words_as_json(std::string_view schema, const memory_input& input,
                         std::span<const kvrimage::address_range> ranges, const word_radix& radix);

} // namespace kvrmem
