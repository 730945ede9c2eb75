#pragma once

#include "kvrimage/diagnostics/span.h"

#include <functional>
#include <string_view>

namespace kvrimage {

/// Implements format::find_comments for Intel HEX.
void find_hex_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
