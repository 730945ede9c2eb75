// The result of the MIF reader for a file whose reads fail after the first block.

#include "kvr/memory/mif/mif_reader.h"
#include "tests/memory/io/failing_file.h"
#include "tests/memory/number_text.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

#if defined(__GLIBC__)

namespace {

using kvr_test::number_text;

constexpr std::uint32_t words_of_failing_file = 40000;

/// The content lines reach beyond the first block of a file.
std::string lines_beyond_a_block() {
    std::string text = "WIDTH=8;\nDEPTH=" + std::to_string(words_of_failing_file) + ";\nCONTENT BEGIN\n";
    for (std::uint32_t address = 0; address < words_of_failing_file; ++address) {
        text += number_text(address, 16, 4) + ":1;\n";
    }
    return text;
}

TEST(MifReaderFailure, StoresNothingOfTheBlockThatFails) {
    const std::string content = lines_beyond_a_block();
    ASSERT_GT(content.size(), kvr::line_source::block_size);
    kvr::failing_file file{.content = content, .error_at = content.size()};
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source source(file.open(), kvr::mif_reader::source_limit);
    EXPECT_FALSE(kvr::mif_reader(memory).read(source));
    EXPECT_TRUE(source.failed());
    ASSERT_EQ(memory.data_words.size(), words_of_failing_file);
    EXPECT_EQ(memory.data_words[0], "1");
    const auto first_line = content.find("0000:");
    const auto in_first_block = static_cast<std::uint32_t>((kvr::line_source::block_size - first_line) /
                                                           std::string("0000:1;\n").size());
    EXPECT_EQ(memory.data_words[in_first_block - 1], "1");
    EXPECT_EQ(memory.data_words[in_first_block + 1], "0");
    EXPECT_EQ(memory.data_words[words_of_failing_file - 1], "0");
}

} // namespace

#endif
