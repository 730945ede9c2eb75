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

/// Header lines without a keyword, by their place in the file.
struct header_comment_list {
    std::deque<std::string> lines;
    std::uint32_t count = 0; ///< number of lines that a reader has added
};

/// The state of the MIF handler.
struct mif_memory : memory_state {
    explicit mif_memory(KVR_MEMORY_FILE* owner) : memory_state(owner) {
        memory_initialize_value.assign(1, '0');
    }

    bool dont_consolidate_data = false;
    comment_store data_comments;
    kvr::address_set address_set; ///< addresses set by lines with a single address and one value

    /// The header parser uses the first name that occurs in the line. The last entry has an empty name, so an
    /// unknown radix name is accepted and yields RADIX_NONE.
    std::array<radix_name, 6> radix_names;
    /// 0: before any header keyword, 1: after the width line, 2: depth, 3: address radix, 4: data radix, 5:
    /// after the content.
    std::array<header_comment_list, 6> header_comments;
};

} // namespace kvr
