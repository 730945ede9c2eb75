#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_reader.h"
#include "kvrimage/image/image_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

std::string mif_of(std::string_view statements, std::string_view settings = "WIDTH=8;\nDEPTH=8;\n") {
    return std::string(settings) + "CONTENT BEGIN\n" + std::string(statements) + "END;\n";
}

/// "too-wide 4:5+3", followed by "*2" if there are two places.
std::string shown_diagnostic(const diagnostic& found) {
    std::string text = std::string(about(found.id).code) + " " + std::to_string(found.where.line) + ":" +
                       std::to_string(found.where.column) + "+" + std::to_string(found.where.length);
    return found.count == 1 ? text : text + "*" + std::to_string(found.count);
}

std::vector<std::string> shown_diagnostics(const std::vector<diagnostic>& found) {
    std::vector<std::string> texts;
    std::ranges::transform(found, std::back_inserter(texts), shown_diagnostic);
    return texts;
}

std::vector<std::string> texts_of_mif(const read_result& result) {
    std::vector<std::string> texts;
    for (std::uint64_t i = 0; result.image && i < result.image->words().size(); ++i) {
        texts.emplace_back(result.image->words()[i]);
    }
    return texts;
}

read_options sizes_of(std::uint32_t width, std::uint64_t depth) {
    read_options options;
    options.width = width;
    options.depth = depth;
    return options;
}

/// A file, its only diagnostic, and the file after the certain repair ("" if there is none).
struct mif_case {
    std::string_view name;
    std::string file;
    std::string_view found;
    std::string repaired;
};
std::ostream& operator<<(std::ostream& output, const mif_case& each) {
    return output << each.name;
}

class MifFile : public testing::TestWithParam<mif_case> {};

TEST_P(MifFile, HasTheDiagnostic) {
    const mif_case& each = GetParam();
    const read_result result = read_mif(each.file, {.wants_repairs = true});
    ASSERT_THAT(shown_diagnostics(result.diagnostics), ElementsAre(std::string(each.found)));
    const diagnostic& found = result.diagnostics.front();
    EXPECT_EQ(found.fix.empty() ? "" : with_edits(each.file, found.fix), each.repaired);
    EXPECT_EQ(found.fix.empty(), found.repair.empty());
}

TEST_P(MifFile, HasTheDiagnosticWithoutTheFastPath) {
    const mif_case& each = GetParam();
    EXPECT_THAT(shown_diagnostics(read_mif(each.file, {}, mif_fast_path::unused).diagnostics),
                ElementsAre(std::string(each.found)));
}

TEST_P(MifFile, IsCleanForKvrAfterItsRepair) {
    const mif_case& each = GetParam();
    if (!each.repaired.empty()) {
        check_options options;
        options.read.as = &mif_format;
        const read_result result = check(each.repaired, options);
        for (const diagnostic& found : result.diagnostics) {
            EXPECT_EQ(about(found.id).level, diagnostic_class::suspect)
                << shown_diagnostic(found) << found.message;
        }
    }
}

const std::string usual_header = "WIDTH=8;\nDEPTH=8;\n";

std::string headed(std::string_view settings) {
    return mif_of("0 : 1;\n", settings);
}

