// The lines that fast_mif_lines reads; the other, slower reader reads the rest.

#include "kvr/memory/mif/fast_mif_lines.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tests/memory/number_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <utility>

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

    /// Reads @p lines, all of which are regular and are followed by enough readable characters.
    kvr::fast_mif_lines::amount read_all(kvr::fast_mif_lines& reader, const std::string& lines) {
        SCOPED_TRACE(lines.substr(0, 200));
        const auto read = reader.read(lines + std::string(64, '\n'), true);
        EXPECT_EQ(read.bytes, lines.size());
        return read;
    }
    kvr::fast_mif_lines::amount read_all(const std::string& lines) {
        memory.address_set.clear();
        kvr::fast_mif_lines reader(memory, longest_line);
        return read_all(reader, lines);
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

/// Lines with the word @p value at each address from @p first to the one before @p end.
std::string lines_with(const std::string& value, unsigned first, unsigned end) {
    std::string lines;
    for (unsigned address = first; address < end; ++address) {
        lines += kvr_test::number_text(address, 16, 3) + " : " + value + ";\n";
    }
    return lines;
}

// The address of the second line is predicted; after it, a line like the previous one is expected.

TEST_F(FastMifLinesAmount, EqualLinesAreReadTogether) {
    for (std::size_t length = 1; length <= 32; ++length) {
        const auto read = read_all(lines_with(std::string(length, 'A'), 0, 100));
        EXPECT_EQ(read.addresses_parsed, 1U) << length;
        EXPECT_EQ(read.lines_together, 98U) << length;
    }
    EXPECT_EQ(read_all(lines_with("5a", 0, 100)).lines_together, 98U);
}

TEST_F(FastMifLinesAmount, LongWordsAreReadOneByOne) {
    const std::string long_words = lines_with(std::string(33, 'A'), 0, 40);
    const auto read = read_all(long_words);
    EXPECT_EQ(read.addresses_parsed, 1U);
    EXPECT_EQ(read.lines_together, 0U);
    EXPECT_EQ(read_all(long_words + lines_with("5A", 40, 140)).lines_together, 99U);
}

TEST_F(FastMifLinesAmount, LinesAreReadTogetherInEachRadix) {
    constexpr std::array<std::pair<KVR_MEMORY_RADIXES, unsigned>, 4> radixes = {
        {{RADIX_BIN, 2}, {RADIX_OCT, 8}, {RADIX_UNS, 10}, {RADIX_HEX, 16}}};
    for (const auto& [radix, base] : radixes) {
        std::string lines;
        for (unsigned address = 0; address < 100; ++address) {
            lines += kvr_test::number_text(address, base, 7) + ":00;\n";
        }
        memory.address_radix = radix;
        const auto read = read_all(lines);
        EXPECT_EQ(read.addresses_parsed, 1U) << base;
        EXPECT_EQ(read.lines_together, 98U) << base;
    }
}

TEST_F(FastMifLinesAmount, AnAddressWithADigitMoreIsParsed) {
    std::string lines;
    for (unsigned address = 0; address < 0x30; ++address) {
        lines += kvr_test::number_text(address, 16, 1) + " : 00;\n";
    }
    const auto read = read_all(lines);
    EXPECT_EQ(read.addresses_parsed, 2U); // 0 and 10
    EXPECT_EQ(read.lines_together, 0x30U - 3);
}

TEST_F(FastMifLinesAmount, AfterAJumpTwoAddressesAreParsed) {
    for (unsigned first = 0x100; first < 0x110; ++first) {
        const auto read = read_all(lines_with("5A", first, first + 100));
        EXPECT_EQ(read.addresses_parsed, 2U) << first;
        EXPECT_EQ(read.lines_together, 97U) << first;
    }
}

TEST_F(FastMifLinesAmount, After32LinesOneByOneLinesAreReadTogetherAgain) {
    for (unsigned place = 2; place < 0x32; ++place) {
        SCOPED_TRACE(place);
        const auto read_with = [&](const std::string& value) {
            return read_all(lines_with("5A", 0, place) + lines_with(value, place, place + 1) +
                            lines_with("5A", place + 1, 200));
        };
        // Lines whose address differs in the last digit only are read together, up to 9 and up to F.
        const bool begins_such_lines = place == 2 || place % 16 == 0 || place % 16 == 10;
        const unsigned together = 200 - 2 - 32 - (begins_such_lines ? 1 : 0);

        const auto with_other_value = read_with("XX");
        EXPECT_EQ(with_other_value.addresses_parsed, 2U);
        EXPECT_EQ(with_other_value.lines_together, together);
        const auto with_comment = read_with("5A; -- comment");
        EXPECT_EQ(with_comment.addresses_parsed, 1U);
        EXPECT_EQ(with_comment.lines_together, together);
    }
}

TEST_F(FastMifLinesAmount, NoAddressIsParsedAfterTheFirstOne) {
    for (const char* ending : {";", " ;", "; ", ";\t\r", ";\r", "; -- comment", ";--\r"}) {
        for (const char* value : {"5A", "5a", "-5", "1 -2 a3 FF", "5\t\t-6  7 8"}) {
            std::string lines;
            const unsigned count = std::string_view(value).size() == 2 ? 1 : 4;
            for (unsigned address = 0; address < 160; address += count) {
                lines += kvr_test::number_text(address, 16, 3) + " : " + value + ending + "\n";
            }
            EXPECT_EQ(read_all(lines).addresses_parsed, 1U) << value << ending;
        }
    }
}

TEST_F(FastMifLinesAmount, TheNextReadGoesOnAsTheLastOne) {
    kvr::fast_mif_lines reader(memory, longest_line);
    read_all(reader, lines_with("5A", 0, 40));
    const auto read = read_all(reader, lines_with("5A", 40, 80));
    EXPECT_EQ(read.addresses_parsed, 0U);
    EXPECT_EQ(read.lines_together, 40U);
}

TEST_F(FastMifLinesAmount, AfterTheDepthLinesAreReadTogetherAgain) {
    memory.resize_words(50);
    kvr::fast_mif_lines reader(memory, longest_line);
    EXPECT_EQ(reader.read(lines_with("5A", 0, 100), true).lines, 50U);
    memory.address_set.clear();
    const auto read = read_all(reader, lines_with("5A", 0, 50));
    EXPECT_EQ(read.addresses_parsed, 2U);
    EXPECT_EQ(read.lines_together, 48U);
}

TEST_F(FastMifLinesAmount, TheAddressesInTheLast64CharactersAreParsed) {
    for (unsigned count = 20; count < 40; ++count) {
        const std::string lines = lines_with("5A", 0, count);
        const auto read = kvr::fast_mif_lines(memory, longest_line).read(lines, true);
        EXPECT_EQ(read.bytes, lines.size());
        EXPECT_EQ(read.addresses_parsed, 1U + 7) << count; // a line has ten characters
        EXPECT_EQ(read.lines_together, count - 2 - 7) << count;
        memory.address_set.clear();
    }
}

TEST_F(FastMifLinesAmount, AddressesOfTheLongestLinesArePredicted) {
    for (const char* line_end : {"\n", "\r\n"}) {
        std::string lines;
        for (unsigned address = 0; address < 5; ++address) {
            const std::string line = kvr_test::number_text(address, 16, 3) + " : 5A; --";
            lines += line + std::string(longest_line - line.size(), '.') + line_end;
        }
        for (std::size_t after = 0; after < 64; ++after) {
            const std::string text = lines + std::string(after, '\n');
            memory.address_set.clear();
            const auto read = kvr::fast_mif_lines(memory, longest_line).read(text, true);
            EXPECT_EQ(read.lines, 5U);
            EXPECT_EQ(read.addresses_parsed, 2U) << after; // the first and the last one
        }
    }
}

TEST_F(FastMifLinesAmount, LinesAfterTheTextAreNotRead) {
    const std::string lines = "0 : 1; -- comment\n";
    memory.address_set.clear();
    const auto read = kvr::fast_mif_lines(memory, longest_line)
                          .read(std::string_view(lines + regular_lines_after).substr(0, lines.size()), true);
    EXPECT_EQ(read.bytes, lines.size());
    EXPECT_EQ(read.lines, 1U);
}

TEST_F(FastMifLinesAmount, EachCommentIsKeptOnce) {
    expect_read("0 : 1;\n1 : 2; -- a\n2 : 33;\n3 : 4 5; -- b\n5 : 6 7;\n7 : 8;\n" + regular_lines_after,
                6 + 32);
    std::deque<std::string> comments;
    memory.data_comments.copy_to(comments);
    EXPECT_EQ(comments, (std::deque<std::string>{"-- b", "-- a"}));
}

TEST_F(FastMifLinesAmount, WordsOfALineThatIsLeftAreNotSet) {
    for (const char* values : {"5", "5 6"}) {
        SCOPED_TRACE(values);
        const std::string before = "0 : 1;\n1 : 2;\n";
        memory.address_set.clear();
        memory.resize_words(0);
        memory.resize_words(4096);
        const auto read = kvr::fast_mif_lines(memory, longest_line)
                              .read(before + "2 : " + values + "; % comment\n" + regular_lines_after, true);
        EXPECT_EQ(read.bytes, before.size());
        EXPECT_EQ(memory.data_words[1], "2");
        EXPECT_NE(memory.data_words[2], "5");
        EXPECT_FALSE(memory.address_set.contains(2));
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
