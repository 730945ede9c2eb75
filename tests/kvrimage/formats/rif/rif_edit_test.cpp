#include "kvrimage/formats/rif/rif_edit.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

/// Hexadecimal @p words from @p first to @p last.
assignment to(std::uint64_t first, std::uint64_t last, const std::vector<std::string>& words,
              std::uint32_t width) {
    assignment made{{first, last}, {}};
    for (const std::string& each : words) {
        made.words.push_back(word::parse(each, radix::hex, width).value.value());
    }
    return made;
}

std::string edited(std::string_view text, const std::vector<assignment>& assignments,
                   const read_options& options) {
    const read_result ours = read_rif(text, options);
    const edit_result result = edit_rif(text, options, ours, assignments);
    EXPECT_THAT(result.diagnostics, IsEmpty());
    return with_text_edits(std::string(text), result.edits);
}

TEST(RifEdit, ReplacesAWordBeyondTheDepthThatWasRead) {
    read_options options;
    options.width = 8;
    options.depth = 2;
    options.keep_going = true;
    EXPECT_EQ(edited("01 02 03\n", {to(1, 1, {"0A"}, 8), to(2, 2, {"0B"}, 8)}, options), "01 0A 0B\n");
}

TEST(RifEdit, ReplacesTheLastWordOfAll) {
    read_options options;
    options.width = 8;
    options.keep_going = true;
    EXPECT_EQ(edited("@FFFFFFFF\n00 11 \n", {to(0xFFFFFFFF, 0xFFFFFFFF, {"0A"}, 8)}, options),
              "@FFFFFFFF\n0A 11 \n");
}

TEST(RifEdit, ReplacesTheLastWordOfAllInALongFile) {
    read_options options;
    options.width = 8;
    options.keep_going = true;
    std::string more = "@0\n";
    for (int line = 0; line < 40; ++line) {
        more += "22 33\n";
    }
    EXPECT_EQ(edited("@FFFFFFFF\n00 11\n" + more, {to(0xFFFFFFFF, 0xFFFFFFFF, {"0A"}, 8)}, options),
              "@FFFFFFFF\n0A 11\n" + more);
}

/// @p text, words of 8 bits, with one changed @p word.
std::string with_word(std::string_view text, std::uint64_t address, const std::string& word) {
    read_options options;
    options.width = 8;
    return edited(text, {to(address, address, {word}, 8)}, options);
}

TEST(RifEdit, ChangesTheDigitsOfAWordOnly) {
    EXPECT_EQ(with_word("@0\n 00  0a ff \n1\n", 1, "1F"), "@0\n 00  1f ff \n1\n");
    EXPECT_EQ(with_word("@0\n 00  0a ff \n1\n", 3, "2"), "@0\n 00  0a ff \n2\n");
}

TEST(RifEdit, ChangesTheLastWordOfAnAddress) {
    EXPECT_EQ(with_word("@0\n00 01\n@1\n02\n", 1, "03"), "@0\n00 01\n@1\n03\n");
}

TEST(RifEdit, LeavesAWordThatHasTheValueAlone) {
    EXPECT_EQ(with_word("@0\n00 1\n", 1, "01"), "@0\n00 1\n");
}

TEST(RifEdit, RegularLinesAreEditedAsOthersAre) {
    std::string regular;
    for (int line = 0; line < 40; ++line) {
        regular += line % 10 == 0 ? fmt::format("@{:x}\n", line * 8) : "";
        regular += line < 39 ? fmt::format("{:02x} 1f 2a 0c 3d 4e 5b 6a \n", line) : "77 88 \n";
    }
    std::string others = regular; // the parser reads lines with tabs
    std::ranges::replace(others, ' ', '\t');
    read_options options;
    options.width = 8;
    const std::vector<assignment> changes = {to(3, 3, {"0C"}, 8), to(9, 18, {"AB", "CD"}, 8),
                                             to(304, 304, {"E"}, 8), to(0x200, 0x200, {"F"}, 8)};
    std::string expected = edited(others, changes, options);
    std::ranges::replace(expected, '\t', ' ');
    EXPECT_EQ(edited(regular, changes, options), expected);
    EXPECT_TRUE(expected.ends_with("\n0E 1f 2a 0c 3d 4e 5b 6a \n77 88 \n@200\n0f\n")) << expected;
}

TEST(RifEdit, AddsWordsThatAreNotSetAtTheEnd) {
    read_options options;
    options.width = 8;
    EXPECT_EQ(edited("@0\n00 01\n", {to(0x1A, 0x1A, {"05"}, 8), to(4, 5, {"06", "07"}, 8)}, options),
              "@0\n00 01\n@4\n06 07\n@1a\n05\n");
}

TEST(RifEdit, AddsWordsInLinesAsLongAsTheLongest) {
    read_options options;
    options.width = 8;
    EXPECT_EQ(edited("@0\n00 01 02\n", {to(1, 6, {"09"}, 8)}, options), "@0\n00 09 09\n@3\n09 09 09\n09\n");
}