INSTANTIATE_TEST_SUITE_P(
    Header, MifFile,
    testing::Values(
        mif_case{"mark", "\xEF\xBB\xBF" + headed(usual_header), "byte-order-mark 1:1+3",
                 headed(usual_header)},
        mif_case{"no_equals", headed("WIDTH 8;\nDEPTH=8;\n"), "missing-equals 1:1+7", headed(usual_header)},
        mif_case{"colon", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX:BIN;\n"), "missing-equals 3:1+14",
                 headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=BIN;\n")},
        mif_case{"misspelt", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADX=BIN;\n"), "unknown-header 3:1+9", ""},
        mif_case{"no_setting", headed("WIDTH=8;\nDEPTH=8;\nAUTHOR=me;\n"), "unknown-header 3:1+6", ""},
        mif_case{"text", headed("WIDTH=8;\nDEPTH=8;\nmade in May\n"), "header-text 3:1+11",
                 headed("WIDTH=8;\nDEPTH=8;\n-- made in May\n")},
        mif_case{"no_value", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=;\n"), "missing-setting-value 3:1+11",
                 ""},
        mif_case{"no_semicolon", headed("WIDTH=8\nDEPTH=8;\n"), "header-semicolon 1:8+1",
                 headed(usual_header)},
        mif_case{"two_semicolons", headed("WIDTH=8;;\nDEPTH=8;\n"), "empty-statement 1:9+1",
                 headed(usual_header)},
        mif_case{"unit", headed("WIDTH=8;\nDEPTH=4K;\n"), "header-number 2:7+2", ""},
        mif_case{"thousands", headed("WIDTH=8;\nDEPTH=4,096;\n"), "header-number 2:7+5", ""},
        mif_case{"too_deep", headed("WIDTH=8;\nDEPTH=2147483648;\n"), "header-range 2:7+10", ""},
        mif_case{"too_wide", headed("WIDTH=1048577;\nDEPTH=8;\n"), "header-range 1:7+7", ""},
        mif_case{"no_radix", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=HXE;\n"), "unknown-radix 3:12+3", ""},
        mif_case{"full_name", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=hexadecimal;\n"),
                 "radix-spelling 3:12+11", headed("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=HEX;\n")},
        mif_case{"one_line", headed("WIDTH=8;\nDEPTH=8;\nADDRESS_RADIX=UNS;DATA_RADIX=HEX;\n"),
                 "shared-line 3:19+15", headed("WIDTH=8;\nDEPTH=8;\nADDRESS_RADIX=UNS;\nDATA_RADIX=HEX;\n")},
        mif_case{"two_lines", headed("WIDTH\n= 8;\nDEPTH=8;\n"), "split-setting 1:1+5", headed(usual_header)},
        mif_case{"twice", headed("WIDTH=8;\nDEPTH=8;\nDEPTH=08;\n"), "repeated-header 3:7+2", ""},
        mif_case{"contradiction", headed("WIDTH=8;\nDEPTH=8;\nDEPTH=9;\n"), "contradicting-header 3:7+1", ""},
        mif_case{"no_width", headed("DEPTH=8;\n"), "missing-width 2:1+7", ""},
        mif_case{"no_depth", headed("WIDTH=8;\n"), "missing-depth 2:1+7", ""},
        mif_case{"no_content", usual_header + "0 : 1;\nEND;\n", "missing-content 3:1+1",
                 headed(usual_header)},
        mif_case{"begin_with_a_blank_and_no_content", usual_header + "BE GIN\n0 : 1;\nEND;\n",
                 "missing-content 3:1+6", headed(usual_header)},
        mif_case{"statements_alone", "0 : 1F; -- one\n", "missing-frame 1:1+1", ""},
        mif_case{"statements_and_an_end", "[0..7] : 1F;\nEND;\n", "missing-frame 1:1+1", ""},
        mif_case{"spelling", usual_header + "CONTENTS BEGIN\n0 : 1;\nEND;\n", "content-spelling 3:1+8",
                 headed(usual_header)},
        mif_case{"one_word", usual_header + "Content_Begin\n0 : 1;\nEND;\n", "content-spelling 3:1+13",
                 headed(usual_header)},
        mif_case{"blanks_in_both", usual_header + "CON TENT BE GIN\n0 : 1;\nEND;\n",
                 "content-spelling 3:1+15", headed(usual_header)},
        mif_case{"blanks_in_begin", usual_header + "CON TENT\nBEGIN\n0 : 1;\nEND;\n",
                 "content-spelling 3:1+8", usual_header + "CONTENT\nBEGIN\n0 : 1;\nEND;\n"},
        mif_case{"blanks_in_content", usual_header + "CONTENT\nBE GIN\n0 : 1;\nEND;\n",
                 "content-spelling 4:1+6", usual_header + "CONTENT\nBEGIN\n0 : 1;\nEND;\n"},
        mif_case{"lines_of_cr", "WIDTH=8;\rDEPTH=8;\rCONTENT BEGIN\r0 : 1;\rEND;\r",
                 "lines-of-carriage-return 1:9+1*5", headed(usual_header)},
        mif_case{"other_comment", headed("WIDTH=8; // bits\n# words\nDEPTH=8;#\n"), "mif-comment 1:10+2*3",
                 headed("WIDTH=8; -- bits\n-- words\nDEPTH=8;--\n")},
        mif_case{"semicolon", usual_header + "CONTENT BEGIN;\n0 : 1;\nEND;\n", "content-semicolon 3:14+1",
                 headed(usual_header)},
        mif_case{"no_begin", usual_header + "CONTENT\n0 : 1;\nEND;\n", "missing-begin 3:1+7",
                 headed(usual_header)},
        mif_case{"between", usual_header + "CONTENT of it\nBEGIN\n0 : 1;\nEND;\n", "before-begin 3:9+2*2",
                 ""}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    Statements, MifFile,
    testing::Values(
        mif_case{"on_the_line_of_begin", usual_header + "CONTENT BEGIN 0 : 1;\nEND;\n", "after-begin 3:15+1",
                 usual_header + "CONTENT BEGIN \n0 : 1;\nEND;\n"},
        mif_case{"no_semicolon", mif_of("0 : 1 -- one\n1 : 2;\n"), "missing-semicolon 4:6+1",
                 mif_of("0 : 1; -- one\n1 : 2;\n")},
        mif_case{"no_semicolon_before_end", mif_of("0 : 1\n"), "missing-semicolon 4:6+1", mif_of("0 : 1;\n")},
        mif_case{"no_colon", mif_of("0 1;\n"), "content-syntax 4:1+4", ""},
        mif_case{"no_value", mif_of("0 : ;\n"), "missing-value 4:1+5", ""},
        mif_case{"no_address", mif_of(" : 1;\n"), "missing-address 4:2+4", ""},
        mif_case{"muddle", mif_of("[1 2 3 4] : 1;\n"), "range-syntax 4:1+14", ""},
        mif_case{"no_bracket", mif_of("[0..3 : 0;\n"), "missing-bracket 4:1+5", mif_of("[0..3] : 0;\n")},
        mif_case{"dash", mif_of("[3-0] : 0;\n"), "range-form 4:1+5", mif_of("[0..3] : 0;\n")},
        mif_case{"no_brackets", mif_of("0..3 : 0;\n"), "range-form 4:1+4", mif_of("[0..3] : 0;\n")},
        mif_case{"one_in_brackets", mif_of("[5] : 1;\n"), "one-in-brackets 4:1+3", mif_of("5 : 1;\n")},
        mif_case{"range_of_one", mif_of("[5..5] : 1;\n"), "range-of-one 4:1+6", mif_of("5 : 1;\n")},
        mif_case{"goes_down", mif_of("[5..4] : 1;\n"), "range-order 4:2+4", ""},
        mif_case{"surplus", mif_of("[0..1] : 1 2 3 4;\n"), "surplus-values 4:14+3", ""},
        mif_case{"stray", mif_of("0 : 1 = 2;\n"), "stray-character 4:7+4", ""},
        mif_case{"comma", mif_of("0 : 1,2;\n"), "comma 4:6+1", mif_of("0 : 1 2;\n")},
        mif_case{"prefixes", mif_of("0 : 0x1F;\n0x1 : 8'h2;\n$2 : 3;\n"), "number-prefix 4:5+4*4",
                 mif_of("0 : 1F;\n1 : 2;\n2 : 3;\n")},
        mif_case{"prefix_of_all_that_may_be_dont_care",
                 mif_of("0 : 0x10;\n1 : 0x11;\n", "WIDTH=16;\nDEPTH=8;\n"), "number-prefix 4:5+4*2",
                 mif_of("0 : 10;\n1 : 11;\n", "WIDTH=16;\nDEPTH=8;\n")},
        mif_case{"prefix_of_some_that_may_be_dont_care",
                 mif_of("0 : 0x10;\n1 : 12;\n", "WIDTH=16;\nDEPTH=8;\n"), "prefix-or-dont-care 4:5+4", ""},
        mif_case{"prefix_of_another_radix",
                 mif_of("0 : 0x10;\n1 : 12;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=UNS;\n"),
                 "number-prefix 5:5+4", ""},
        mif_case{"prefix_of_decimal_numbers",
                 mif_of("0 : 8'd10;\n1 : -12;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n"),
                 "number-prefix 5:5+5",
                 mif_of("0 : 10;\n1 : -12;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n")},
        mif_case{"dots", mif_of("0 : 1;\n.\n.\n7 : 2;\n"), "left-out 5:1+1*2", ""},
        mif_case{"two_semicolons", mif_of("0 : 1;;\n"), "empty-statement 4:7+1", mif_of("0 : 1;\n")},
        mif_case{"lone_semicolon", mif_of("0 : 1;\n;\n1 : 2;\n"), "lone-semicolon 5:1+1",
                 mif_of("0 : 1;\n\n1 : 2;\n")},
        mif_case{"two_on_a_line", mif_of("0 : 1; 1 : 2;\n"), "after-semicolon 4:8+1",
                 mif_of("0 : 1; \n1 : 2;\n")},
        mif_case{"before_end", usual_header + "CONTENT BEGIN\n0 : 1; END;\n", "before-end 4:8+3",
                 usual_header + "CONTENT BEGIN\n0 : 1; \nEND;\n"},
        mif_case{"glued", mif_of("0 : 1\n2\n3;\n"), "split-value 5:1+1*2", mif_of("0 : 1\n 2\n 3;\n")},
        mif_case{"glued_after_a_comment", mif_of("0 : 1\n%%2;\n"), "after-comment 5:3+1",
                 mif_of("0 : 1\n%%\n 2;\n")},
        mif_case{"bad_digit", mif_of("0 : 1G2;\n"), "bad-digit 4:5+3", ""},
        mif_case{"too_wide", mif_of("0 : 1FF;\n1 : 3FF;\n2 : 1;\n"), "too-wide 4:5+3*2", ""},
        mif_case{"address_digit", mif_of("1G : 1;\n2 : 0;\n3 : 0;\n4 : 0;\n"), "address-digit 4:1+2", ""},
        mif_case{"negative_address", mif_of("-1 : 1;\n"), "negative-address 4:1+2", ""},
        mif_case{"beyond", mif_of("8 : 1;\n9 : 1;\n"), "beyond-depth 4:1+1*2", ""},
        mif_case{"list_beyond", mif_of("6 : 1 2 3;\n"), "beyond-depth 4:1+1", ""},
        mif_case{"bad_digit_set_again", mif_of("0 : 1G;\n0 : 2;\n"), "bad-digit 4:5+2", ""},
        mif_case{"bad_digit_of_several_bytes", mif_of("0 : \xE6\x97\xA5;\n"), "bad-digit 4:5+3", ""},
        mif_case{"twice", mif_of("0 : 1;\n0 : 2;\n"), "set-twice 5:1+6", ""},
        mif_case{"again", mif_of("0 : 1;\n0 : 01;\n"), "set-again 5:1+7", mif_of("0 : 1;\n\n")},
        mif_case{"list_over_single", mif_of("1 : 1;\n0 : 1 2;\n"), "overlap 5:1+8", ""},
        mif_case{"single_over_list", mif_of("0 : 1 2;\n1 : 1;\n"), "overlap 5:1+6", ""},
        mif_case{"range_over_range", mif_of("[0..3] : 1;\n[2..5] : 2;\n"), "overlap 5:1+11", ""},
        mif_case{"range_over_a_long_range_of_several_values",
                 mif_of("[0..FFFFF] : 1 2;\n[0..FFFFF] : 1 2 1 3;\n", "WIDTH=8;\nDEPTH=1048576;\n"),
                 "overlap 5:1+21", ""},
        mif_case{"unsigned", mif_of("0 : 255;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n"),
                 "unsigned-in-dec 5:5+3", mif_of("0 : 255;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=UNS;\n")},
        mif_case{"unsigned_and_negative", mif_of("0 : 255 -1;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n"),
                 "unsigned-in-dec 5:5+3", ""},
        mif_case{"other_radix", mif_of("0 : 1F;\n1 : 2;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=BIN;\n"),
                 "radix-mismatch 3:12+3",
                 mif_of("0 : 1F;\n1 : 2;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=HEX;\n")},
        mif_case{"other_address_radix",
                 mif_of("A : 1;\n1 : 2;\n", "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=UNS;\n"),
                 "radix-mismatch 3:15+3",
                 mif_of("A : 1;\n1 : 2;\n", "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=HEX;\n")}),
    [](const auto& each) { return std::string(each.param.name); });

INSTANTIATE_TEST_SUITE_P(
    CommentsAndEnd, MifFile,
    testing::Values(
        mif_case{"behind_a_comment", mif_of("%a% 0 : 1;\n"), "after-comment 4:5+1", mif_of("%a% \n0 : 1;\n")},
        mif_case{"value_after_a_comment", mif_of("0 : %a%1;\n"), "after-comment 4:8+1",
                 mif_of("0 : %a%\n 1;\n")},
        mif_case{"open", mif_of("0 : 1; % one\n"), "open-comment 4:8+1", mif_of("0 : 1; % one %\n")},
        mif_case{"lines_of_words", mif_of("%\n0 : 1;\n%\n1 : 2;\n"), "comment-of-lines 4:1+10",
                 mif_of("--\n--0 : 1;\n--\n1 : 2;\n")},
        mif_case{"doubtful", mif_of("% a\n0 : 1;\n% 1 : 2;\n"), "doubtful-comment 4:1+12", ""},
        mif_case{"no_end", usual_header + "CONTENT BEGIN\n0 : 1;", "missing-end 0:0+0", mif_of("0 : 1;\n")},
        mif_case{"end_without_semicolon", usual_header + "CONTENT BEGIN\n0 : 1;\nend", "end-semicolon 5:1+3",
                 usual_header + "CONTENT BEGIN\n0 : 1;\nend;"},
        mif_case{"after_end", mif_of("0 : 1;\n") + "1 : 2;\n", "after-end 6:1+6", ""},
        mif_case{"text_after_end", usual_header + "CONTENT BEGIN\n0 : 1;\nEND;s\n", "text-after-end 5:5+1",
                 ""},
        mif_case{"long_line", mif_of("0 : 1;" + std::string(600, ' ') + "\n"), "line-too-long 4:512+1",
                 mif_of("0 : 1;\n")},
        mif_case{"comment_of_lines_after_begin", mif_of("% a\n b %\n0 : 1;\n"), "comment-of-lines 4:1+8",
                 mif_of("-- a\n-- b \n0 : 1;\n")},
        mif_case{"other_comment", mif_of("// a\n0 : 1; # b\n"), "mif-comment 4:1+2*2",
                 mif_of("-- a\n0 : 1; -- b\n")},
        mif_case{"long_comment",
                 mif_of("0 : 1; -- " + std::string(300, 'a') + " " + std::string(300, 'b') + "\n"),
                 "line-too-long 4:512+1",
                 mif_of("0 : 1; \n-- " + std::string(300, 'a') + "\n-- " + std::string(300, 'b') + "\n")},
        mif_case{"long_comment_without_a_blank", mif_of("--" + std::string(600, '=') + "\n0 : 1;\n"),
                 "line-too-long 4:512+1",
                 mif_of("--" + std::string(509, '=') + "\n--" + std::string(91, '=') + "\n0 : 1;\n")},
        mif_case{"long_comment_with_percent",
                 mif_of("%" + std::string(300, 'a') + " " + std::string(300, 'b') + "%  \n0 : 1;\n"),
                 "line-too-long 4:512+1",
                 mif_of("--" + std::string(300, 'a') + "\n-- " + std::string(300, 'b') + "  \n0 : 1;\n")},
        mif_case{"long_comment_of_lines",
                 "% a\n" + std::string(300, 'a') + " " + std::string(300, 'b') + "\n%\n" + mif_of("0 : 1;\n"),
                 "line-too-long 2:512+1",
                 "% a\n" + std::string(300, 'a') + "\n " + std::string(300, 'b') + "\n%\n" +
                     mif_of("0 : 1;\n")},
        mif_case{"long_list",
                 mif_of("[0..7] :" + std::string(200, ' ') + "1" + std::string(200, ' ') + "2" +
                        std::string(200, ' ') + "3;\n"),
                 "line-too-long 4:512+1",
                 mif_of("[0..7] :" + std::string(200, ' ') + "1" + std::string(200, ' ') + "2" +
                        std::string(101, ' ') + "\n" + std::string(99, ' ') + "3;\n")}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(MifReader, ReadsWhatIsMeant) {
    const std::string file =
        "-- a\r\nData_Radix = uns ;\r\nDEPTH=6;\r\n% b\r\n  c %\r\nWIDTH=4;\r\nContent\r\n Begin\r\n"
        "[0..5]\t: 15 ;\r\n1 : 2\r\n 3;\r\n4 : 1; -- d\r\nend;\r\n";
    const read_result result = read_mif(file, {});
    EXPECT_THAT(result.diagnostics, IsEmpty());
    EXPECT_THAT(texts_of_mif(result), ElementsAre("F", "2", "3", "F", "1", "F"));
    EXPECT_EQ(result.facts.data_radix, radix::uns);
    EXPECT_EQ(result.facts.address_radix, radix::hex);
    EXPECT_TRUE(result.facts.has_comments);
}

TEST(MifReader, TakesWidthAndDepthFromTheOptions) {
    const read_result result = read_mif(mif_of("0 : F;\n3 : 1;\n"), {.width = 4, .depth = 4});
    EXPECT_THAT(result.diagnostics, IsEmpty());
    EXPECT_THAT(texts_of_mif(result), ElementsAre("F", "", "", "1"));
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("3 : 1;\n"), {.depth = 3}).diagnostics),
                ElementsAre("beyond-depth 4:1+1"));
}

TEST(MifReader, ReportsSignedAndUnsignedValuesOnce) {
    const auto found = read_mif(mif_of("0 : 255 -1 200;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n"), {});
    ASSERT_THAT(shown_diagnostics(found.diagnostics), ElementsAre("unsigned-in-dec 5:5+3*2"));
    EXPECT_EQ(found.diagnostics[0].hint, "it is read as an unsigned one; a signed one needs WIDTH=9");
    EXPECT_THAT(texts_of_mif(found), ElementsAre("FF", "FF", "C8", "", "", "", "", ""));
    const auto wide = read_mif(mif_of("0 : 300 -1;\n", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=DEC;\n"), {});
    ASSERT_THAT(shown_diagnostics(wide.diagnostics), ElementsAre("too-wide 5:5+3"));
    EXPECT_EQ(wide.diagnostics[0].hint, "needs WIDTH 9");
}

TEST(MifReader, ReportsOtherSoftwareOnce) {
    for (const std::string_view file : {"VERSION 300\nBEGIN\n 1 2\nEND\n", "radix=16;\nvector=\n1,2;\n"}) {
        EXPECT_THAT(shown_diagnostics(read_mif(file, {}).diagnostics), testing::SizeIs(1)) << file;
        EXPECT_EQ(read_mif(file, {}).diagnostics[0].id, diagnostic_id::foreign_content) << file;
    }
}

TEST(MifReader, LeavesWordsInDoubtThatMayHaveAPrefixWhereOthersHaveOne) {
    const read_result result = read_mif(mif_of("0 : 0x1;\n1 : 0x1F;\n2 : 3;\n"), {.keep_going = true});
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("number-prefix 4:5+3*2"));
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{0, 1}));
}

TEST(MifReader, LeavesSlashesAndHashesThatBeginNoComment) {
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("0 : #10;\n"), {}).diagnostics),
                ElementsAre("bad-digit 4:5+3"));
    EXPECT_THAT(shown_diagnostics(read_mif("see http://a/b\n" + mif_of("0 : 1;\n"), {}).diagnostics),
                ElementsAre("header-text 1:1+14"));
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("0 : 1;\n") + "// a\n", {}).diagnostics),
                ElementsAre("text-after-end 6:1+4"));
}

