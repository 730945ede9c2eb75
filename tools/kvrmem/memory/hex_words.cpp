#include "tools/kvrmem/memory/hex_words.h"

#include <fmt/format.h>

namespace kvrmem {

std::string checksum_of(std::string_view fields) {
    return fmt::format("{:02X}", (0U - kvr::sum_of_bytes(fields)) & 0xFFU);
}

} // namespace kvrmem
