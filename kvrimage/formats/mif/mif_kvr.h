#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// What the library kvr refuses or reads otherwise of a MIF; see consumer::check.
[[nodiscard]] std::vector<diagnostic>
check_mif_with_kvr(std::string_view contents, const read_options& options, const read_result& ours);

} // namespace kvrimage