TEST(MifReader, HandsOutWhatCanBeReadOfABrokenFile) {
    const read_result result = read_mif(mif_of("0 : 1G;\n1 : 2;\n2 : 3;\n2 : 4;\n"), {.keep_going = true});
    EXPECT_THAT(texts_of_mif(result), ElementsAre("", "02", "", "", "", "", "", ""));
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{0, 0}, address_range{2, 2}));
    EXPECT_FALSE(read_mif(mif_of("0 : 1G;\n"), {}).image);
}

TEST(MifReader, NamesACauseOnceWithTenPlaces) {
    std::string statements;
    for (int i = 10; i < 60; ++i) {
        statements += std::to_string(i) + " : 1;\n";
    }
    const read_result result = read_mif(mif_of(statements), {});
    ASSERT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("beyond-depth 4:1+2*50"));
    EXPECT_EQ(result.diagnostics[0].hint, "needs DEPTH 90 or more");
    EXPECT_EQ(result.diagnostics[0].more.size(), 9U);
}

TEST(MifReader, NamesManyCarriageReturnsOnce) {
    std::string text = "WIDTH=8;\rDEPTH=16;\rCONTENT BEGIN\r";
    for (const char digit : std::string_view("0123456789ABCDEF")) {
        text += std::string{digit} + " : 1;\r";
    }
    text += "END;\r";
    const read_result result = read_mif(text, {});
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("lines-of-carriage-return 1:9+1*20"));
    EXPECT_EQ(result.diagnostics.at(0).more.size(), 9U);
    EXPECT_THAT(result.diagnostics.at(0).fix, IsEmpty()); // all or none
    EXPECT_EQ(result.diagnostics.at(0).repair, "");
    EXPECT_EQ(read_mif(text, {.wants_repairs = true}).diagnostics.at(0).fix.size(), 20U);
}

