#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"

#include <functional>

namespace kvrimage {

/// Implements for_each_text() for words stored as bytes, if a row can hold a word.
/// @return false if nothing was done
[[nodiscard]] bool for_each_text_of_bytes(const image_words& words, const row_visitor& visit_row,
                                          const std::function<void(const text_run& run)>& visit_run);

/// Like for_each_row_or_run(), but does not join equal neighbors. Words stored as bytes stay bytes. If
/// @p visit_row visits none of them, @p visit_run gets them one by one.
template <class VisitRow, class VisitRun>
void for_each_text(const image_words& words, VisitRow&& visit_row, VisitRun&& visit_run) {
    if (!for_each_text_of_bytes(words, std::ref(visit_row), std::ref(visit_run))) {
        for_each_row_or_run(words, visit_row, visit_run);
    }
}

} // namespace kvrimage
