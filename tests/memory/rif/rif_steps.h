#pragma once

#include "kvr/memory/rif/rif_file.h"
#include "kvr/memory/rif/rif_memory.h"

#include <cstdint>
#include <string>

namespace kvr {

/// Access to the single steps of the RIF handler.
struct rif_steps {
    KVR_MEMORY_RIF_FILE& file;

    [[nodiscard]] rif_memory& memory() const { return *file.memory; }
    void convert_address_to_hex(std::uint32_t value, std::string& out, std::uint32_t base) const {
        file.convert_address_to_hex(value, out, base);
    }
    [[nodiscard]] bool convert_data_to_hex(const std::string& value, std::string& out,
                                           KVR_MEMORY_RADIXES radix, std::uint32_t width) const {
        return file.convert_data_to_hex(value, out, radix, width);
    }
    [[nodiscard]] int get_radix_base(KVR_MEMORY_RADIXES radix) const { return file.get_radix_base(radix); }
};

} // namespace kvr