TEST(MifReader, RefusesWordsOutOfProportion) {
    std::string statements;
    for (int i = 0; i < 2000; ++i) {
        statements += std::to_string(i) + " : " + std::to_string(i % 10) + ";\n";
    }
    const std::string file = mif_of(statements, "WIDTH=1048576;\nDEPTH=2000;\nADDRESS_RADIX=UNS;\n");
    EXPECT_THAT(shown_diagnostics(read_mif(file, {}).diagnostics), ElementsAre("too-large 0:0+0"));
}

TEST(MifReader, FindsTheStatementThatSetsAWord) {
    const std::string file = mif_of("[0..3] : 1;\n\t2 : 2;\n3 : 4 5;\n");
    EXPECT_EQ(find_mif_word(file, {}, 2), (place{5, 2, 45, 6}));
    EXPECT_EQ(find_mif_word(file, {}, 4), (place{6, 1, 52, 8}));
    EXPECT_EQ(find_mif_word(file, {}, 7), std::nullopt);
    EXPECT_EQ(find_mif_word(mif_of("x : 1;\n1 : 2;\n"), {}, 1)->line, 5U);
}

TEST(MifReader, KnowsAMifByItsContents) {
    EXPECT_EQ(sniff_mif(mif_of("")), certainty::certain);
    EXPECT_EQ(sniff_mif("WIDTH=8;\n"), certainty::likely);
    EXPECT_EQ(sniff_mif(":00000001FF\n"), certainty::no);
}

