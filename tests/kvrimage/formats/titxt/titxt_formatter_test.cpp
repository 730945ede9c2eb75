#include "tests/kvrimage/layout/laid_out.h"

#include <gtest/gtest.h>

namespace {

using kvrimage_tests::laid_out;

TEST(TitxtFormatter, AddressesHaveLinesOfTheirOwnAndFourDigits) {
    EXPECT_EQ(laid_out("@f0 12 ab\n@12345 01 q", "titxt"), "@00F0\n12 AB\n@12345\n01\nq\n");
    EXPECT_EQ(laid_out("@000000F0\n12\nq\n", "titxt"), "@00F0\n12\nq\n");
}

TEST(TitxtFormatter, LinesOfBytesEndWhereTheyDid) {
    EXPECT_EQ(laid_out("@0\n1a  1b\t1c\n 1d\n\n\n1e\nQ\n", "titxt"), "@0000\n1A 1B 1C\n1D\n\n1E\nq\n");
}

TEST(TitxtFormatter, LineEndsAreThoseOfTheFirstLine) {
    EXPECT_EQ(laid_out("@0\r\n1a\n1b\r\nq", "titxt"), "@0000\r\n1A\r\n1B\r\nq\r\n");
}

TEST(TitxtFormatter, BrokenFilesAreRefused) {
    EXPECT_EQ(laid_out("@0\n1a\n", "titxt"), "there is no final 'q'\n");
}

} // namespace
