#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/word.h"

#include <vector>

namespace kvrimage {

/// Assigns new words to addresses.
struct assignment {
    address_range addresses; ///< the addresses to set
    std::vector<word> words; ///< in address order; repeated if there are fewer words than addresses
};

/// The edits of a file, or the reasons why it cannot be edited.
struct edit_result {
    std::vector<text_edit> edits;        ///< in order, without overlaps; empty if there are diagnostics
    std::vector<diagnostic> diagnostics; ///< the reasons; empty if the file can be edited
};

} // namespace kvrimage