TEST(MifReader, SaysWhatAFileIsThatIsNoMif) {
    const read_result result = read_mif("01010101\n11110000\n", {});
    ASSERT_EQ(result.diagnostics.size(), 1U) << result.diagnostics[0].message;
    EXPECT_EQ(about(result.diagnostics[0].id).level, diagnostic_class::broken);
}

std::string hint_of(const read_result& result) {
    return result.diagnostics.empty() ? "" : result.diagnostics.front().hint;
}

TEST(MifReader, NamesTheDepthThatTheAddressesNeed) {
    const std::string settings = "WIDTH=8;\nADDRESS_RADIX=DEC;\nDATA_RADIX=HEX;\n";
    EXPECT_THAT(hint_of(read_mif(mif_of("", settings), {})), testing::HasSubstr("DEPTH=256;"));
    EXPECT_THAT(hint_of(read_mif(mif_of("41 : 1;\n", settings), {})), testing::HasSubstr("DEPTH=42;"));
    EXPECT_THAT(hint_of(read_mif(mif_of("[0..1] : 7;\n2 : 8;\n3 : 9;\n", settings), {})),
                testing::HasSubstr("DEPTH=4;"));
    EXPECT_THAT(hint_of(read_mif(mif_of("[0..99999] : 7;\n", settings), {})),
                testing::HasSubstr("DEPTH=100000;"));
    EXPECT_THAT(hint_of(read_mif(mif_of("[0..99999] : 7 8 9;\n", settings), {})),
                testing::HasSubstr("DEPTH=100000;"));
}

std::string settings_of_wide(std::uint32_t width) {
    return "WIDTH=" + std::to_string(width) + ";\nDEPTH=1048576;\nADDRESS_RADIX=DEC;\nDATA_RADIX=HEX;\n";
}

std::string statements_up_to(std::size_t count) {
    std::string text;
    for (std::size_t address = 0; address < count; ++address) {
        text += std::to_string(address) + " : " + std::to_string(address % 9) + ";\n";
    }
    return text;
}

TEST(MifReader, RefusesAFileWhoseWordsTakeMuchMoreMemoryThanItDoes) {
    const read_result result = read_mif(mif_of(statements_up_to(1000), settings_of_wide(1048576)), {});
    EXPECT_FALSE(result.image);
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("too-large 0:0+0"));
}

TEST(MifReader, TakesMoreWordsOfALargerFile) {
    std::string comment;
    for (int line = 0; line < 8500; ++line) {
        comment += "--" + std::string(500, 'c') + "\n";
    }
    const std::string statements = statements_up_to(1030);
    EXPECT_FALSE(read_mif(mif_of(statements, settings_of_wide(65536)), {}).image);
    EXPECT_TRUE(read_mif(comment + mif_of(statements, settings_of_wide(65536)), {}).image);
}

TEST(MifReader, TakesFewWordsOfTheLargestWidth) {
    for (const std::string statements : {"0 : 1;\n", "[0..99999] : 1 2 3;\n", "[0..99999] : 1;\n"}) {
        const read_result result = read_mif(mif_of(statements, settings_of_wide(65536)), {});
        ASSERT_TRUE(result.image) << statements;
        EXPECT_EQ((*result.image)[0], word::of(1, 65536)) << statements;
    }
}

TEST(MifReader, MayReadDecimalWordsAsUnsignedOnesOrNot) {
    const std::string settings = "WIDTH=8;\nDEPTH=8;\nADDRESS_RADIX=DEC;\nDATA_RADIX=DEC;\n";
    EXPECT_EQ(read_mif(mif_of("0 : 127;\n", settings), {}).facts.data_radix, radix::dec);
    EXPECT_EQ(read_mif(mif_of("0 : 255;\n", settings), {}).facts.data_radix, radix::uns);
    EXPECT_EQ(read_mif(mif_of("0 : 255;\n1 : -1;\n", settings), {}).facts.data_radix, radix::dec);
}

TEST(MifReader, NamesEachRangeThatItCannotReadOnce) {
    const std::string settings = "WIDTH=8;\nDEPTH=64;\nADDRESS_RADIX=DEC;\nDATA_RADIX=HEX;\n";
    const read_result result =
        read_mif(mif_of("[20..30] : 1 G 2;\n5 : G;\n6 : GG;\n[4..8] : 1FF;\n40 : 1;\n", settings),
                 {.keep_going = true});
    ASSERT_TRUE(result.image);
    const std::vector<address_range> expected = {{4, 8}, {21, 21}, {24, 24}, {27, 27}, {30, 30}};
    EXPECT_EQ(result.unreadable, expected);
    EXPECT_EQ((*result.image)[5], std::nullopt);
    EXPECT_EQ((*result.image)[20], word::of(1, 8));
    EXPECT_EQ((*result.image)[40], word::of(1, 8));
}

TEST(MifReader, DoubtsALargePatternAsAWhole) {
    const std::string settings = "WIDTH=8;\nDEPTH=65536;\nADDRESS_RADIX=DEC;\nDATA_RADIX=HEX;\n";
    const read_result result = read_mif(mif_of("[10..59999] : 1 G;\n", settings), {.keep_going = true});
    EXPECT_EQ(result.unreadable, (std::vector<address_range>{{10, 59999}}));
}

TEST(MifReader, GivesAdviceForNumbersOfTheHeader) {
    const auto advice = [](std::string_view depth) {
        return hint_of(read_mif(mif_of("", "WIDTH=8;\nDEPTH=" + std::string(depth) + ";\n"), {}));
    };
    EXPECT_EQ(advice("4K"), "write 4096");
    EXPECT_EQ(advice("2M"), "write 2097152");
    EXPECT_EQ(advice("4,096"), "write 4096");
    EXPECT_EQ(advice("4_096"), "write 4096");
    EXPECT_EQ(advice("16 words"), "write 16");
    EXPECT_EQ(advice("0x10"), "write a decimal number");
    EXPECT_EQ(advice("many"), "write a decimal number");
    EXPECT_EQ(advice("9999999999K"), "write a decimal number");
}

