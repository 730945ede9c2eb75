#pragma once

#include "kvr/memory/memory_state.h"

#include <cstdint>

namespace kvr {

/// The state of the Intel HEX handler.
struct hex_memory : memory_state {
    explicit hex_memory(KVR_MEMORY_FILE* owner) : memory_state(owner) {
        word_size = 8;
        address_radix = RADIX_HEX;
        memory_initialize_value.assign(1, '0');
    }

    /// Returns the bytes of a word in a record; 0 for words of 0 bits.
    [[nodiscard]] std::uint32_t bytes_per_word() const noexcept {
        return word_size / 8 + (word_size % 8 != 0 ? 1 : 0);
    }

    std::uint32_t lowest_address = 0;
    std::uint32_t highest_address = 0;
    /// Added to record addresses. It persists after a read: a file without extended address records is read
    /// at the offset that the previous file set.
    std::uint32_t address_offset = 0;
};

} // namespace kvr
