#include "kvr/util/letter_case.h"
#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/random_images.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <optional>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

constexpr std::string_view mif_head = "WIDTH=8;\nDEPTH=64;\n";

read_options options_of(std::string_view name, std::optional<std::uint32_t> width = {}) {
    read_options options;
    options.as = format_of_name(name);
    options.width = width;
    return options;
}

/// The layout of @p contents, or the messages of the refusal.
std::string layout_of_file(const std::string& contents, const read_options& options = options_of("mif")) {
    const formatted_text result = format_text(contents, options);
    std::string messages;
    for (const diagnostic& each : result.diagnostics) {
        EXPECT_EQ(about(each.id).level, diagnostic_class::broken);
        messages += each.message + "\n";
    }
    EXPECT_TRUE(messages.empty() || result.text.empty());
    return messages + result.text;
}

/// The layout of the statements @p lines, without the text around them.
std::string layout_of_statements(const std::string& lines) {
    const std::string head = std::string(mif_head) + "\nCONTENT BEGIN\n";
    const std::string text = layout_of_file(head + lines + "END;\n");
    EXPECT_TRUE(text.starts_with(head) && text.ends_with("END;\n")) << text;
    return text.substr(head.size(), text.size() - head.size() - std::string_view("END;\n").size());
}

TEST(FormatText, OfABrokenFileIsRefused) {
    EXPECT_EQ(layout_of_file(std::string(mif_head) + "CONTENT BEGIN\n0 : 1FF;\n1 : 2, 3;\nEND;\n"),
              "value 1FF needs 9 bits, the words have 8\n");
}

TEST(FormatText, OfAFormatWithoutRulesThrows) {
    EXPECT_THROW(static_cast<void>(format_text("\x01\x02", options_of("binary"))), std::invalid_argument);
}

/// MIF with @p rules as its layout rules.
format mif_with_rules(decltype(format::lay_out) rules) {
    format changed = *format_of_name("mif");
    changed.lay_out = rules;
    return changed;
}

TEST(FormatText, OfRulesThatChangeWordsThrows) {
    const std::string text = std::string(mif_head) + "CONTENT BEGIN\n0 : 1;\nEND;\n";
    for (const format& wrong : {mif_with_rules([](std::string_view contents, const read_options& /*options*/,
                                                  const read_result& /*ours*/) {
                                    return std::string(contents).replace(contents.find("1;"), 1, "2");
                                }),
                                mif_with_rules([](std::string_view contents, const read_options& /*options*/,
                                                  const read_result& /*ours*/) {
                                    return std::string(contents).replace(contents.find("1;"), 2, "1");
                                })}) {
        read_options options;
        options.as = &wrong;
        EXPECT_THROW(static_cast<void>(format_text(text, options)), std::logic_error);
    }
}

TEST(FormatText, MifSettingsHaveALineEach) {
    EXPECT_EQ(
        layout_of_file("width = 08; -- a\ndepth=2; data_radix=hex;\n% b %\n\n\nContent -- c\nbegin\n\n"
                       "-- d\n0:1;\n\nend -- e\n ; -- f\n g \n\n"),
        "WIDTH=08;  -- a\nDEPTH=2;\nDATA_RADIX=HEX;\n% b %\n\nCONTENT BEGIN  -- c\n\t-- d\n\t0  :   01;\n"
        "END;  -- e -- f\n g\n");
}

TEST(FormatText, MifCommentsInASettingFollowIt) {
    EXPECT_EQ(layout_of_file("WIDTH -- a\n= 8 -- b\n; -- c\nDEPTH=2;\nCONTENT BEGIN\n0:1;\nEND;\n"),
              "WIDTH=8;  -- a\n-- b\n-- c\nDEPTH=2;\n\nCONTENT BEGIN\n\t0  :   01;\nEND;\n");
}

