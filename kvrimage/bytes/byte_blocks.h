#pragma once

#include "kvrimage/files/byte_buffer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

/// Bytes at neighbouring addresses.
struct byte_block {
    std::uint64_t address;  ///< of the first one
    std::string_view bytes; ///< at least one

    /// The address of the last one; the one after it may be beyond 2^64 - 1.
    [[nodiscard]] std::uint64_t last() const noexcept { return address + (bytes.size() - 1); }
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
    /// For bytes that are added.
    /// @param keeps_bytes as long as a copy of it exists those bytes stay as they are; null: they do only as
    /// long as the blocks
    explicit byte_blocks(std::shared_ptr<const void> keeps_bytes = nullptr)
        : bytes_keeper(std::move(keeps_bytes)) {}
    /// @param most_bytes that room_for() will hand out in all; no others are added
    explicit byte_blocks(std::size_t most_bytes) : owned(std::make_shared<byte_buffer>()) {
        owned->reserve(most_bytes);
        bytes_keeper = owned;
    }

    /// Where the next @p count bytes (at least one), at @p address, are to be put, at once. The last one
    /// must not be beyond 2^64 - 1.
    [[nodiscard]] char* room_for(std::uint64_t address, std::size_t count) {
        char* const place = owned->end();
        owned->used(count);
        add(address, {place, count});
        return place;
    }
    /// Where room_for() will put the next bytes, which may be put there before it is asked.
    [[nodiscard]] char* next_room() noexcept { return owned->end(); }
    /// Adds @p bytes (at least one), which stay valid as long as the blocks, without a copy.
    void add(std::uint64_t address, std::string_view bytes);

    /// Puts the blocks in the order of their addresses, without overlaps: of two values the later one counts.
    /// @return what was set more than once, in the order of the addresses
    std::vector<byte_overlap> sort();

    /// In the order of the file, and after sort() in that of the addresses.
    [[nodiscard]] const std::vector<byte_block>& all() const noexcept { return blocks; }
    [[nodiscard]] bool empty() const noexcept { return blocks.empty(); }
    /// As long as a copy of it exists the bytes stay as they are; null: they do only as long as the blocks.
    [[nodiscard]] const std::shared_ptr<const void>& keeper() const noexcept { return bytes_keeper; }

private:
    std::shared_ptr<byte_buffer> owned;
    std::shared_ptr<const void> bytes_keeper;
    std::vector<byte_block> blocks;
};

} // namespace kvrimage
