#pragma once

#include "kvrimage/diagnostics/span.h"

#include <functional>
#include <string_view>

namespace kvrimage {

/// See format::find_comments.
void find_hex_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
