#include "tools/kvrmem/files/unit_title.h"

#include "kvrimage/bytes/bytes_of_words.h"

#include <fmt/format.h>

namespace kvrmem {

std::string unit_title(kvrimage::address_unit unit, std::uint32_t width,
                       const std::optional<kvrimage::byte_order>& order) {
    if (unit != kvrimage::address_unit::byte) {
        return "word";
    }
    if (kvrimage::bytes_of_width(width) == 1 || !order) {
        return "byte";
    }
    return fmt::format("byte ({} a word, {}-endian)", kvrimage::bytes_of_width(width),
                       *order == kvrimage::byte_order::little ? "little" : "big");
}

} // namespace kvrmem
