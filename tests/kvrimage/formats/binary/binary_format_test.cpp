#include "kvrimage/formats/binary/binary_format.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using namespace std::string_view_literals;
using namespace kvrimage_tests;

read_result read_as_binary(std::string_view contents, read_options options = {}) {
    options.as = &binary_format;
    return parse(contents, options);
}

TEST(BinaryFormat, EveryByteIsAWordFromAddressZeroOn) {
    const read_result result = read_as_binary("\x00\n\xFF"sv);
    EXPECT_EQ(set_words_of(result), "0=00 1=0A 2=FF");
    EXPECT_EQ(shown_report(result), "");
}

TEST(BinaryFormat, WidthAndOrderMakeWords) {
    EXPECT_EQ(set_words_of(read_as_binary("\x01\x02\x03\x04"sv, bytes_as(16, byte_order::little))),
              "0=0201 1=0403");
}

TEST(BinaryFormat, APartOfAWordNeedsAPad) {
    read_options options = bytes_as(16, byte_order::big);
    EXPECT_EQ(shown_report(read_as_binary("\x01\x02\x03"sv, options)), "broken incomplete-word 0:0+0 x1\n");
    options.pad = 0;
    EXPECT_EQ(set_words_of(read_as_binary("\x01\x02\x03"sv, options)), "0=0102 1=0300");
}

TEST(BinaryFormat, AnImageWithALowestAddressIsNotWritten) {
    memory_image image(8, 1, 0x100);
    image.set(0x100, word::of(1, 8));
    write_options options;
    options.as = &binary_format;
    EXPECT_EQ(can_write(image, options).at(0).message,
              "the addresses begin at 256, but those of a binary file begin at 0");
}

TEST(BinaryFormat, ABaseHasNoMeaning) {
    read_options options;
    options.base = 0x8000;
    const read_result result = read_as_binary("\x01"sv, options);
    EXPECT_EQ(shown_report(result), "broken no-addresses 0:0+0 x1\n");
    EXPECT_EQ(result.diagnostics[0].message, "a binary file has no addresses, so base 8000 has no meaning");
    EXPECT_EQ(result.diagnostics[0].hint, "omit it: the file begins with word 0");
}

TEST(BinaryFormat, AnEmptyFileNeedsADepth) {
    EXPECT_EQ(shown_report(read_as_binary("")), "broken no-bytes 0:0+0 x1\n");
}

TEST(BinaryFormat, IsPossibleForWhatIsNoText) {
    EXPECT_EQ(binary_format.sniff("a\0b"sv), certainty::possible);
    EXPECT_EQ(binary_format.sniff("\x01"sv), certainty::possible);
    EXPECT_EQ(binary_format.sniff("\xC0"sv), certainty::possible);
    EXPECT_EQ(binary_format.sniff("\xC1"sv), certainty::possible);
    EXPECT_EQ(binary_format.sniff("\xF5"sv), certainty::possible);
    EXPECT_EQ(binary_format.sniff("text \t\r\n\x1B[0m gr\xC3\xBC\xC3\x9F"sv), certainty::no);
    EXPECT_EQ(binary_format.sniff(""), certainty::no);
}

TEST(BinaryFormat, IsChosenByNameAndNeverByContents) {
    read_options options;
    options.file_name = "boot.IMG";
    EXPECT_EQ(parse("text\n", options).facts.as, &binary_format);
    options.file_name = "boot";
    EXPECT_NE(parse("\x01\x02\x03"sv, options).facts.as, &binary_format);
    EXPECT_EQ(binary_format.read("text\n", {}).facts.as, &binary_format);
}

TEST(BinaryFormat, WritesFromWordZeroToTheLastOneThatIsSet) {
    memory_image image(16, 8);
    image.fill({0, 2}, std::vector{word::of(0x0102, 16)});
    write_options options;
    options.as = &binary_format;
    EXPECT_EQ(can_write(image, options).at(0).id, diagnostic_id::byte_order);
    options.order = byte_order::little;
    EXPECT_TRUE(can_write(image, options).empty());
    EXPECT_EQ(to_text(image, options), "\x02\x01\x02\x01\x02\x01");
    EXPECT_EQ(binary_format.written_size(image, options), 6U);
    image.set(4, word::of(1, 16));
    EXPECT_EQ(can_write(image, options).at(0).message,
              "1 word is not set, the first at address 3, but raw binary cannot omit words");
}

TEST(BinaryFormat, WhatIsWrittenIsRead) {
    EXPECT_EQ(fault_of_round_trips(binary_format, false), "");
}

} // namespace
