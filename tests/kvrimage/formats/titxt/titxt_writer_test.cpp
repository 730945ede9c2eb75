#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/titxt/titxt_format.h"
#include "kvrimage/formats/titxt/titxt_reader.h"
#include "kvrimage/formats/titxt/titxt_writer.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

std::string written_titxt(const memory_image& image) {
    write_options options;
    options.as = &titxt_format;
    options.order = byte_order::little;
    return to_text(image, options);
}

TEST(TitxtWriter, WritesAnAddressBeforeEachStretch) {
    memory_image image(16, 40);
    image.set(0, word::of(0x1234, 16));
    image.fill({7, 9}, std::vector{word::of(0x00FF, 16)});
    EXPECT_EQ(written_titxt(image), "@0000\n34 12\n@000E\nFF 00\nFF 00 FF 00\nq\n");
}

TEST(TitxtWriter, AddressesHaveFourDigitsOrMore) {
    memory_image image(8, 2, 0x12345);
    image.set(0x12346, word::of(0xA5, 8));
    EXPECT_EQ(written_titxt(image), "@12346\nA5\nq\n");
}

TEST(TitxtWriter, RefusesAddressesBeyond32Bits) {
    memory_image image(8, 1, 0x100000000);
    image.set(0x100000000, word(8));
    EXPECT_EQ(can_write_titxt(image, {}).at(0).message,
              "byte address 100000000 is beyond FFFFFFFF, the largest of TI-TXT");
}

TEST(TitxtWriter, WhatIsWrittenIsRead) {
    EXPECT_EQ(fault_of_round_trips(titxt_format, true), "");
}

} // namespace
