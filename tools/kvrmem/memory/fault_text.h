#pragma once

#include "kvr/memory/memory_types.h"
#include "kvr/memory/read_fault.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace kvrmem {

/// What people are told of a fault that a reader has found.
struct fault_text {
    const char* code; ///< a name that stays the same from version to version
    std::string message;
    std::string hint; ///< the likely repair; "" when there is none
};

/// What a MIF file has said before a fault.
struct mif_limits {
    std::uint32_t depth = 0;
    KVR_MEMORY_RADIXES address_radix = RADIX_HEX;
};

/// @param text the header line (upper-case, without blanks) or the statement at fault, as the reader has it.
[[nodiscard]] fault_text describe_mif_fault(const kvr::read_fault& fault, std::string_view text,
                                            const mif_limits& limits);

/// @param record the line at fault without blanks.
[[nodiscard]] fault_text describe_hex_fault(const kvr::read_fault& fault, std::string_view record);

/// @param line the line at fault.
[[nodiscard]] fault_text describe_rif_fault(const kvr::read_fault& fault, std::string_view line);

/// "address 20 is beyond DEPTH 16 (0 to 15)"; the decimal value is added where @p digits show another one.
[[nodiscard]] std::string address_beyond(std::string_view digits, std::uint64_t address,
                                         std::string_view depth_name, std::uint32_t depth);

} // namespace kvrmem
