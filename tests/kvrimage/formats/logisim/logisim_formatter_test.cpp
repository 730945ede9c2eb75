#include "kvrimage/formats/logisim/logisim_format.h"
#include "tests/kvrimage/layout/laid_out.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using kvrimage_tests::laid_out;

TEST(LogisimFormatter, WordsHaveOneBlankBetweenThemAndAllTheirDigits) {
    EXPECT_EQ(laid_out("v3.0 hex words plain  \n1  a\t0ff\n\n\n 4*1 003*2\n", "logisim"),
              "v3.0 hex words plain\n001 00A 0FF\n\n4*001 3*002\n");
    EXPECT_EQ(laid_out("v2.0 raw\n1 ff", "logisim"), "v2.0 raw\n01 FF\n");
}

TEST(LogisimFormatter, AddressesHaveTheDigitsOfTheLargest) {
    EXPECT_EQ(laid_out("v3.0 hex words addressed\n0:1\n 00A: 2 3\nFE: 4 5 6\n", "logisim"),
              "v3.0 hex words addressed\n000: 1\n00a: 2 3\n0fe: 4 5 6\n");
    EXPECT_EQ(laid_out("v3.0 hex words addressed\n0: 1\n00F0:\n", "logisim"),
              "v3.0 hex words addressed\n00: 1\nf0:\n");
}

TEST(LogisimFormatter, CommentsStayAndStandInOneColumn) {
    EXPECT_EQ(laid_out("v3.0 hex words addressed\n# a  \n0: 1 # b\n4: 2 3   # c\n8: #d\n", "logisim"),
              "v3.0 hex words addressed\n# a\n0: 1    # b\n4: 2 3  # c\n8:      #d\n");
}

TEST(LogisimFormatter, BytesHaveTwoDigits) {
    EXPECT_EQ(laid_out("v3.0 hex bytes plain little-endian\n1 A 0b\n", "logisim"),
              "v3.0 hex bytes plain little-endian\n01 0A 0B\n");
    read_options words_of_bytes;
    words_of_bytes.as = &logisim_format;
    words_of_bytes.width = 32;
    EXPECT_EQ(laid_out("v3.0 hex bytes addressed big-endian\n0: 1 2 3 4\n10: 5 6 7 8\n", words_of_bytes),
              "v3.0 hex bytes addressed big-endian\n00: 01 02 03 04\n10: 05 06 07 08\n");
}

TEST(LogisimFormatter, MarkOfUtf8Stays) {
    EXPECT_EQ(laid_out("\xEF\xBB\xBF"
                       "v2.0 raw\na\n",
                       "logisim"),
              "\xEF\xBB\xBF"
              "v2.0 raw\nA\n");
}

} // namespace
