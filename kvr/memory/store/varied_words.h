#pragma once

#include "kvr/memory/store/word_page_size.h"
#include "kvr/memory/store/word_pattern.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace kvr {

/// The words of a page with texts of different lengths: a list of texts, and the list index of each word.
/// Words set by one range line share their texts.
class varied_words {
public:
    varied_words() noexcept { chosen.fill(absent); }

    [[nodiscard]] bool has(std::uint32_t index) const noexcept { return chosen[index] != absent; }

    /// Returns the text at @p index, which must be set.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        return text_of(entries[chosen[index]]);
    }

    /// Sets the word at @p index. If this throws, nothing has changed.
    /// @throws std::length_error if the texts of the page exceed 2^32 - 1 characters
    void set(std::uint32_t index, std::string_view text);

    /// Sets the words from @p first to @p last to the texts of @p texts for @p address, the address of the
    /// first word, and the addresses after it. Throws like set().
    void assign(std::uint32_t first, std::uint32_t last, const word_pattern& texts, std::uint32_t address);

    /// Returns the number of texts in the list. It may include texts that are no longer used.
    [[nodiscard]] std::size_t texts() const noexcept { return entries.size(); }

    /// Return the lengths of the shortest and the longest text in the list, which must not be empty.
    [[nodiscard]] std::size_t shortest() const noexcept;
    [[nodiscard]] std::size_t longest() const noexcept;

private:
    static constexpr std::uint16_t absent = 0xFFFF;

    struct entry {
        std::uint32_t offset; ///< in `chars`
        std::uint32_t length;
    };

    [[nodiscard]] std::string_view text_of(const entry& each) const noexcept {
        return {chars.data() + each.offset, each.length};
    }

    void make_room(std::size_t count, std::size_t length);
    [[nodiscard]] bool is_worth_tidying(std::size_t count, std::size_t length) const noexcept;
    [[nodiscard]] varied_words tidied() const;
    void reserve(std::size_t count, std::size_t length);
    std::uint16_t add(std::string_view text) noexcept;

    std::array<std::uint16_t, page_words> chosen{}; ///< index into `entries`, or `absent`
    std::vector<entry> entries;
    std::vector<char> chars;   ///< a string would double its capacity for a small growth
    std::size_t tidy_size = 0; ///< size of `chars` when unused texts were last dropped
};

} // namespace kvr
