#include "kvr/memory/store/word_tree.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>

namespace {

using kvr::page_words;
using kvr::word_root;

TEST(WordTree, AssigningAllWordsReplacesTheTreeAtOnce) {
    word_root root = kvr::word_pattern::uniform("0");
    const kvr::pattern_ref texts = kvr::word_pattern::uniform("1");
    const std::size_t before = allocation_count();
    for (const std::uint64_t first : {std::uint64_t{0}, kvr::root_words}) {
        kvr::assign(root, first, {first, first + kvr::root_words - 1}, texts);
    }
    EXPECT_EQ(allocation_count(), before);
    EXPECT_EQ(kvr::leaf_at(root, 0).texts, texts.get());
    EXPECT_EQ(kvr::leaf_at(root, 0).last, kvr::root_words - 1);
}

TEST(WordTree, FoldsAPageOnceAllItsWordsAreEqual) {
    word_root root = kvr::word_pattern::uniform("0");
    kvr::page_at(root, 5).set(5, "1");
    EXPECT_FALSE(kvr::fold(root, 5));
    EXPECT_NE(kvr::leaf_at(root, 5).page, nullptr);
    kvr::page_at(root, 5).set(5, "0");
    EXPECT_TRUE(kvr::fold(root, 5));
    EXPECT_EQ(kvr::leaf_at(root, 5).page, nullptr);
    EXPECT_EQ(kvr::leaf_at(root, 5).last, kvr::root_words - 1);
}

} // namespace
