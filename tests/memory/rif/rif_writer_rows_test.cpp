// Contiguous words, many of which the RIF writer formats at once if possible.

#include "kvr/memory/io/output_file.h"
#include "kvr/memory/rif/rif_writer.h"
#include "tests/memory/number_text.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace {

using kvr_test::number_text;

class RifWriterRows : public testing::Test {
protected:
    /// The text written for @p count different words of @p digits digits.
    std::string written(std::uint32_t width, std::uint32_t count, std::size_t digits, std::uint32_t first = 0,
                        KVR_MEMORY_RADIXES radix = RADIX_HEX) {
        kvr::rif_memory memory(nullptr);
        memory.memory_radix = radix;
        memory.word_size = width;
        memory.resize_words(first + count);
        std::string all;
        for (std::uint32_t i = 0; i < count; ++i) {
            all += number_text(i % 0xFF, 16, digits);
        }
        memory.data_words.set_side_by_side(first, all, digits);
        EXPECT_NE(memory.data_words.row_at(first).count, 0U);
        memory.file_name = directory.path("out.rif");
        EXPECT_TRUE(kvr::write_rif_file(memory));
        return kvr_test::content_of(memory.file_name);
    }

    /// The same from its definition, for words of @p digits digits, with the bits of @p mask kept.
    static std::string expected(std::uint32_t count, std::size_t digits, std::uint32_t mask = 0xFF) {
        std::string text;
        for (std::uint32_t i = 0; i < count; ++i) {
            if (i % 8 == 0) {
                text += "\n@" + number_text(i, 16, 1, false) + "\n";
            }
            text += number_text(i % 0xFF & mask, 16, digits) + " ";
        }
        return text;
    }

    kvr_test::temporary_directory directory;
};

TEST_F(RifWriterRows, AreWrittenAsTheyAreWhenTheyFillTheWordSize) {
    EXPECT_EQ(written(8, 40, 2), expected(40, 2));
    EXPECT_EQ(written(16, 40, 4), expected(40, 4));
    EXPECT_EQ(written(32, 40, 8), expected(40, 8));
    EXPECT_EQ(written(36, 40, 9), expected(40, 9));
    EXPECT_EQ(written(0, 40, 5), expected(40, 5));
}

TEST_F(RifWriterRows, AreWrittenBeyondTheAddressesOfFourDigits) {
    EXPECT_EQ(written(8, 70000, 2), expected(70000, 2));
}

TEST_F(RifWriterRows, ArePaddedWhenTheyAreShorterThanTheWordSize) {
    EXPECT_EQ(written(12, 40, 2), expected(40, 3));
    EXPECT_EQ(written(9, 40, 2), expected(40, 3));
    EXPECT_EQ(written(10, 40, 2), expected(40, 3));
}

TEST_F(RifWriterRows, AreCutWhenTheyAreLongerThanTheWordSize) {
    EXPECT_EQ(written(8, 40, 3), expected(40, 2));
    EXPECT_EQ(written(6, 300, 2), expected(300, 2, 0x3F));
    EXPECT_EQ(written(3, 300, 2), expected(300, 1, 7));
    EXPECT_EQ(written(4, 40, 16), expected(40, 1, 0xF));
}

TEST_F(RifWriterRows, AreConvertedFromAnotherRadix) {
    const std::string text = written(8, 30, 2, 0, RADIX_OCT);
    EXPECT_TRUE(text.starts_with("\n@0\n00 01 02 03 04 05 06 07 \n")) << text;
    EXPECT_NE(text.find("\n@10\n08 09 0A 0B 0C 0D 0E 0F \n"), std::string::npos) << text;
}

TEST_F(RifWriterRows, OfWordsWithoutDigitsAreBlanks) {
    kvr::rif_memory memory(nullptr);
    memory.memory_radix = RADIX_HEX;
    memory.resize_words(40);
    memory.data_words.fill(0, 39, {"7"});
    std::string text;
    for (std::uint32_t address = 0; address < 40; address += 2) {
        memory.data_words.set(address, "");
        text += address % 8 == 0 ? "\n@" + number_text(address, 16, 1, false) + "\n" : "";
        text += " 7 ";
    }
    ASSERT_NE(memory.data_words.row_at(0).count, 0U);
    memory.file_name = directory.path("out.rif");
    EXPECT_TRUE(kvr::write_rif_file(memory));
    EXPECT_EQ(kvr_test::content_of(memory.file_name), text);
}

TEST_F(RifWriterRows, MayBeginWithinAGroup) {
    const std::string text = written(8, 40, 2, 5);
    EXPECT_TRUE(text.ends_with(" \n@20\n1B 1C 1D 1E 1F 20 21 22 \n@28\n23 24 25 26 27 ")) << text;
    EXPECT_TRUE(text.starts_with("\n@0\n")) << text;
}

} // namespace
