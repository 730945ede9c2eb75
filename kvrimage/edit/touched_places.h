#pragma once

#include "kvrimage/edit/edit_pieces.h"
#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <vector>

namespace kvrimage {

/// A place of a file (a statement, a record, a line) that sets words.
struct setting_place {
    std::uint64_t number; ///< chosen by the caller, ascending: an index or an offset
    address_range addresses;
};

/// A place of a file and the pieces whose words it sets.
struct touched_place {
    std::uint64_t number;
    std::vector<edit_piece> pieces;
};

/// Finds for each piece the places of the file that determine its words. @p places are in the order of the
/// file; the last one that sets an address determines it. Parts of pieces without such a place remain in
/// @p pieces.
[[nodiscard]] std::vector<touched_place> find_touched_places(const std::vector<setting_place>& places,
                                                             edit_pieces& pieces);

} // namespace kvrimage
