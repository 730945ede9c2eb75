#include "kvrimage/formats/rif/rif_reader.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// The message and the hint of the only diagnostic.
std::string only_message(std::string_view contents) {
    const read_result result = read_rif(contents, {});
    return result.diagnostics.size() == 1
               ? result.diagnostics.front().message + " | " + result.diagnostics.front().hint
               : "not one diagnostic";
}

TEST(RifDiagnostics, FindsNothingWrongWithARegularFile) {
    EXPECT_THAT(rif_diagnostics_of("\n@0\n 00  0a ff \r\n1X\n@10\n2"), IsEmpty());
}

TEST(RifDiagnostics, NamesCharactersThatAreNoDigits) {
    EXPECT_THAT(rif_diagnostics_of("@0\n7G 1\n"), ElementsAre("illegal-character 2:2+1"));
    EXPECT_EQ(only_message("7g"), "'g' is not a hexadecimal digit | ");
    EXPECT_EQ(only_message("1, 2"), "',' is not a hexadecimal digit | separate words by blanks");
    EXPECT_EQ(only_message("1 ; 2"), "';' is not a hexadecimal digit | separate words by blanks");
    EXPECT_EQ(only_message("12_34"),
              "'_' is not a hexadecimal digit | write the digits of a word without '_'");
}

TEST(RifDiagnostics, NamesEachTextThatIsNoDigitOnce) {
    EXPECT_THAT(rif_diagnostics_of("1, 2, 3,\n7G , 4"),
                ElementsAre("illegal-character 1:2+1 x4", "illegal-character 2:2+1"));
}

TEST(RifDiagnostics, CountsTextsBeyondTheLimit) {
    read_options options;
    options.most_diagnostics = 2;
    const read_result result = read_rif("1G 1H 1I 1J 1G", options);
    EXPECT_THAT(shown(result.diagnostics), SizeIs(2));
    EXPECT_EQ(result.facts.diagnostics_left_out, 2U);
}

TEST(RifDiagnostics, NamesUnknownDigitsWithTheirWord) {
    EXPECT_THAT(rif_diagnostics_of("@0\n01 0U u1"), ElementsAre("bad-digit 2:5+1 x2"));
    EXPECT_EQ(only_message("01 0u"), "'u' in 0u is not a valid hexadecimal digit | ");
}

TEST(RifDiagnostics, NamesAByteOrderMark) {
    EXPECT_THAT(rif_diagnostics_of("\xEF\xBB\xBF@0\n1"), ElementsAre("rif-byte-order-mark 1:1+3"));
    EXPECT_EQ(repaired_rif("\xEF\xBB\xBF@0\n1"), "@0\n1");
}

TEST(RifDiagnostics, NamesTabsOnceAndRepairsThem) {
    EXPECT_THAT(rif_diagnostics_of("1\t2\n3\t\t4"), ElementsAre("rif-tab 1:2+1 x2"));
    EXPECT_EQ(only_message("1\t2"),
              "a tab in a line of words | separate words by blanks; the library kvr refuses the line");
    EXPECT_EQ(repaired_rif("1\t2\n3\t\t4"), "1 2\n3  4");
}

TEST(RifDiagnostics, LeavesTabsBesideAnAddressAlone) {
    EXPECT_THAT(rif_diagnostics_of("\t@0\t\t\n1\n@1\t"), IsEmpty());
}

TEST(RifDiagnostics, NamesCommentsOnceAndRepairsThem) {
    EXPECT_THAT(rif_diagnostics_of("// 1 2\n@0 # a\n1 -- b"), ElementsAre("rif-comment 1:1+6 x3"));
    EXPECT_EQ(only_message("1 # a"), "'# a' is a comment, which RIF does not have | remove it");
    EXPECT_EQ(repaired_rif("// 1 2\n@0 # a\n1 -- b"), "\n@0 \n1 ");
}

TEST(RifDiagnostics, NamesCarriageReturnsThatEndLines) {
    EXPECT_THAT(rif_diagnostics_of("@0\r1\r2"), ElementsAre("lone-carriage-return 1:3+1 x2"));
    EXPECT_EQ(repaired_rif("@0\r1\r2"), "@0\n1\n2");
}

TEST(RifDiagnostics, NamesAddressesThatAreNone) {
    EXPECT_THAT(rif_diagnostics_of(" @1G\n2"), ElementsAre("address-syntax 1:2+3"));
    EXPECT_EQ(only_message("@1g\n2"), "'@1g' is not '@' and a hexadecimal address | ");
}

