#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::read for Logisim files. A missing width is that of the longest word, or 8 in a file of
/// bytes.
[[nodiscard]] read_result read_logisim(std::string_view contents, const read_options& options);

} // namespace kvrimage
