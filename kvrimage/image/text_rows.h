#pragma once

#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"

#include <functional>

namespace kvrimage {

/// for_each_text() where words are held as bytes, and a row has room for one.
/// @return false, with nothing done, where they are not
[[nodiscard]] bool for_each_text_of_bytes(const image_words& words, const row_visitor& visit_row,
                                          const std::function<void(const text_run& run)>& visit_run);

/// for_each_row_or_run() for what does not ask whether neighbours are equal: words that are held as bytes
/// stay so. @p visit_run gets these one by one where @p visit_row visits none.
template <class VisitRow, class VisitRun>
void for_each_text(const image_words& words, VisitRow&& visit_row, VisitRun&& visit_run) {
    if (!for_each_text_of_bytes(words, std::ref(visit_row), std::ref(visit_run))) {
        for_each_row_or_run(words, visit_row, visit_run);
    }
}

} // namespace kvrimage
