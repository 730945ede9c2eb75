#include "kvrimage/picture/picture.h"
#include "tests/kvrimage/picture/drawn_memory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

std::string draw(const memory_image& image, const picture_options& options = {}, bool has_blocks = false) {
    return draw_in_characters(image, options, {.columns = least_screen_columns, .has_blocks = has_blocks});
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

TEST(CharacterPicture, WaveformInBlocks) {
    EXPECT_EQ("\n" + draw(memory_of(8, 5, {{0, 3, {"00", "55", "AA", "AA"}}}),
                          {.name = "a/b.mif", .format_title = "MIF"}, true),
              R"(
b.mif  MIF, 5 words of 8 bits
value (unsigned, 8 bits) over address (words), 6 characters a word

     170 ┤            ████████████
         │            ████████████
         │            ████████████
         │            ████████████
         │            ████████████
         │            ████████████
     100 ┤            ████████████
         │      ▁▁▁▁▁▁████████████
         │      ██████████████████
         │      ██████████████████
         │      ██████████████████
      50 ┤      ██████████████████
         │      ██████████████████
         │      ██████████████████
         │      ██████████████████
       0 ┤▁▁▁▁▁▁██████████████████
   words │████████████┣━━━━━━━━━━━······
         └──┬─────┬─────┬─────┬─────┬───
           0x0   0x1   0x2   0x3   0x4
          █ set  ┣━ run of one word  ▒ partly set  · unset
)");
}

TEST(CharacterPicture, WaveformInAsciiOverAddressesOfTheBase) {
    EXPECT_EQ("\n" + draw(memory_of(8, 60, {{0, 29, {"F0", "0F"}}, {32, 47, {"00"}}}, 0x8000'0000),
                          {.is_signed = true}),
              R"(
60 words of 8 bits, addresses 0x80000000 to 0x8000003B
value (signed, 8 bits) over address (words), 2 words a character

      15 +|||||||||||||||
         ||||||||||||||||
      10 +|||||||||||||||
         ||||||||||||||||
         ||||||||||||||||
         ||||||||||||||||
         ||||||||||||||||
       0 +||||||||||||||| ........
         |||||||||||||||| ########
         |||||||||||||||| ########
         |||||||||||||||| ########
         |||||||||||||||| ########
     -10 +||||||||||||||| ########
         |||||||||||||||| ########
         |||||||||||||||| ########
     -16 +||||||||||||||| ########
   words |###############.[=======......
         ++---------------+-------------
      0x80000000      0x80000020
          # set  [= run of one word  + partly set  . unset
)");
}

TEST(CharacterPicture, BitMap) {
    EXPECT_EQ("\n" + draw(memory_of(68, 5,
                                    {{0,
                                      3,
                                      {"FFFFFFFFF00000000", "XXXXXXXXXXXXXXXXX", "00000000000000001",
                                       "00000000000000001"}}})),
              R"(
5 words of 68 bits
bit position over address (words), 6 characters a word

      67 +######xxxxxx            ......
         |######xxxxxx            ......
         |######xxxxxx            ......
         |######xxxxxx            ......
      48 +######xxxxxx            ......
         |######xxxxxx            ......
         |######xxxxxx            ......
         |######xxxxxx            ......
      32 +++++++xxxxxx            ......
         |      xxxxxx            ......
         |      xxxxxx            ......
         |      xxxxxx            ......
      16 +      xxxxxx            ......
         |      xxxxxx            ......
         |      xxxxxx            ......
       0 +      xxxxxx------------......
   words |############[===========......
         +--+-----+-----+-----+-----+---
           0x0   0x1   0x2   0x3   0x4
          # set  [= run of one word  + partly set  . unset
          ones: ' ' none  -+* some  # all   x don't care
)");
}

TEST(CharacterPicture, NoteHasALineOfItsOwn) {
    EXPECT_THAT(lines_of(draw(memory_of(1, 1, {}))).at(2), "no word is set");
}

TEST(CharacterPicture, LongNameLeavesRoomForTheTitle) {
    const std::string name(100, 'n');
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = name})).front(),
              "nnnnnnnnn...nnnnnnnnn  4 words of 8 bits");
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = name}, true)).front(),
              "nnnnnnnnnn…nnnnnnnnnn  4 words of 8 bits");
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = "\xC3\xA4"})).front(), "?  4 words of 8 bits");
}

TEST(CharacterPicture, LinesFitTheScreen) {
    for (const std::uint32_t columns : {40U, 41U, 80U, 333U}) {
        for (const std::uint64_t depth : {1U, 19U, 20U, 21U, 1000U}) {
            const auto lines = lines_of(draw_in_characters(
                memory_of(64, depth, {{0, depth - 1, {"8000000000000000"}}}, 0xFFFF'FFFF'FFFF'0000),
                {.is_signed = true}, {.columns = columns}));
            for (std::size_t line = 3; line + 1 < lines.size(); ++line) { // without titles and legend
                EXPECT_LE(lines[line].size(), columns) << lines[line];
            }
        }
    }
}

TEST(CharacterPicture, PiecesAreColouredByWhatTheyShow) {
    std::vector<std::pair<character_style, std::string>> painted;
    const character_screen screen{40, false, [&](character_style style, std::string_view text) {
                                      painted.emplace_back(style, text);
                                      return std::string(text);
                                  }};
    const memory_image image = memory_of(1, 3, {{0, 1, {"1"}}});
    EXPECT_EQ(draw_in_characters(image, {.name = "n"}, screen), draw(image, {.name = "n"}));
    const auto is_painted = [&](character_style style, const std::string& text) {
        return std::ranges::count(painted, std::pair(style, text)) != 0;
    };
    EXPECT_TRUE(is_painted(character_style::name, "n"));
    EXPECT_TRUE(is_painted(character_style::plain, "  3 words of 1 bit"));
    EXPECT_TRUE(is_painted(character_style::faint, "       1 +"));
    EXPECT_TRUE(is_painted(character_style::value, "####################"));
    EXPECT_TRUE(is_painted(character_style::same, "[==================="));
    EXPECT_TRUE(is_painted(character_style::faint, ".........."));
    EXPECT_TRUE(is_painted(character_style::partly_set, "+"));
    EXPECT_TRUE(is_painted(character_style::set, "#"));
}

} // namespace
