#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/numbers/word_radix.h"

#include <span>
#include <string_view>

namespace kvrmem {

/// Prints the words of @p ranges, in their order, as runs in a document with the schema @p schema. Runs are
/// written immediately, since they may exceed the memory.
/// @return false if a word is unset
/// @throws kvrimage::file_error if the output cannot be written completely
bool print_words_as_json(std::string_view schema, const memory_input& input,
                         std::span<const kvrimage::address_range> ranges, const word_radix& radix);

} // namespace kvrmem
