#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

// See format::sniff. A list of zeros and ones is equally likely both.

[[nodiscard]] certainty sniff_readmemh(std::string_view head);
[[nodiscard]] certainty sniff_readmemb(std::string_view head);

} // namespace kvrimage
