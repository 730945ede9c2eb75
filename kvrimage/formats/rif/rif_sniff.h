#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// format::sniff() for RIF.
[[nodiscard]] certainty sniff_rif(std::string_view head);

} // namespace kvrimage
