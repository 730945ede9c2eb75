#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// Implements consumer::check for MIF and the library kvr.
[[nodiscard]] std::vector<diagnostic>
check_mif_with_kvr(std::string_view contents, const read_options& options, const read_result& ours);

} // namespace kvrimage
