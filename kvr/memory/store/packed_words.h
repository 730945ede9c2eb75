#pragma once

#include "kvr/memory/store/page_texts.h"
#include "kvr/memory/store/word_page_size.h"
#include "kvr/memory/store/word_row.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace kvr {

/// Copies @p length characters; up to 16, the length of most words, without a function call.
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

/// The words of a page in contiguous slots of equal length, the stride. If all words have this length, as in
/// most memories, only their characters take memory. Otherwise each word has an additional byte, its padding.
/// Only assign() adds or drops the padding, before the first word it writes and after the last one, so no
/// length is ever lost in between.
class packed_words {
public:
    /// Makes a page without words, for texts of up to @p longest characters.
    explicit packed_words(std::uint32_t longest);
    /// Makes a page of the words in @p texts, each of @p length characters.
    packed_words(page_texts texts, std::uint32_t length) noexcept
        : chars(std::move(texts)),
          stride(length),
          incomplete(0) {}

    /// True if the word at @p index is set.
    [[nodiscard]] bool has(std::uint32_t index) const noexcept {
        return padding == nullptr || padding[index] != absent;
    }

    /// True if every word is set and as long as the stride.
    [[nodiscard]] bool is_complete() const noexcept { return padding == nullptr; }

    /// Returns the text at @p index, which must be set.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        const std::size_t length = padding == nullptr ? stride : stride - std::size_t{padding[index]};
        return {place(index), length};
    }

    /// True if the slots can hold texts of @p length characters.
    [[nodiscard]] bool suits(std::size_t length) const noexcept {
        return length <= stride && stride - length <= longest_padding;
    }

    /// Sets the word at @p index if this neither needs a padding nor completes the page. Otherwise changes
    /// nothing and returns false.
    bool copy_in(std::uint32_t index, std::string_view text) noexcept {
        if (padding == nullptr) {
            if (text.size() != stride) {
                return false;
            }
            copy_characters(text.data(), text.size(), place(index));
            return true;
        }
        if (incomplete == 1 || !suits(text.size())) {
            return false;
        }
        write(index, text);
        return true;
    }

    /// Does the same for @p count words from @p index on. @p texts has them contiguously, each of @p length
    /// characters.
    bool copy_in_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                              std::uint32_t count) noexcept;

    /// Sets each word from @p begin to @p end (inclusive) to @p text_of(index). suits() must hold for its
    /// length. If this throws (std::bad_alloc), nothing has changed.
    template <class TextOf>
    void assign(std::uint32_t begin, std::uint32_t end, const TextOf& text_of) {
        add_padding();
        for (std::uint32_t index = begin; index <= end; ++index) {
            write(index, text_of(index));
        }
        if (incomplete == 0) {
            padding.reset();
        }
    }

    /// Returns a copy with slots of @p longest characters, at most `longest_padding` more than now.
    [[nodiscard]] packed_words widened(std::uint32_t longest) const;

    /// Returns the words from @p index on up to the first one that is not set or shorter than the stride.
    [[nodiscard]] word_row row_at(std::uint32_t index) const noexcept {
        std::uint32_t end = is_complete() ? page_words : index;
        while (end < page_words && padding[end] == 0) {
            ++end;
        }
        return {place(index), stride, end - index};
    }

    /// True if all words are equal. The page must be complete.
    [[nodiscard]] bool is_uniform() const noexcept;

    [[nodiscard]] std::uint32_t longest() const noexcept { return stride; }

    static constexpr std::uint32_t longest_padding = 254;

private:
    static constexpr std::uint8_t absent = 255;

    [[nodiscard]] char* place(std::uint32_t index) const noexcept {
        return chars.get() + std::size_t{index} * stride;
    }

    void add_padding();

    /// Writes a word and its length. There must be a padding.
    void write(std::uint32_t index, std::string_view text) noexcept {
        copy_characters(text.data(), text.size(), place(index));
        const auto unused = static_cast<std::uint8_t>(stride - text.size());
        incomplete -= static_cast<std::uint32_t>(padding[index] != 0);
        incomplete += static_cast<std::uint32_t>(unused != 0);
        padding[index] = unused;
    }

    page_texts chars;
    std::unique_ptr<std::uint8_t[]>
        padding; ///< unused characters of each slot, or `absent`; null if complete
    std::uint32_t stride;
    std::uint32_t incomplete; ///< number of words that are not set or shorter than the stride
};

} // namespace kvr
