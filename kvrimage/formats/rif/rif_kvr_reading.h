#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>
#include <vector>

namespace kvrimage {

/// Implements consumer::check for RIF and the library kvr.
[[nodiscard]] std::vector<diagnostic> check_rif_for_kvr(std::string_view contents,
                                                        const read_options& options, const read_result& ours);

} // namespace kvrimage
