#pragma once

#include <cstdint>
#include <limits>

namespace kvrmem {

/// Finds how many bytes a word has where one record goes on at the address that the one before it ends at.
class width_finder {
public:
    /// Takes a data record of @p bytes bytes at the word address @p address.
    void take(std::uint64_t address, std::uint32_t bytes) {
        if (address > previous_address && previous_bytes > 0) {
            const std::uint64_t words = address - previous_address;
            if (words <= previous_bytes) {
                see(previous_bytes % words == 0 ? static_cast<std::uint32_t>(previous_bytes / words) : 0);
            }
        }
        previous_address = address;
        previous_bytes = bytes;
    }
    /// Bytes a word; 0 when the records do not tell, or tell different things.
    [[nodiscard]] std::uint32_t bytes() const { return found && consistent ? found_bytes : 0; }

private:
    void see(std::uint32_t bytes) {
        consistent = consistent && bytes != 0 && (!found || found_bytes == bytes);
        found_bytes = bytes;
        found = true;
    }

    std::uint64_t previous_address = std::numeric_limits<std::uint64_t>::max();
    std::uint32_t previous_bytes = 0;
    std::uint32_t found_bytes = 0;
    bool found = false;
    bool consistent = true;
};

} // namespace kvrmem
