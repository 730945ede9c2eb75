#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/lsp/document.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kvrmem::lsp {

/// Lines of a document, the last one included.
struct line_range {
    std::size_t first = 0;
    std::size_t last = 0;
};

/// Words whose addresses follow each other.
struct outline_block {
    line_range lines;
    kvrimage::span where; ///< from the first word or its address to the last word
    kvrimage::address_range addresses;
};

/// "WIDTH" and its value.
struct outline_setting {
    kvrimage::span name;
    kvrimage::span value; ///< empty where there is none
};

/// What the text of a document consists of.
struct outline {
    std::vector<outline_setting> settings; ///< those before the first word
    std::vector<line_range> comments;      ///< neighbouring lines of nothing but comments, two at least
    std::vector<outline_block> blocks;
    std::vector<line_range> runs; ///< neighbouring lines whose words all have one text, three at least
};

[[nodiscard]] outline outline_of(document& of);

} // namespace kvrmem::lsp
