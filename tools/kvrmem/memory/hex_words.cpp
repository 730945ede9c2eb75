#include "tools/kvrmem/memory/hex_words.h"

#include <fmt/format.h>

namespace kvrmem {

bool is_hex_end_record(std::string_view record) {
    constexpr std::size_t type = 7;
    constexpr std::size_t type_digits = 2;
    return record.size() >= type + type_digits && record.substr(type, type_digits) == "01";
}

std::string checksum_of(std::string_view fields) {
    return fmt::format("{:02X}", (0U - kvr::sum_of_bytes(fields)) & 0xFFU);
}

} // namespace kvrmem
