#pragma once

#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <string>

namespace kvrmem::lsp {

/// "0x001F": with the digits that the highest address @p last of the memory has.
[[nodiscard]] std::string address_text(std::uint64_t address, std::uint64_t last);

/// "0x0010..0x001F", or the address alone where there is only one.
[[nodiscard]] std::string addresses_text(const kvrimage::address_range& addresses, std::uint64_t last);

} // namespace kvrmem::lsp
