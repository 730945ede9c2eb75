#pragma once

#include "kvrimage/diagnostics/span.h"

#include <functional>
#include <string_view>

namespace kvrimage {

/// Implements format::find_comments for RIF.
void find_rif_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