TEST(RifDiagnostics, RepairsAddressesThatAreSpeltInAnotherWay) {
    EXPECT_THAT(rif_diagnostics_of("@0x1F\n1\n@ 2\n2"), ElementsAre("address-syntax 1:1+5 x2"));
    EXPECT_EQ(only_message("@0x1F\n1"), "'@0x1F' is not '@' and a hexadecimal address | write @1F");
    EXPECT_EQ(repaired_rif("@0x1F\n1\n@  0X2\n2"), "@1F\n1\n@2\n2");
}

TEST(RifDiagnostics, NamesAddressesOfMoreThan32Bits) {
    EXPECT_THAT(rif_diagnostics_of("@123456789\n1\n@100000000"), ElementsAre("address-outside 1:1+10 x2"));
    EXPECT_EQ(only_message("@123456789\n1"), "address 123456789 is beyond the largest, FFFFFFFF | ");
}

TEST(RifDiagnostics, NamesWordsAfterTheLastAddress) {
    EXPECT_THAT(rif_diagnostics_of("@ffffffff\n1 22"), ElementsAre("address-outside 2:3+2"));
}

TEST(RifDiagnostics, NamesAddressesThatShareTheirLine) {
    EXPECT_THAT(rif_diagnostics_of("3 @4"), ElementsAre("address-not-alone 1:3+2"));
    EXPECT_THAT(rif_diagnostics_of("@4 5 6\n@7 8"), ElementsAre("address-not-alone 1:1+2 x2"));
    EXPECT_THAT(rif_diagnostics_of("3@4 5"), ElementsAre("address-not-alone 1:2+2"));
    EXPECT_THAT(rif_diagnostics_of("@4 @5"), ElementsAre("address-not-alone 1:4+2"));
    EXPECT_EQ(only_message("3 @4"), "'@4' is not alone on its line | write @4 on a line of its own; "
                                    "the library kvr drops the rest of the line");
}

TEST(RifDiagnostics, SplitsNoLineAtAnAddressThatCannotBeRead) {
    EXPECT_THAT(rif_diagnostics_of("1 @ 2 3\n"), ElementsAre("address-syntax 1:3+1"));
    EXPECT_EQ(repaired_rif("1 @ 2 3\n"), "1 @ 2 3\n");
}

TEST(RifDiagnostics, GivesAddressesLinesOfTheirOwn) {
    EXPECT_EQ(repaired_rif("1\n3 @4\t5 6\n"), "1\n3\n@4\n5 6\n");
    EXPECT_EQ(repaired_rif("@4 5\r\n3@6"), "@4\r\n5\r\n3\r\n@6");
}

TEST(RifDiagnostics, NamesThePrefixOfAllWords) {
    EXPECT_THAT(rif_diagnostics_of("@0\n0x56 0x7"), ElementsAre("word-prefix 2:1+4 x2"));
    EXPECT_EQ(only_message("0x56"), "0x56 begins with 0x, as all words of the file do | write 56");
    EXPECT_EQ(repaired_rif("@0\n0x56 0x7"), "@0\n56 7");
}

TEST(RifDiagnostics, DoubtsThePrefixOfSomeWords) {
    EXPECT_THAT(rif_diagnostics_of("1f 0x5"), ElementsAre("prefix-or-dont-care 1:4+3"));
    EXPECT_EQ(only_message("1f 0x5f"),
              "0x5f has a don't-care digit after its 0 | write 5f if 0x is a prefix, 0X5F if it is not");
}

TEST(RifDiagnostics, TakesAnUpperCaseXForADigit) {
    EXPECT_THAT(rif_diagnostics_of("0X5"), IsEmpty());
    EXPECT_THAT(rif_diagnostics_of("0x"), IsEmpty());
}

TEST(RifDiagnostics, KeepsAFixOfManyEditsOnlyForThoseWhoWantIt) {
    std::string tabs;
    for (int line = 0; line < 12; ++line) {
        tabs += "1\t2\n";
    }
    read_options options;
    options.depth = 24;
    const read_result without = read_rif(tabs, options);
    options.wants_repairs = true;
    const read_result with = read_rif(tabs, options);
    EXPECT_THAT(without.diagnostics.front().fix, IsEmpty());
    EXPECT_EQ(without.diagnostics.front().repair, "tabs are blanks now");
    EXPECT_THAT(with.diagnostics.front().fix, SizeIs(12));
}

} // namespace
