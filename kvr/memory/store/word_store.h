#pragma once

#include "kvr/memory/store/word_row.h"
#include "kvr/memory/store/word_tree.h"

#include <cassert>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {

/// A run of adjacent addresses that hold the same text.
struct word_run {
    std::uint32_t first;
    std::uint32_t last;    ///< inclusive
    std::string_view text; ///< valid until the store changes
};

/// A stretch of addresses over which words repeat: the words at an address and `period` addresses on are the
/// same, provided that both are in it.
struct word_cycle {
    std::uint32_t first;
    std::uint32_t last;   ///< inclusive
    std::uint32_t period; ///< 1 where all words are equal; 0 when no cycle is known
};

/// True when a conversion would leave each word of a row as it is.
using row_test = std::function<bool(const word_row&)>;

/// The words of a memory: one text per address, kept exactly (length, letter case, any byte), with the
/// meaning of a double-ended queue of strings. Built for what memories look like: unset words and
/// range lines over billions of addresses cost a handful of bytes, and words of one length are
/// packed contiguously without an object each.
///
/// Every view that the store returns is valid until the next call that changes the store. Texts that
/// are passed in must not be views of the same store. Reading, too, is for one thread at a time. An operation
/// that throws (std::bad_alloc, std::length_error) leaves the store usable, with the size and the words that
/// it had before, except that a fill() may have set some of its addresses already.
class word_store {
public:
    word_store() noexcept = default;
    ~word_store() = default;
    word_store(word_store&& other) noexcept;
    word_store& operator=(word_store&& other) noexcept;
    word_store(const word_store&) = delete;
    word_store& operator=(const word_store&) = delete;

    [[nodiscard]] std::uint32_t size() const noexcept { return word_count; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }

    /// Changes the number of words: those that stay keep their texts, new ones at the end hold @p fill,
    /// surplus ones at the high end are dropped. The cost does not depend on the number of new words.
    void resize(std::uint32_t size, std::string_view fill);

    /// The text of the word at @p address, which must be below size().
    [[nodiscard]] std::string_view operator[](std::uint32_t address) const noexcept {
        assert(address < word_count);
        return is_in_found_page(address) ? (*found_page)[address % page_words] : find(address);
    }

    /// Replaces the text of the word at @p address, which must be below size().
    void set(std::uint32_t address, std::string_view text) {
        assert(address < word_count);
        if (!is_in_found_page(address) || !found_page->copy_in(address % page_words, text)) {
            set_slowly(address, text);
        }
    }

    /// Sets the words from @p first on to @p texts in order, which are contiguous, @p length characters
    /// each (at least one). The last address must be below size(). Does what set() does for each of them.
    void set_side_by_side(std::uint32_t first, std::string_view texts, std::size_t length);

    /// The same for the words of a whole page (`page_words`, the first address a multiple of it). The page
    /// may take over @p texts, which is then null.
    void set_page(std::uint32_t first, std::unique_ptr<char[]>& texts, std::size_t length);

    /// Sets the words from @p first to @p last (inclusive, below size()) to @p values in order, starting
    /// again with the first value when they are used up. @p values must not be empty; values beyond the
    /// number of addresses are ignored. The cost depends on the values, not on the number of addresses.
    void fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string_view>& values);

    /// The longest run of equal words that starts at @p address (below size()): every address from
    /// `first` == @p address to `last` holds the same text, and the word after it, if there is one, does
    /// not. Stretches that one fill or range set are skipped as a whole.
    [[nodiscard]] word_run run_at(std::uint32_t address) const noexcept;

    /// The cycle that starts at @p address (below size()), where one fill or range set the words. Finding it
    /// reads no words: words that were set one by one are no cycle, and the words after one may continue it.
    [[nodiscard]] word_cycle cycle_at(std::uint32_t address) const noexcept;

    /// The words from @p address (below size()) on that are contiguous words of one length, none when they
    /// are not kept so. A row ends with its page at the latest, and the next row may begin directly
    /// after it. Unlike a run, it is found in constant time.
    [[nodiscard]] word_row row_at(std::uint32_t address) const noexcept;

    /// Replaces every text by the result of @p conversion. The cost depends on what was set, not on the
    /// number of words: a text that stands for many of them is converted once. False, with the words as
    /// they were, when @p conversion returns false.
    ///
    /// @param keeps returns true for a whole row of words when @p conversion accepts them and makes each of
    ///              the same text; words for which it returns false are converted.
    bool transform(const word_conversion& conversion, const row_test& keeps = {});

private:
    [[nodiscard]] word_root& root_of(std::uint32_t address) noexcept { return roots[address / root_words]; }
    [[nodiscard]] bool is_in_found_page(std::uint32_t address) const noexcept {
        return address / page_words == found_number;
    }
    [[nodiscard]] std::string_view find(std::uint32_t address) const noexcept;
    void set_slowly(std::uint32_t address, std::string_view text);
    void set_in_page(std::uint32_t first, std::string_view texts, std::size_t length);
    void shrink(std::uint32_t size) noexcept;
    void grow(std::uint32_t size, std::string_view fill);
    void assign_range(const address_range& range, const pattern_ref& texts);
    [[nodiscard]] bool is_kept(const word_conversion& conversion, const row_test& keeps) const;
    [[nodiscard]] bool is_kept(const word_leaf& leaf, const word_conversion& conversion,
                               const row_test& keeps) const;
    struct converted_pattern {
        const word_pattern* from = nullptr;
        pattern_ref made;
    };
    bool convert_words(const word_leaf& leaf, const word_conversion& conversion, const row_test& keeps,
                       converted_pattern& latest);
    bool convert_part(const word_leaf& leaf, const word_conversion& conversion);
    bool convert_row(std::uint32_t address, const word_row& row, const word_conversion& conversion,
                     const row_test& keeps);
    bool convert_run(const word_run& run, const word_conversion& conversion);

    std::uint32_t word_count = 0;
    std::vector<word_root> roots;

    // The page found last, because words are mostly read in order. Two separate fields: kept as
    // one object, they make every read wait for the previous one.
    mutable std::uint32_t found_number = no_page; ///< its first address / page_words
    mutable word_page* found_page = nullptr;

    static constexpr std::uint32_t no_page = std::numeric_limits<std::uint32_t>::max();
};

} // namespace kvr
