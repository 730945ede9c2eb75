#include "kvr/memory/store/address_set.h"

namespace kvr {

bool address_set::contains(std::uint32_t address) const noexcept {
    const std::size_t number = address / directory_addresses;
    if (number >= directories.size() || directories[number] == nullptr) {
        return false;
    }
    const auto& bits = (*directories[number])[address % directory_addresses / block_addresses];
    return bits != nullptr && ((*bits)[cell_number(address)] & bit_of(address)) != 0;
}

void address_set::clear() noexcept {
    directories.clear();
    found_number = no_block;
}

/// Finds or makes the block for @p address.
void address_set::find_block(std::uint32_t address) {
    const std::size_t number = address / directory_addresses;
    if (number >= directories.size()) {
        directories.resize(number + 1);
    }
    if (directories[number] == nullptr) {
        directories[number] = std::make_unique<directory>();
    }
    auto& bits = (*directories[number])[address % directory_addresses / block_addresses];
    if (bits == nullptr) {
        bits = std::make_unique<block>();
    }
    found_block = bits.get();
    found_number = address / block_addresses;
}

} // namespace kvr
