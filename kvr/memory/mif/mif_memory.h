#pragma once

#include "kvr/memory/memory_state.h"
#include "kvr/memory/store/address_set.h"
#include "kvr/memory/store/comment_store.h"

#include <array>
#include <cstdint>
#include <deque>
#include <string>

namespace kvr {

/// A radix and its keyword in the MIF header.
struct radix_name {
    std::string name;
    KVR_MEMORY_RADIXES radix = RADIX_NONE;
};

/// Header lines that are no keyword lines, kept by their place in the file.
struct header_comment_list {
    std::deque<std::string> lines;
    std::uint32_t count = 0; ///< lines that a reader put there
};

/// What the MIF handler holds.
struct mif_memory : memory_state {
    explicit mif_memory(KVR_MEMORY_FILE* owner) : memory_state(owner) {
        memory_initialize_value.assign(1, '0');
    }

    bool dont_consolidate_data = false;
    comment_store data_comments;
    kvr::address_set address_set; ///< addresses that a single-address line with one value has set

    /// Searched in order by the header parser, which takes the first name that occurs in the line. The last
    /// entry keeps its empty name, so that an unknown radix name is not refused but yields RADIX_NONE.
    std::array<radix_name, 6> radix_names;
    /// 0 before any header keyword, 1 after the width line, 2 depth, 3 address radix, 4 data radix,
    /// 5 after the content.
    std::array<header_comment_list, 6> header_comments;
};

} // namespace kvr
