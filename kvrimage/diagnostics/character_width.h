#pragma once

#include <cstddef>

namespace kvrimage {

/// Columns that @p code, a character that is shown, takes on a terminal: 2 for those of East Asian scripts
/// and for emoji, 0 for marks that are set on the character before, else 1.
[[nodiscard]] std::size_t columns_of_character(char32_t code);

} // namespace kvrimage
