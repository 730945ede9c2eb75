#pragma once

#include "kvr/memory/store/word_store.h"

namespace kvrimage {

/// Returns a store with the same texts. It takes about as much memory as @p words: a fill stays a fill even
/// if words within it were set later.
[[nodiscard]] kvr::word_store copy_of(const kvr::word_store& words);

} // namespace kvrimage
