#pragma once

#include "kvr/memory/store/word_store.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What the library kvr makes of a file.
struct kvr_reading {
    kvr::word_store words;          ///< by address, the texts that it holds; "" where none is set
    radix texts_radix = radix::hex; ///< of these
    bool refused = false;
    span where;         ///< refused: the place that it does not take; empty: none in the file
    std::string reason; ///< refused: follows "the library kvr refuses the file: "
};

/// What @p theirs has otherwise than @p ours, our reading of @p contents: that the file is refused, or the
/// words that differ, as one diagnostic for all of them. A word that we have not set may be "" or 0 there.
/// Nothing when @p ours has no image, or a broken diagnostic, or one that says already what the library does
/// not take. It costs little more than a comparison of bytes where the words are the same hexadecimal texts.
[[nodiscard]] std::vector<diagnostic> compare_with_kvr(const format& as, std::string_view contents,
                                                       const read_options& options, const read_result& ours,
                                                       const kvr_reading& theirs);

} // namespace kvrimage
