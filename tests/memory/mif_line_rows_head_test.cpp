// Lines on both sides of an address from which on the front of the line is another one.

#include "kvr/memory/mif_line_rows.h"
#include "kvr/memory/output_file.h"
#include "tests/memory/number_text.h"
#include "tests/memory/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

TEST(MifLineRowsHead, ChangesWithTheDigitsInFront) {
    for (const std::uint32_t first : {0x10U, 0xFFU, 0xFF01U, 0xFFFF01U, 0xFF00FF01U, 0xFFFF0001U}) {
        constexpr std::uint32_t count = 700;
        std::string texts;
        std::string expected;
        for (std::uint32_t i = 0; i < count; ++i) {
            const std::string word = kvr_test::number_text(i, 16, 3);
            texts += word;
            expected += "\t" + kvr_test::number_text(first + i, 16, 8, false) + "  :   " + word + ";\n";
        }
        const kvr_test::temporary_directory directory;
        kvr::output_file file = kvr::output_file::create(directory.path("rows"));
        kvr::mif_line_rows rows(RADIX_HEX, 8, kvr::equal_words::have_lines_of_their_own);
        EXPECT_EQ(rows.write({texts.data(), 3, count}, first, file), count);
        EXPECT_TRUE(file.close());
        EXPECT_EQ(kvr_test::content_of(directory.path("rows")), expected) << first;
    }
}

} // namespace
