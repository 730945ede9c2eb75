#include "kvrimage/formats/coe/coe_format.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;

memory_image three_words() {
    memory_image image(10, 4);
    image.fill({0, 2}, std::vector{word::of(0, 10), word::of(0x3FF, 10), word::of(7, 10)});
    return image;
}

write_options to_coe(radix digits) {
    return {.as = &coe_format, .data_radix = digits};
}

TEST(CoeWriter, WritesOneWordALine) {
    EXPECT_EQ(to_text(three_words(), {.as = &coe_format}),
              "memory_initialization_radix=16;\nmemory_initialization_vector=\n000,\n3FF,\n007;\n");
}

TEST(CoeWriter, WritesTheRadixThatIsAskedFor) {
    EXPECT_EQ(to_text(three_words(), to_coe(radix::bin)),
              "memory_initialization_radix=2;\nmemory_initialization_vector=\n"
              "0000000000,\n1111111111,\n0000000111;\n");
    EXPECT_EQ(to_text(three_words(), to_coe(radix::uns)),
              "memory_initialization_radix=10;\nmemory_initialization_vector=\n0,\n1023,\n7;\n");
}

TEST(CoeWriter, WritesSignedDecimalUnsignedAndOctalAsHexadecimal) {
    EXPECT_EQ(to_text(three_words(), to_coe(radix::dec)), to_text(three_words(), to_coe(radix::uns)));
    EXPECT_EQ(to_text(three_words(), to_coe(radix::oct)), to_text(three_words(), to_coe(radix::hex)));
}

TEST(CoeWriter, NeedsEveryWordUpToTheLast) {
    memory_image image(8, 4);
    image.set(2, word::of(1, 8));
    const auto found = can_write(image, {.as = &coe_format});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message,
              "2 words are not set, the first at address 0, but COE cannot omit words");
}

TEST(CoeWriter, NeedsAddressesFrom0On) {
    memory_image image(8, 1, 16);
    image.set(16, word::of(1, 8));
    const auto found = can_write(image, {.as = &coe_format});
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message, "the addresses begin at 16, but those of COE begin at 0");
}

TEST(CoeWriter, WhatItWritesReadsAsTheSameWords) {
    for (const radix digits : {radix::bin, radix::uns, radix::hex}) {
        kvrimage_tests::expect_round_trips(to_coe(digits), false);
    }
}

TEST(CoeWriter, KnowsTheSizeOfWhatItWrites) {
    kvrimage_tests::expect_close_size(to_coe(radix::hex), false);
    kvrimage_tests::expect_close_size(to_coe(radix::bin), false);
    kvrimage_tests::expect_close_size(to_coe(radix::uns), false);
}

TEST(CoeWriter, KnowsTheSizeOfALargeFillInDecimal) {
    memory_image image(8, 200000);
    image.fill({0, 199999}, std::vector{word::of(1, 8), word::of(22, 8), word::of(255, 8)});
    const auto written = static_cast<double>(to_text(image, to_coe(radix::uns)).size());
    const auto estimated = static_cast<double>(coe_format.written_size(image, to_coe(radix::uns)));
    EXPECT_GE(estimated, written);
    EXPECT_LE(estimated, written * 1.01);
}

} // namespace
