#pragma once

#include "kvrimage/files/byte_buffer.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

/// Bytes at consecutive addresses.
struct byte_block {
    std::uint64_t address;  ///< the address of the first byte
    std::string_view bytes; ///< at least one

    /// Returns the address of the last byte. The address after it may exceed 2^64 - 1.
    [[nodiscard]] std::uint64_t last() const noexcept { return address + (bytes.size() - 1); }
};

/// Bytes that a file sets more than once.
struct byte_overlap {
    std::uint64_t first; ///< the lowest address
    std::uint64_t last;
    bool differ; ///< true if a later value differs
};

/// The contents of a byte file: blocks at 64-bit addresses. Consecutive blocks that are added one after the
/// other are merged.
class byte_blocks {
public:
    /// For bytes passed to add().
    /// @param keeps_bytes owner of these bytes: they stay valid and unchanged while a copy of it exists. With
    /// null they are valid only as long as this object
    explicit byte_blocks(std::shared_ptr<const void> keeps_bytes = nullptr)
        : bytes_keeper(std::move(keeps_bytes)) {}
    /// For bytes written to room_for().
    /// @param most_bytes the total that room_for() returns at most; add() must not be called
    explicit byte_blocks(std::size_t most_bytes) : owned(std::make_shared<byte_buffer>()) {
        owned->reserve(most_bytes);
        bytes_keeper = owned;
    }

    /// Returns the place for the next @p count bytes (at least one) at @p address. The caller must write them
    /// at once. The last byte must not be beyond 2^64 - 1.
    [[nodiscard]] char* room_for(std::uint64_t address, std::size_t count) {
        char* const place = owned->end();
        owned->used(count);
        add(address, {place, count});
        return place;
    }
    /// Returns the place that room_for() will return next. Bytes may be written there before that call.
    [[nodiscard]] char* next_room() noexcept { return owned->end(); }
    /// Adds @p bytes (at least one) without copying them. They must outlive the blocks.
    void add(std::uint64_t address, std::string_view bytes);

    /// Sorts the blocks by address and resolves overlaps: the later value wins.
    /// @return the overlaps in order of addresses
    std::vector<byte_overlap> sort();

    /// Returns the blocks in the order of the file; after sort() in order of addresses.
    [[nodiscard]] const std::vector<byte_block>& all() const noexcept { return blocks; }
    [[nodiscard]] bool empty() const noexcept { return blocks.empty(); }
    /// Returns the owner of the bytes; see the constructor. Null: the bytes are valid only as long as this
    /// object.
    [[nodiscard]] const std::shared_ptr<const void>& keeper() const noexcept { return bytes_keeper; }

private:
    std::shared_ptr<byte_buffer> owned;
    std::shared_ptr<const void> bytes_keeper;
    std::vector<byte_block> blocks;
};

} // namespace kvrimage
