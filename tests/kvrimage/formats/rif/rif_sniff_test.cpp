#include "kvrimage/formats/rif/rif_sniff.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;

TEST(RifSniff, IsSureOfAddressesAndWords) {
    EXPECT_EQ(sniff_rif("\n@0\n00 11\r\n@10\n1X"), certainty::certain);
}

TEST(RifSniff, ThinksItLikelyWithAFault) {
    EXPECT_EQ(sniff_rif("@0\n00 11 2G\n"), certainty::likely);
    EXPECT_EQ(sniff_rif("// table\n@0\n00 11\n"), certainty::likely);
}

TEST(RifSniff, ThinksItLikelyWhereItMayBeBytesOfTiTxt) {
    EXPECT_EQ(sniff_rif("@F000\n00 11\n"), certainty::likely);
    EXPECT_EQ(sniff_rif("@F000\n00 111\n"), certainty::certain);
    EXPECT_EQ(sniff_rif("\n@F000\n00 11\n"), certainty::certain);
}

TEST(RifSniff, ThinksBareWordsPossible) {
    EXPECT_EQ(sniff_rif("0011\n0101\n"), certainty::possible);
}

TEST(RifSniff, RefusesWhatHasFewWords) {
    EXPECT_EQ(sniff_rif(""), certainty::no);
    EXPECT_EQ(sniff_rif("@0\n"), certainty::no);
    EXPECT_EQ(sniff_rif("WIDTH=8;\nDEPTH=4;\n0 : 1;\n"), certainty::no);
    EXPECT_EQ(sniff_rif(":020000000001FD\n:00000001FF\n"), certainty::no);
    EXPECT_EQ(sniff_rif("S00600004844521B\nS9030000FC\n"), certainty::no);
    EXPECT_EQ(sniff_rif("write to@1 or so\n"), certainty::no);
}

TEST(RifSniff, OverlooksALastLineThatIsCut) {
    std::string text = "@0\n";
    while (text.size() < 64 * 1024) {
        text += "0011 2233 4455\n";
    }
    EXPECT_EQ(sniff_rif(text + "@"), certainty::certain);
    EXPECT_EQ(sniff_rif(std::string(64 * 1024, '1')), certainty::possible);
}

} // namespace
