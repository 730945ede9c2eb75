#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// Properties of the registered formats as words, for tables and JSON.

/// Returns a selection of "read", "write", "edit".
[[nodiscard]] std::vector<std::string_view> uses_of(const kvrimage::format& one);

/// Returns what a file states: a selection of "width", "depth", "radix".
[[nodiscard]] std::vector<std::string_view> stated_by(const kvrimage::format& one);

/// Returns a selection of "gaps", "don't-care bits", "ranges".
[[nodiscard]] std::vector<std::string_view> held_by(const kvrimage::format& one);

/// Returns "words", "bytes" or "words or bytes".
[[nodiscard]] std::string_view title_of(kvrimage::address_unit counted);

/// Returns a table of all properties, with one line for each format below a heading.
[[nodiscard]] std::string format_table();

/// Returns a table with names, extensions, uses and addresses only, at most 100 columns wide.
[[nodiscard]] std::string short_format_table();

} // namespace kvrmem
