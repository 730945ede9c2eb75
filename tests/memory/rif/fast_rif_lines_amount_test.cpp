// The lines that fast_rif_lines reads; the other, slower reader reads the rest.

#include "kvr/memory/rif/fast_rif_lines.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace {

/// Lines that follow the read ones, as many as the reader scans.
const std::string scanned_lines_after = [] {
    std::string lines;
    for (int i = 0; i < 100; ++i) {
        lines += "-\n";
    }
    return lines;
}();

class FastRifLinesAmount : public testing::Test {
protected:
    FastRifLinesAmount() { words.resize(64, "."); }

    void expect_read(const std::string& lines, std::uint64_t next_address) {
        SCOPED_TRACE(lines.substr(0, 200));
        const std::string text = lines + scanned_lines_after;
        std::uint64_t address = 2;
        EXPECT_EQ(kvr::fast_rif_lines(words).read(text, address), lines.size());
        EXPECT_EQ(address, next_address);
    }
    void expect_left(const std::string& line) {
        SCOPED_TRACE(line.substr(0, 200));
        const std::string before = "5\n";
        std::uint64_t address = 2;
        const std::string text = before + line + "\n" + scanned_lines_after;
        EXPECT_EQ(kvr::fast_rif_lines(words).read(text, address), before.size());
        EXPECT_EQ(address, 3U);
    }

    kvr::word_store words;
};

TEST_F(FastRifLinesAmount, WordsOfOneLengthAreRead) {
    expect_read("12 34\n56 \nab cd ef \n", 8);
    EXPECT_EQ(words[1], ".");
    EXPECT_EQ(words[2], "12");
    EXPECT_EQ(words[4], "56");
    EXPECT_EQ(words[7], "EF");
    EXPECT_EQ(words[8], ".");
}

TEST_F(FastRifLinesAmount, WordsOfSeveralLengthsAreRead) {
    expect_read("1 234\n5 678 9a\n\n", 7);
    EXPECT_EQ(words[3], "234");
    EXPECT_EQ(words[6], "9A");
}

TEST_F(FastRifLinesAmount, EmptyLinesAreLinesToo) {
    expect_read("12\n34\n\n56\n\n\n", 5);
    EXPECT_EQ(words[4], "56");
}

TEST_F(FastRifLinesAmount, LongWordsAreRead) {
    const std::string word(300, 'a');
    expect_read(word + "\n" + word + "\n", 4);
    EXPECT_EQ(words[3], std::string(300, 'A'));
}

TEST_F(FastRifLinesAmount, AddressLinesAreRead) {
    expect_read("@10\n1\n", 17);
    EXPECT_EQ(words[16], "1");
    expect_read("@0000001f\n@1F\n2\n", 32);
    EXPECT_EQ(words[31], "2");
    expect_read("@FFFFFFFF\n3\n", 0x100000000);
}

TEST_F(FastRifLinesAmount, WordsBeyondTheStoreAreCounted) {
    expect_read("@3e\n1 2 3 4\n5 6\n", 68);
    expect_read("@3c\n1\n2 3 4 5 6\n7 8\n\n", 68);
    expect_read("@3f\n1\n\n2\n", 65);
    EXPECT_EQ(words[62], "3");
    EXPECT_EQ(words[63], "1");
}

TEST_F(FastRifLinesAmount, ALineOf256WordsIsRead) {
    std::string line;
    for (std::size_t i = 0; i < 256; ++i) {
        line += i % 2 == 0 ? "1 " : "22 ";
    }
    expect_read(line + "\n", 258);
    expect_left(line + "1");
}

TEST_F(FastRifLinesAmount, AllElseIsLeft) {
    for (const char* line : {"@", "@x", "@1X", "@u", "X", "u 1", "@000000001", "@1 ", "@1\r", "@g", "x",
                             "1  2", " 1", "1\t2", "1\r", "12 g", "1 @2"}) {
        expect_left(line);
    }
}

} // namespace
