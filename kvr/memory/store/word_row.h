#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Adjacent words of one length whose texts are contiguous in memory, for callers that process many words
/// at once instead of one by one. Valid until the store that it comes from changes.
struct word_row {
    static constexpr std::uint32_t longest = 256; ///< type of `length`

    const char* texts = nullptr;
    std::uint32_t length = 0; ///< characters of each word
    std::uint32_t count = 0;  ///< words; 0: there is no row

    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        return {texts + std::size_t{index} * length, length};
    }

    /// The texts of all words, one after the other.
    [[nodiscard]] std::string_view all() const noexcept { return {texts, std::size_t{count} * length}; }

    /// @p words of its words from number @p first on.
    [[nodiscard]] word_row part(std::uint32_t first, std::uint32_t words) const noexcept {
        return {texts + std::size_t{first} * length, length, words};
    }
};

} // namespace kvr
