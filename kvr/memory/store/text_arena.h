#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace kvr {

/// Stores copies of texts, each preceded by its length, in blocks that are released together.
class text_arena {
public:
    /// Stores a copy of @p text until clear() or destruction.
    /// @return its position for text_at()
    const char* keep(std::string_view text);
    /// Returns the text that keep() stored at @p place.
    [[nodiscard]] static std::string_view text_at(const char* place) noexcept;
    void clear() noexcept;
    void swap(text_arena& other) noexcept;

private:
    char* shared_place(std::size_t size);
    char* add_block(std::size_t size);

    std::vector<std::unique_ptr<char[]>> blocks;
    char* room = nullptr;      ///< within one of the blocks
    std::size_t room_size = 0; ///< in characters
    std::size_t next_size = 0; ///< of the next block, in characters
};

} // namespace kvr
