#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// format::read() for Logisim files. Without a width it is that of the longest word, and that of a byte in a
/// file of bytes.
[[nodiscard]] read_result read_logisim(std::string_view contents, const read_options& options);

} // namespace kvrimage
