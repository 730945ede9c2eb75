#pragma once

#include <string_view>

namespace kvrmem {

/// Returns whether a chunk of the PNG file @p contents has a wrong CRC, which the decoder does not check, or
/// whether there is no end chunk. Data after the end chunk is ignored.
[[nodiscard]] bool has_damaged_chunk(std::string_view contents);

} // namespace kvrmem
