#include "kvr/memory/hex/fast_hex_rows.h"
#include "kvr/memory/hex/hex_writer.h"
#include "kvr/memory/io/output_file.h"
#include "tests/memory/random_row.h"
#include "tests/memory/temporary_directory.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace kvr {
namespace {

using kvr_test::content_of;
using kvr_test::random_row;
using kvr_test::temporary_directory;

std::string upper(std::string text) {
    for (char& character : text) {
        character =
            static_cast<char>(character >= 'a' && character <= 'f' ? character - 'a' + 'A' : character);
    }
    return text;
}

class FastHexRows : public testing::Test {
protected:
    /// The text of the rows of @p letters for the first words of @p row. `written` counts the words.
    std::string at_once(const word_row& row, std::uint32_t bytes, std::uint32_t address,
                        letter_case letters) {
        output_file file = output_file::create(directory.path("rows"));
        written = fast_hex_rows(bytes, letters).write(row, address, file);
        EXPECT_TRUE(file.close());
        return content_of(directory.path("rows"));
    }
    /// The records for the first @p count words, by the exact rule.
    std::string one_by_one(const word_row& row, std::uint32_t bytes, std::uint32_t address,
                           std::uint32_t count) {
        output_file file = output_file::create(directory.path("exact"));
        const hex_record_layout layout(bytes, true);
        for (std::uint32_t i = 0; i < count; ++i) {
            write_hex_record(layout, address + i, row[i], file);
        }
        EXPECT_TRUE(file.close());
        return content_of(directory.path("exact"));
    }

    temporary_directory directory;
    std::uint32_t written = 0;
};

TEST_F(FastHexRows, GiveTheRecordsOfTheExactRule) {
    kvr_test::random_numbers numbers(1);
    for (std::uint32_t length = 1; length <= 80; ++length) {
        for (const std::uint32_t bytes : {(length + 1) / 2, (length + 1) / 2 + 1 + numbers() % 30}) {
            const random_row row(numbers, length, 1 + numbers() % 600);
            const std::uint32_t address = numbers() % (65536 - row.words().count);
            const std::string fast = at_once(row.words(), bytes, address, letter_case::lower);
            ASSERT_EQ(written, row.words().count) << length << " digits in " << bytes << " bytes";
            ASSERT_TRUE(fast == one_by_one(row.words(), bytes, address, written))
                << length << " digits in " << bytes << " bytes";
            ASSERT_TRUE(at_once(row.words(), bytes, address, letter_case::upper) == upper(fast));
        }
    }
}

TEST_F(FastHexRows, TakeTheLongestWordsAndRecords) {
    kvr_test::random_numbers numbers(2);
    for (const std::uint32_t length : {2U, 254U, 255U, 256U}) {
        const random_row row(numbers, length, 20);
        const std::string fast = at_once(row.words(), 255, 250, letter_case::lower);
        ASSERT_EQ(written, 20U);
        ASSERT_TRUE(fast == one_by_one(row.words(), 255, 250, 20));
    }
}

TEST_F(FastHexRows, TakeShortWordsOfTheLongestRecords) {
    kvr_test::random_numbers numbers(6);
    const random_row row(numbers, 2, 3000);
    const std::string fast = at_once(row.words(), 255, 0, letter_case::lower);
    EXPECT_EQ(written, 3000U);
    EXPECT_TRUE(fast == one_by_one(row.words(), 255, 0, written));
}

TEST_F(FastHexRows, StopBeforeWordsThatAreNotHexadecimal) {
    kvr_test::random_numbers numbers(3);
    std::uint32_t taken = 0;
    for (int i = 0; i < kvr_test::fewer(100); ++i) {
        const std::uint32_t length = 1 + numbers() % 12;
        const std::uint32_t bytes = (length + 1) / 2;
        const random_row row(numbers, length, 1000, numbers() % 3);
        const std::string fast = at_once(row.words(), bytes, 100, letter_case::lower);
        ASSERT_TRUE(fast == one_by_one(row.words(), bytes, 100, written));
        taken += written;
    }
    EXPECT_GT(taken, kvr_test::fewer(10000U));
    EXPECT_LT(taken, kvr_test::fewer(90000U));
}

TEST_F(FastHexRows, StopAtTheEndOfThePage) {
    kvr_test::random_numbers numbers(4);
    const random_row row(numbers, 2, 1000);
    const std::string fast = at_once(row.words(), 1, 65000, letter_case::lower);
    EXPECT_EQ(written, 536U);
    EXPECT_TRUE(fast == one_by_one(row.words(), 1, 65000, 536));
    EXPECT_EQ(at_once(row.words(), 1, 65536, letter_case::lower), "");
    EXPECT_EQ(written, 0U);
}

TEST_F(FastHexRows, LeaveWhatHasNoWholeBytesOrIsTooLongToTheExactRule) {
    kvr_test::random_numbers numbers(5);
    const random_row odd(numbers, 3, 10);
    EXPECT_EQ(at_once(odd.words(), 1, 0, letter_case::lower), "");
    const random_row two(numbers, 2, 10);
    EXPECT_EQ(at_once(two.words(), 256, 0, letter_case::lower), "");
    const random_row empty(numbers, 0, 10);
    EXPECT_EQ(at_once(empty.words(), 1, 0, letter_case::lower), "");
    const random_row long_words(numbers, 258, 10);
    EXPECT_EQ(at_once(long_words.words(), 129, 0, letter_case::lower), "");
    EXPECT_EQ(written, 0U);
}

} // namespace
} // namespace kvr
