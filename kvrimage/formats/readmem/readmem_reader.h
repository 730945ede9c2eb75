#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implement format::read for $readmemh and $readmemb. A missing width is that of the longest word by its
/// digits.
[[nodiscard]] read_result read_readmemh(std::string_view contents, const read_options& options);
[[nodiscard]] read_result read_readmemb(std::string_view contents, const read_options& options);

} // namespace kvrimage
