#pragma once

#include "kvr/memory/store/address_set.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace kvrimage {

/// What a statement that is to be written says: addresses and the texts of their words, which are repeated
/// over them.
struct mif_line {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
    std::vector<std::string> values;

    [[nodiscard]] bool is_range() const noexcept { return first != last; }
    /// Takes the first address off, which must not be the only one.
    std::string take_first();
    /// Takes the last address off, which must not be the only one.
    std::string take_last();
};

/// Addresses that may not get a statement with one value, since they have one.
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

/// Makes lines of two addresses and more from the single ones among @p lines, which follow upon each other,
/// whose addresses are taken; those that stay single are then taken too. There must be two addresses at
/// least.
void join_taken(std::vector<mif_line>& lines, taken_addresses& taken);

} // namespace kvrimage
