#pragma once

#include "kvr/memory/memory_state.h"

namespace kvr {

/// The state of the RIF handler.
struct rif_memory : memory_state {
    explicit rif_memory(KVR_MEMORY_FILE* owner) : memory_state(owner) {
        address_radix = RADIX_HEX;
        memory_radix = RADIX_HEX;
    }
};

} // namespace kvr
