// The lines that fast_mif_lines reads; the other, slower reader reads the rest.

#include "kvr/memory/mif/fast_mif_lines.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tests/memory/number_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

/// At least as many characters as the reader needs after a line.
const std::string regular_lines_after = [] {
    std::string lines;
    for (unsigned address = 0x100; address < 0x120; ++address) {
        lines += kvr_test::number_text(address, 16, 3) + " : 5;\n";
    }
    return lines;
}();

constexpr std::size_t longest_line = kvr::mif_reader::line_limit;

class FastMifLinesAmount : public testing::Test {
protected:
    FastMifLinesAmount() {
        memory.address_radix = RADIX_HEX;
        memory.resize_words(4096);
    }

    void expect_read(const std::string& lines, std::uint64_t count, bool with_comments = true) {
        SCOPED_TRACE(lines.substr(0, 200));
        memory.address_set.clear();
        const auto read = kvr::fast_mif_lines(memory, longest_line).read(lines, with_comments);
        EXPECT_EQ(read.bytes, lines.size());
        EXPECT_EQ(read.lines, count);
    }

    void expect_left(const std::string& line, bool with_comments = true) {
        SCOPED_TRACE(line.substr(0, 200));
        memory.address_set.clear();
        const std::string before = "0 : 1;\n";
        const auto read = kvr::fast_mif_lines(memory, longest_line)
                              .read(before + line + "\n" + regular_lines_after, with_comments);
        EXPECT_EQ(read.bytes, before.size());
        EXPECT_EQ(read.lines, 1U);
    }

    kvr::mif_memory memory{nullptr};
};

TEST_F(FastMifLinesAmount, BlanksDoNotMatter) {
    expect_read("0:1;\n", 1);
    expect_read("\t 0 \t: \t1 \t; \t\n  1 : 2;\n", 2);
}

TEST_F(FastMifLinesAmount, ALineMayEndWithCarriageReturn) {
    expect_read("0 : 1;\r\n1 : 2; \r\n2 : 3;\r\n", 3);
    expect_read("0 : 1; -- a comment\r\n1 : 2;-- b\r\n2 : 3; --\r\n", 3);
}

TEST_F(FastMifLinesAmount, ManyEqualLinesAreRead) {
    std::string lines;
    for (unsigned address = 0; address < 1000; ++address) {
        lines +=
            kvr_test::number_text(address, 16, 3) + " : " + kvr_test::number_text(address, 16, 4) + ";\n";
    }
    expect_read(lines, 1000);
    EXPECT_EQ(memory.data_words[999], "03E7");
}

TEST_F(FastMifLinesAmount, ManyLinesWithSeveralValuesAreRead) {
    std::string lines;
    for (unsigned address = 0; address < 1000; address += 4) {
        lines += kvr_test::number_text(address, 16, 3) + " : 1 -2 a3 FF; -- comment\n";
    }
    expect_read(lines, 250);
    EXPECT_EQ(memory.data_words[996], "1");
    EXPECT_EQ(memory.data_words[997], "-2");
    EXPECT_EQ(memory.data_words[998], "A3");
    EXPECT_EQ(memory.data_words[999], "FF");
}

TEST_F(FastMifLinesAmount, SeveralValuesInALineAreReported) {
    const auto has_lists = [this](const std::string& lines) {
        memory.address_set.clear();
        return kvr::fast_mif_lines(memory, longest_line).read(lines, true).has_lists;
    };
    EXPECT_FALSE(has_lists("0 : 1;\n1 : 2 ;\n2 : 3;\n"));
    EXPECT_TRUE(has_lists("0 : 1 2;\n2 : 3;\n"));
    EXPECT_TRUE(has_lists("0 : 1;\n1 : 2 3;\n3 : 4 5;\n"));
    EXPECT_FALSE(has_lists("0 : 1;\n1 : 2;\n2 : 3 ? 4;\n")); // the last line is not read
}

