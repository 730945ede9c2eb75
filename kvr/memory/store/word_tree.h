#pragma once

#include "kvr/memory/store/word_page.h"
#include "kvr/memory/store/word_pattern.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <type_traits>
#include <variant>

// A tree over the addresses of a memory: pages, branches of 32 pages, and branches of 64 of those. At any
// level a pattern may replace a subtree, so billions of words set by one value or one range line are a single
// node. Addresses are absolute. The end of a range has 64 bits if the address after the last one is needed.

namespace kvr {

/// A subtree: a pattern that all its words follow, or the branch or page with its words. Beyond the end of a
/// memory there may be no pattern.
template <class Inner>
using word_subtree = std::variant<pattern_ref, std::unique_ptr<Inner>>;

/// Returns the branch or page in @p tree, or null if it is a pattern.
template <class Inner>
Inner* inner_of(const word_subtree<Inner>& tree) noexcept {
    const auto* inner = std::get_if<std::unique_ptr<Inner>>(&tree);
    return inner != nullptr ? inner->get() : nullptr;
}

template <class Inner, std::size_t count>
struct word_branch {
    static constexpr std::uint64_t words = count * Inner::words;

    /// Constructed like a page; the first address is not used.
    word_branch(std::uint32_t /*first_address*/, const pattern_ref& texts) noexcept {
        for (word_subtree<Inner>& child : children) {
            child = texts;
        }
    }

    [[nodiscard]] word_subtree<Inner>& child(std::uint32_t address) noexcept {
        return children[address / Inner::words % count];
    }

    std::array<word_subtree<Inner>, count> children;
};

using word_root = word_subtree<word_branch<word_branch<word_page, 32>, 64>>;

/// The number of addresses below a root.
inline constexpr std::uint64_t root_words = word_branch<word_branch<word_page, 32>, 64>::words;

struct address_range {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
};

/// A leaf of the tree: the page or pattern for the addresses from `first` to `last`.
struct word_leaf {
    std::uint32_t first;
    std::uint32_t last;
    const word_pattern* texts; ///< null if there is a page
    word_page* page;           ///< not owned

    /// Returns the first address from @p from to @p end (inclusive, both in the leaf) whose word is not
    /// @p text, or end + 1.
    [[nodiscard]] std::uint64_t find_other(std::uint32_t from, std::uint32_t end,
                                           std::string_view text) const noexcept;
};

template <class Inner>
inline constexpr bool is_page = std::is_same_v<Inner, word_page>;

template <class Inner>
std::uint32_t first_of(std::uint32_t address) noexcept {
    return address - static_cast<std::uint32_t>(address % Inner::words);
}

template <class Inner>
[[nodiscard]] word_leaf leaf_at(const word_subtree<Inner>& tree, std::uint32_t address) noexcept {
    Inner* inner = inner_of(tree);
    if constexpr (!is_page<Inner>) {
        if (inner != nullptr) {
            return leaf_at(inner->child(address), address);
        }
    }
    word_leaf leaf{};
    leaf.first = first_of<Inner>(address);
    leaf.last = static_cast<std::uint32_t>(leaf.first + (Inner::words - 1));
    if constexpr (is_page<Inner>) {
        leaf.page = inner;
    }
    if (inner == nullptr) {
        leaf.texts = std::get_if<pattern_ref>(&tree)->get();
    }
    return leaf;
}

/// Returns the page of @p address. If a pattern replaces it, the page is made without changing any word.
word_page& page_at(word_root& root, std::uint32_t address);

/// Replaces the page of @p address, and the branches above it, by patterns with the same words, if there are
/// any. Returns true if the page was replaced.
bool fold(word_root& root, std::uint32_t address) noexcept;

/// Makes the words of @p range below @p root, whose first address is @p root_first, follow @p texts. If this
/// throws, each word has its old or its new text.
void assign(word_root& root, std::uint64_t root_first, const address_range& range, const pattern_ref& texts);

/// Drops the nodes that lie entirely at or above address @p end.
void drop_from(word_root& root, std::uint64_t root_first, std::uint64_t end) noexcept;

} // namespace kvr