TEST(MifReader, GivesAdviceForRadixes) {
    const auto advice = [](std::string_view name) {
        return hint_of(
            read_mif(mif_of("", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=" + std::string(name) + ";\n"), {}));
    };
    EXPECT_THAT(advice("HXE"), testing::HasSubstr("did you mean HEX?"));
    EXPECT_THAT(advice("bim"), testing::HasSubstr("did you mean BIN?"));
    EXPECT_THAT(advice("myhex"), testing::HasSubstr("did you mean HEX?"));
    EXPECT_THAT(advice("16"), testing::HasSubstr("write one of them"));
}

TEST(MifReader, ACommentOfLinesBehindTheEndIsNone) {
    const read_result result = read_mif(mif_of("[0..7] : 1;\n") + "% one\ntwo %\n", {});
    EXPECT_TRUE(result.image);
    EXPECT_TRUE(result.facts.has_comments);
    EXPECT_THAT(shown_diagnostics(result.diagnostics), IsEmpty());
}

TEST(MifReader, ACommentOfLinesAmongTheSettingsMayHoldAStatement) {
    const std::string rest = "DEPTH=8;\nCONTENT BEGIN\n0 : 1;\nEND;\n";
    EXPECT_THAT(shown_diagnostics(read_mif("WIDTH=8;\n% was:\n0 : 1;\n%\n" + rest, {}).diagnostics),
                IsEmpty());
    EXPECT_THAT(shown_diagnostics(read_mif("WIDTH=8;\n% was:\n0 : 1;\n% " + rest, {}).diagnostics),
                ElementsAre("doubtful-comment 2:1+15"));
}

TEST(MifReader, NeedsNoSettingsThatTheCallerGives) {
    const std::string text = "ADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n0 : 7;\nEND;\n";
    const read_result result = read_mif(text, {.width = 8, .depth = 4});
    EXPECT_THAT(shown_diagnostics(result.diagnostics), IsEmpty());
    EXPECT_THAT(texts_of_mif(result), ElementsAre("07", "", "", ""));
}

TEST(MifReader, SettingsStatedAgainMustSayTheSame) {
    const auto found = [](std::string_view again) {
        return shown_diagnostics(
            read_mif(mif_of("", "WIDTH=8;\nDEPTH=8;\nDATA_RADIX=HEX;\n" + std::string(again)), {})
                .diagnostics);
    };
    EXPECT_THAT(found("WIDTH=08;\n"), ElementsAre("repeated-header 4:7+2"));
    EXPECT_THAT(found("WIDTH=9;\n"), ElementsAre("contradicting-header 4:7+1"));
    EXPECT_THAT(found("WIDTH=x;\n"), ElementsAre("contradicting-header 4:7+1"));
    EXPECT_THAT(found("DATA_RADIX=hex;\n"), ElementsAre("repeated-header 4:12+3"));
    EXPECT_THAT(found("DATA_RADIX=DEC;\n"), ElementsAre("contradicting-header 4:12+3"));
    EXPECT_THAT(found("DATA_RADIX=none;\n"), ElementsAre("contradicting-header 4:12+4"));
}

TEST(MifReader, ASettingThatIsNoneIsContradictedByAnother) {
    const auto found = [](std::string_view settings) {
        return shown_diagnostics(read_mif(mif_of("", settings), {}).diagnostics);
    };
    EXPECT_THAT(found("WIDTH=x;\nWIDTH=8;\nDEPTH=8;\n"),
                ElementsAre("header-number 1:7+1", "contradicting-header 2:7+1"));
    EXPECT_THAT(found("WIDTH=8;\nDEPTH=8;\nDATA_RADIX=none;\nDATA_RADIX=HEX;\n"),
                ElementsAre("unknown-radix 3:12+4", "contradicting-header 4:12+3"));
}

TEST(MifReader, NamesRangesOfOneAndSurplusValuesOnce) {
    const auto found = [](std::string_view statements) {
        return shown_diagnostics(read_mif(mif_of(statements), {}).diagnostics);
    };
    EXPECT_THAT(found("[1..1] : 1;\n[2..2] : 2;\n"), ElementsAre("range-of-one 4:1+6*2"));
    EXPECT_THAT(found("3..3 : 1;\n"), ElementsAre("range-of-one 4:1+4", "range-form 4:1+4"));
    EXPECT_THAT(found("[0..1] : 1 2 3;\n[2..3] : 1 2 3;\n"), ElementsAre("surplus-values 4:14+1*2"));
}

TEST(MifReader, ARangeOfOneAddressMayLackItsBrackets) {
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("2..2 : 5;\n"), {}).diagnostics),
                ElementsAre("range-of-one 4:1+4", "range-form 4:1+4"));
}

/// Reads statements without a header in a memory deeper than any MIF.
read_result read_deepest(std::string_view statements, std::uint32_t width = 16) {
    read_options options;
    options.as = &mif_format;
    options.width = width;
    options.depth = 0xFFFFFFFF;
    return read_mif(statements, options);
}

TEST(MifReader, AMemoryMayBeDeeperThanAnyMif) {
    const read_result result = read_deepest("10 : 1;\n7FFFFFFE : 2;\n", 512);
    ASSERT_TRUE(result.image.has_value());
    EXPECT_EQ(result.image->depth(), 0xFFFFFFFF);
    EXPECT_EQ((*result.image)[0x7FFFFFFE], word::of(2, 512));
    EXPECT_FALSE((*result.image)[0xF0000000].has_value());
}

TEST(MifReader, AnAddressBeyondThoseOfAnyMifIsRefusedInADeeperMemory) {
    const read_result result = read_deepest("80000000 : 1;\n");
    EXPECT_FALSE(result.image.has_value());
    ASSERT_THAT(shown_diagnostics(result.diagnostics),
                ElementsAre("bare-statements 1:1+8", "address-outside 1:1+8"));
    EXPECT_EQ(result.diagnostics.back().message,
              "address 80000000 (decimal 2147483648) is beyond the largest, 2147483646");
}

TEST(MifReader, AddressesThatGoBeyondAllNumbersAreBeyondTheDepth) {
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("FFFFFFFFFFFFFFFF : 1 2;\n"), {}).diagnostics),
                ElementsAre("beyond-depth 4:1+16"));
    EXPECT_THAT(shown_diagnostics(read_mif(mif_of("6 : 1 2 3;\n"), {}).diagnostics),
                ElementsAre("beyond-depth 4:1+1"));
}

