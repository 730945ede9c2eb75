#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/readmem/readmem_findings.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_reader.h"
#include "tests/kvrimage/formats/readmem/shown_readmem.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// @p contents after all repairs.
std::string repaired_readmem(const std::string& contents, const format& as = readmemh_format) {
    check_options options;
    options.read.as = &as;
    return repair(contents, options).contents;
}

std::string first_readmem_hint(std::string_view contents) {
    const read_result result = read_readmemh(contents, {});
    return result.diagnostics.empty() ? "" : result.diagnostics.front().hint;
}

TEST(ReadmemFindings, AByteOrderMarkIsSuspect) {
    const std::string text = "\xEF\xBB\xBF"
                             "12\n";
    EXPECT_THAT(readmemh_diagnostics_of(text), ElementsAre("readmem-byte-order-mark 1:1+3"));
    EXPECT_EQ(repaired_readmem(text), "12\n");
}

TEST(ReadmemFindings, SeparatorsAreBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("00,11, 22;\n"), ElementsAre("readmem-separator 1:3+1 x3"));
    EXPECT_EQ(repaired_readmem("00,11, 22;\n"), "00 11  22 \n");
}

TEST(ReadmemFindings, CommentsOfOtherLanguagesAreBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("# a\n01 #2\n02 -- 3\n"),
                ElementsAre("readmem-comment 1:1+3 x2", "readmem-comment 3:4+4"));
    EXPECT_EQ(repaired_readmem("# a\n01#2\n02 --3\n"), "// a\n01//2\n02 //3\n");
}

TEST(ReadmemFindings, ACommentWithoutAnEndIsBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("01 /* 02\n03\n"), ElementsAre("readmem-open-comment 1:4+2"));
    EXPECT_EQ(repaired_readmem("01 /* 02\n03\n"), "01 /* 02\n03\n") << "nobody knows where it ends";
}

TEST(ReadmemFindings, AddressesThatToolsReadInDifferentWaysAreBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("@ 2 01\n@0x4 02\n@1_0 03\n"),
                ElementsAre("readmem-address 1:1+3 x3"));
    EXPECT_EQ(first_readmem_hint("@ 1f 01\n"), "write @1F");
    EXPECT_EQ(repaired_readmem("@ 2 01\n@0x4 02\n@1_0 03\n"), "@2 01\n@4 02\n@10 03\n");
}

TEST(ReadmemFindings, AddressesWithoutMeaningAreBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("@x 01\n@4z 02\n"), ElementsAre("readmem-address 1:1+2 x2"));
    EXPECT_EQ(first_readmem_hint("@x 01\n"), "");
    EXPECT_THAT(readmemh_diagnostics_of("@10000000000000000 01\n"), ElementsAre("address-outside 1:1+18"));
}

TEST(ReadmemFindings, APrefixOfAllWordsIsBroken) {
    EXPECT_THAT(readmemh_diagnostics_of("0x12 0xAB\n"), ElementsAre("readmem-prefix 1:1+4 x2"));
    EXPECT_EQ(first_readmem_hint("0x12 0xAB\n"), "write 12");
    EXPECT_EQ(repaired_readmem("0x12 0xAB\n"), "12 AB\n");
    EXPECT_THAT(readmemh_diagnostics_of("0x12 0xAB\n", with_bits(8)), ElementsAre("readmem-prefix 1:1+4 x2"))
        << "nothing is too wide";
}

TEST(ReadmemFindings, APrefixOfSomeWordsMayBeDigits) {
    EXPECT_THAT(readmemh_diagnostics_of("1F 0x56\n"), ElementsAre("readmem-prefix-or-dont-care 1:4+4"));
    EXPECT_THAT(readmemh_diagnostics_of("0x56 1F\n"), ElementsAre("readmem-prefix-or-dont-care 1:1+4"));
    EXPECT_EQ(shown_image(read_readmemh("1F 0x56", {})), "16 bits, 2 words: 001F 0X56");
}

TEST(ReadmemFindings, TheWidthTellsPrefixesFromDigits) {
    EXPECT_THAT(readmemh_diagnostics_of("1F 0x56\n", with_bits(8)), ElementsAre("readmem-prefix 1:4+4"));
    EXPECT_THAT(readmemh_diagnostics_of("1F 0x56\n", with_bits(16)), IsEmpty());
}

TEST(ReadmemFindings, ABinaryPrefixIsAlwaysOne) {
    EXPECT_THAT(readmemb_diagnostics_of("0b01 11\n"), ElementsAre("readmem-prefix 1:1+4"));
    EXPECT_EQ(repaired_readmem("0b01 11\n", readmemb_format), "01 11\n");
    EXPECT_EQ(shown_image(read_readmemb("0x01", {})), "4 bits, 1 words: 0X01");
}

TEST(ReadmemFindings, UnderscoresBesideDigitsAreSuspect) {
    EXPECT_THAT(readmemh_diagnostics_of("_12 34_ _5_6__\n"), ElementsAre("readmem-underscore 1:1+3 x3"));
    EXPECT_EQ(repaired_readmem("_12 34_ _5_6__\n"), "12 34 5_6\n");
}

TEST(ReadmemFindings, CharactersAreNamedByWhatTheyAre) {
    EXPECT_THAT(readmemh_diagnostics_of("12 34 1g h2 3g !\n01 02\n"),
                ElementsAre("bad-digit 1:8+1 x2", "bad-digit 1:10+1", "readmem-character 1:16+1"));
    const read_result result = read_readmemb("01 10 11 12", {});
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics[0].message, "'2' in 12 is not a valid binary digit");
}

TEST(ReadmemFindings, AllPlacesAreRepairedWhereThatIsWanted) {
    std::string text;
    std::string expected;
    for (int word = 0; word < 50; ++word) {
        text += "12,";
        expected += "12 ";
    }
    EXPECT_EQ(repaired_readmem(text), expected);
    const read_result result = read_readmemh(text, {});
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_TRUE(result.diagnostics[0].fix.empty()) << "without wants_repairs";
}

} // namespace
