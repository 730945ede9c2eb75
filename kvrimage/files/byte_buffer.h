#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace kvrimage {

/// A growing sequence of bytes. New room is not initialized: a std::string would write zeros to the room that
/// a file is then read into.
class byte_buffer {
public:
    [[nodiscard]] std::size_t size() const noexcept { return filled; }
    [[nodiscard]] std::string_view text() const noexcept { return {bytes.get(), filled}; }

    /// Reserves room for @p size bytes in total, a number that may be too large for std::size_t.
    /// @throws std::bad_alloc
    void reserve(std::uint64_t size);
    /// The number of unused bytes.
    [[nodiscard]] std::size_t room() const noexcept { return capacity - filled; }
    /// The first unused byte.
    [[nodiscard]] char* end() noexcept { return bytes.get() + filled; }
    /// The first byte.
    [[nodiscard]] char* begin() noexcept { return bytes.get(); }
    /// Sets the number of used bytes to @p count, for which there is room.
    void resize(std::size_t count) noexcept { filled = count; }
    /// Counts the first @p count unused bytes as used: they have been filled.
    void used(std::size_t count) noexcept { filled += count; }

private:
    struct releaser {
        void operator()(char* block) const noexcept { std::free(block); }
    };

    std::unique_ptr<char, releaser> bytes;
    std::size_t filled = 0;
    std::size_t capacity = 0;
};

} // namespace kvrimage
