#pragma once

#include <string>

namespace kvrmem {

/// The manual page, for man(7).
[[nodiscard]] std::string manual_page();

} // namespace kvrmem
