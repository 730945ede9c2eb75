#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace kvr {

/// A set of word addresses for depths up to 2^32, sparse or dense. Regions without addresses take almost no
/// memory.
class address_set {
public:
    address_set() = default;
    ~address_set() = default;
    address_set(const address_set&) = delete;
    address_set& operator=(const address_set&) = delete;

    /// Adds @p address. Returns false if it was in the set already. The set is unchanged if this throws.
    bool insert(std::uint32_t address) {
        if (address / block_addresses != found_number) {
            find_block(address);
        }
        std::uint64_t& cell = (*found_block)[cell_number(address)];
        const std::uint64_t before = std::exchange(cell, cell | bit_of(address));
        return cell != before;
    }
    /// Returns how many adjacent addresses from @p address on are not in the set, as far as this is known in
    /// constant time: at least one unless @p address is in the set, and at most as many as insert_run()
    /// accepts.
    [[nodiscard]] std::uint32_t count_free(std::uint32_t address) {
        if (address / block_addresses != found_number) {
            find_block(address);
        }
        const std::uint64_t after = (*found_block)[cell_number(address)] >> (address % cell_addresses);
        return after != 0 ? static_cast<std::uint32_t>(std::countr_zero(after))
                          : cell_addresses - address % cell_addresses;
    }
    /// Adds @p count addresses from @p address on, 1 up to what count_free() just returned.
    void insert_run(std::uint32_t address, std::uint32_t count) noexcept {
        const std::uint64_t bits = ~std::uint64_t{0} >> (cell_addresses - count);
        (*found_block)[cell_number(address)] |= bits << (address % cell_addresses);
    }
    [[nodiscard]] bool contains(std::uint32_t address) const noexcept;
    void clear() noexcept;

private:
    static constexpr std::uint32_t cell_addresses = 64;
    static constexpr std::uint32_t block_addresses = 64 * cell_addresses;
    static constexpr std::uint32_t directory_addresses = 1024 * block_addresses;

    /// One bit for each address.
    using block = std::array<std::uint64_t, block_addresses / cell_addresses>;
    /// The blocks in order of addresses; null for blocks without addresses.
    using directory = std::array<std::unique_ptr<block>, directory_addresses / block_addresses>;

    [[nodiscard]] static std::size_t cell_number(std::uint32_t address) noexcept {
        return address % block_addresses / cell_addresses;
    }
    [[nodiscard]] static std::uint64_t bit_of(std::uint32_t address) noexcept {
        return std::uint64_t{1} << (address % cell_addresses);
    }
    void find_block(std::uint32_t address);

    std::vector<std::unique_ptr<directory>> directories; ///< up to the highest one in use

    // The most recent block: addresses are mostly inserted in order.
    std::uint32_t found_number = no_block; ///< first address of the block / block_addresses
    block* found_block = nullptr;

    static constexpr std::uint32_t no_block = std::numeric_limits<std::uint32_t>::max();
};

} // namespace kvr
