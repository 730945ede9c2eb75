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

/// A run of adjacent addresses with the same text.
struct word_run {
    std::uint32_t first;
    std::uint32_t last;    ///< inclusive
    std::string_view text; ///< valid until the store changes
};

/// A stretch of addresses over which words repeat: two words of the stretch that are `period` addresses apart
/// are equal.
struct word_cycle {
    std::uint32_t first;
    std::uint32_t last;   ///< inclusive
    std::uint32_t period; ///< 1 if all words are equal; 0 if no cycle is known
};

/// Returns true if a conversion would change no word of a row.
using row_test = std::function<bool(const word_row&)>;

/// The words of a memory: one text for each address, stored exactly (length, letter case, any byte), with the
/// semantics of a double-ended queue of strings. It is optimized for typical memories: unset words and range
/// lines over billions of addresses take a few bytes, and words of equal length are packed contiguously.
///
/// Views are valid until the next call that changes the store. Texts passed in must not be views of the same
/// store. Not thread-safe: even concurrent reads need a lock. After an exception (std::bad_alloc,
/// std::length_error) the store is usable and has its previous size and words, except that a fill() may have
/// set some of its addresses.
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

    /// Changes the number of words. Remaining words keep their texts, new words at the end get @p fill, and
    /// surplus words at the high end are dropped. The time does not depend on the number of new words.
    void resize(std::uint32_t size, std::string_view fill);

    /// Returns the word at @p address, which must be below size().
    [[nodiscard]] std::string_view operator[](std::uint32_t address) const noexcept {
        assert(address < word_count);
        return is_in_found_page(address) ? (*found_page)[address % page_words] : find(address);
    }

    /// Sets the word at @p address, which must be below size().
    void set(std::uint32_t address, std::string_view text) {
        assert(address < word_count);
        if (!is_in_found_page(address) || !found_page->copy_in(address % page_words, text)) {
            set_slowly(address, text);
        }
    }

    /// Sets the words from @p first on to the contiguous @p texts, each of @p length characters (at least
    /// one), like repeated calls of set(). All addresses must be below size().
    void set_side_by_side(std::uint32_t first, std::string_view texts, std::size_t length);

    /// Does the same for a whole page: `page_words` words, the first address a multiple of it. The page may
    /// take over @p texts, which is then null.
    void set_page(std::uint32_t first, page_texts& texts, std::size_t length);

    /// Sets the words from @p first to @p last (inclusive, below size()) to @p values in order, repeated as
    /// often as needed. @p values must not be empty; surplus values are ignored. The time depends on the
    /// values, not on the number of addresses.
    void fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string_view>& values);

    /// Returns the longest run of equal words that begins at @p address (below size()). Stretches that one
    /// fill or range has set are skipped as a whole.
    [[nodiscard]] word_run run_at(std::uint32_t address) const noexcept;

    /// Returns the cycle that begins at @p address (below size()), if one fill or range has set the words. No
    /// words are compared: words that were set one by one form no cycle, and words after the cycle may
    /// continue it.
    [[nodiscard]] word_cycle cycle_at(std::uint32_t address) const noexcept;

    /// Returns the contiguous words of equal length from @p address (below size()) on; the row is empty if
    /// they are not stored this way. A row ends with its page at the latest, and another row may follow
    /// directly. Takes constant time, unlike run_at().
    [[nodiscard]] word_row row_at(std::uint32_t address) const noexcept;

    /// Replaces every text by the result of @p conversion. The time depends on what was set, not on the
    /// number of words: a text shared by many words is converted once. Returns false and changes no word if
    /// @p conversion returns false.
    ///
    /// @param keeps returns true for a row of words if @p conversion would accept and not change any of them;
    /// other words are converted
    bool transform(const word_conversion& conversion, const row_test& keeps = {});

private:
    [[nodiscard]] word_root& root_of(std::uint32_t address) noexcept { return roots[address / root_words]; }
    [[nodiscard]] bool is_in_found_page(std::uint32_t address) const noexcept {
        return address / page_words == found_number;
    }
    [[nodiscard]] std::string_view find(std::uint32_t address) const noexcept;
    void set_slowly(std::uint32_t address, std::string_view text);
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

    // The page found last, since words are mostly read in order. Two separate fields: as one object, they
    // would make every read wait for the previous one.
    mutable std::uint32_t found_number = no_page; ///< first address of the page / page_words
    mutable word_page* found_page = nullptr;

    static constexpr std::uint32_t no_page = std::numeric_limits<std::uint32_t>::max();
};

} // namespace kvr