TEST_F(FastMifLinesAmount, AReadStartsWithoutLists) {
    kvr::fast_mif_lines lines(memory, longest_line);
    EXPECT_TRUE(lines.read("0 : 1 2;\n", true).has_lists);
    EXPECT_FALSE(lines.read("2 : 3;\n", true).has_lists);
}

TEST_F(FastMifLinesAmount, EqualLinesAreReadUpToTheDepth) {
    for (const std::string values : {"11", "1 22"}) {
        std::string lines;
        std::size_t size_to_the_depth = 0;
        for (unsigned address = 0; address < 96; address += values.size() == 2 ? 1U : 2U) {
            lines += kvr_test::number_text(address, 16, 2) + ":" + values + ";\n";
            size_to_the_depth = address < 50 ? lines.size() : size_to_the_depth;
        }
        memory.resize_words(50);
        memory.address_set.clear();
        const auto read = kvr::fast_mif_lines(memory, longest_line).read(lines, true);
        EXPECT_EQ(read.bytes, size_to_the_depth);
        EXPECT_EQ(memory.data_words.size(), 50U);
        EXPECT_EQ(memory.data_words[48], values.substr(0, values.find(' ')));
    }
}

TEST_F(FastMifLinesAmount, AnyValueCharactersAreRead) {
    expect_read("0 : xU-;\n1 : 1 -x;\n", 2);
    EXPECT_EQ(memory.data_words[0], "XU-");
    EXPECT_EQ(memory.data_words[2], "-X");
}

TEST_F(FastMifLinesAmount, ACommentIsOrdinaryWhenItIsSaidSo) {
    expect_read("0 : 1; -- comment\n", 1, true);
    expect_left("1 : 1; -- comment", false);
}

TEST_F(FastMifLinesAmount, ALineOfTheLimitIsRead) {
    const std::string line = "0 : 1; --";
    expect_read(line + std::string(longest_line - line.size(), '.') + "\n", 1);
    expect_left("1 : 1; --" + std::string(longest_line + 1 - line.size(), '.'));
    expect_read("0 : 1;" + std::string(longest_line - 6, ' ') + "\n", 1);
    expect_left("1 : 1;" + std::string(longest_line + 1 - 6, ' '));
}

TEST_F(FastMifLinesAmount, AddressesHaveAsManyDigitsAsCannotPass32Bits) {
    const auto expect_digits = [&](KVR_MEMORY_RADIXES radix, std::size_t digits) {
        memory.address_radix = radix;
        expect_read(std::string(digits, '0') + " : 1;\n", 1);
        expect_left(std::string(digits, '0') + "1 : 1;");
    };
    expect_digits(RADIX_BIN, 32);
    expect_digits(RADIX_OCT, 10);
    expect_digits(RADIX_UNS, 9);
    expect_digits(RADIX_DEC, 9);
    expect_digits(RADIX_HEX, 8);
}

TEST_F(FastMifLinesAmount, AllElseIsLeft) {
    for (const char* line : {"",
                             "1",
                             "1 : ",
                             "1 : ;",
                             "1 :  ;",
                             "1 : \t;",
                             "1 : 2 \r;",
                             "1 : 2",
                             " : 2;",
                             "1 2;",
                             "[1..2] : 3;",
                             "END;",
                             "1 : 2; 3 : 4;",
                             "-1 : 2;",
                             "1 : 2 -- 3;",
                             "1 : 2; % comment",
                             "g : 2;",
                             "1 : 2--3;",
                             "1 : 2,3;",
                             "1 : 2; -"}) {
        expect_left(line);
    }
}

TEST_F(FastMifLinesAmount, WordsThatDoNotFitOrAreSetTwiceAreLeft) {
    expect_left("0 : 2;");
    expect_left("1000 : 2;");
    expect_left("fff : 2 3;");
    expect_read("fff : 2;\n", 1);
    expect_read("ffe : 2 3;\n", 1);
    expect_read("0 : 1;\n1 : 2;\n0 : 3 4;\n", 3);
}

} // namespace
