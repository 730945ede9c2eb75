#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>

namespace kvrimage {

/// Implement format::find_pieces for lists of hexadecimal and binary words.
void find_readmemh_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                          const piece_taker& take);
void find_readmemb_pieces(std::string_view contents, const read_options& options, const read_result& ours,
                          const piece_taker& take);

} // namespace kvrimage
