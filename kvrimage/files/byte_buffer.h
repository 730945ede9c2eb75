#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

namespace kvrimage {

/// Bytes that grow at their end and are never filled in advance: a std::string writes zeros to what a file is
/// read into.
class byte_buffer {
public:
    [[nodiscard]] std::size_t size() const noexcept { return filled; }
    [[nodiscard]] std::string_view text() const noexcept { return {bytes.get(), filled}; }

    /// Makes room for @p size bytes in all, a number that may be too large for std::size_t.
    /// @throws std::bad_alloc
    void reserve(std::uint64_t size);
    /// Bytes of the room that are not used yet.
    [[nodiscard]] std::size_t room() const noexcept { return capacity - filled; }
    /// Where they begin.
    [[nodiscard]] char* end() noexcept { return bytes.get() + filled; }
    /// Where all begin.
    [[nodiscard]] char* begin() noexcept { return bytes.get(); }
    /// Leaves @p count bytes in use, at most those that there is room for.
    void resize(std::size_t count) noexcept { filled = count; }
    /// The first @p count of them are filled now.
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
