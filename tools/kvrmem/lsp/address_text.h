#pragma once

#include "kvrimage/image/address_range.h"

#include <cstdint>
#include <string>

namespace kvrmem::lsp {

/// Returns "0x001F", with as many digits as the highest address @p last of the memory.
[[nodiscard]] std::string address_text(std::uint64_t address, std::uint64_t last);

/// Returns "0x0010..0x001F", or a single address.
[[nodiscard]] std::string addresses_text(const kvrimage::address_range& addresses, std::uint64_t last);

} // namespace kvrmem::lsp
