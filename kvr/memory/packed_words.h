#pragma once

#include "kvr/memory/word_page_size.h"
#include "kvr/memory/word_row.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace kvr {

/// Copies @p length characters; up to 16 of them, as most words have, without a call.
inline void copy_characters(const char* from, std::size_t length, char* to) noexcept {
    const auto copy_both_ends = [&](auto part) {
        constexpr std::size_t size = sizeof(part);
        decltype(part) end;
        std::memcpy(&part, from, size);
        std::memcpy(&end, from + length - size, size);
        std::memcpy(to, &part, size);
        std::memcpy(to + length - size, &end, size);
    };
    if (length > 16) {
        std::memcpy(to, from, length);
    } else if (length >= 8) {
        copy_both_ends(std::uint64_t{});
    } else if (length >= 4) {
        copy_both_ends(std::uint32_t{});
    } else if (length >= 2) {
        copy_both_ends(std::uint16_t{});
    } else if (length == 1) {
        *to = *from;
    }
}

/// The words of a page side by side in places of the same length, the stride. Words that all have this
/// length, as in most memories, cost their characters and nothing else; where some are shorter or not set,
/// one byte for each word of the page says so.
class packed_words {
public:
    /// A page in which no word is set yet.
    explicit packed_words(std::uint32_t longest);
    /// The page of the words in @p texts, all of them @p length characters long.
    packed_words(std::unique_ptr<char[]> texts, std::uint32_t length) noexcept
        : chars(std::move(texts)),
          stride(length),
          incomplete(0) {}

    /// True when @p index is set.
    [[nodiscard]] bool has(std::uint32_t index) const noexcept {
        return padding == nullptr || padding[index] != absent;
    }

    /// True when every word is set and as long as the stride.
    [[nodiscard]] bool is_complete() const noexcept { return padding == nullptr; }

    /// The text at @p index, which must be set.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        const std::size_t length = padding == nullptr ? stride : stride - std::size_t{padding[index]};
        return {place(index), length};
    }

    /// True when put() can take texts of @p length characters as things are.
    [[nodiscard]] bool accepts(std::size_t length) const noexcept {
        return length == stride || (padding != nullptr && fits(length));
    }

    /// True when one word more makes the page complete, if it is as long as the stride.
    [[nodiscard]] bool lacks_one() const noexcept { return incomplete == 1; }

    /// Sets @p index to @p text, of an accepted length.
    void put(std::uint32_t index, std::string_view text) noexcept {
        copy_characters(text.data(), text.size(), place(index));
        if (padding != nullptr) {
            note_length(index, text.size());
        }
    }

    /// Sets the @p count words from @p index on to @p texts, each @p length characters long, if that can be
    /// done without completing the page; false, and nothing done, otherwise.
    bool put_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                          std::uint32_t count) noexcept;

    /// Makes texts of @p length characters, which are not, acceptable if the places are long enough; false
    /// when they are not.
    bool admit_shorter(std::size_t length);

    /// A copy with places of @p longest characters, at most `longest_padding` more than now.
    [[nodiscard]] packed_words widened(std::uint32_t longest) const;

    /// The words from @p index on, as far as they are set and as long as the stride.
    [[nodiscard]] word_row row_at(std::uint32_t index) const noexcept {
        std::uint32_t end = is_complete() ? page_words : index;
        while (end < page_words && padding[end] == 0) {
            ++end;
        }
        return {place(index), stride, end - index};
    }

    /// True when the words of the page, which is complete, are all the same.
    [[nodiscard]] bool is_uniform() const noexcept;

    [[nodiscard]] std::uint32_t longest() const noexcept { return stride; }

    static constexpr std::uint32_t longest_padding = 254;

private:
    static constexpr std::uint8_t absent = 255;

    [[nodiscard]] char* place(std::uint32_t index) const noexcept {
        return chars.get() + std::size_t{index} * stride;
    }
    [[nodiscard]] bool fits(std::size_t length) const noexcept {
        return length <= stride && stride - length <= longest_padding;
    }
    void note_length(std::uint32_t index, std::size_t length) noexcept {
        const auto unused = static_cast<std::uint8_t>(stride - length);
        incomplete -= static_cast<std::uint32_t>(padding[index] != 0);
        incomplete += static_cast<std::uint32_t>(unused != 0);
        padding[index] = unused;
        if (incomplete == 0) {
            padding.reset();
        }
    }

    std::unique_ptr<char[]> chars;
    std::unique_ptr<std::uint8_t[]>
        padding; ///< unused characters of each place, or `absent`; none when complete
    std::uint32_t stride;
    std::uint32_t incomplete; ///< words that are shorter than the stride or not set
};

} // namespace kvr
