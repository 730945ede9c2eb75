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

// The tree over the addresses of a memory: pages, branches of 32 pages, branches of 64 of those. At any
// level a pattern may replace what is below, so that billions of words that one value or one range
// line set are a single node. Addresses are absolute everywhere; the end of a range is 64 bits wide where
// the address after the last one is needed.

namespace kvr {

/// A part of the tree: a pattern that all its words follow, or the branch or the page that keeps them.
/// Beyond the end of a memory it may be no pattern at all.
template <class Inner>
using word_subtree = std::variant<pattern_ref, std::unique_ptr<Inner>>;

/// The branch or the page in @p tree; none where a pattern replaces it.
template <class Inner>
Inner* inner_of(const word_subtree<Inner>& tree) noexcept {
    const auto* inner = std::get_if<std::unique_ptr<Inner>>(&tree);
    return inner != nullptr ? inner->get() : nullptr;
}

template <class Inner, std::size_t count>
struct word_branch {
    static constexpr std::uint64_t words = count * Inner::words;

    /// Constructed like a page; its first address makes no difference to a branch.
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

/// A place where the tree ends: the page or the pattern for the addresses from `first` to `last`.
struct word_leaf {
    std::uint32_t first;
    std::uint32_t last;
    const word_pattern* texts; ///< none when there is a page
    word_page* page;           ///< not owned

    /// The first address from @p from to @p end (inclusive, both in the leaf) whose word is not @p text;
    /// end + 1 when there is none.
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

/// The page that holds @p address; made, without changing a word, where a pattern replaced it.
word_page& page_at(word_root& root, std::uint32_t address);

/// Replaces the page that holds @p address, and the branches above it, by a pattern where one has the
/// same words. True when the page was replaced.
bool fold(word_root& root, std::uint32_t address) noexcept;

/// Makes the words of @p range that are below @p root, whose first address is @p root_first, follow
/// @p texts. When it throws, each of them has its old or its new text.
void assign(word_root& root, std::uint64_t root_first, const address_range& range, const pattern_ref& texts);

/// Drops what is entirely from address @p end on.
void drop_from(word_root& root, std::uint64_t root_first, std::uint64_t end) noexcept;

} // namespace kvr
