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
b.mif  MIF, 5 words of 8 bits, 4 set
value (unsigned, 8 bits) over address (words), 6 characters a word

    0xAA ┤            ████████████
         │            ████████████
         │            ████████████
    0x80 ┤            ████████████
         │            ████████████
         │            ████████████
    0x60 ┤            ████████████
         │      ▁▁▁▁▁▁████████████
         │      ██████████████████
    0x40 ┤      ██████████████████
         │      ██████████████████
         │      ██████████████████
    0x20 ┤      ██████████████████
         │      ██████████████████
         │      ██████████████████
     0x0 ┤▁▁▁▁▁▁██████████████████
   words │■■■■■■■■■■■■╞═══════════······
         └──┬─────┬─────┬─────┬─────┬───
           0x0   0x1   0x2   0x3   0x4
          ▁▄█ value  ■ set
          ╞═ run of one word  · unset
)");
}

TEST(CharacterPicture, WaveformInAsciiOverAddressesOfTheBase) {
    EXPECT_EQ("\n" + draw(memory_of(8, 60, {{0, 29, {"F0", "0F"}}, {32, 47, {"00"}}}, 0x8000'0000),
                          {.is_signed = true}),
              R"(
60 words of 8 bits, addresses 0x80000000 to 0x8000003B, 46 set
value (signed, 8 bits) over address (words), 2 words a character

      15 +%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
      10 +%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
       0 +%%%%%%%%%%%%%%% ........
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
     -10 +%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
         |%%%%%%%%%%%%%%%
     -16 +%%%%%%%%%%%%%%%
   words |@@@@@@@@@@@@@@@~[=======~~~~~~
         ++----------------------------+
      0x80000000              0x8000003B
          .:# value  % least to greatest
          @ set  [= run of one word
          ~ unset
)");
}

TEST(CharacterPicture, BitMap) {
    EXPECT_EQ("\n" + draw(memory_of(68, 5,
                                    {{0,
                                      3,
                                      {"FFFFFFFFF00000000", "XXXXXXXXXXXXXXXXX", "00000000000000001",
                                       "00000000000000001"}}})),
              R"(
5 words of 68 bits, 4 set
bit position, 1 byte a row over address (words), 6 characters a word

      67 +######xxxxxx            ~~~~~~
         |######xxxxxx            ~~~~~~
         |######xxxxxx            ~~~~~~
         |######xxxxxx            ~~~~~~
      32 +######xxxxxx            ~~~~~~
         |      xxxxxx            ~~~~~~
         |      xxxxxx            ~~~~~~
         |      xxxxxx            ~~~~~~
       0 +      xxxxxx::::::::::::~~~~~~
   words |@@@@@@xxxxxx[===========~~~~~~
         +--+-----+-----+-----+-----+---
           0x0   0x1   0x2   0x3   0x4
          ' ' no ones  :*% some  # all
          @ set  [= run of one word
          x don't care  ~ unset
)");
}

TEST(CharacterPicture, EachNoteHasALineOfItsOwn) {
    EXPECT_EQ(lines_of(draw(memory_of(8, 1000, {{0, 9, {"01"}}}))).at(2),
              "1 break leaves out 989 unset words");
}

TEST(CharacterPicture, LongNameLeavesRoomForTheTitle) {
    const std::string name(100, 'n');
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = name})).front(),
              "nnnnnnnnn...nnnnnnnn  4 words of 8 bits, none set");
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = name}, true)).front(),
              "nnnnnnnnnn…nnnnnnnnn  4 words of 8 bits, none set");
    EXPECT_EQ(lines_of(draw(memory_of(8, 4, {}), {.name = "\xC3\xA4"})).front(),
              "?  4 words of 8 bits, none set");
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
    EXPECT_TRUE(is_painted(character_style::plain, "  3 words of 1 bit, 2 set"));
    EXPECT_TRUE(is_painted(character_style::faint, "     0x1 +"));
    EXPECT_TRUE(is_painted(character_style::value, "####################"));
    EXPECT_TRUE(is_painted(character_style::same, "[==================="));
    EXPECT_TRUE(is_painted(character_style::faint, "~~~~~~~~~~"));
    // The legend.
    EXPECT_TRUE(is_painted(character_style::value, ".:#"));
    EXPECT_TRUE(is_painted(character_style::same, "[="));
    EXPECT_TRUE(is_painted(character_style::faint, "~"));
}

TEST(CharacterPicture, StretchesAreSideBySideWithBreaksBetweenThem) {
    EXPECT_EQ("\n" + draw(memory_of(8, 1000, {{0, 3, {"10", "20", "30", "40"}}, {500, 503, {"40", "XX"}}}),
                          {.rows = 4}),
              R"(
1000 words of 8 bits, 8 set
value (unsigned, 8 bits) over address (words)
2 breaks leave out 991 unset words

    0x40 +      ##  / ##xx##xx  /
         |  ..####  / ##xx##xx  /
         |..######  / ##xx##xx  /
     0x0 +########  / ##xx##xx  /
   words |@@@@@@@@  / @@xx@@xx  / ~~~~~~
         ++-----+---/-+-----+---/---+---
          0x000       0x1F4       0x3E7
              0x003       0x1F7
          .:# value  @ set  x don't care
          ~ unset  / left out
)");
}

TEST(CharacterPicture, LegendHasWhatOccursAndFitsTheScreen) {
    const memory_image image = memory_of(
        64, 2000, {{0, 199, {"0000000000000001", "8000000000000000"}}, {300, 330, {"XXXXXXXXXXXXXXXX"}}});
    const std::string drawn = draw(image, {.is_signed = true, .rows = 4});
    for (const std::string& line : lines_of(drawn)) {
        EXPECT_LE(line.size(), 80) << line;
    }
    EXPECT_NE(drawn.find("% least to greatest\n"), std::string::npos) << drawn;
    EXPECT_NE(drawn.find("/ left out"), std::string::npos) << drawn;
    EXPECT_NE(drawn.find("x don't care"), std::string::npos) << drawn;
    EXPECT_EQ(drawn.find("run of one word"), std::string::npos) << drawn;
}

} // namespace
