#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// What the registry says of the formats, in words for tables and JSON.

/// "read", "write", "edit"
[[nodiscard]] std::vector<std::string_view> uses_of(const kvrimage::format& one);

/// What a file says of itself: "width", "depth", "radix".
[[nodiscard]] std::vector<std::string_view> stated_by(const kvrimage::format& one);

/// "gaps", "don't-care bits", "ranges"
[[nodiscard]] std::vector<std::string_view> held_by(const kvrimage::format& one);

/// "words", "bytes" or "words or bytes"
[[nodiscard]] std::string_view title_of(kvrimage::address_unit counted);

/// A line for each format, in columns under a line of titles: all that is known of them.
[[nodiscard]] std::string format_table();

/// The same with names, extensions, uses and addresses only, for pages that are no wider than 100 columns.
[[nodiscard]] std::string short_format_table();

} // namespace kvrmem
