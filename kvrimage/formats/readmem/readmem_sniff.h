#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

// Implement format::sniff. A list of zeros and ones fits both formats equally.

[[nodiscard]] certainty sniff_readmemh(std::string_view head);
[[nodiscard]] certainty sniff_readmemb(std::string_view head);

} // namespace kvrimage
