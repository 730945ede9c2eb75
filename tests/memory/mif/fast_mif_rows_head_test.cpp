// Lines before and after an address at which the head of the line changes.

#include "kvr/memory/io/output_file.h"
#include "kvr/memory/mif/fast_mif_rows.h"
#include "tests/memory/number_text.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using kvr_test::number_text;

/// The texts of @p count words of three digits.
std::string word_texts(std::uint32_t count) {
    std::string texts;
    for (std::uint32_t i = 0; i < count; ++i) {
        texts += number_text(i, 16, 3);
    }
    return texts;
}

/// The lines of these words, from the address @p first on.
std::string lines_of(std::uint32_t first, std::uint32_t count) {
    std::string lines;
    for (std::uint32_t i = 0; i < count; ++i) {
        lines += "\t" + number_text(first + i, 16, 8, false) + "  :   " + number_text(i, 16, 3) + ";\n";
    }
    return lines;
}

TEST(FastMifRowsHead, ChangesWithTheLeadingDigits) {
    for (const std::uint32_t first : {0x10U, 0xFFU, 0xFF01U, 0xFFFF01U, 0xFF00FF01U, 0xFFFF0001U}) {
        constexpr std::uint32_t count = 700;
        const std::string texts = word_texts(count);
        const kvr_test::temporary_directory directory;
        kvr::output_file file = kvr::output_file::create(directory.path("rows"));
        kvr::fast_mif_rows rows(RADIX_HEX, 8, kvr::equal_words::have_lines_of_their_own);
        EXPECT_EQ(rows.write({texts.data(), 3, count}, first, file), count);
        EXPECT_TRUE(file.close());
        EXPECT_EQ(kvr_test::content_of(directory.path("rows")), lines_of(first, count)) << first;
    }
}

// The head of the first row matches no other address.
TEST(FastMifRowsHead, IsMadeAgainForARowFarAway) {
    for (const std::uint32_t far : {0x1000U, 0x100000U, 0x10000000U}) {
        constexpr std::uint32_t count = 5;
        const std::string texts = word_texts(count);
        const kvr_test::temporary_directory directory;
        kvr::output_file file = kvr::output_file::create(directory.path("rows"));
        kvr::fast_mif_rows rows(RADIX_HEX, 8, kvr::equal_words::have_lines_of_their_own);
        EXPECT_EQ(rows.write({texts.data(), 3, count}, 0x10, file), count);
        EXPECT_EQ(rows.write({texts.data(), 3, count}, far, file), count);
        EXPECT_TRUE(file.close());
        EXPECT_EQ(kvr_test::content_of(directory.path("rows")), lines_of(0x10, count) + lines_of(far, count));
    }
}

} // namespace
