#include "tools/kvrmem/lsp/address_text.h"

#include <fmt/format.h>

namespace kvrmem::lsp {

std::string address_text(std::uint64_t address, std::uint64_t last) {
    return fmt::format("0x{:0{}X}", address, fmt::formatted_size("{:X}", last));
}

std::string addresses_text(const kvrimage::address_range& addresses, std::uint64_t last) {
    const std::string first = address_text(addresses.first, last);
    return addresses.first == addresses.last
               ? first
               : fmt::format("{}..{}", first, address_text(addresses.last, last));
}

} // namespace kvrmem::lsp
