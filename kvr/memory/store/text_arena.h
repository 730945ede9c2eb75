#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace kvr {

/// Keeps copies of texts in blocks, each after its length, until all are released at once.
class text_arena {
public:
    /// Keeps a copy of @p text until clear() or the destruction of the arena.
    /// @return its place, for text_at().
    const char* keep(std::string_view text);
    /// The text that keep() has put at @p place.
    [[nodiscard]] static std::string_view text_at(const char* place) noexcept;
    void clear() noexcept;
    void swap(text_arena& other) noexcept;

private:
    char* shared_place(std::size_t size);
    char* add_block(std::size_t size);

    std::vector<std::unique_ptr<char[]>> blocks;
    char* room = nullptr;      ///< in one of the blocks
    std::size_t room_size = 0; ///< characters
    std::size_t next_size = 0; ///< of the next block, characters
};

} // namespace kvr