TEST(FormatText, MifCommentsBeforeTheContentStayWithIt) {
    EXPECT_EQ(
        layout_of_file("WIDTH=8;\nDEPTH=2; -- words\n\n-- a\n\n-- b\n-- c\nCONTENT BEGIN\n0:1;\nEND;\n"),
        "WIDTH=8;\nDEPTH=2;  -- words\n\n-- a\n\n-- b\n-- c\nCONTENT BEGIN\n\t0  :   01;\nEND;\n");
}

TEST(FormatText, MifAddressesHaveTheDigitsOfTheLast) {
    EXPECT_EQ(layout_of_statements("0:1;\n[1..1f] : 2 3;\n3f : x;\n"),
              "\t00  :   01;\n\t[01..1f]  :   02 03;\n\t3f  :   X;\n");
    EXPECT_EQ(layout_of_file("WIDTH=8;\nDEPTH=11;\nADDRESS_RADIX=DEC;\nDATA_RADIX=DEC;\nCONTENT BEGIN\n"
                             "03:-05;\n[8..10]:7;\nEND;\n"),
              "WIDTH=8;\nDEPTH=11;\nADDRESS_RADIX=DEC;\nDATA_RADIX=DEC;\n\nCONTENT BEGIN\n"
              "\t3   :   -5;\n\t[8..10]  :   7;\nEND;\n");
    read_options from_base = options_of("mif");
    from_base.base = 0x10;
    EXPECT_EQ(layout_of_file("WIDTH=8;\nDEPTH=32;\nCONTENT BEGIN\n10 : 1;\n1a : 2;\nEND;\n", from_base),
              "WIDTH=8;\nDEPTH=32;\n\nCONTENT BEGIN\n\t10  :   01;\n\t1a  :   02;\nEND;\n");
}

TEST(FormatText, MifCommentsInAStatementStayInOrder) {
    EXPECT_EQ(layout_of_statements("% a % 0 % b % : % c % 1 % d % 2 % e % ; % f %\n"),
              "\t% a %\n\t00  :   01 02;  % b % % c % % d % % e % % f %\n");
    EXPECT_EQ(layout_of_statements("0 -- a\n: -- b\n1 -- c\n -- d\n 2 3\n; -- e\n"),
              "\t-- a\n\t-- b\n\t00  :   01  -- c\n\t-- d\n\t        02 03;  -- e\n");
}

TEST(FormatText, MifCommentsBeforeTheFirstValueGoToTheEndOfItsLine) {
    EXPECT_EQ(layout_of_statements("0 :\n% a % 4;\n1 : 2;\n"), "\t00  :   04;  % a %\n\t01  :   02;\n");
    EXPECT_EQ(layout_of_statements("0 : -- a\n% b % 4;\n"), "\t-- a\n\t00  :   04;  % b %\n");
    EXPECT_EQ(layout_of_statements("0 :\n\n% a % 4 5;\n"), "\t00  :   04 05;  % a %\n");
}

TEST(FormatText, MifCommentBetweenContentAndBeginHasNoBlankLineBefore) {
    const std::string layout = std::string(mif_head) + "\nCONTENT BEGIN\n\t-- a\n\t00  :   01;\nEND;\n";
    EXPECT_EQ(layout_of_file(std::string(mif_head) + "CONTENT\n\n-- a\nBEGIN\n0 : 1;\nEND;"), layout);
    EXPECT_EQ(layout_of_file(layout), layout);
}

TEST(FormatText, MifCommentBetweenContentAndBeginOnTheLineOfASettingGoesAfterThem) {
    EXPECT_EQ(layout_of_file("WIDTH=8;\nDEPTH=4; CONTENT % a % BEGIN\n0 : 1;\nEND;\n"),
              "WIDTH=8;\nDEPTH=4;\n\nCONTENT BEGIN  % a %\n\t0  :   01;\nEND;\n");
}

