#include "kvr/memory/store/page_texts.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::size_t size_of_block = std::size_t{2} << 20U;
constexpr std::size_t made_apart = size_of_block; ///< characters that are allocated one by one
constexpr std::size_t size_of_page = size_of_block / 64 + 8;

kvr::page_texts filled_texts(kvr::page_texts_maker& pages, char with) {
    kvr::page_texts texts = pages.make(size_of_page);
    std::memset(texts.get(), with, size_of_page);
    return texts;
}

std::vector<kvr::page_texts> texts_of_pages(std::size_t count) {
    kvr::page_texts_maker pages;
    std::vector<kvr::page_texts> made;
    for (std::size_t index = 0; index < count; ++index) {
        made.push_back(filled_texts(pages, static_cast<char>('A' + index % 26)));
    }
    return made;
}

std::string_view shown_page(const kvr::page_texts& texts) {
    return {texts.get(), size_of_page};
}

TEST(PageTexts, EachHasItsOwnCharacters) {
    const std::vector<kvr::page_texts> made = texts_of_pages(700);
    for (std::size_t index = 0; index < made.size(); ++index) {
        ASSERT_EQ(shown_page(made[index]), std::string(size_of_page, static_cast<char>('A' + index % 26)))
            << index;
    }
}

TEST(PageTexts, OfALargeStoreShareBlocks) {
    const std::vector<kvr::page_texts> made =
        texts_of_pages(made_apart / size_of_page + 1 + 2 * (size_of_block / size_of_page));
    const std::size_t first_in_block = made_apart / size_of_page + 1;
    EXPECT_EQ(made[first_in_block - 1].use_count(), 1);
    EXPECT_EQ(made[first_in_block].use_count(), static_cast<long>(size_of_block / size_of_page));
    EXPECT_EQ(made[first_in_block + 1].get(), made[first_in_block].get() + size_of_page);
}

TEST(PageTexts, LastOneReleasesTheBlock) {
    std::vector<kvr::page_texts> made = texts_of_pages(700);
    const kvr::page_texts kept = made[600];
    const std::string before(shown_page(kept));
    made.clear();
    EXPECT_EQ(kept.use_count(), 1);
    EXPECT_EQ(shown_page(kept), before);
}

TEST(PageTexts, BlockWithRoomForExactlyOneMoreTakesIt) {
    kvr::page_texts_maker pages;
    for (std::size_t made = 0; made < made_apart; made += size_of_block / 2) {
        static_cast<void>(pages.make(size_of_block / 2));
    }
    const kvr::page_texts first = pages.make(size_of_block / 2);
    const kvr::page_texts second = pages.make(size_of_block / 2);
    const kvr::page_texts third = pages.make(1);
    EXPECT_EQ(second.get(), first.get() + size_of_block / 2);
    EXPECT_EQ(first.use_count(), 2);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(third.get()) % size_of_block, 0U); // the next block
}

} // namespace
