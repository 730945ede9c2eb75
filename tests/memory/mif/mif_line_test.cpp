#include "kvr/memory/mif/mif_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using string_views = std::vector<std::string_view>;

std::string_view first_token(std::string_view text, std::size_t from) {
    const kvr::text_span token = kvr::find_token(text, from);
    return token.found() ? token.in(text) : "none";
}

string_views values_of(std::string_view text) {
    string_views values = {"old"};
    kvr::split_values(text, values);
    return values;
}

TEST(MifLine, ATokenIsALongestRunOfValueCharacters) {
    EXPECT_EQ(first_token("12", 0), "12");
    EXPECT_EQ(first_token(" [12..34]", 0), "12");
    EXPECT_EQ(first_token(" [12..34]", 3), "2");
    EXPECT_EQ(first_token(" [12..34]", 4), "34");
    EXPECT_EQ(first_token("-09afAFxXuU ", 0), "-09afAFxXuU");
    EXPECT_EQ(first_token("gG/:@[`{", 0), "none");
    EXPECT_EQ(first_token("1 ", 1), "none");
    EXPECT_EQ(first_token("1", 1), "none");
    EXPECT_EQ(first_token("", 0), "none");
}

TEST(MifLine, ValuesAreTheTokensUpToAComment) {
    EXPECT_EQ(values_of("1 2;3"), (string_views{"1", "2", "3"}));
    EXPECT_EQ(values_of("1 2 -- 3"), (string_views{"1", "2"}));
    EXPECT_EQ(values_of("1 % 2"), (string_views{"1"}));
    EXPECT_EQ(values_of("-1 --2 % 3"), (string_views{"-1"}));
    EXPECT_EQ(values_of(";"), string_views{});
}

TEST(MifLine, TokensAreCountedWithThoseOfComments) {
    EXPECT_EQ(kvr::count_tokens("1 2 -- 3 % 4"), 5U);
    EXPECT_EQ(kvr::count_tokens("1"), 1U);
    EXPECT_EQ(kvr::count_tokens(" ; "), 0U);
    EXPECT_EQ(kvr::count_tokens(""), 0U);
}

TEST(MifLine, ACommentBeginsWithTwoDashesOrAPercentSign) {
    EXPECT_EQ(kvr::comment_position("1 - 2--3--4"), 5U);
    EXPECT_EQ(kvr::comment_position("--"), 0U);
    EXPECT_EQ(kvr::comment_position("- -"), std::string_view::npos);
    EXPECT_EQ(kvr::without_comments("ab--c%d"), "ab");
    EXPECT_EQ(kvr::without_comments("ab%c--d"), "ab");
    EXPECT_EQ(kvr::without_comments("ab - c"), "ab - c");
    EXPECT_EQ(kvr::without_comments("%"), "");
}

TEST(MifLine, BlanksAndTabsAreStripped) {
    std::string text = " a\tb \r\n ";
    kvr::strip_blanks(text);
    EXPECT_EQ(text, "ab\r\n");
}

TEST(MifLine, ContainsLooksAnywhere) {
    EXPECT_TRUE(kvr::contains("depth=1", "th="));
    EXPECT_TRUE(kvr::contains("depth", "depth"));
    EXPECT_FALSE(kvr::contains("dept", "depth"));
}

} // namespace