TEST(FormatText, MifCommentThatIsNothingButItsMarkGoesToTheEndOfItsLine) {
    EXPECT_EQ(layout_of_statements("0 : 1; %\n1 : 2; % a %\n"), "\t00  :   01;  %\n\t01  :   02;  % a %\n");
}

TEST(FormatText, MifCommentsOfLinesBetweenContentAndBeginGoBeforeThem) {
    const std::string text = "WIDTH=8;\nDEPTH=4;\nCONTENT -- a\n% b %\n%\nx\n% -- c\nBEGIN\n0 : 1;\nEND;\n";
    const std::string layout = layout_of_file(text);
    EXPECT_EQ(layout,
              "WIDTH=8;\nDEPTH=4;\n\n-- a\n% b %\n%\nx\n%\nCONTENT BEGIN\n\t-- c\n\t0  :   01;\nEND;\n");
    EXPECT_EQ(layout_of_file(layout), layout);
    for (const std::string& each : {text, layout}) {
        for (const diagnostic& found : check(each, {options_of("mif")}).diagnostics) {
            EXPECT_NE(found.id, diagnostic_id::comment_of_lines) << each;
        }
    }
}

TEST(FormatText, MifCommentWithoutRoomIsIndentedAsItWillBeRead) {
    const std::string head = "WIDTH=3000;\nDEPTH=4;\n\nCONTENT BEGIN\n";
    const std::string digits(502, '1');
    const std::string layout = layout_of_file(head + "0 : 1\n " + digits + "; -- c\nEND;\n");
    EXPECT_EQ(layout, head + "\t0  :   1\n\t-- c\n\t       " + digits + ";\nEND;\n");
    EXPECT_EQ(layout_of_file(layout), layout);
}

TEST(FormatText, MifLinesOfLongWordsAreNotTooLong) {
    const std::string head = "WIDTH=3000;\nDEPTH=4;\n\nCONTENT BEGIN\n";
    const std::string digits(506, '1');
    const std::string layout = layout_of_file(head + "0 : 1\n" + digits + ";\n1:" + digits + ";\nEND;\n");
    EXPECT_EQ(layout, head + "\t0  :   1\n\t   " + digits + ";\n\t1:" + digits + ";\nEND;\n");
    EXPECT_EQ(layout_of_file(layout), layout);
}

TEST(FormatText, MifDotsForWordsThatAreLeftOutStay) {
    EXPECT_EQ(layout_of_statements("0 : 1;\n...\n5 : 1;\n"), "\t00  :   01;\n\t...\n\t05  :   01;\n");
}

TEST(FormatText, MifWithoutContentBeginGetsNone) {
    read_options options = options_of("mif", 8);
    options.depth = 4;
    EXPECT_EQ(layout_of_file("0:1;\n1:2; -- a\n", options), "\t0  :   01;\n\t1  :   02;  -- a\n");
}

TEST(FormatText, MifWordsTooLongForALineKeepTheirLength) {
    EXPECT_EQ(layout_of_file("WIDTH=600;\nDEPTH=2;\nDATA_RADIX=BIN;\nCONTENT BEGIN\n0:01;\nEND;\n"),
              "WIDTH=600;\nDEPTH=2;\nDATA_RADIX=BIN;\n\nCONTENT BEGIN\n\t0  :   01;\nEND;\n");
}

TEST(FormatText, MarkOfUtf8Stays) {
    EXPECT_TRUE(layout_of_file("\xEF\xBB\xBFWIDTH=8;\nDEPTH=2;\nCONTENT BEGIN\n0:1;\nEND;\n")
                    .starts_with("\xEF\xBB\xBFWIDTH=8;\n"));
    EXPECT_EQ(layout_of_file("\xEF\xBB\xBF"
                             "1 2\n",
                             options_of("readmemh")),
              "\xEF\xBB\xBF"
              "1 2\n");
}

