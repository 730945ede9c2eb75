#include "kvrimage/formats/comments.h"
#include "kvrimage/formats/mif/mif_writer.h"
#include "tests/kvrimage/formats/toy_format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::string_view small_mif = "-- one\n"
                                       "WIDTH=8; % two %\n"
                                       "DEPTH=4;\n"
                                       "CONTENT BEGIN\n"
                                       "0 : 1; -- three\n"
                                       "END;\n";

std::vector<std::string> comments_of(std::string_view contents, std::string_view path) {
    std::vector<std::string> all;
    for_each_comment(contents, path, [&](const span& where) { all.emplace_back(where.in(contents)); });
    return all;
}

TEST(Comments, AreThoseOfTheFormatThatTheContentsSay) {
    const std::vector<std::string> all = {"-- one", "% two %", "-- three"};
    EXPECT_EQ(comments_of(small_mif, "a.mif"), all);
    EXPECT_EQ(comments_of(small_mif, "a.hex"), all);
    EXPECT_EQ(comments_of(small_mif, ""), all);
}

TEST(Comments, AreThoseOfTheNameWhereTheContentsSayNothing) {
    EXPECT_EQ(comments_of("-- one\n", "a.mif"), std::vector<std::string>{"-- one"});
    EXPECT_EQ(comments_of("-- one\n", "a.hex"), std::vector<std::string>{});
}

TEST(Comments, AreThoseOfTheFirstFormatThatFindsAnyWhereNothingSaysWhichItIs) {
    EXPECT_EQ(comments_of("-- one\n-- two\n", "a.note"), (std::vector<std::string>{"-- one", "-- two"}));
    EXPECT_EQ(comments_of("// one\n", "a.note"), std::vector<std::string>{"// one"});
    EXPECT_EQ(comments_of("", "a.note"), std::vector<std::string>{});
}

TEST(Comments, OfAFormatThatHasNoneAreNone) {
    static_cast<void>(toy_format());
    EXPECT_EQ(comments_of("toy 8\n0 11 -- one\n", "a.toy"), std::vector<std::string>{});
    EXPECT_EQ(comments_of("-- one\n", "a.txt"), std::vector<std::string>{"-- one"}) << "it is passed over";
}

TEST(Comments, AreThoseOfTheNameWhereTheContentsAreOnlyPossible) {
    const std::string_view unknown_type = ":00000009F7\nx % one %\n";
    EXPECT_EQ(comments_of(unknown_type, "a.mif"), std::vector<std::string>{"% one %"});
    EXPECT_EQ(comments_of(unknown_type, "a.hex"), std::vector<std::string>{"x % one %"});
}

TEST(Comments, AreThoseOfTheNameWhereItsFormatIsOnlyWritten) {
    EXPECT_EQ(comments_of("WIDTH = 8\nDEPTH = 1\n# one\n", "a.py"), std::vector<std::string>{"# one"});
}

TEST(MissingComments, AreNoneWhenAllAreThereInAnyOrder) {
    const missing_comments missing = find_missing_comments("-- one\n-- two\n", "-- two\n-- one\n", "a.mif");
    EXPECT_EQ(missing.count, 0U);
    EXPECT_EQ(missing.first_line, 0U);
}

TEST(MissingComments, AreCountedFromTheFirstOne) {
    const missing_comments missing =
        find_missing_comments("-- one\n-- two\n\n-- three\n-- four\n", "-- three\n-- one\n", "a.mif");
    EXPECT_EQ(missing.count, 2U);
    EXPECT_EQ(missing.first_line, 2U);
}

TEST(MissingComments, CountEqualOnesEach) {
    const missing_comments missing =
        find_missing_comments("-- one\n-- one\n-- one\n", "-- one\n-- one\n", "a.mif");
    EXPECT_EQ(missing.count, 1U);
    EXPECT_EQ(missing.first_line, 3U);
}

TEST(Comments, OfHexAreTheLinesBetweenItsRecords) {
    const std::vector<std::string> all = {"; boot code", "; the end"};
    EXPECT_EQ(comments_of("; boot code\n:0100000007F8\n; the end\n:00000001FF\n", "a.hex"), all);
}

TEST(Comments, TheLineThatWritersOfMifPutFirstIsNone) {
    const std::string text = std::string(mif_first_line) + "\n-- one\n";
    EXPECT_EQ(comments_of(text, "a.mif"), std::vector<std::string>{"-- one"});
}

} // namespace