TEST(MifReader, ASettingOverTwoLinesWithACommentIsLeftAsItIs) {
    const read_result result = read_mif(mif_of("", "WIDTH -- bits\n = 8;\nDEPTH=8;\n"), {});
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("split-setting 1:1+5"));
}

TEST(MifReader, NoSettingGoesOnInALineThatBeginsWithASign) {
    const std::string rest = "DEPTH=8;\nCONTENT BEGIN\n0 : 1;\nEND;\n";
    EXPECT_THAT(shown_diagnostics(read_mif("WIDTH\n: 8;\n" + rest, sizes_of(8, 8)).diagnostics),
                ElementsAre("missing-setting-value 1:1+5", "header-text 2:1+4"));
    EXPECT_THAT(shown_diagnostics(read_mif("WIDTH=\n=8;\n" + rest, sizes_of(8, 8)).diagnostics),
                ElementsAre("missing-setting-value 1:1+6", "header-text 2:1+3"));
}

TEST(MifReader, ASettingMayBeAllThereIs) {
    EXPECT_THAT(shown_diagnostics(read_mif("WIDTH8", sizes_of(8, 8)).diagnostics),
                ElementsAre("missing-equals 1:1+6", "header-semicolon 1:7+1", "missing-content 0:0+0"));
}

TEST(MifReader, NamesSeveralSettingsOfALineOnce) {
    EXPECT_THAT(
        shown_diagnostics(
            read_mif(mif_of("", "WIDTH=8; DEPTH=8; ADDRESS_RADIX=DEC; DATA_RADIX=BIN;\n"), {}).diagnostics),
        ElementsAre("shared-line 1:10+8*3"));
}

TEST(MifReader, ReadsALineBeyondWhatItLooksAtAtOnce) {
    const read_result result =
        read_mif(mif_of("0 : 1;\n-- " + std::string(std::size_t{200} * 1024, 'x') + "\n1 : 2;\n"), {});
    EXPECT_EQ(texts_of_mif(result).at(1), "02");
}

TEST(MifNumbers, ZeroIsNotNegative) {
    EXPECT_TRUE(mif_number_of("-1", radix::dec).is_negative);
    EXPECT_TRUE(mif_number_of("-0", radix::dec).is_number);
    EXPECT_FALSE(mif_number_of("-0", radix::dec).is_negative);
}

TEST(MifNumbers, APrefixComesBeforeDigits) {
    EXPECT_EQ(prefixed_number_of("8'h1F")->digits, "1F");
    EXPECT_FALSE(prefixed_number_of("x'h1F"));
    EXPECT_FALSE(prefixed_number_of("0x-1F"));
    EXPECT_FALSE(prefixed_number_of("0x"));
    EXPECT_FALSE(prefixed_number_of("0xG"));
}

/// The diagnostics of a MIF with these statements, the first of which is on line 4; "!" marks repairable
/// ones.
std::vector<std::string> found_among(const std::string& statements) {
    std::vector<std::string> texts;
    for (const diagnostic& each :
         read_mif("WIDTH=4096;\nDEPTH=4096;\nCONTENT BEGIN\n" + statements, {.wants_repairs = true})
             .diagnostics) {
        texts.push_back(shown_diagnostic(each) + (each.fix.empty() ? "" : "!"));
    }
    return texts;
}

TEST(MifReader, DotsOnALineOfTheirOwnStandForWordsThatAreLeftOut) {
    EXPECT_THAT(found_among("... ...\n5 : 2;\nEND;\n"), ElementsAre("left-out 4:1+7"));
    EXPECT_THAT(found_among("0 : 1; ...\nEND;\n"), ElementsAre("stray-character 4:8+3"));
    EXPECT_THAT(found_among("0 : 1;\n..."), ElementsAre("left-out 5:1+3", "missing-end 0:0+0!"));
}

TEST(MifReader, FindsRangesThatAreNone) {
    EXPECT_THAT(found_among("5\n..\n : 1;\nEND;\n"),
                ElementsAre("content-syntax 4:1+1", "left-out 5:1+2", "missing-address 6:2+4"));
    EXPECT_THAT(found_among("[0 .. .. 7] : 1;\nEND;\n"), ElementsAre("range-form 4:1+11!"));
    EXPECT_THAT(found_among("[0-7,] : 1;\nEND;\n"), ElementsAre("range-syntax 4:1+11"));
    EXPECT_THAT(found_among("[0 7] : 1;\nEND;\n"), ElementsAre("range-syntax 4:1+10"));
}

TEST(MifReader, FindsAStatementThatLacksColonAndValue) {
    EXPECT_THAT(found_among("5 x\n1 : 2;\nEND;\n"), ElementsAre("content-syntax 4:1+3"));
}

TEST(MifReader, FindsBeginAmongStatements) {
    EXPECT_THAT(found_among("0 : 1;\nBEGIN\n1 : 2;\nEND;\n"), ElementsAre("stray-character 5:1+5"));
    EXPECT_THAT(found_among("5 x y\n6 : 1;\nEND;\n"), ElementsAre("content-syntax 4:1+5"));
}

TEST(MifReader, FindsAValueThatALineEndSplits) {
    EXPECT_THAT(found_among("0 : 1\n2 3 \n4 : 5;\nEND;\n"),
                ElementsAre("split-value 5:1+1!", "missing-semicolon 5:4+1!"));
    EXPECT_THAT(found_among("0 : 1 2\n3 : 4;\nEND;\n"), ElementsAre("missing-semicolon 4:8+1!"));
}

TEST(MifReader, FindsEndAfterAComment) {
    EXPECT_THAT(found_among("0 : 1;\n% c % END;\n"), ElementsAre("after-comment 5:7+3!"));
}

TEST(MifReader, ACommentOfLinesEndsWhereAMifCanGoOn) {
    EXPECT_THAT(found_among("% a\n b %  \nEND;\n"), ElementsAre("comment-of-lines 4:1+8!"));
    EXPECT_THAT(found_among("% a\n b % -- c\nEND;\n"), ElementsAre("comment-of-lines 4:1+8!"));
    EXPECT_THAT(found_among("0 : 1 % a\n b %;\nEND;\n"),
                ElementsAre("comment-of-lines 4:7+8!", "after-comment 5:5+1!"));
    EXPECT_THAT(found_among("% a\n b % 3 : 1;\nEND;\n"),
                ElementsAre("comment-of-lines 4:1+8!", "after-comment 5:6+1!"));
    EXPECT_THAT(found_among("% a\n b % text\nEND;\n"),
                ElementsAre("open-comment 4:1+1*2!", "content-syntax 5:2+1"));
}

