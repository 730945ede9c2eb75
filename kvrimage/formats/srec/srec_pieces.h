#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::find_pieces for S-records.
void find_srec_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                      const piece_taker& take);

} // namespace kvrimage
