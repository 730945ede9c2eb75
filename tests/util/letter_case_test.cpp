#include "kvr/util/letter_case.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using kvr::equal_ignoring_case;
using kvr::to_lower_case;
using kvr::to_upper_case;
using namespace std::string_literals;

TEST(LetterCase, EqualTextsMayDifferInCase) {
    EXPECT_TRUE(equal_ignoring_case("Content", "cONTENT"));
    EXPECT_TRUE(equal_ignoring_case("az", "AZ"));
    EXPECT_TRUE(equal_ignoring_case("", ""));
}

TEST(LetterCase, WholeTextsAreCompared) {
    EXPECT_FALSE(equal_ignoring_case("word", "words"));
    EXPECT_FALSE(equal_ignoring_case("words", "word"));
    EXPECT_FALSE(equal_ignoring_case("a\0b"s, "a\0c"s));
}

TEST(LetterCase, NeighborsOfTheLettersHaveNoCase) {
    EXPECT_FALSE(equal_ignoring_case("@[", "`{"));
    EXPECT_FALSE(equal_ignoring_case("_", "\x7F"));
}

TEST(LetterCase, BytesBeyondAsciiHaveNoCase) {
    EXPECT_FALSE(equal_ignoring_case("\xC9", "\xE9"));
    EXPECT_EQ(to_lower_case("\xC9"), "\xC9");
    EXPECT_EQ(to_upper_case("\xE9"), "\xE9");
}

TEST(LetterCase, ConvertsEveryLetterAndNothingElse) {
    EXPECT_EQ(to_lower_case("AMZ amz 09@[`{"), "amz amz 09@[`{");
    EXPECT_EQ(to_upper_case("AMZ amz 09@[`{"), "AMZ AMZ 09@[`{");
}

TEST(LetterCase, ConvertsAfterANul) {
    EXPECT_EQ(to_lower_case("A\0B"s), "a\0b"s);
    EXPECT_EQ(to_upper_case("a\0b"s), "A\0B"s);
}

TEST(LetterCase, CharactersAreConvertedOneByOne) {
    for (int code = 0; code < 256; ++code) {
        const auto character = static_cast<char>(code);
        EXPECT_EQ(std::string(1, kvr::lower_case_of(character)), to_lower_case(std::string(1, character)));
        EXPECT_EQ(kvr::is_upper_case(character), kvr::lower_case_of(character) != character);
        EXPECT_EQ(kvr::is_lower_case(character), kvr::upper_case_of(character) != character);
    }
}

TEST(LetterCase, IsConvertedInPlaceFromAPlaceOn) {
    std::string text = "`abyz{@AZ[09\xe4";
    kvr::to_upper(text, 2);
    EXPECT_EQ(text, "`aBYZ{@AZ[09\xe4");
    kvr::to_upper(text, text.size());
    EXPECT_EQ(text, "`aBYZ{@AZ[09\xe4");
}

} // namespace
