#include "kvr/memory/text_arena.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using kvr::text_arena;

TEST(TextArena, TextsStayWhereTheyAreWhileOthersAreKept) {
    text_arena arena;
    std::vector<std::pair<std::string, std::string_view>> texts;
    for (std::size_t i = 0; i < 3000; ++i) {
        std::string text(i * 7919 % (i % 100 == 0 ? 9000 : 200), static_cast<char>('a' + i % 26));
        const std::string_view kept = arena.keep(text);
        texts.emplace_back(std::move(text), kept);
    }
    for (const auto& [text, kept] : texts) {
        ASSERT_EQ(kept, text);
    }
}

TEST(TextArena, KeepsACopy) {
    text_arena arena;
    std::string text = "abc";
    const std::string_view kept = arena.keep(text);
    text = "xyz";
    EXPECT_EQ(kept, "abc");
}

TEST(TextArena, TakesTextsAgainAfterClearing) {
    text_arena arena;
    arena.keep("abc");
    arena.clear();
    EXPECT_EQ(arena.keep("def"), "def");
}

TEST(TextArena, SwappedArenasExchangeTheirTexts) {
    text_arena one;
    text_arena other;
    const std::string_view kept = one.keep("abc");
    one.swap(other);
    one.clear();
    EXPECT_EQ(kept, "abc");
    EXPECT_EQ(other.keep("def"), "def");
}

} // namespace
