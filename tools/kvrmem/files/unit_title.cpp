#include "tools/kvrmem/files/unit_title.h"

#include <fmt/format.h>

namespace kvrmem {

std::string unit_title(kvrimage::address_unit unit, std::uint32_t width,
                       const std::optional<kvrimage::byte_order>& order) {
    constexpr std::uint32_t bits_per_byte = 8;
    if (unit != kvrimage::address_unit::byte) {
        return "word";
    }
    if (width <= bits_per_byte || !order) {
        return "byte";
    }
    return fmt::format("byte ({} a word, {}-endian)", (width + bits_per_byte - 1) / bits_per_byte,
                       *order == kvrimage::byte_order::little ? "little" : "big");
}

} // namespace kvrmem
