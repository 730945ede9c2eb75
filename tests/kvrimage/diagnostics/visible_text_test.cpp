#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/diagnostics/visible_text.h"

#include <gtest/gtest.h>

#include <random>

namespace {

using namespace kvrimage;

TEST(VisibleText, EscapesWhatATerminalMayNotShow) {
    EXPECT_EQ(make_visible(std::string_view("a\tb\0\x1B\xFF\r", 7)).text, "a b\\x00\\x1B\\xFF\\x0D");
    EXPECT_EQ(make_visible("\xE2\x80\xAE").text, "\\xE2\\x80\\xAE");
}

TEST(VisibleText, CountsColumns) {
    EXPECT_EQ(make_visible("").columns, 0U);
    EXPECT_EQ(make_visible("a\tb").columns, 3U);
    EXPECT_EQ(make_visible("\x01").columns, 4U);
    EXPECT_EQ(make_visible("\xC3\xA9").columns, 1U);
    EXPECT_EQ(make_visible("\xE6\xBC\xA2\xE5\xAD\x97").columns, 4U);
    EXPECT_EQ(make_visible("e\xCC\x81").columns, 1U);
    EXPECT_EQ(make_visible("\xC2\x85").columns, 8U);
}

TEST(VisibleText, IsCutForAMessage) {
    const std::string forty(40, 'x');
    EXPECT_EQ(visible(forty), forty);
    EXPECT_EQ(visible(forty + "y"), forty + "...");
    EXPECT_EQ(visible(std::string(39, 'x') + "\xC3\xA9"), std::string(39, 'x') + "...");
}

struct shown_excerpt {
    std::string line;
    std::string marks;
};

shown_excerpt excerpt_of(std::string_view line, std::size_t column, std::size_t length) {
    const source_excerpt made = make_excerpt(line, column, length);
    return {made.line, made.blanks + made.mark};
}

TEST(SourceExcerpt, MarksTheBytesOfAShortLine) {
    const shown_excerpt shown = excerpt_of("\t0 : 1FF;", 6, 3);
    EXPECT_EQ(shown.line, " 0 : 1FF;");
    EXPECT_EQ(shown.marks, "     ^~~");
}

TEST(SourceExcerpt, MarksAPlaceWithoutLengthOnce) {
    EXPECT_EQ(excerpt_of("0 : 1", 3, 0).marks, "  ^");
}

TEST(SourceExcerpt, MarksTheEndOfALine) {
    EXPECT_EQ(excerpt_of("0 : 1", 6, 1).marks, "     ^");
    EXPECT_EQ(excerpt_of("0 : 1", 99, 9).marks, "     ^");
    EXPECT_EQ(excerpt_of("", 1, 1).marks, "^");
}

TEST(SourceExcerpt, MarksNoMoreThanTheLine) {
    EXPECT_EQ(excerpt_of("0 : 1", 5, 100).marks, "    ^");
    EXPECT_EQ(excerpt_of("0 : 1", 1, ~std::size_t{0}).marks, "^~~~~");
}

TEST(SourceExcerpt, MarksTwoColumnsOfAWideCharacter) {
    const shown_excerpt shown = excerpt_of("\xE6\xBC\xA2 \xF0\x9F\x98\x80;", 5, 4);
    EXPECT_EQ(shown.marks, "   ^~");
}

TEST(SourceExcerpt, MarksAnEscapeInFull) {
    const shown_excerpt shown = excerpt_of("a\xFF;", 2, 1);
    EXPECT_EQ(shown.line, "a\\xFF;");
    EXPECT_EQ(shown.marks, " ^~~~");
}

TEST(SourceExcerpt, ShowsTheFrontOfALongLine) {
    const shown_excerpt shown = excerpt_of(std::string(100, 'x'), 3, 2);
    EXPECT_EQ(shown.line, std::string(72, 'x') + "...");
    EXPECT_EQ(shown.marks, "  ^~");
}

TEST(SourceExcerpt, ShowsTheEndOfALongLine) {
    const shown_excerpt shown = excerpt_of(std::string(99, 'x') + "y", 100, 1);
    EXPECT_EQ(shown.line, "..." + std::string(71, 'x') + "y");
    EXPECT_EQ(shown.marks, std::string(74, ' ') + "^");
}

TEST(SourceExcerpt, ShowsTheMiddleOfALongLine) {
    const std::string line = std::string(500, 'a') + "bcd" + std::string(500, 'e');
    const shown_excerpt shown = excerpt_of(line, 501, 3);
    EXPECT_EQ(shown.line, "..." + std::string(24, 'a') + "bcd" + std::string(45, 'e') + "...");
    EXPECT_EQ(shown.marks, std::string(27, ' ') + "^~~");
}

TEST(SourceExcerpt, ShowsAPlaceFarFromBothEnds) {
    const std::string line = std::string(2000, 'a') + "b" + std::string(2000, 'c');
    EXPECT_EQ(excerpt_of(line, 2001, 1).line,
              "..." + std::string(24, 'a') + "b" + std::string(47, 'c') + "...");
}

TEST(SourceExcerpt, OmitsEvenOneByteOfALongLine) {
    const std::string seventy_two(72, 'x');
    EXPECT_EQ(excerpt_of(seventy_two, 72, 1).line, seventy_two);
    EXPECT_EQ(excerpt_of("x" + seventy_two, 73, 1).line, "..." + seventy_two);
    EXPECT_EQ(excerpt_of(seventy_two + "x", 1, 1).line, seventy_two + "...");
}

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int time = 0; time < times; ++time) {
        all += text;
    }
    return all;
}

