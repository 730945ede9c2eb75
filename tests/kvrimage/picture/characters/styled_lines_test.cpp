#include "kvrimage/picture/characters/styled_lines.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;
using characters::styled_lines;

std::string in_brackets(character_style style, std::string_view text) {
    return "<" + std::to_string(static_cast<int>(style)) + ":" + std::string(text) + ">";
}

TEST(StyledLines, NeighboursOfOneStyleAreColouredTogether) {
    const styled_lines::painter paint = in_brackets;
    styled_lines lines(paint);
    lines.add(character_style::name, "a");
    lines.add(character_style::name, "b");
    lines.add(character_style::faint, "c");
    lines.end_line();
    lines.add_line(character_style::faint, "d");
    EXPECT_EQ(lines.take(), "<1:ab><2:c>\n<2:d>\n");
}

TEST(StyledLines, LinesEndWithoutBlanksAndEmptyTextsAreNotColoured) {
    const styled_lines::painter paint = in_brackets;
    styled_lines lines(paint);
    lines.add(character_style::name, "a  ");
    lines.end_line();
    lines.add(character_style::name, "a");
    lines.add(character_style::faint, "  ");
    lines.end_line();
    EXPECT_EQ(lines.take(), "<1:a>\n<1:a>\n");
}

TEST(StyledLines, WithoutColoursBlanksOfAllStylesAreDropped) {
    const styled_lines::painter none;
    styled_lines lines(none);
    lines.add(character_style::name, "a ");
    lines.add(character_style::faint, "  ");
    lines.end_line();
    EXPECT_EQ(lines.take(), "a\n");
}

} // namespace
