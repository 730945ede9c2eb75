#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Returns whether more pieces of @p head are faulty than valid.
[[nodiscard]] bool is_hardly_rif(std::string_view head);

/// Implements format::sniff for RIF.
[[nodiscard]] certainty sniff_rif(std::string_view head);

} // namespace kvrimage
