#include "kvrimage/formats/coe/coe_format.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using kvrimage_tests::found_in;
using kvrimage_tests::repaired_as;
using kvrimage_tests::words_read;
using testing::ElementsAre;
using testing::IsEmpty;

std::string coe_of(const std::string& digits_radix, const std::string& words) {
    return "memory_initialization_radix=" + digits_radix + ";\nmemory_initialization_vector=\n" + words;
}

std::string coe_words(const std::string& digits_radix, const std::string& words,
                      const read_options& options = {}) {
    return words_read(coe_format, coe_of(digits_radix, words), options);
}

TEST(CoeReader, ReadsWordsInTheRadixOfTheFile) {
    EXPECT_EQ(coe_words("16", "00,1f,\nA0;"), "00 1F A0");
    EXPECT_EQ(coe_words("2", "0011 1010;"), "3 A");
    EXPECT_EQ(coe_words("10", "0, 255, 7;"), "00 FF 07");
}

TEST(CoeReader, CommasBlanksAndLinesSeparateWords) {
    EXPECT_EQ(coe_words("16", "1,2 ,3 4\t5\r\n6 , 7\n;"), "1 2 3 4 5 6 7");
}

TEST(CoeReader, TheWidthIsThatOfTheLongestWordOrOfTheCaller) {
    EXPECT_EQ(coe_words("16", "1, 001;"), "001 001");
    read_options options;
    options.width = 5;
    EXPECT_EQ(coe_words("16", "1, 1F;", options), "01 1F");
    EXPECT_EQ(coe_words("16", "1, 20;", options),
              "too-wide 3:4+2: value 20 needs 6 bits, the words have 5 / needs --width 6");
}

TEST(CoeReader, TheDepthIsTheNumberOfWordsOrOfTheCaller) {
    read_options options;
    options.depth = 3;
    EXPECT_EQ(coe_words("16", "1;", options), "1 - -");
    options.depth = 1;
    EXPECT_EQ(coe_words("16", "1,2;", options),
              "beyond-depth 3:3+1: address 1 is beyond the depth 1 (0 to 0) / needs --depth 2 or more");
}

TEST(CoeReader, AnotherRadixIsBroken) {
    EXPECT_THAT(found_in(coe_format, coe_of("8", "7;")),
                ElementsAre("coe-radix 1:29+1: memory_initialization_radix=8 is not valid / write 2, 10 "
                            "or 16"));
}

TEST(CoeReader, WordsWithoutARadixAreBroken) {
    EXPECT_THAT(found_in(coe_format, "memory_initialization_vector=1;"),
                ElementsAre("coe-no-radix 1:1+28: there is no memory_initialization_radix before the words / "
                            "write memory_initialization_radix=16; if they are hexadecimal"));
}

TEST(CoeReader, ASecondRadixIsBroken) {
    EXPECT_THAT(found_in(coe_format, "memory_initialization_radix=2;\n" + coe_of("16", "1;")),
                ElementsAre("coe-radix-again 2:29+2: there is a second memory_initialization_radix / remove "
                            "one of the two"));
}

TEST(CoeReader, AFileWithoutVectorIsBroken) {
    EXPECT_THAT(found_in(coe_format, "memory_initialization_radix=2;\n"),
                ElementsAre("coe-no-vector 0:0+0: there is no memory_initialization_vector / write "
                            "memory_initialization_vector= before the words, and ';' after the last one"));
}

TEST(CoeReader, OtherStatementsAreBroken) {
    EXPECT_THAT(found_in(coe_format, "words=1;\nbits 4;\n" + coe_of("16", "1;")),
                ElementsAre("coe-stray 1:1+8: 'words=1;' is not a valid statement / write "
                            "memory_initialization_radix=16; and memory_initialization_vector=00, 01; only"));
}

TEST(CoeReader, TextAfterTheEndIsBroken) {
    EXPECT_THAT(found_in(coe_format, coe_of("16", "1; first\n2;")),
                ElementsAre("coe-after-end 3:4+5: 'first' follows the ';' that ends the words / put comments "
                            "before the words or after the final ';'; a ';' among the words ends them"));
}