TEST(FormatText, ListsHaveOneBlankBetweenWords) {
    EXPECT_EQ(layout_of_file("/* a */ 1  2 // b\n@f0 3 /* c */ 44\n", options_of("readmemh")),
              "/* a */\n01 02      // b\n@F0 03 44  /* c */\n");
    EXPECT_EQ(layout_of_file("@8 1\t10\r\n\r\n\r\n@10 11\r\n", options_of("readmemb")),
              "@08 01 10\r\n\r\n@10 11\r\n");
}

TEST(FormatText, RifIsAsTheLibraryKvrWritesIt) {
    EXPECT_EQ(layout_of_file("@0\n1  2 \n\n\n@1f\nab\n", options_of("rif")), "@0\n01 02 \n\n@1f\nAB \n");
}

TEST(FormatText, HexAndSrecChangeTheirLetterCase) {
    EXPECT_EQ(layout_of_file("note a\n:010000000af5\n:00000001ff", options_of("hex", 8)),
              "note a\n:010000000AF5\n:00000001FF");
    EXPECT_EQ(layout_of_file("S1050000abcd82\r\nS9030000fc\r\n", options_of("srec")),
              "S1050000ABCD82\r\nS9030000FC\r\n");
}

/// The formats that have layout rules.
std::vector<const format*> formats_with_a_layout() {
    std::vector<const format*> all;
    std::ranges::copy_if(formats(), std::back_inserter(all),
                         [](const format* each) { return each->lay_out != nullptr; });
    return all;
}

/// The text that write() generates for a random memory, and the options to read it again.
struct written_file {
    std::string text;
    read_options back;
};

std::optional<written_file> written_random_file(std::mt19937& random, const format& as) {
    const auto width = static_cast<std::uint32_t>(1 + random() % (random() % 8 == 0 ? 2100 : 70));
    const memory_image image =
        random_image(random, width, 60,
                     {as.holds_unset && random() % 2 == 0, as.holds_dont_care && random() % 2 == 0, false});
    const file_form form = random_form(random, as, image);
    if (!can_write(image, form.to).empty()) {
        return std::nullopt;
    }
    return written_file{to_text(image, form.to), form.back};
}

TEST(FormatText, WhatIsWrittenIsLaidOutAlready) {
    for (const format* each : formats_with_a_layout()) {
        std::mt19937 random(5);
        int written = 0;
        for (int round = 0; round < rounds(20); ++round) {
            const auto file = written_random_file(random, *each);
            if (!file) {
                continue;
            }
            ++written;
            ASSERT_EQ(layout_of_file(file->text, file->back), file->text) << each->id;
            // Without the width and depth that only the caller knows.
            const formatted_text alone = format_text(file->text, options_of(each->id));
            if (alone.diagnostics.empty()) {
                ASSERT_EQ(alone.text, file->text) << each->id;
            }
        }
        EXPECT_GT(written, rounds(20) / 4) << each->id;
    }
}

/// A text, and the same with other blanks and letters.
struct untidy_text {
    std::string tidy;
    std::string untidy;
};

/// @p written with blank lines, and another text with the same meaning: the characters of @p marks have
/// blanks around them, and letters have another case. With @p keeps_first_line, the first line does not
/// change.
untidy_text untidied(std::mt19937& random, std::string_view written, std::string_view marks,
                     bool keeps_first_line) {
    untidy_text both;
    bool is_kept = keeps_first_line;
    for (std::size_t index = 0; index < written.size(); ++index) {
        const char each = written[index];
        const bool may_change = !is_kept && random() % 3 == 0;
        if (each == '\n' && may_change && index + 1 != written.size()) {
            both.untidy += " \n  \n\n ";
            both.tidy += "\n\n";
        } else {
            const bool is_mark = may_change && marks.find(each) != std::string_view::npos;
            both.untidy += is_mark ? " " : "";
            both.untidy += may_change ? kvr::lower_case_of(each) : each;
            both.untidy += is_mark ? "  " : "";
            both.tidy += each;
        }
        is_kept = is_kept && each != '\n';
    }
    return both;
}