TEST(RifEdit, FollowsTheStyleOfAddresses) {
    EXPECT_EQ(with_word("@00A\n00", 0x1F, "1"), "@00A\n00\n@01F\n01");
}

TEST(RifEdit, KeepsTheLineEnds) {
    EXPECT_EQ(with_word("@A\r\n00\r\n", 1, "2"), "@A\r\n00\r\n@1\r\n02\r\n");
    EXPECT_EQ(with_word("00", 1, "2"), "00\n@1\n02");
}

TEST(RifEdit, ReplacesAWordThatCannotBeRead) {
    read_options options;
    options.width = 8;
    options.keep_going = true;
    EXPECT_EQ(edited("@0\n00 0G 2;\n", {to(1, 2, {"11"}, 8)}, options), "@0\n00 11 11\n");
    EXPECT_EQ(edited("@0\n00 111 22\n", {to(1, 1, {"11"}, 8)}, options), "@0\n00 011 22\n");
}

TEST(RifEdit, KeepsWhatIsNotInTheWay) {
    read_options options;
    options.width = 8;
    options.keep_going = true;
    EXPECT_EQ(edited("1 2 @8 3\r4\t5 // 6\n@G\n7\n", {to(9, 9, {"44"}, 8), to(8, 8, {"33"}, 8)}, options),
              "1 2 @8 33\r44\t5 // 6\n@G\n7\n");
}

TEST(RifEdit, WritesNoWordThatLooksPrefixed) {
    read_options options;
    options.width = 12;
    const std::string text = edited("abc", {to(0, 0, {"0X5"}, 12)}, options);
    EXPECT_EQ(text, "0X5");
    EXPECT_THAT(rif_diagnostics_of(text), IsEmpty());
}

TEST(RifEdit, RefusesADontCareBitBesideAPlainOne) {
    const read_result ours = read_rif("00", {});
    const assignment made{{0, 0}, {word::parse("0000000X", radix::bin, 8).value.value()}};
    EXPECT_THAT(shown(edit_rif("00", {}, ours, std::vector{made}).diagnostics),
                ElementsAre("dont-care-bit 0:0+0"));
}

TEST(RifEdit, RefusesAnAddressOfMoreThan32Bits) {
    const read_result ours = read_rif("00", {});
    const edit_result result = edit_rif("00", {}, ours, std::vector{to(0xFFFFFFFF, 0x100000000, {"1"}, 8)});
    EXPECT_THAT(shown(result.diagnostics), ElementsAre("address-outside 0:0+0"));
    EXPECT_THAT(result.edits, IsEmpty());
}

std::string random_file(std::mt19937& random) {
    std::string text;
    for (std::size_t line = 1 + random() % 12; line > 0; --line) {
        if (random() % 3 == 0) {
            text += "@" + std::to_string(random() % 40);
        } else {
            for (std::size_t left = 1 + random() % 5; left > 0; --left) {
                text += std::string(random() % 2, ' ') + "0123456789abcdefX"[random() % 17] +
                        "0123456789ABCDEFx"[random() % 17] + " ";
            }
        }
        text += random() % 6 == 0 ? "\r\n" : "\n";
    }
    return text;
}

TEST(RifEdit, MakesFilesThatHoldTheNewWords) {
    std::mt19937 random(11);
    read_options options;
    options.width = 8;
    options.depth = 128;
    for (int round = 0; round < 500; ++round) {
        const std::string text = random_file(random) + "00";
        const read_result ours = read_rif(text, options);
        ASSERT_TRUE(ours.image) << text;
        std::map<std::uint64_t, std::string> model;
        for (std::uint64_t address = 0; address < 128; ++address) {
            model[address] = ours.image->words()[address];
        }
        std::vector<assignment> assignments;
        for (std::size_t left = 1 + random() % 4; left > 0; --left) {
            const std::uint64_t first = random() % 100;
            const std::uint64_t last = first + random() % 9;
            const std::vector<std::string> words = {std::string{"0123456789ABCDEFX"[random() % 17], '5'},
                                                    "1X", "77"};
            const std::vector<std::string> some(words.begin(),
                                                words.begin() + 1 + static_cast<int>(random() % 3));
            assignments.push_back(to(first, last, some, 8));
            for (std::uint64_t address = first; address <= last; ++address) {
                model[address] = some[(address - first) % some.size()];
            }
        }
        const std::string made = with_text_edits(text, edit_rif(text, options, ours, assignments).edits);
        const read_result again = read_rif(made, options);
        ASSERT_TRUE(again.image) << made;
        for (std::uint64_t address = 0; address < 128; ++address) {
            ASSERT_EQ(again.image->words()[address], model[address]) << text << "\n->\n"
                                                                     << made << "\n"
                                                                     << address;
        }
    }
}

} // namespace
