#include "kvrimage/bytes/byte_rows.h"
#include "kvrimage/bytes/bytes_of_words.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;

std::string cut_rows(std::uint32_t length, const std::vector<std::pair<std::uint64_t, std::string>>& blocks) {
    std::string text;
    byte_row_cutter rows(length, [&text](std::uint64_t address, std::string_view bytes) {
        text += std::to_string(address) + ":" + std::string(bytes) + " ";
    });
    for (const auto& [address, bytes] : blocks) {
        rows.add(address, bytes);
    }
    rows.finish();
    return text;
}

TEST(ByteRows, BeginAtMultiplesOfTheirLength) {
    EXPECT_EQ(cut_rows(4, {{0, "abcdefghij"}}), "0:abcd 4:efgh 8:ij ");
    EXPECT_EQ(cut_rows(4, {{3, "abcdefg"}}), "3:a 4:bcde 8:fg ");
}

TEST(ByteRows, BlocksThatFollowEachOtherShareARow) {
    EXPECT_EQ(cut_rows(4, {{0, "a"}, {1, "bc"}, {3, "def"}}), "0:abcd 4:ef ");
    EXPECT_EQ(cut_rows(4, {{0, "a"}, {2, "c"}}), "0:a 2:c ");
}

TEST(ByteRows, BeginAgainWithEachPage) {
    EXPECT_EQ(cut_rows(5, {{65534, "abcd"}}), "65534:a 65535:b 65536:cd ");
    EXPECT_EQ(end_of_byte_row(65533, 5), 65535U);
    EXPECT_EQ(end_of_byte_row(65535, 5), 65536U);
}

void expect_counted_as_cut(const memory_image& image, std::uint32_t length) {
    byte_row_counts found;
    std::uint64_t next = ~std::uint64_t{0};
    std::uint64_t page = ~std::uint64_t{0};
    byte_row_cutter rows(length, [&](std::uint64_t address, std::string_view bytes) {
        ++found.rows;
        found.bytes += bytes.size();
        found.stretches += address != next ? 1U : 0U;
        found.pages += address / byte_page_size != page ? 1U : 0U;
        page = address / byte_page_size;
        next = address + bytes.size();
    });
    for_each_byte_block(image, byte_order::big,
                        [&](std::uint64_t address, std::string_view bytes) { rows.add(address, bytes); });
    rows.finish();
    const byte_row_counts counted = count_byte_rows(image, length);
    EXPECT_EQ(counted.bytes, found.bytes);
    EXPECT_EQ(counted.rows, found.rows);
    EXPECT_EQ(counted.pages, found.pages);
    EXPECT_EQ(counted.stretches, found.stretches);
}

TEST(ByteRows, AreCountedAsTheyAreCut) {
    std::mt19937 random(2);
    for (std::uint32_t width = 1; width < 80; ++width) {
        const memory_image image = kvrimage_tests::random_byte_image(random, width, 20000);
        expect_counted_as_cut(image, static_cast<std::uint32_t>(1 + random() % 40));
    }
}

TEST(ByteRows, AreCountedAsTheyAreCutAtTheBordersOfPages) {
    memory_image all(16, 100000);
    all.fill({5, 99990}, std::vector{word::of(1, 16)});
    expect_counted_as_cut(all, 7);
    const std::vector<std::uint64_t> addresses = {0, 2, 65534, 65535, 65536, 65537, 65540, 131072};
    for (const std::uint64_t one : addresses) {
        for (const std::uint64_t other : addresses) {
            SCOPED_TRACE(std::to_string(one) + " and " + std::to_string(other));
            memory_image image(8, 131073);
            image.set(one, word::of(1, 8));
            image.set(other, word::of(2, 8));
            expect_counted_as_cut(image, 7);
        }
    }
}

TEST(ByteRows, TheLastAddressIsThatOfTheLastByte) {
    memory_image image(12, 8);
    EXPECT_FALSE(last_byte_address(image));
    image.set(4, word(12));
    EXPECT_EQ(last_byte_address(image), 9U);
    memory_image high(16, 2, ~std::uint64_t{0} - 1);
    high.set(high.base(), word(16));
    EXPECT_EQ(last_byte_address(high), ~std::uint64_t{0});
    // The first byte of word 2^64 / 3 - 1/3 has the last address, and the word before it ends below.
    memory_image border(24, 2, ~std::uint64_t{0} / 3 - 1);
    border.set(border.base(), word(24));
    EXPECT_EQ(last_byte_address(border), ~std::uint64_t{0} - 1);
    border.set(border.base() + 1, word(24));
    EXPECT_EQ(last_byte_address(border), ~std::uint64_t{0});
    EXPECT_EQ(byte_address_obstacle(image, 8, "a memory")->message,
              "byte address 9 is beyond 8, the largest of a memory");
    EXPECT_FALSE(byte_address_obstacle(image, 9, "a memory"));
}

TEST(ByteRows, ARecordLengthIsANumberWithinTheLimit) {
    write_options options;
    EXPECT_EQ(chosen_record_length(options, 32, 250), 32U);
    for (const char* const wrong : {"", "0", "251", "12x", "-1", "99999999999"}) {
        options.choices = {{"record-length", wrong}};
        EXPECT_FALSE(chosen_record_length(options, 32, 250)) << wrong;
    }
    EXPECT_EQ(improper_record_length(options, 250).hint, "use one of: 1 to 250");
    options.choices = {{"record-length", "250"}};
    EXPECT_EQ(chosen_record_length(options, 32, 250), 250U);
}

} // namespace
