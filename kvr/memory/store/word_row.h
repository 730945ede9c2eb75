#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Adjacent words of equal length with contiguous texts, for processing many words at once. Valid until the
/// store changes.
struct word_row {
    static constexpr std::uint32_t longest = 256; ///< maximum of `length`

    const char* texts = nullptr;
    std::uint32_t length = 0; ///< characters of each word
    std::uint32_t count = 0;  ///< number of words; 0 if there is no row

    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        return {texts + std::size_t{index} * length, length};
    }

    /// Returns the concatenated texts of all words.
    [[nodiscard]] std::string_view all() const noexcept { return {texts, std::size_t{count} * length}; }

    /// Returns @p words words from index @p first on.
    [[nodiscard]] word_row part(std::uint32_t first, std::uint32_t words) const noexcept {
        return {texts + std::size_t{first} * length, length, words};
    }
};

} // namespace kvr
