#include "kvrimage/formats/rif/rif_comments.h"
#include "kvrimage/formats/rif/rif_search.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace {

using namespace kvrimage;

TEST(RifSearch, FindsTheLastWordOfAnAddress) {
    EXPECT_EQ(find_rif_word("@0\n00 11\n@1\n 222", {}, 1), (place{4, 2, 13, 3}));
}

TEST(RifSearch, FindsTheComments) {
    const std::string_view text = "// one\n@0\n00 11 # two\n";
    std::string found;
    find_rif_comments(text, [&](const span& where) { found += std::string(where.in(text)) + "|"; });
    EXPECT_EQ(found, "// one|# two|");
}

TEST(RifSearch, FindsTheFirstWordOfAnAddress) {
    const std::optional<span> found = first_rif_word("@0\n00 11 @1 2\n@1\n 222", 1);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, 6U);
    EXPECT_EQ(found->length, 2U);
}

TEST(RifSearch, FindsNothingWhereNoWordIsSet) {
    EXPECT_EQ(find_rif_word("@0\n00 11", {}, 2), std::nullopt);
    EXPECT_FALSE(first_rif_word("@0\n00 11", 2));
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