TEST(CoeReader, AMissingSemicolonIsBrokenAndRepaired) {
    EXPECT_THAT(
        found_in(coe_format, coe_of("16", "1,\n2\n")),
        ElementsAre("coe-no-semicolon 4:1+1: no ';' after 2 / end each of the two statements with ';'"));
    EXPECT_EQ(repaired_as(coe_format, coe_of("16", "1,\n2\n")), coe_of("16", "1,\n2;\n"));
    EXPECT_EQ(repaired_as(coe_format, "memory_initialization_radix=16\nmemory_initialization_vector=1,"),
              "memory_initialization_radix=16;\nmemory_initialization_vector=1;");
}

TEST(CoeReader, ALastCommaIsSuspectAndRepaired) {
    EXPECT_THAT(found_in(coe_format, coe_of("16", "1,2,\n;")),
                ElementsAre("coe-last-comma 3:4+1: ',' before the ';' that ends the words / the last value "
                            "has no ','; if one is missing here, add it"));
    EXPECT_EQ(coe_words("16", "1,2,;"), "1 2");
    EXPECT_EQ(repaired_as(coe_format, coe_of("16", "1,2,\n;")), coe_of("16", "1,2\n;"));
}

TEST(CoeReader, CommasWithoutAValueAreBroken) {
    EXPECT_THAT(found_in(coe_format, coe_of("16", "1,,2;")),
                ElementsAre("coe-empty-value 3:3+1: there is no value before this ',' / write the value, or "
                            "remove the ','"));
    EXPECT_EQ(
        coe_words("16", ",2;"),
        "coe-empty-value 3:1+1: there is no value before this ',' / write the value, or remove the ','");
}

TEST(CoeReader, CharactersThatAreNoDigitsAreBroken) {
    EXPECT_THAT(found_in(coe_format, coe_of("2", "01 02 2;")),
                ElementsAre("bad-digit 3:4+2: '2' in 02 is not a valid binary digit"));
    EXPECT_THAT(found_in(coe_format, coe_of("16", "0x;")),
                ElementsAre("bad-digit 3:1+2: 'x' in 0x is not a valid hexadecimal digit"));
}

TEST(CoeReader, NegativeNumbersAreBroken) {
    EXPECT_THAT(found_in(coe_format, coe_of("10", "1, -5;")),
                ElementsAre("bad-digit 3:4+2: '-' in -5 is not a valid decimal digit / decimal values are "
                            "unsigned here: write the unsigned value of the word"));
}

TEST(CoeReader, AVectorWithoutWordsSaysNoSize) {
    EXPECT_THAT(found_in(coe_format, coe_of("16", ";")),
                ElementsAre(testing::StartsWith("size-unknown 0:0")));
    read_options options;
    options.width = 8;
    options.depth = 2;
    EXPECT_EQ(coe_words("16", ";", options), "- -");
}

TEST(CoeReader, GoesOnAfterFaultsWhenItIsTo) {
    read_options options;
    options.keep_going = true;
    const read_result result = kvrimage_tests::read_as(coe_format, coe_of("16", "1 G 3;"), options);
    EXPECT_EQ(kvrimage_tests::words_of(*result.image), "1 - 3");
    ASSERT_EQ(result.unreadable.size(), 1U);
    EXPECT_EQ(result.unreadable.front().first, 1U);
}

TEST(CoeReader, SaysWhatTheFileSaysOfItself) {
    const read_result result = kvrimage_tests::read_as(coe_format, "; table\n" + coe_of("10", "300;"));
    EXPECT_EQ(result.facts.data_radix, radix::uns);
    EXPECT_EQ(result.facts.width_source, "the longest word");
    EXPECT_TRUE(result.facts.has_comments);
    EXPECT_THAT(result.diagnostics, IsEmpty());
}

} // namespace
