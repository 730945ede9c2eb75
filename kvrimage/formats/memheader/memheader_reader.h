#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::read for memory files with a header. "#Format" determines the radix of digits; the
/// radix settings of the header do not.
[[nodiscard]] read_result read_memheader(std::string_view contents, const read_options& options);

} // namespace kvrimage
