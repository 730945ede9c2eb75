#pragma once

#include "kvr/memory/store/packed_words.h"
#include "kvr/memory/store/varied_words.h"
#include "kvr/memory/store/word_page_size.h"
#include "kvr/memory/store/word_pattern.h"
#include "kvr/memory/store/word_pieces.h"
#include "kvr/memory/store/word_row.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace kvr {

/// The words of adjacent addresses. Words that are not set follow the initial pattern of the page. The page
/// chooses its representation: a few pieces at first, then packed words if the lengths are equal or nearly
/// so, otherwise a list of texts.
class word_page {
public:
    static constexpr std::uint64_t words = page_words;

    /// Makes a page with the first address @p first_address in which all words follow @p texts.
    word_page(std::uint32_t first_address, pattern_ref texts) noexcept
        : first(first_address),
          backing(std::move(texts)) {}

    /// Returns the word at @p index within the page.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        const auto* packed = std::get_if<packed_words>(&form);
        if (packed != nullptr && packed->has(index)) {
            return (*packed)[index];
        }
        return find(index);
    }

    /// Returns the contiguous words of equal length from @p index on. The row is empty if the page has
    /// another representation.
    [[nodiscard]] word_row row_at(std::uint32_t index) const noexcept {
        const auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr ? packed->row_at(index) : word_row();
    }

    /// Sets the word at @p index if this requires only a copy of its characters. Otherwise changes nothing
    /// and returns false; use set().
    bool copy_in(std::uint32_t index, std::string_view text) noexcept {
        auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr && !is_edge(index) && packed->copy_in(index, text);
    }

    /// Sets @p count words from @p index on, excluding the last word of the page, to @p texts of @p length
    /// characters each, if this requires only a copy. Otherwise changes nothing and returns false; at least
    /// one word needs set().
    bool copy_in_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                              std::uint32_t count) noexcept {
        auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr && !is_edge(index) &&
               packed->copy_in_side_by_side(index, texts, length, count);
    }

    /// True if a page of the words @p texts, each of @p length (not 0) characters, is better packed than kept
    /// as pieces.
    [[nodiscard]] static bool is_best_packed(const char* texts, std::size_t length) noexcept;
    /// Sets all words of the page to @p texts, for which is_best_packed() holds.
    void pack(page_texts texts, std::size_t length) noexcept;

    /// Sets the word at @p index. Returns true if whole() is worth a call now. If this throws, no word has
    /// changed.
    bool set(std::uint32_t index, std::string_view text);

    /// Sets the words from @p begin to @p end (inclusive) to the texts of @p texts for their addresses. If
    /// this throws, no word has changed.
    void assign(std::uint32_t begin, std::uint32_t end, const pattern_ref& texts);

    /// Returns a pattern with the same words as the page if there is one, and enough memory to make it.
    [[nodiscard]] pattern_ref whole() const noexcept;

    /// Returns the first index from @p from to @p last (inclusive) whose word is not @p text, or last + 1.
    [[nodiscard]] std::uint32_t find_other(std::uint32_t from, std::uint32_t last,
                                           std::string_view text) const noexcept;

private:
    /// The lengths of texts to be set.
    struct length_range {
        std::size_t shortest;
        std::size_t longest;
    };

    /// True at the ends of the page. After setting words in order, a caller ends here: time to check for
    /// equal words.
    static constexpr bool is_edge(std::uint32_t index) noexcept {
        return index == 0 || index == page_words - 1;
    }

    [[nodiscard]] std::string_view find(std::uint32_t index) const noexcept;
    void set_piece(word_pieces& pieces, std::uint32_t index, std::string_view text) const;

    void prepare_for(length_range lengths);
    void prepare_pieces(const word_pieces& pieces, length_range lengths);
    void prepare_packed(packed_words& packed, length_range lengths);
    void prepare_varied(const varied_words& varied, length_range lengths);
    void become_packed(std::size_t longest);
    void become_varied();

    [[nodiscard]] length_range lengths_of(std::uint32_t begin, std::uint32_t end,
                                          const word_pattern& texts) const noexcept;
    [[nodiscard]] bool has_enough_texts_of(std::size_t length, const word_pieces& pieces) const noexcept;
    [[nodiscard]] bool is_uniform() const noexcept;

    std::uint32_t first;
    bool keeps_varied = false; ///< the list of texts was found unsuitable for packing
    pattern_ref backing;       ///< the pattern of words that are not set
    std::variant<word_pieces, packed_words, std::unique_ptr<varied_words>> form;
};

} // namespace kvr
