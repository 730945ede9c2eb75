#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// True when more of @p head is at fault than not.
[[nodiscard]] bool is_hardly_rif(std::string_view head);

/// format::sniff() for RIF.
[[nodiscard]] certainty sniff_rif(std::string_view head);

} // namespace kvrimage
