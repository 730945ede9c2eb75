#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Bytes at neighbouring addresses.
struct byte_block {
    std::uint64_t address;  ///< of the first one
    std::string_view bytes; ///< at least one

    [[nodiscard]] std::uint64_t end() const noexcept { return address + bytes.size(); }
};

/// Bytes that a file sets more than once.
struct byte_overlap {
    std::uint64_t first; ///< the lowest address of them
    std::uint64_t last;
    bool differ; ///< the later value is another one
};

/// What a file of bytes holds: blocks at addresses of 64 bits. Neighbouring blocks that are added one after
/// the other become one.
class byte_blocks {
public:
    byte_blocks() = default;
    /// @param most_bytes that room_for() will hand out in all
    explicit byte_blocks(std::size_t most_bytes) : owned(new char[most_bytes]) {}

    /// Where the next @p count bytes (at least one), at @p address, are to be put, at once. address + count
    /// must not be beyond 2^64 - 1.
    [[nodiscard]] char* room_for(std::uint64_t address, std::size_t count) {
        char* const place = owned.get() + used;
        used += count;
        add(address, {place, count});
        return place;
    }
    /// Adds @p bytes (at least one), which stay valid as long as the blocks, without a copy.
    void add(std::uint64_t address, std::string_view bytes);

    /// Puts the blocks in the order of their addresses, without overlaps: of two values the later one counts.
    /// @return what was set more than once, in the order of the addresses
    std::vector<byte_overlap> sort();

    /// In the order of the file, and after sort() in that of the addresses.
    [[nodiscard]] const std::vector<byte_block>& all() const noexcept { return blocks; }
    [[nodiscard]] bool empty() const noexcept { return blocks.empty(); }

private:
    std::unique_ptr<char[]> owned;
    std::size_t used = 0;
    std::vector<byte_block> blocks;
};

} // namespace kvrimage
