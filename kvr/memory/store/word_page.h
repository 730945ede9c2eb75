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

/// The words of adjacent addresses, some of which may be unset: those follow the initial pattern of the
/// page. It keeps its words in the form that suits them: a few pieces at first, then packed
/// when they have one length or nearly so, else as a list of texts.
class word_page {
public:
    static constexpr std::uint64_t words = page_words;

    /// The page whose first word has the address @p first_address and in which all words follow @p texts.
    word_page(std::uint32_t first_address, pattern_ref texts) noexcept
        : first(first_address),
          backing(std::move(texts)) {}

    /// The text of the word at @p index, counted from the first of the page.
    [[nodiscard]] std::string_view operator[](std::uint32_t index) const noexcept {
        const auto* packed = std::get_if<packed_words>(&form);
        if (packed != nullptr && packed->has(index)) {
            return (*packed)[index];
        }
        return find(index);
    }

    /// The contiguous words of one length from @p index on; none if the page keeps its words in another
    /// form.
    [[nodiscard]] word_row row_at(std::uint32_t index) const noexcept {
        const auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr ? packed->row_at(index) : word_row();
    }

    /// Sets the word at @p index if that only takes a copy of its characters; false, without a change,
    /// when it needs set().
    bool copy_in(std::uint32_t index, std::string_view text) noexcept {
        auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr && !is_edge(index) && packed->copy_in(index, text);
    }

    /// Sets the @p count words from @p index on, not including the last word of the page, to @p texts,
    /// each @p length characters long, if that only takes a copy; false, without a change, when at least one
    /// word needs set().
    bool copy_in_side_by_side(std::uint32_t index, const char* texts, std::size_t length,
                              std::uint32_t count) noexcept {
        auto* packed = std::get_if<packed_words>(&form);
        return packed != nullptr && !is_edge(index) &&
               packed->copy_in_side_by_side(index, texts, length, count);
    }

    /// True when all words of a page that are @p texts, each @p length (not 0) characters long, are best
    /// packed, and not kept as a few pieces.
    [[nodiscard]] static bool is_best_packed(const char* texts, std::size_t length) noexcept;
    /// Sets all words of the page to @p texts, which are best packed.
    void pack(std::unique_ptr<char[]> texts, std::size_t length) noexcept;

    /// Sets the word at @p index. True when it is worth calling whole() now. Every word is as before when
    /// it throws.
    bool set(std::uint32_t index, std::string_view text);

    /// Sets the words from @p begin to @p end (inclusive) to the texts of @p texts for their addresses. Every
    /// word is as before when it throws.
    void assign(std::uint32_t begin, std::uint32_t end, const pattern_ref& texts);

    /// The pattern that gives the same words as the page, if one is found (and, where it must be
    /// made, memory for it).
    [[nodiscard]] pattern_ref whole() const noexcept;

    /// The first index from @p from to @p last (inclusive) whose word is not @p text; last + 1 when there
    /// is none.
    [[nodiscard]] std::uint32_t find_other(std::uint32_t from, std::uint32_t last,
                                           std::string_view text) const noexcept;

private:
    /// The lengths of texts to come.
    struct length_range {
        std::size_t shortest;
        std::size_t longest;
    };

    /// Where a caller that sets the words in order ends: the time to check whether all are the same.
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
    bool keeps_varied = false; ///< the list of texts was found not to suit packing
    pattern_ref backing;       ///< the pattern of unset words
    std::variant<word_pieces, packed_words, std::unique_ptr<varied_words>> form;
};

} // namespace kvr
