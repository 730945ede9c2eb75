#include "kvrimage/formats/logisim/logisim_format.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;

write_options to_logisim(const std::string& variant) {
    return {.as = &logisim_format, .choices = {{"variant", variant}}};
}

memory_image eighteen_words() {
    memory_image image(12, 20);
    image.fill({0, 15}, std::vector{word::of(0, 12)});
    image.fill({16, 17}, std::vector{word::of(0xABC, 12)});
    return image;
}

TEST(LogisimWriter, WritesSixteenWordsALineWithAddresses) {
    EXPECT_EQ(to_text(eighteen_words(), {.as = &logisim_format}),
              "v3.0 hex words addressed\n"
              "00: 000 000 000 000 000 000 000 000 000 000 000 000 000 000 000 000\n"
              "10: ABC ABC\n");
}

TEST(LogisimWriter, WritesAnAddressAfterAGap) {
    memory_image image(4, 0x101);
    image.set(2, word::of(1, 4));
    image.set(3, word::of(2, 4));
    image.set(0x100, word::of(3, 4));
    EXPECT_EQ(to_text(image, to_logisim("v3")), "v3.0 hex words addressed\n002: 1 2\n100: 3\n");
}

TEST(LogisimWriter, WritesWithoutAddresses) {
    EXPECT_EQ(to_text(eighteen_words(), to_logisim("v3-plain")),
              "v3.0 hex words plain\n"
              "000 000 000 000 000 000 000 000 000 000 000 000 000 000 000 000\n"
              "ABC ABC\n");
}

TEST(LogisimWriter, WritesRunsInTheOlderVersion) {
    EXPECT_EQ(to_text(eighteen_words(), to_logisim("v2")), "v2.0 raw\n16*000 ABC ABC\n");
}

TEST(LogisimWriter, WithoutAddressesEveryWordUpToTheLastIsNeeded) {
    memory_image image(8, 4);
    image.set(1, word::of(1, 8));
    EXPECT_TRUE(can_write(image, {.as = &logisim_format}).empty());
    const auto found = can_write(image, to_logisim("v2"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message,
              "1 word is not set, the first at address 0, but a file without addresses cannot omit words");
    const auto many = can_write(memory_image(8, 4), to_logisim("v3-plain"));
    ASSERT_EQ(many.size(), 1U);
    EXPECT_EQ(many.front().message,
              "4 words are not set, the first at address 0, but a file without addresses cannot omit words");
}

TEST(LogisimWriter, WithoutAddressesTheyBeginAt0) {
    memory_image image(8, 1, 16);
    image.set(16, word::of(1, 8));
    EXPECT_EQ(to_text(image, to_logisim("v3")), "v3.0 hex words addressed\n10: 01\n");
    const auto found = can_write(image, to_logisim("v2"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message,
              "the addresses begin at 16, but those of a file without addresses begin at 0");
}

TEST(LogisimWriter, AnotherVariantIsRefused) {
    const auto found = can_write(eighteen_words(), to_logisim("v1"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found.front().message, "--variant v1 is not valid");
    EXPECT_EQ(found.front().hint, "use one of: v3 v3-plain v2");
}

TEST(LogisimWriter, AMemoryWithoutWordsHasAFirstLine) {
    EXPECT_EQ(to_text(memory_image(8, 4), {.as = &logisim_format}), "v3.0 hex words addressed\n");
}

TEST(LogisimWriter, WhatItWritesReadsAsTheSameWords) {
    kvrimage_tests::expect_round_trips(to_logisim("v3"), true);
    kvrimage_tests::expect_round_trips(to_logisim("v3-plain"), false);
    kvrimage_tests::expect_round_trips(to_logisim("v2"), false);
}

TEST(LogisimWriter, KnowsTheSizeOfWhatItWrites) {
    kvrimage_tests::expect_close_size(to_logisim("v3"), true);
    kvrimage_tests::expect_close_size(to_logisim("v3-plain"), false);
    kvrimage_tests::expect_close_size(to_logisim("v2"), false);
}

TEST(LogisimWriter, KnowsTheSizeOfALargeFill) {
    memory_image image(8, 200000);
    image.fill({0, 199999}, std::vector{word::of(1, 8), word::of(2, 8), word::of(3, 8)});
    for (const char* variant : {"v3", "v3-plain", "v2"}) {
        const auto written = static_cast<double>(to_text(image, to_logisim(variant)).size());
        EXPECT_NEAR(static_cast<double>(logisim_format.written_size(image, to_logisim(variant))), written,
                    written / 50);
    }
}

} // namespace
