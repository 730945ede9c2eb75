#include "kvr/memory/io/output_file.h"
#include "kvr/memory/mif/fast_mif_rows.h"
#include "kvr/memory/mif/mif_writer.h"
#include "tests/memory/random_row.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>

namespace kvr {
namespace {

using kvr_test::content_of;
using kvr_test::random_row;
using kvr_test::temporary_directory;

constexpr std::array line_radixes = {RADIX_BIN, RADIX_OCT, RADIX_DEC, RADIX_UNS, RADIX_HEX};

/// The lines for the first @p count words, by the exact rule.
std::string one_by_one(const word_row& row, std::uint32_t address, std::uint32_t count,
                       KVR_MEMORY_RADIXES radix, std::size_t width) {
    std::string text;
    for (std::uint32_t i = 0; i < count; ++i) {
        append_content_line(text, address + i, address + i, row[i], radix, width, {});
    }
    return text;
}

/// The number of words up to the first one that equals the next, or up to the end of the row.
std::uint32_t words_before_equal_ones(const word_row& row) {
    std::uint32_t count = 0;
    while (count + 1 < row.count && row[count] != row[count + 1]) {
        ++count;
    }
    return count;
}

class FastMifRows : public testing::TestWithParam<KVR_MEMORY_RADIXES> {
protected:
    std::string at_once(fast_mif_rows& rows, const word_row& row, std::uint32_t address) {
        output_file file = output_file::create(directory.path("rows"));
        written = rows.write(row, address, file);
        EXPECT_TRUE(file.close());
        return content_of(directory.path("rows"));
    }
    temporary_directory directory;
    std::uint32_t written = 0;
};

TEST_P(FastMifRows, GiveTheLinesOfTheExactRule) {
    kvr_test::random_numbers numbers(1);
    for (int i = 0; i < 50; ++i) {
        const random_row row(numbers, numbers() % 40, 1 + numbers() % 700, 100);
        const std::uint32_t highest = std::uint32_t{100000} << numbers() % 15;
        const std::uint32_t address = 128 + numbers() % (highest - 1000);
        const std::size_t width = numbers() % 34;
        fast_mif_rows rows(GetParam(), width, equal_words::have_lines_of_their_own);
        const std::string fast = at_once(rows, row.words(), address);
        ASSERT_EQ(written, row.words().count);
        ASSERT_TRUE(fast == one_by_one(row.words(), address, written, GetParam(), width)) << fast;
    }
}

TEST_P(FastMifRows, StopWhereEqualWordsShareALine) {
    kvr_test::random_numbers numbers(2);
    for (int i = 0; i < 50; ++i) {
        const random_row row(numbers, 1 + numbers() % 20, 1 + numbers() % 50);
        const std::uint32_t address = 128 + numbers() % 2000;
        fast_mif_rows rows(GetParam(), 12, equal_words::share_a_line);
        const std::string fast = at_once(rows, row.words(), address);
        ASSERT_EQ(written, words_before_equal_ones(row.words()));
        ASSERT_TRUE(fast == one_by_one(row.words(), address, written, GetParam(), 12)) << fast;
    }
}

TEST_P(FastMifRows, TakeLowAddressesAsFarAsTheyHaveTwoDigits) {
    kvr_test::random_numbers numbers(3);
    for (std::size_t width = 0; width < 5; ++width) {
        fast_mif_rows rows(GetParam(), width, equal_words::have_lines_of_their_own);
        for (const std::uint32_t address :
             {0U, 1U, 2U, 3U, 4U, 7U, 8U, 9U, 10U, 11U, 15U, 16U, 17U, 63U, 64U, 99U, 100U, 255U, 256U}) {
            const random_row row(numbers, 2, 300);
            const std::string fast = at_once(rows, row.words(), address);
            std::string digits;
            append_address(digits, address, GetParam(), width);
            ASSERT_EQ(written, digits.size() >= 2 ? row.words().count : 0U) << address << " " << width;
            ASSERT_TRUE(fast == one_by_one(row.words(), address, written, GetParam(), width)) << fast;
        }
    }
}

TEST_P(FastMifRows, TheHighestAddressIsWritten) {
    kvr_test::random_numbers numbers(4);
    const random_row row(numbers, 2, 600);
    fast_mif_rows rows(GetParam(), 32, equal_words::have_lines_of_their_own);
    const std::string fast = at_once(rows, row.words(), 4294967295U - 600);
    ASSERT_EQ(written, 600U);
    EXPECT_TRUE(fast == one_by_one(row.words(), 4294967295U - 600, 600, GetParam(), 32));
}

TEST_P(FastMifRows, AnObjectIsForAnyNumberOfRows) {
    kvr_test::random_numbers numbers(5);
    fast_mif_rows rows(GetParam(), 6, equal_words::have_lines_of_their_own);
    for (const std::uint32_t address : {1000U, 1001U, 2U, 1000U, 99990U, 64U}) {
        for (const std::uint32_t length : {2U, 8U, 1U}) {
            const random_row row(numbers, length, 200);
            const std::string fast = at_once(rows, row.words(), address);
            ASSERT_TRUE(fast == one_by_one(row.words(), address, written, GetParam(), 6)) << fast;
        }
    }
}

// The file writes a block when the next lines do not fit.
TEST_P(FastMifRows, LinesAreWrittenAtTheEndOfABlock) {
    kvr_test::random_numbers numbers(7);
    const random_row row(numbers, 4, 8);
    const std::string lines = one_by_one(row.words(), 1000, 8, GetParam(), 8);
    const std::string after(output_file::block_size, '-');
    for (const std::size_t left : {lines.size() - 1, lines.size(), lines.size() + 1}) {
        const std::string before(output_file::block_size - left, '.');
        output_file file = output_file::create(directory.path("rows"));
        file.write(before);
        fast_mif_rows rows(GetParam(), 8, equal_words::have_lines_of_their_own);
        EXPECT_EQ(rows.write(row.words(), 1000, file), 8U);
        file.write(after);
        EXPECT_TRUE(file.close());
        EXPECT_TRUE(content_of(directory.path("rows")) == before + lines + after) << left;
    }
}

TEST_P(FastMifRows, WordsThatAreLongerThanTheRoomAreLeftToTheExactRule) {
    kvr_test::random_numbers numbers(6);
    const random_row row(numbers, output_file::room_limit, 2);
    fast_mif_rows rows(GetParam(), 6, equal_words::have_lines_of_their_own);
    EXPECT_EQ(at_once(rows, row.words(), 1000), "");
    EXPECT_EQ(written, 0U);
}

INSTANTIATE_TEST_SUITE_P(Radixes, FastMifRows, testing::ValuesIn(line_radixes));

} // namespace
} // namespace kvr
