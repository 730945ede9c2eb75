#include "kvrimage/formats/source/source_comments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr comment_marks with_blocks = {"//", "/*", "*/", "\"'", "// made"};
constexpr comment_marks without_blocks = {"#", "", "", "\"", ""};

std::vector<std::string> comments_in(std::string_view contents, const comment_marks& marks) {
    std::vector<std::string> found;
    find_source_comments(contents, marks, [&](const span& where) { found.emplace_back(where.in(contents)); });
    return found;
}

TEST(SourceComments, EndWithTheLineOrTheirMark) {
    EXPECT_THAT(comments_in("a // one\n/* two\n * three */ b /**/\n// four", with_blocks),
                ElementsAre("// one", "/* two\n * three */", "/**/", "// four"));
    EXPECT_THAT(comments_in("a = 1 # one\n/* b\n", without_blocks), ElementsAre("# one"));
}

TEST(SourceComments, EndWithTheFileAtTheLatest) {
    EXPECT_THAT(comments_in("a /* one", with_blocks), ElementsAre("/* one"));
    EXPECT_THAT(comments_in("a /*", with_blocks), ElementsAre("/*"));
    EXPECT_THAT(comments_in("", with_blocks), IsEmpty());
    EXPECT_THAT(comments_in("/", with_blocks), IsEmpty());
}

TEST(SourceComments, AreNotInTexts) {
    EXPECT_THAT(comments_in(R"(a = "// b"; c = '/*'; // d)", with_blocks), ElementsAre("// d"));
    EXPECT_THAT(comments_in(R"(a = "\"// b"; // c)", with_blocks), ElementsAre("// c"));
    EXPECT_THAT(comments_in("a = \"b // c\n// d", with_blocks), ElementsAre("// d"));
    EXPECT_THAT(comments_in("\"// a", with_blocks), IsEmpty());
    EXPECT_THAT(comments_in("\"a\\", with_blocks), IsEmpty());
}

TEST(SourceComments, ThatAreWrittenAnywayAreLeftOut) {
    EXPECT_THAT(comments_in("// made\n// made1F\n// made by me\n// mine\n", with_blocks),
                ElementsAre("// made by me", "// mine"));
}

TEST(SourceComments, FollowCharactersAndWhatElseHasTheirMark) {
    constexpr comment_marks with_characters = {"//", "/*", "*/", "\"", "", true};
    EXPECT_THAT(comments_in("c = '\"'; // a\nd = '\\''; // b\nn = 1'000; // c", with_characters),
                ElementsAre("// a", "// b", "// c"));
    EXPECT_THAT(comments_in("x'", with_characters), IsEmpty());
    EXPECT_THAT(comments_in("x'\\", with_characters), IsEmpty());
}

} // namespace