TEST(MifReader, ACommentOfLinesIsFoundOnceWhereTheParserGoesBackBeforeIt) {
    EXPECT_THAT(found_among("0 : 1 2\n%\n5 : 6;\n% 3 : 4;\nEND;\n"),
                ElementsAre("missing-semicolon 4:8+1!", "doubtful-comment 5:1+10"));
}

TEST(MifReader, BreaksALongLineWhereThatChangesNothing) {
    const std::string values =
        "1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8 9 0 1 2 3 4 5 6 7 8 9 0 ";
    std::string many;
    for (int part = 0; part < 8; ++part) {
        many += values;
    }
    const std::string digits(600, '1');
    EXPECT_THAT(found_among("0 : 1\n" + many + ";\nEND;\n"),
                ElementsAre("split-value 5:1+1!", "line-too-long 5:512+1!"));
    EXPECT_THAT(found_among("0 : " + digits + ";\nEND;\n"), ElementsAre("line-too-long 4:512+1"));
    EXPECT_THAT(found_among("0 :" + digits + ";\nEND;\n"), ElementsAre("line-too-long 4:512+1"));
    EXPECT_THAT(found_among("0:" + digits + ";\nEND;\n"), ElementsAre("line-too-long 4:512+1"));
}

TEST(MifReader, BreaksALongCommentWhereThatChangesNothing) {
    const std::string text(600, 'x');
    EXPECT_THAT(found_among("-- " + text + "\nEND;\n"), ElementsAre("line-too-long 4:512+1!"));
    EXPECT_THAT(found_among("%\na\n%\n-- " + text + "\nEND;\n"),
                ElementsAre("comment-of-lines 4:1+5!", "line-too-long 7:512+1!"));
    EXPECT_THAT(found_among("%\n" + std::string(500, 'x') + " 5 : 3;\n%\nEND;\n"),
                ElementsAre("comment-of-lines 4:1+511!"));
    EXPECT_THAT(found_among("%\n" + std::string(509, 'x') + " 5 : 3;\n%\nEND;\n"),
                ElementsAre("comment-of-lines 4:1+520!", "line-too-long 5:512+1"))
        << "its second line would be a statement";
    EXPECT_THAT(found_among("%\n" + text + "% 0 : 1;\nEND;\n"),
                ElementsAre("comment-of-lines 4:1+603!", "line-too-long 5:512+1", "after-comment 5:603+1!"));
    EXPECT_THAT(found_among("%" + text + "% 0 : 1;\nEND;\n"),
                ElementsAre("line-too-long 4:512+1", "after-comment 4:604+1!"));
    EXPECT_THAT(found_among("%" + text + "%\nEND;\n"), ElementsAre("line-too-long 4:512+1!"));
    EXPECT_THAT(found_among("%" + text + "\nEND;\n"),
                ElementsAre("open-comment 4:1+1!", "line-too-long 4:512+1!"));
}

TEST(MifReader, AHashBeforeATabBeginsAComment) {
    EXPECT_THAT(found_among("0 : 1 #\tone\n;\nEND;\n"), ElementsAre("mif-comment 4:7+1!"));
}

TEST(MifReader, AHashAtTheEndBeginsAComment) {
    EXPECT_THAT(found_among("0 : 1; END; #"), ElementsAre("before-end 4:8+3!", "text-after-end 4:13+1"));
    EXPECT_THAT(found_among("0 : 1 #"),
                ElementsAre("missing-semicolon 4:6+1!", "mif-comment 4:7+1!", "missing-end 0:0+0!"));
}

TEST(MifReader, AStatementAfterRegularLinesAndStrayTextFollowsASemicolon) {
    const read_result result = read_mif(mif_of("0 : 1;\n1 : 2;\n, ; 2 : 3;\n"), {});
    EXPECT_THAT(shown_diagnostics(result.diagnostics),
                ElementsAre("stray-character 6:1+3", "after-semicolon 6:5+1"));
}

TEST(MifReader, StatementsAloneAreReadWithWidthAndDepth) {
    const read_result result = read_mif("0 : 1F; [1..3] : 0;\n", sizes_of(8, 4));
    EXPECT_THAT(texts_of_mif(result), ElementsAre("1F", "00", "00", "00"));
    EXPECT_THAT(shown_diagnostics(result.diagnostics),
                ElementsAre("bare-statements 1:1+1", "after-semicolon 1:9+1"));
    EXPECT_EQ(about(result.diagnostics.front().id).level, diagnostic_class::consumer);
}

TEST(MifReader, StatementsWithoutContentHaveTheRadixesOfTheSettings) {
    const read_result result =
        read_mif("WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=DEC;\n10 : 1F;\nEND;\n", sizes_of(8, 16));
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("bare-statements 4:1+2"));
    EXPECT_EQ(texts_of_mif(result).at(10), "1F");
}

TEST(MifReader, ABeginWithoutContentIsNoBareStatement) {
    const read_result result = read_mif(usual_header + "BEGIN\n0 : 1;\nEND;\n", sizes_of(8, 8));
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("missing-content 3:1+5"));
}

TEST(MifReader, ABeginIsNoBareStatementWhereThereAreNoSettingsEither) {
    const read_result result = read_mif("BEGIN\n0 : 1;\nEND;\n", sizes_of(8, 8));
    EXPECT_THAT(shown_diagnostics(result.diagnostics), ElementsAre("missing-content 1:1+5"));
}

TEST(MifReader, StatementsAloneAreAsWideAsTheirLongestValue) {
    std::string statements;
    for (const std::string high : {"0", "1", "2", "3", "4", "5", "6", "7"}) {
        for (const char low : std::string("0123456789ABCDEF")) {
            statements += high + low + " : 0" + high + low + ";\n";
        }
    }
    EXPECT_EQ(read_mif(statements, {}).diagnostics.at(0).option, "--width 12 --depth 128");
}

TEST(MifReader, WhatStatementsAloneLackIsInTheHint) {
    const diagnostic neither = read_mif("[0..3] : 1FF 2;\n5 : 3;\n", {}).diagnostics.at(0);
    EXPECT_EQ(neither.hint, "add --width 12 --depth 6 to read them, if their numbers are HEX");
    EXPECT_EQ(neither.option, "--width 12 --depth 6");
    read_options only_width;
    only_width.width = 12;
    EXPECT_EQ(read_mif("0 : 1;\n", only_width).diagnostics.at(0).option, "--depth 1");
    read_options only_depth;
    only_depth.depth = 1;
    EXPECT_EQ(read_mif("0 : 1;\n", only_depth).diagnostics.at(0).option, "--width 4");
    EXPECT_EQ(read_mif("END;\n", {}).diagnostics.at(0).option, "--width 8 --depth 256");
}

} // namespace
