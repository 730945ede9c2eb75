#pragma once

#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/json.h"

#include <string>

namespace kvrmem {

/// Return the distribution of the words of a memory: values, entropy, toggle rate, runs, widths and period.
/// Words are shown in @p radix.
///@{
[[nodiscard]] std::string statistics_as_text(const kvrimage::memory_image& image, const word_radix& radix);
[[nodiscard]] json_value statistics_as_json(const kvrimage::memory_image& image, const word_radix& radix);
///@}

} // namespace kvrmem
