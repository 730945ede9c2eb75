#pragma once

#include "kvr/memory/store/word_store.h"

namespace kvrimage {

/// A store of the same texts, which costs about what @p words do: a fill stays one where other words were set
/// within it.
[[nodiscard]] kvr::word_store copy_of(const kvr::word_store& words);

} // namespace kvrimage