TEST(FormatText, OfUntidyFilesIsWhatIsWritten) {
    struct untidy_format {
        std::string_view name;
        std::string_view marks;
        bool keeps_first_line;
    };
    for (const untidy_format& each :
         {untidy_format{"titxt", " ", false}, untidy_format{"logisim", " ", true},
          untidy_format{"memheader", ":=", false}, untidy_format{"csv", ",", true},
          untidy_format{"rif", "", false}, untidy_format{"readmemh", " ", true},
          untidy_format{"coe", ",;", false}}) {
        std::mt19937 random(6);
        for (int round = 0; round < rounds(8); ++round) {
            const auto file = written_random_file(random, *format_of_name(each.name));
            if (!file) {
                continue;
            }
            const untidy_text both = untidied(random, file->text, each.marks, each.keeps_first_line);
            ASSERT_EQ(layout_of_file(both.untidy, file->back), both.tidy) << each.name << "\n" << both.untidy;
        }
    }
}

/// Parts of a MIF with random blanks, line ends and comments between them.
std::string random_mif(std::mt19937& random) {
    const auto pick = [&random](const std::vector<const char*>& of) { return of[random() % of.size()]; };
    const bool has_long_comments = random() % 4 == 0;
    const auto blank = [&] {
        return std::string(
            pick({"", " ", "\t", "  \n", "\n\n\n ", " -- c\n ", "% c % ", "\n -- d \n ", "\n% e % "}));
    };
    const auto between = [&] {
        const std::string first = blank();
        return first + (random() % 3 == 0 ? blank() : "") +
               (has_long_comments && random() % 16 == 0 ? "%\nc% " : "");
    };
    std::string text = between() + "WIDTH" + between() + "=" + between() + "8" + between() + ";";
    text += "\nDEPTH=64;" + between() +
            "\nADDRESS_RADIX=DEC;\nDATA_RADIX=" + std::string(pick({"HEX", "UNS"})) + ";" + between() +
            "\nCONTENT" + between() + "\nBEGIN" + between() + "\n";
    for (int address = 0; address < 60; address += 6) {
        const bool is_range = random() % 3 == 0;
        text += is_range ? "[" + std::to_string(address) + ".." + std::to_string(address + 5) + "]"
                         : "0" + std::to_string(address);
        text += between() + ":";
        for (auto left = 1 + random() % 3; left > 0; --left) {
            text += between() + " " + pick({"1", "0", "007", "12", "99"});
        }
        text += between() + ";" + between() + (random() % 4 != 0 ? "\n" : "");
    }
    return text + "\nEND;" + between();
}

std::vector<std::string> comments_in_mif(std::string_view text) {
    std::vector<std::string> comments;
    format_of_name("mif")->find_comments(text, [&](const span& where) {
        const std::string_view comment = where.in(text);
        comments.emplace_back(comment.substr(0, comment.find_last_not_of(' ') + 1));
    });
    return comments;
}

TEST(FormatText, OfRandomMifsKeepsWordsAndCommentsAndIsStable) {
    std::mt19937 random(7);
    int laid_out = 0;
    for (int round = 0; round < rounds(400); ++round) {
        const std::string text = random_mif(random);
        const read_result before = parse(text, options_of("mif"));
        if (!before.image) { // a comment over several lines may be ambiguous
            continue;
        }
        ++laid_out;
        const std::string layout = layout_of_file(text);
        const read_result after = parse(layout, options_of("mif"));
        ASSERT_TRUE(after.image.has_value()) << text << "\n---\n" << layout;
        ASSERT_TRUE(*after.image == *before.image) << text << "\n---\n" << layout;
        ASSERT_EQ(comments_in_mif(layout), comments_in_mif(text)) << text << "\n---\n" << layout;
        ASSERT_EQ(layout_of_file(layout), layout) << text;
    }
    EXPECT_GT(laid_out, rounds(400) / 4);
}

} // namespace

} // namespace kvrimage_tests
