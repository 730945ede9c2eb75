#include "kvrimage/formats/memheader/memheader_format.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

write_options to_mem(radix digits) {
    return {.as = &memheader_format, .data_radix = digits};
}

memory_image two_words_of_mem(std::uint64_t depth) {
    memory_image image(5, depth);
    image.set(0, word::of(0x1F, 5));
    image.set(1, word::of(2, 5));
    return image;
}

TEST(MemheaderWriter, WritesHexadecimalWords) {
    EXPECT_EQ(to_text(two_words_of_mem(2), {.as = &memheader_format}),
              "#Format=Hex\n#Depth=2\n#Width=5\n#AddrRadix=3\n#DataRadix=3\n#Data\n1F\n02\n");
}

TEST(MemheaderWriter, WritesAddressesWhereAWordIsNotSet) {
    EXPECT_EQ(to_text(two_words_of_mem(32), {.as = &memheader_format}),
              "#Format=AddrHex\n#Depth=32\n#Width=5\n#AddrRadix=3\n#DataRadix=3\n#Data\n00:1F\n01:02\n");
}

TEST(MemheaderWriter, WritesBinaryWords) {
    EXPECT_EQ(to_text(two_words_of_mem(3), to_mem(radix::bin)),
              "#Format=Bin\n#Depth=3\n#Width=5\n#AddrRadix=3\n#DataRadix=0\n#Data\n11111\n00010\n");
}

TEST(MemheaderWriter, WritesOtherRadixesInHexadecimal) {
    EXPECT_EQ(to_text(two_words_of_mem(2), to_mem(radix::dec)),
              to_text(two_words_of_mem(2), to_mem(radix::hex)));
}

TEST(MemheaderWriter, BinaryWordsHaveNoAddresses) {
    memory_image image(8, 4);
    image.set(2, word::of(1, 8));
    const auto found = can_write(image, to_mem(radix::bin));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message,
              "2 words are not set, the first at address 0, but #Format=Bin cannot omit words");
}

TEST(MemheaderWriter, NeedsAddressesFrom0On) {
    memory_image image(8, 1, 16);
    image.set(16, word::of(1, 8));
    const auto found = can_write(image, {.as = &memheader_format});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message,
              "the addresses begin at 16, but those of a file with a depth begin at 0");
}

TEST(MemheaderWriter, WhatItWritesReadsAsTheSameWords) {
    kvrimage_tests::expect_round_trips(to_mem(radix::hex), true);
    kvrimage_tests::expect_round_trips(to_mem(radix::hex), false);
    kvrimage_tests::expect_round_trips(to_mem(radix::bin), false);
}

TEST(MemheaderWriter, KnowsTheSizeOfWhatItWrites) {
    kvrimage_tests::expect_close_size(to_mem(radix::hex), true);
    kvrimage_tests::expect_close_size(to_mem(radix::hex), false);
    kvrimage_tests::expect_close_size(to_mem(radix::bin), false);
}

} // namespace
