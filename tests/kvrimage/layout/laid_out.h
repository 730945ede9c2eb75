#pragma once

#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage_tests {

/// The layout of @p contents, or the messages of its refusal, one per line. Lays the layout out again, which
/// must change nothing.
[[nodiscard]] std::string laid_out(std::string_view contents, const kvrimage::read_options& options);
/// The same for the format @p name.
[[nodiscard]] std::string laid_out(std::string_view contents, std::string_view name);

} // namespace kvrimage_tests
