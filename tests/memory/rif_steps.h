#pragma once

#include "kvr/memory/rif_file.h"
#include "kvr/memory/rif_memory.h"

#include <cstdint>
#include <string>

namespace kvr {

/// What the handlers keep to themselves, for their tests.
struct rif_steps {
    static rif_memory& memory(KVR_MEMORY_RIF_FILE& handler) { return *handler.memory; }
    static void convert_address_to_hex(const KVR_MEMORY_RIF_FILE& handler, std::uint32_t value,
                                       std::string& out, std::uint32_t base) {
        handler.convert_address_to_hex(value, out, base);
    }
    static bool convert_data_to_hex(const KVR_MEMORY_RIF_FILE& handler, const std::string& value,
                                    std::string& out, KVR_MEMORY_RADIXES radix, std::uint32_t width) {
        return handler.convert_data_to_hex(value, out, radix, width);
    }
    static int get_radix_base(const KVR_MEMORY_RIF_FILE& handler, KVR_MEMORY_RADIXES radix) {
        return handler.get_radix_base(radix);
    }
};

} // namespace kvr
