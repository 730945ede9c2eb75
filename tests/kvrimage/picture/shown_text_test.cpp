#include "kvrimage/picture/shown_text.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(ShownText, NameIsShownWithoutItsFolders) {
    EXPECT_EQ(shown_name("/a/b/boot.mif"), "boot.mif");
    EXPECT_EQ(shown_name("boot.mif"), "boot.mif");
    EXPECT_EQ(shown_name(""), "");
}

TEST(ShownText, CharactersThatAreNotShownAreReplaced) {
    const std::string replaced = "\xEF\xBF\xBD";
    EXPECT_EQ(shown_name("a\x1B[1mb"), "a" + replaced + "[1mb");
    EXPECT_EQ(shown_name("\x7F"), replaced);
    EXPECT_EQ(shown_name("\xE2\x80\xAE"), replaced);                       // right to left
    EXPECT_EQ(shown_name("\xEF\xBF\xBE"), replaced);                       // not a character of XML
    EXPECT_EQ(shown_name("\xFF\xC3"), replaced + replaced);                // stray bytes
    EXPECT_EQ(shown_name("\xC0\xAF"), replaced + replaced);                // longer than needed
    EXPECT_EQ(shown_name("\xC3x"), replaced + "x");                        // cut short
    EXPECT_EQ(shown_name("\xED\xA0\x80"), replaced + replaced + replaced); // half of a pair
    EXPECT_EQ(shown_name("\xF4\x90\x80\x80"), replaced + replaced + replaced + replaced); // beyond the last
}

TEST(ShownText, OtherCharactersStayAsTheyAre) {
    EXPECT_EQ(shown_name("gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80 <&>"),
              "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC \xF0\x9F\x98\x80 <&>");
}

TEST(ShownText, AsciiHasAQuestionMarkForEachOtherCharacter) {
    EXPECT_EQ(in_ascii("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z"), "a???z");
}

TEST(ShownText, LongTextLosesItsMiddle) {
    EXPECT_EQ(shortened("abcdef", 6, "..."), "abcdef");
    EXPECT_EQ(shortened("abcdefg", 6, "..."), "ab...g");
    EXPECT_EQ(shortened("abcdefg", 2, "..."), "...");
    EXPECT_EQ(shortened("\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F", 3, "\xE2\x80\xA6"),
              "\xC3\xA4\xE2\x80\xA6\xC3\x9F");
}

} // namespace
