#pragma once

#include "kvr/memory/store/address_set.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace kvrimage {

/// A statement to write: addresses and the texts of the words, which repeat over the addresses.
struct mif_line {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
    std::vector<std::string> values;

    [[nodiscard]] bool is_range() const noexcept { return first != last; }
    /// Removes the first address, which must not be the only one.
    std::string take_first();
    /// Removes the last address, which must not be the only one.
    std::string take_last();
};

/// Addresses that must not get a second statement with a single value.
class taken_addresses {
public:
    explicit taken_addresses(const kvr::address_set& of_file) : file(of_file) {}
    [[nodiscard]] bool contains(std::uint64_t address) const {
        return file.contains(static_cast<std::uint32_t>(address)) || added.contains(address);
    }
    void add(std::uint64_t address) { added.insert(address); }

private:
    const kvr::address_set& file;
    std::set<std::uint64_t> added;
};

/// Combines single-address lines whose address is taken with their neighbors into lines of at least two
/// addresses. Addresses that remain single become taken. @p lines must be consecutive and cover at least two
/// addresses.
void join_taken(std::vector<mif_line>& lines, taken_addresses& taken);

} // namespace kvrimage