TEST(SourceExcerpt, BeginsWithAWholeCharacter) {
    const std::string_view letter = "\xC3\xA9";
    const shown_excerpt shown = excerpt_of(repeated(letter, 200), 201, 2);
    EXPECT_EQ(shown.line, "..." + repeated(letter, 72) + "...");
    EXPECT_EQ(shown.marks, std::string(27, ' ') + "^");
}

TEST(SourceExcerpt, FitsAWindowOfWideCharacters) {
    const shown_excerpt shown = excerpt_of(repeated("\xE6\xBC\xA2", 200), 301, 3);
    EXPECT_EQ(make_visible(shown.line).columns, 72U + 6U);
    EXPECT_EQ(shown.marks, std::string(27, ' ') + "^~");
}

TEST(SourceExcerpt, IsBoundedWhereNoCharacterHasAWidth) {
    const std::string line = repeated("\xCC\x81", 100000);
    const std::string shown = repeated("\xCC\x81", 512);
    EXPECT_EQ(excerpt_of(line, 1, 2).line, shown + "...");
    EXPECT_EQ(excerpt_of(line, 100001, 2).line, "..." + shown + "...");
    EXPECT_EQ(excerpt_of(line, 200001, 2).line, "..." + shown);
}

TEST(SourceExcerpt, OfAnyBytesIsShortAndValid) {
    std::mt19937 random(7);
    const std::string_view pieces[] = {"0",        " ",   "\t", "\x80", "\xC3", "\xC3\xA9", "\xE6\xBC\xA2",
                                       "\xCC\x81", "\x01"};
    for (int round = 0; round < 2000; ++round) {
        std::string line;
        for (std::size_t count = random() % 200; count != 0; --count) {
            line += pieces[random() % std::size(pieces)];
        }
        const source_excerpt made = make_excerpt(line, random() % (line.size() + 3) + 1, random() % 20);
        // A cut character is shown as its bytes, four columns each.
        ASSERT_LE(make_visible(made.line).columns, 72U + 6U + 24U);
        ASSERT_LE(made.blanks.size() + made.mark.size(), make_visible(made.line).columns + 1);
        for (std::string_view rest = made.line; !rest.empty();) {
            const utf8_character next = first_character(rest);
            ASSERT_TRUE(next.is_shown);
            rest.remove_prefix(next.bytes.size());
        }
    }
}

} // namespace
