#include "kvrimage/picture/column_grid.h"

namespace kvrimage {

column_grid::column_grid(std::uint64_t first, std::uint64_t last, std::uint32_t most_columns)
    : first_offset(first),
      last_offset(last),
      column_words((words() + most_columns - 1) / most_columns) {}

} // namespace kvrimage
