#pragma once

#include "kvr/memory/store/word_store.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The result of reading a file with the library kvr.
struct kvr_reading {
    kvr::word_store words;          ///< texts by address; "" for unset words
    radix texts_radix = radix::hex; ///< of the texts in `words`
    bool refused = false;
    span where;         ///< if rejected: the place of the fault; empty if it has none in the file
    std::string reason; ///< if rejected: completes "the library kvr refuses the file: "
};

/// Compares @p theirs with @p ours, our reading of @p contents. Reports that the library rejects the file, or
/// all different words in one diagnostic. A word that is unset in @p ours may be "" or 0 in @p theirs.
/// Returns nothing if @p ours has no image, has a broken diagnostic, or already reports what the library
/// rejects. Takes little more than a byte comparison if the words are the same hexadecimal texts.
[[nodiscard]] std::vector<diagnostic> compare_with_kvr(const format& as, std::string_view contents,
                                                       const read_options& options, const read_result& ours,
                                                       const kvr_reading& theirs);

} // namespace kvrimage
