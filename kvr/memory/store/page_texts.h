#pragma once

#include <cstddef>
#include <memory>

namespace kvr {

/// The characters of the words of a page. They may be a part of a block that several pages share; the last
/// page to be released releases the block.
using page_texts = std::shared_ptr<char[]>;

/// Makes the texts of pages. The first ones are allocated one by one, so that a small store takes no more
/// memory than it needs; the others share blocks of large pages, which the system provides faster.
class page_texts_maker {
public:
    /// Returns room for @p size characters, at most half a block: 1 MiB.
    [[nodiscard]] page_texts make(std::size_t size);

private:
    std::size_t made = 0; ///< characters allocated one by one
    page_texts block;
    std::size_t used = 0; ///< characters of the block
};

} // namespace kvr
