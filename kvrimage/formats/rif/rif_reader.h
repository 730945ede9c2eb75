#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::read for RIF. A missing width is that of the longest word by its digits.
[[nodiscard]] read_result read_rif(std::string_view contents, const read_options& options);

} // namespace kvrimage
