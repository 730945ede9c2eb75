#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/operations/checksum/checksum.h"
#include "tests/kvrimage/operations/plain_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <string_view>

namespace {

using namespace kvrimage;
using testing::ThrowsMessage;

constexpr std::string_view nine_digits = "123456789";

checksum_kind checksum_called(std::string_view name) {
    return checksum_of_name(name).value();
}

std::uint64_t checksum_of_nine_digits(std::string_view name) {
    return checksum_of(image_of_bytes(nine_digits), checksum_called(name)).to_unsigned().value();
}

TEST(ChecksumOfName, KnowsItsNamesOnly) {
    for (const named_checksum& one : named_checksums()) {
        EXPECT_TRUE(checksum_of_name(one.name)) << one.name;
    }
    EXPECT_FALSE(checksum_of_name("crc-33"));
}

TEST(ChecksumOf, BytesIsThatOfTheCatalogue) {
    EXPECT_EQ(checksum_of_nine_digits("crc-32"), 0xCBF43926U);
    EXPECT_EQ(checksum_of_nine_digits("crc-16-xmodem"), 0x31C3U);
    EXPECT_EQ(checksum_of(image_of_bytes(nine_digits), checksum_called("crc-8")).width(), 8U);
}

TEST(ChecksumOf, BytesAddsThem) {
    EXPECT_EQ(checksum_of_nine_digits("sum-8"), 0xDDU);
    EXPECT_EQ(checksum_of_nine_digits("sum-16"), 0x1DDU);
    EXPECT_EQ(checksum_of_nine_digits("balance-8"), 0x23U);
    EXPECT_EQ(checksum_of_nine_digits("balance-16"), 0xFE23U);
    EXPECT_EQ(checksum_of_nine_digits("balance-64"), 0U - std::uint64_t{0x1DD});
}

TEST(ChecksumOf, WordsAddsTheirValues) {
    memory_image image(12, 3);
    image.fill({0, 2}, std::array{word::of(0xFFF, 12), word::of(1, 12), word::of(0x123, 12)});
    EXPECT_EQ(checksum_of(image, checksum_called("word-sum-16")), word::of(0x1123, 16));
    EXPECT_EQ(checksum_of(image, checksum_called("word-sum-8")), word::of(0x23, 8));
    EXPECT_EQ(checksum_of(image, checksum_called("word-balance-16")), word::of(0xEEDD, 16));
    EXPECT_EQ(checksum_of(image, checksum_called("sum-16")), word::of(0x0F + 0xFF + 1 + 0x01 + 0x23, 16));
}

TEST(ChecksumOf, WideWordsCountModuloTheSum) {
    memory_image image(100, 2);
    image.set(0, word_of_digits(std::string(100, '1')));
    image.set(1, word::of(3, 100));
    EXPECT_EQ(checksum_of(image, checksum_called("word-sum-64")), word::of(2, 64));
}

TEST(ChecksumOf, TakesTheByteOrder) {
    memory_image image(16, 2);
    image.fill({0, 1}, std::array{word::of(0x3231, 16), word::of(0x3433, 16)});
    crc little(std::get<crc_model>(checksum_called("crc-32")));
    little.add("1234");
    crc big(std::get<crc_model>(checksum_called("crc-32")));
    big.add("2143");
    EXPECT_EQ(checksum_of(image, checksum_called("crc-32")), word::of(little.value(), 32));
    EXPECT_EQ(checksum_of(image, checksum_called("crc-32"), {.order = byte_order::big}),
              word::of(big.value(), 32));
}

TEST(ChecksumOf, TakesARangeAndWordsThatAreNotSet) {
    memory_image image(8, 16, 4);
    image.fill({6, 8}, std::array{word::of(1, 8), word::of(2, 8), word::of(3, 8)});
    EXPECT_EQ(checksum_of(image, checksum_called("sum-8")), word::of(6, 8));
    EXPECT_EQ(checksum_of(image, checksum_called("sum-8"), {.ranges = {address_range{7, 19}}}),
              word::of(5, 8));
    EXPECT_EQ(checksum_of(image, checksum_called("sum-8"),
                          {.ranges = {address_range{7, 9}}, .unset = word::of(10, 8)}),
              word::of(15, 8));
    EXPECT_EQ(checksum_of(image, checksum_called("sum-8"), {.unset = word::of(1, 8)}), word::of(19, 8));
    EXPECT_EQ(checksum_of(memory_image(8, 4), checksum_called("crc-32")), word::of(0, 32));
    EXPECT_EQ(checksum_of(image, checksum_called("sum-8"), {.ranges = {{8, 8}, {6, 6}, {8, 9}}}),
              word::of(7, 8));
}

TEST(ChecksumOf, RefusesWhatItCannotTakeIn) {
    memory_image image(8, 16, 16);
    const checksum_kind sum = checksum_called("sum-8");
    const auto over = [&](std::uint64_t first, std::uint64_t last) {
        static_cast<void>(checksum_of(image, sum, {.ranges = {address_range{first, last}}}));
    };
    EXPECT_THROW(over(15, 20), std::out_of_range);
    EXPECT_THROW(over(20, 32), std::out_of_range);
    EXPECT_THROW(over(21, 20), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(checksum_of(image, sum, {.unset = word::of(1, 9)})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(checksum_of(image, additive_sum{0, false, false})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(checksum_of(image, additive_sum{65, false, false})),
                 std::invalid_argument);
    EXPECT_THROW(static_cast<void>(checksum_of(image, crc_model{8, 0x107, 0, false, false, 0})),
                 std::invalid_argument);
    image.set(18, word_of_digits("0000XXXX"));
    EXPECT_THAT([&] { static_cast<void>(checksum_of(image, sum)); },
                ThrowsMessage<std::domain_error>(testing::StartsWith("the word at address 0x12 ")));
    EXPECT_NO_THROW(over(19, 20));
}

TEST(ChecksumOf, RandomMemoriesIsThatOfTheirBytes) {
    memory_maker maker(8);
    for (const std::uint32_t width : {1U, 8U, 12U, 32U, 64U, 100U}) {
        const memory_image image = maker.memory(width, 1300);
        const word unset = word_of_digits(maker.bits(width));
        for (const byte_order order : {byte_order::little, byte_order::big}) {
            crc expected(std::get<crc_model>(checksum_called("crc-64-xz")));
            expected.add(bytes_of_image(image, order, unset));
            ASSERT_EQ(checksum_of(image, checksum_called("crc-64-xz"), {.order = order, .unset = unset}),
                      word::of(expected.value(), 64));
        }
    }
}

TEST(ChecksumOf, EveryKindTakesRangesAndWordsThatAreNotSet) {
    memory_image image(16, 6);
    image.set(1, word::of(0x0102, 16));
    image.set(2, word::of(0x0304, 16));
    image.set(4, word::of(0x0506, 16));
    memory_image some(16, 3);
    some.fill({0, 2}, std::array{word::of(0x0102, 16), word::of(0x0304, 16), word::of(0x0506, 16)});
    memory_image all = image;
    all.fill_unset(word::of(7, 16));
    for (const std::string_view name : {"crc-32", "sum-16", "word-sum-16"}) {
        const checksum_kind kind = checksum_called(name);
        EXPECT_EQ(checksum_of(image, kind, {.ranges = {{1, 2}, {4, 4}}}), checksum_of(some, kind)) << name;
        EXPECT_EQ(checksum_of(image, kind, {.unset = word::of(7, 16)}), checksum_of(all, kind)) << name;
        EXPECT_NE(checksum_of(image, kind), checksum_of(all, kind)) << name;
    }
}

TEST(ForEachCountedBlock, TakesRangesAndWordsThatAreNotSet) {
    memory_image image(16, 4);
    image.set(1, word::of(0x4142, 16));
    image.set(2, word::of(0x4344, 16));
    const auto bytes_by = [&image](const checksum_options& options) {
        std::string bytes;
        for_each_counted_block(image, options, [&bytes](std::string_view some) { bytes += some; });
        return bytes;
    };
    EXPECT_EQ(bytes_by({}), "BADC");
    EXPECT_EQ(bytes_by({.ranges = {{2, 3}, {1, 1}}, .order = byte_order::big}), "CDAB");
    EXPECT_EQ(bytes_by({.order = byte_order::big, .unset = word::of(0x2E2D, 16)}), ".-ABCD.-");
}

} // namespace
