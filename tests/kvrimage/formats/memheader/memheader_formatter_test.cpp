#include "tests/kvrimage/layout/laid_out.h"

#include <gtest/gtest.h>

namespace {

using kvrimage_tests::laid_out;

TEST(MemheaderFormatter, SettingsAreSpelledAsTheFormatSpellsThem) {
    EXPECT_EQ(laid_out("# format = HEX\n#DEPTH=04\n#width= 8\n#addrradix=3\n#DATARADIX=03\n# data\n1 2\n",
                       "memheader"),
              "#Format=Hex\n#Depth=4\n#Width=8\n#AddrRadix=3\n#DataRadix=3\n#Data\n01 02\n");
}

TEST(MemheaderFormatter, UnknownSettingsKeepTheirText) {
    EXPECT_EQ(laid_out("#Format=Bin\n# maker = me\n#Depth=2\n#Width=2\n#Data\n1\n10\n", "memheader"),
              "#Format=Bin\n# maker = me\n#Depth=2\n#Width=2\n#Data\n01\n10\n");
}

TEST(MemheaderFormatter, AddressesHaveTheDigitsOfTheLast) {
    EXPECT_EQ(laid_out("#Format=addrhex\n#Depth=32\n#Width=10\n#Data\n0 : 3ff 1\n\n\n 1f:1\n", "memheader"),
              "#Format=AddrHex\n#Depth=32\n#Width=10\n#Data\n00:3FF 001\n\n1F:001\n");
}

} // namespace
