#include "tools/kvrmem/files/unit_title.h"

#include <fmt/format.h>

namespace kvrmem {

std::string unit_title(kvrimage::address_unit unit, std::uint32_t width,
                       const std::optional<kvrimage::byte_order>& order) {
    constexpr std::uint32_t byte_bits = 8;
    if (unit != kvrimage::address_unit::byte) {
        return "word";
    }
    if (width <= byte_bits || !order) {
        return "byte";
    }
    return fmt::format("byte ({} a word, {}-endian)", (width + byte_bits - 1) / byte_bits,
                       *order == kvrimage::byte_order::little ? "little" : "big");
}

} // namespace kvrmem
