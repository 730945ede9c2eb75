#pragma once

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

/// The words of a page in contiguous slots of the same length, the stride. Words that all have this
/// length, as in most memories, cost their characters only. A page with shorter or unset words
/// has one byte more for each word, its padding. Only assign() adds or drops the padding, before the first
/// word and after the last one that it writes, so that no length can be lost between two words.
class packed_words {
public:
    /// A page in which no word is set, for texts of up to @p longest characters.
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

    /// True when every word is set and has the length of the stride.
    [[nodiscard]] bool is_complete() const noexcept { return padding == nullptr; }

    /// The text at @p index, which must be set.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        const std::size_t length = padding == nullptr ? stride : stride - std::size_t{padding[index]};
        return {place(index), length};
    }

    /// True when the slots suit texts of @p length characters.
    [[nodiscard]] bool suits(std::size_t length) const noexcept {
        return length <= stride && stride - length <= longest_padding;
    }

    /// Sets @p index to @p text if that neither takes a padding nor completes the page; false, without a
    /// change, otherwise.
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

    /// copy_in() for the @p count words from @p index on, which are contiguous in @p texts, each
    /// @p length characters long.
    bool copy_in_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                              std::uint32_t count) noexcept;

    /// Sets each index from @p begin to @p end (inclusive) to @p text_of (index), a text of a length that
    /// suits. Nothing has changed when it throws (std::bad_alloc).
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

    /// A copy with slots of @p longest characters, at most `longest_padding` more than now.
    [[nodiscard]] packed_words widened(std::uint32_t longest) const;

    /// The words from @p index on, up to the first that is unset or does not have the length of the stride.
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

    void add_padding();

    /// Writes a word and its length, for which there must be a padding.
    void write(std::uint32_t index, std::string_view text) noexcept {
        copy_characters(text.data(), text.size(), place(index));
        const auto unused = static_cast<std::uint8_t>(stride - text.size());
        incomplete -= static_cast<std::uint32_t>(padding[index] != 0);
        incomplete += static_cast<std::uint32_t>(unused != 0);
        padding[index] = unused;
    }

    std::unique_ptr<char[]> chars;
    std::unique_ptr<std::uint8_t[]>
        padding; ///< unused characters of each slot, or `absent`; none when complete
    std::uint32_t stride;
    std::uint32_t incomplete; ///< words that are shorter than the stride or not set
};

} // namespace kvr
