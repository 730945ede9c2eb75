#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"

#include <functional>

namespace kvrimage {

/// for_each_text() where words are held as bytes, and a row has room for one.
/// @return false, with nothing done, where they are not
[[nodiscard]] bool for_each_text_of_bytes(const image_words& words, const row_taker& take_row,
                                          const std::function<void(const text_run& run)>& take_run);

/// for_each_row_or_run() for what does not ask whether neighbours are equal: words that are held as bytes
/// stay so. @p take_run gets these one by one where @p take_row takes none.
template <class TakeRow, class TakeRun>
void for_each_text(const image_words& words, TakeRow&& take_row, TakeRun&& take_run) {
    if (!for_each_text_of_bytes(words, std::ref(take_row), std::ref(take_run))) {
        for_each_row_or_run(words, take_row, take_run);
    }
}

} // namespace kvrimage
