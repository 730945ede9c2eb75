#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// format::read() for $readmemh and for $readmemb. Without a width it is that of the digits of the longest
/// word.
[[nodiscard]] read_result read_readmemh(std::string_view contents, const read_options& options);
[[nodiscard]] read_result read_readmemb(std::string_view contents, const read_options& options);

} // namespace kvrimage
