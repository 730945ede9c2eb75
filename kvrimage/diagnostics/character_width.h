#pragma once

#include <cstddef>

namespace kvrimage {

/// Returns the terminal columns of the printable character @p code: 2 for East Asian wide characters and
/// emoji, 0 for combining marks, else 1.
[[nodiscard]] std::size_t columns_of_character(char32_t code);

} // namespace kvrimage
