#include "kvr/memory/store/text_arena.h"
#include "tests/allocation.h"

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
    std::vector<std::pair<std::string, const char*>> texts;
    for (std::size_t i = 0; i < 3000; ++i) {
        std::string text(i * 7919 % (i % 100 == 0 ? 9000 : 200), static_cast<char>('a' + i % 26));
        const char* kept = arena.keep(text);
        texts.emplace_back(std::move(text), kept);
    }
    for (const auto& [text, kept] : texts) {
        ASSERT_EQ(text_arena::text_at(kept), text);
    }
}

TEST(TextArena, KeepsACopy) {
    text_arena arena;
    std::string text = "abc";
    const char* kept = arena.keep(text);
    text = "xyz";
    EXPECT_EQ(text_arena::text_at(kept), "abc");
}

TEST(TextArena, LengthsAroundEachFurtherByteOfTheLengthAreKept) {
    text_arena arena;
    for (const std::size_t limit : {std::size_t{1} << 7, std::size_t{1} << 14, std::size_t{1} << 21}) {
        for (const std::size_t length : {limit - 1, limit, limit + 1}) {
            const std::string text(length, 'x');
            const char* kept = arena.keep(text);
            EXPECT_EQ(text_arena::text_at(kept), text) << length;
        }
    }
    EXPECT_EQ(text_arena::text_at(arena.keep("")), "");
}

TEST(TextArena, TakesTextsAgainAfterClearing) {
    text_arena arena;
    arena.keep("abc");
    arena.clear();
    EXPECT_EQ(text_arena::text_at(arena.keep("def")), "def");
}

TEST(TextArena, SwappedArenasExchangeTheirTexts) {
    text_arena one;
    text_arena other;
    const char* kept = one.keep("abc");
    one.swap(other);
    one.clear();
    EXPECT_EQ(text_arena::text_at(kept), "abc");
    EXPECT_EQ(text_arena::text_at(other.keep("def")), "def");
}

TEST(TextArena, ReservesAtMostTwiceWhatItsTextsTake) {
    const std::string text(62, 'x'); // 63 characters with the length
    const allocation_meter meter;
    text_arena arena;
    for (std::size_t kept = 1; kept <= 5000; ++kept) {
        arena.keep(text);
        ASSERT_LE(allocation_meter::live(), 2 * 63 * kept + 2048);
    }
}

TEST(TextArena, AllocatesFewBlocks) {
    const std::string text(63, 'x');
    const std::size_t before = allocation_count();
    text_arena arena;
    arena.keep(text);
    const std::size_t after_first = allocation_count();
    for (int kept = 1; kept < 16; ++kept) {
        arena.keep(text);
    }
    EXPECT_EQ(allocation_count(), after_first) << "sixteen texts of 64 characters fill the first block";
    for (int kept = 16; kept < 16384; ++kept) {
        arena.keep(text);
    }
    EXPECT_LE(allocation_count() - before, 30U) << "one MiB: the blocks grow up to 64 KiB";
}

TEST(TextArena, BeginsSmallAgainAfterClearing) {
    const allocation_meter meter;
    text_arena arena;
    for (int kept = 0; kept < 5000; ++kept) {
        arena.keep("some text");
    }
    arena.clear();
    EXPECT_LE(allocation_meter::live(), 64U);
    EXPECT_EQ(text_arena::text_at(arena.keep("abc")), "abc");
    EXPECT_LE(allocation_meter::live(), 1200U);
}

} // namespace
