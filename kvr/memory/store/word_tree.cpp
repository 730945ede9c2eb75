#include "kvr/memory/store/word_tree.h"

#include <algorithm>
#include <type_traits>
#include <utility>

namespace kvr {

namespace {

/// Returns the branch or page in @p tree, made first if a pattern replaces it.
template <class Inner>
Inner& unfolded(word_subtree<Inner>& tree, std::uint32_t address) {
    if (const auto* texts = std::get_if<pattern_ref>(&tree)) {
        tree = std::make_unique<Inner>(first_of<Inner>(address), *texts);
    }
    return *inner_of(tree);
}

template <class Inner>
word_page& page_in(word_subtree<Inner>& tree, std::uint32_t address) {
    Inner& inner = unfolded(tree, address);
    if constexpr (is_page<Inner>) {
        return inner;
    } else {
        return page_in(inner.child(address), address);
    }
}

pattern_ref whole_of(const word_page& page) noexcept {
    return page.whole();
}

template <class Inner, std::size_t count>
pattern_ref whole_of(const word_branch<Inner, count>& branch) noexcept {
    const auto* first = std::get_if<pattern_ref>(&branch.children.front());
    const bool all_same =
        first != nullptr && std::all_of(branch.children.begin() + 1, branch.children.end(),
                                        [&](const word_subtree<Inner>& child) {
                                            const auto* texts = std::get_if<pattern_ref>(&child);
                                            return texts != nullptr && same_texts(*first, *texts);
                                        });
    return all_same ? *first : pattern_ref();
}

/// Replaces the branch or page in @p tree by a pattern with the same words. Returns false if there is none.
template <class Inner>
bool fold_here(word_subtree<Inner>& tree) noexcept {
    pattern_ref whole = whole_of(*inner_of(tree));
    if (!whole) {
        return false;
    }
    tree = std::move(whole);
    return true;
}

/// Returns true if the page of @p address was replaced.
template <class Inner>
bool fold_in(word_subtree<Inner>& tree, std::uint32_t address) noexcept {
    if constexpr (is_page<Inner>) {
        return fold_here(tree);
    } else {
        const bool page_gone = fold_in(inner_of(tree)->child(address), address);
        if (page_gone) {
            fold_here(tree);
        }
        return page_gone;
    }
}

template <class Inner>
void assign_in(word_subtree<Inner>& tree, std::uint64_t tree_first, const address_range& range,
               const pattern_ref& texts) {
    const std::uint64_t tree_last = tree_first + Inner::words - 1;
    if (range.first <= tree_first && tree_last <= range.last) {
        tree = texts;
        return;
    }
    Inner& inner = unfolded(tree, static_cast<std::uint32_t>(tree_first));
    const std::uint64_t begin = std::max(range.first, tree_first) - tree_first;
    const std::uint64_t end = std::min(range.last, tree_last) - tree_first;
    if constexpr (is_page<Inner>) {
        inner.assign(static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end), texts);
    } else {
        constexpr std::uint64_t child_words = Inner::words / std::tuple_size_v<decltype(inner.children)>;
        for (std::uint64_t i = begin / child_words; i <= end / child_words; ++i) {
            assign_in(inner.children[i], tree_first + i * child_words, range, texts);
        }
    }
    fold_here(tree);
}

template <class Inner>
void drop_in(word_subtree<Inner>& tree, std::uint64_t tree_first, std::uint64_t end) noexcept {
    if (tree_first >= end) {
        tree = pattern_ref();
    } else if constexpr (!is_page<Inner>) {
        if (Inner* inner = inner_of(tree)) {
            for (auto& child : inner->children) {
                drop_in(child, tree_first, end);
                tree_first += Inner::words / inner->children.size();
            }
        }
    }
}

} // namespace

std::uint64_t word_leaf::find_other(std::uint32_t from, std::uint32_t end,
                                    std::string_view text) const noexcept {
    return page != nullptr ? std::uint64_t{first} + page->find_other(from - first, end - first, text)
                           : texts->find_other(from, end, text);
}

word_page& page_at(word_root& root, std::uint32_t address) {
    return page_in(root, address);
}

bool fold(word_root& root, std::uint32_t address) noexcept {
    return fold_in(root, address);
}

void assign(word_root& root, std::uint64_t root_first, const address_range& range, const pattern_ref& texts) {
    assign_in(root, root_first, range, texts);
}

void drop_from(word_root& root, std::uint64_t root_first, std::uint64_t end) noexcept {
    drop_in(root, root_first, end);
}

} // namespace kvr
