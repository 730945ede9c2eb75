#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implements format::find_pieces for MIF.
void find_mif_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                     const piece_taker& take);

} // namespace kvrimage
