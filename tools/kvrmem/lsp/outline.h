#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/lsp/document.h"

#include <cstddef>
#include <string>
#include <vector>

namespace kvrmem::lsp {

/// An inclusive range of lines of a document.
struct line_range {
    std::size_t first = 0;
    std::size_t last = 0;
};

/// Words with consecutive addresses.
struct outline_block {
    line_range lines;
    kvrimage::span where; ///< from the first word or its address to the last word
    kvrimage::address_range addresses;
};

/// A setting and its value, such as "WIDTH".
struct outline_setting {
    kvrimage::span name;
    kvrimage::span value; ///< empty if missing
};

/// The structure of a document's text.
struct outline {
    std::vector<outline_setting> settings; ///< those before the first word
    std::vector<line_range> comments;      ///< two or more neighboring lines with only comments
    std::vector<outline_block> blocks;
    std::vector<line_range> runs; ///< three or more neighboring lines whose words all have the same text
};

[[nodiscard]] outline outline_of(document& of);

} // namespace kvrmem::lsp
