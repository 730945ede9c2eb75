// Header lines that still count after the content section.

#include "kvr/memory/mif/mif_reader.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class MifReaderHeader : public testing::Test {
protected:
    MifReaderHeader() { kvr::fill_radix_names(memory); }

    bool read(const std::string& text) {
        kvr::line_source lines(text, kvr::mif_reader::source_limit);
        return kvr::mif_reader(memory).read(lines);
    }

    kvr::mif_memory memory{nullptr};
};

TEST_F(MifReaderHeader, RadixLinesAfterTheContentComeTooLate) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\nEND;\nADDRESS_RADIX=BIN;\nDATA_RADIX=OCT;\n"));
    EXPECT_EQ(memory.address_radix, RADIX_HEX);
    EXPECT_EQ(memory.memory_radix, RADIX_HEX);
    EXPECT_EQ(memory.header_comments[5].count, 2U);
}

TEST_F(MifReaderHeader, AMissingRadixIsHexadecimal) {
    memory.memory_radix = RADIX_OCT;
    memory.address_radix = RADIX_OCT;
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=20;\nADDRESS_RADIX=UNS;\nCONTENT BEGIN\n10 : 1;\nEND;\n"));
    EXPECT_EQ(memory.address_radix, RADIX_UNS);
    EXPECT_EQ(memory.memory_radix, RADIX_HEX);
    EXPECT_EQ(memory.data_words[10], "1");
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=20;\nDATA_RADIX=BIN;\nCONTENT BEGIN\n10 : 11;\nEND;\n"));
    EXPECT_EQ(memory.address_radix, RADIX_HEX);
    EXPECT_EQ(memory.memory_radix, RADIX_BIN);
    EXPECT_EQ(memory.data_words[16], "11");
}

TEST_F(MifReaderHeader, AContentSectionBeforeTheWidthIsNotRead) {
    ASSERT_TRUE(read("DEPTH=2;\nCONTENT BEGIN\n0 : 1;\nEND;\nWIDTH=8;\nCONTENT BEGIN\n1 : 2;\nEND;\n"));
    EXPECT_EQ(memory.data_words[0], "0");
    EXPECT_EQ(memory.data_words[1], "2");
}

TEST_F(MifReaderHeader, ASecondContentSectionIsNotRead) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0 : 1;\nEND;\nCONTENT BEGIN\n1 : 2;\nEND;\n"));
    EXPECT_EQ(memory.data_words[0], "1");
    EXPECT_EQ(memory.data_words[1], "0");
}

} // namespace
