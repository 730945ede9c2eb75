#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/readmem/readmem_sniff.h"
#include "kvrimage/formats/rif/rif_sniff.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

TEST(ReadmemSniff, BareRowsAreLikely) {
    EXPECT_EQ(sniff_readmemh("01 AB\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemb("01 AB\n"), certainty::no);
    EXPECT_EQ(sniff_readmemh("01 AB // words\n@4 12\n"), certainty::likely);
}

TEST(ReadmemSniff, ZerosAndOnesAreEquallyLikelyBoth) {
    for (const std::string_view text :
         {"01 10\n", "@1\n01 10\n", "01 // one\n", "01 10 11 01 00 10 11 01 00 01 !"}) {
        EXPECT_EQ(sniff_readmemh(text), sniff_readmemb(text)) << text;
        EXPECT_NE(sniff_readmemh(text), certainty::no) << text;
    }
}

TEST(ReadmemSniff, AddressesAndWordsAloneAreAsSureAsRif) {
    EXPECT_EQ(sniff_readmemh("\n@0\n01 AB\n"), certainty::certain);
    EXPECT_EQ(sniff_readmemh("@0\n01 1AB\n"), certainty::certain);
    EXPECT_EQ(sniff_readmemh("@0\n0_1 AB\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemh("\n@FFFFFFFF\n01\n"), certainty::certain);
    EXPECT_EQ(sniff_readmemh("\n@100000000\n01\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemh("\n@0\f01\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemh("\xEF\xBB\xBF@0\n01 AB\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemh("/* a */ @0\n01\n"), certainty::likely);
    EXPECT_EQ(sniff_readmemh("\n@0\n01 /* a"), certainty::likely);
}

TEST(ReadmemSniff, WhatMayBeBytesOfTiTxtIsLikely) {
    EXPECT_EQ(sniff_readmemh("@F000\n01 AB\n"), certainty::likely);
    EXPECT_EQ(sniff_rif("@F000\n01 AB\n"), certainty::likely);
}

TEST(ReadmemSniff, AFewFaultsArePossible) {
    EXPECT_EQ(sniff_readmemh("01 02 03 04 05 06 07 08 0g 09\n"), certainty::possible);
    EXPECT_EQ(sniff_readmemh("01 02 @x 0g\n"), certainty::no);
    EXPECT_EQ(sniff_readmemh("00,11,22\n# 3\n"), certainty::no);
}

TEST(ReadmemSniff, WhatHasNoWordIsNone) {
    for (const std::string_view text : {"", "// none\n", "@0\n", "Dear reader,\n", ":00000001FF\n"}) {
        EXPECT_EQ(sniff_readmemh(text), certainty::no) << text;
    }
}

TEST(ReadmemSniff, AWordThatIsCutOffIsNotLookedAt) {
    std::string text(sniffed_bytes - 3, ' ');
    text[0] = '1';
    EXPECT_EQ(sniff_readmemh(text + " 0!"), certainty::likely);
    EXPECT_EQ(sniff_readmemh(std::string(sniffed_bytes, '1')), certainty::likely);
}

std::vector<std::string> found_in_readmem_file(std::string_view contents, std::string_view name) {
    read_options options;
    options.file_name = std::string(name);
    const read_result result = parse(contents, options);
    std::vector<std::string> found = shown(result.diagnostics);
    found.insert(found.begin(), result.facts.as != nullptr ? std::string(result.facts.as->id) : "none");
    return found;
}

TEST(ReadmemSniff, TellsTheFormatOfAFile) {
    using testing::ElementsAre;
    EXPECT_THAT(found_in_readmem_file("01 AB\n", "boot.mem"), ElementsAre("readmemh"));
    EXPECT_THAT(found_in_readmem_file("@0\n01 AB\n", "boot.mem"), ElementsAre("readmemh"));
    EXPECT_THAT(found_in_readmem_file("01 AB\n", "boot.hex"), ElementsAre("readmemh"));
    EXPECT_THAT(found_in_readmem_file("01 AB\n", ""), ElementsAre("readmemh"));
    EXPECT_THAT(found_in_readmem_file("@0\n02 AB\n", ""), ElementsAre("rif")) << "reads the same words";
    EXPECT_THAT(found_in_readmem_file("01 10\n", "boot.mem"), ElementsAre("none", "ambiguous-format 0:0+0"));
    EXPECT_THAT(found_in_readmem_file(":00000001FF\n", "boot.mem"),
                ElementsAre("readmemh", "other-format 0:0+0"));
}

} // namespace
