#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage_tests {

/// @p contents as format_text() lays them out, or the messages of why it does not, a line each. What is laid
/// out is laid out again, which must change nothing.
[[nodiscard]] std::string laid_out(std::string_view contents, const kvrimage::read_options& options);
/// The same for files of the format called @p name.
[[nodiscard]] std::string laid_out(std::string_view contents, std::string_view name);

} // namespace kvrimage_tests
