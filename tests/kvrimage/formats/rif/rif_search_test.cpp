#include "kvrimage/formats/rif/rif_search.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

TEST(RifSearch, FindsTheLastWordOfAnAddress) {
    EXPECT_EQ(find_rif_word("@0\n00 11\n@1\n 222", {}, 1), (place{4, 2, 13, 3}));
}

TEST(RifSearch, FindsTheFirstWordOfAnAddress) {
    EXPECT_EQ(first_rif_word("@0\n00 11 @1 2\n@1\n 222", 1), (place{0, 0, 6, 2}));
}

TEST(RifSearch, FindsNothingWhereNoWordIsSet) {
    EXPECT_EQ(find_rif_word("@0\n00 11", {}, 2), std::nullopt);
    EXPECT_EQ(first_rif_word("@0\n00 11", 2), std::nullopt);
}

TEST(RifSearch, FindsWordsAmongRegularLines) {
    std::string text;
    for (int line = 0; line < 100; ++line) {
        text += "@" + std::to_string(line) + "0\n00 01 02 03\n";
    }
    EXPECT_EQ(find_rif_word(text, {}, 0x502)->line, 102U);
    EXPECT_EQ(find_rif_word(text, {}, 0x502)->column, 7U);
    EXPECT_EQ(first_rif_word(text, 0x102)->length, 2U);
    EXPECT_EQ(find_rif_word(text, {}, 0x504), std::nullopt);
}

TEST(RifSearch, LeavesOutWordsAfterABadAddress) {
    const std::string regular(200, '\n');
    EXPECT_EQ(find_rif_word("@G\n1 2\n" + regular + "3\n" + regular, {}, 0), std::nullopt);
}

} // namespace
