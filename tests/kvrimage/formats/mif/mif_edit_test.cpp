#include "kvrimage/edit/text_lines.h"
#include "kvrimage/formats/mif/mif_edit.h"
#include "kvrimage/formats/mif/mif_line_style.h"
#include "kvrimage/formats/mif/mif_reader.h"
#include "tests/kvrimage/formats/mif/mif_model.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using kvrimage_tests::mif_model;

/// "FIRST-LAST=VALUE,VALUE" or "ADDRESS=VALUE", hexadecimal, of words of @p width bits.
assignment assigned(const std::string& text, std::uint32_t width = 8) {
    const std::size_t equals = text.find('=');
    const std::size_t dash = text.substr(0, equals).find('-');
    const std::uint64_t first = std::stoull(text, nullptr, 16);
    assignment made{
        {first, dash == std::string::npos ? first : std::stoull(text.substr(dash + 1), nullptr, 16)}, {}};
    for (std::size_t at = equals; at != std::string::npos; at = text.find(',', at + 1)) {
        const std::size_t end = text.find(',', at + 1);
        made.words.push_back(*word::parse(text.substr(at + 1, end == std::string::npos ? end : end - at - 1),
                                          radix::hex, width)
                                  .value);
    }
    return made;
}

std::vector<assignment> all_assigned(const std::vector<std::string>& texts, std::uint32_t width = 8) {
    std::vector<assignment> result;
    for (const std::string& text : texts) {
        result.push_back(assigned(text, width));
    }
    return result;
}

std::string edited_text(std::string contents, const std::vector<text_edit>& edits) {
    for (auto edit = edits.rbegin(); edit != edits.rend(); ++edit) {
        contents.replace(edit->offset, edit->length, edit->replacement);
    }
    return contents;
}

/// @p contents after the edits; fails if an edit is wrong.
std::string after_edit(const std::string& contents, const std::vector<assignment>& made) {
    const mif_model before(contents);
    const edit_result found = edit_mif(contents, {}, before.result(), made);
    EXPECT_TRUE(found.diagnostics.empty());
    std::uint64_t end = 0;
    for (const text_edit& edit : found.edits) {
        EXPECT_GE(edit.offset, end);
        EXPECT_FALSE(edit.length == 0 && edit.replacement.empty());
        end = edit.offset + edit.length;
    }
    EXPECT_LE(end, contents.size());
    std::string text = edited_text(contents, found.edits);
    const mif_model after(text);
    memory_image expected = *before.result().image;
    for (const assignment& each : made) {
        expected.fill(each.addresses, each.words);
    }
    EXPECT_TRUE(*after.result().image == expected) << contents << "\nbecame\n" << text;
    EXPECT_TRUE(before.sets_twice || !after.sets_twice) << contents << "\nbecame\n" << text;
    return text;
}

const std::string header = "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";

/// The statements of a file of 16 words of 8 bits after an edit.
std::string after(const std::string& statements, const std::vector<std::string>& assignments) {
    const std::string text = after_edit(header + statements, all_assigned(assignments));
    EXPECT_EQ(text.substr(0, header.size()), header);
    return text.substr(header.size());
}

// --- a word in place ---

TEST(MifEdit, ReplacesAWordWhereItStands) {
    EXPECT_EQ(after("0 : 00; -- zero\n1 : 01; -- one\nEND;\n", {"1=AB"}),
              "0 : 00; -- zero\n1 : AB; -- one\nEND;\n");
}

TEST(MifEdit, ReplacesOneOfSeveralValues) {
    EXPECT_EQ(after("0 : 00 01, 02;\nEND;\n", {"2=AB"}), "0 : 00 01, AB;\nEND;\n");
    EXPECT_EQ(after("[0..2] : 00 01 -- one\n 02;\nEND;\n", {"2=AB"}), "[0..2] : 00 01 -- one\n AB;\nEND;\n");
}

TEST(MifEdit, FollowsDigitsAndLetterCaseOfTheWordThere) {
    EXPECT_EQ(after("0 : 0;\n1 : 0ab;\nEND;\n", {"0=5", "1=FE"}), "0 : 5;\n1 : 0fe;\nEND;\n");
}

TEST(MifEdit, WordsThatAreThereChangeNothing) {
    EXPECT_EQ(after("0 : 5;\n[1..3] : 006 7;\nEND;\n", {"0=5", "1-3=6,7"}),
              "0 : 5;\n[1..3] : 006 7;\nEND;\n");
}

TEST(MifEdit, LastStatementOfAnAddressCounts) {
    EXPECT_EQ(after("[0..3] : 00;\n1 : 01;\nEND;\n", {"1=AB"}), "[0..3] : 00;\n1 : AB;\nEND;\n");
}

TEST(MifEdit, ReplacesAWordThatIsBad) {
    EXPECT_EQ(after("0 : 1G;\n1 : 00;\nEND;\n", {"0=AB"}), "0 : AB;\n1 : 00;\nEND;\n");
}

TEST(MifEdit, WritesAStatementWithoutValueAnew) {
    EXPECT_EQ(after("0 : ;\n1 : 00;\nEND;\n", {"0=AB"}), "0  :   AB;\n1 : 00;\nEND;\n");
}

TEST(MifEdit, FindsStatementsThatShareALine) {
    EXPECT_EQ(after("0 : 00; 1 : 01; 2 : 02; END;\n", {"1=AB"}), "0 : 00; 1 : AB; 2 : 02; END;\n");
}

TEST(MifEdit, LeavesCommentsOfSeveralLinesAlone) {
    EXPECT_EQ(after("% 0 : 11;\n1 : 11; %\n0 : 00;\nEND;\n", {"0=AB"}),
              "% 0 : 11;\n1 : 11; %\n0 : AB;\nEND;\n");
}

TEST(MifEdit, FindsOneAddressInBrackets) {
    EXPECT_EQ(after("[3] : 00;\nEND;\n", {"3=AB"}), "[3] : AB;\nEND;\n");
}

// --- ranges ---

TEST(MifEdit, SplitsARange) {
    EXPECT_EQ(after("[0..F] : 00; -- all\nEND;\n", {"5=AB"}),
              "[0..4] : 00; -- all\n5 : AB;\n[6..F] : 00;\nEND;\n");
}

TEST(MifEdit, RangeOfSeveralValuesGoesOnWhereItWas) {
    EXPECT_EQ(after("\t[0..5]  :  01 02 03;\nEND;\n", {"1=AB"}),
              "\t0  :  01;\n\t1  :  AB;\n\t[2..5]  :  03 01 02;\nEND;\n");
}

TEST(MifEdit, SplitsARangeOverSeveralLines) {
    EXPECT_EQ(after("[ 0 .. 5 ] : 01 -- one\n  02 -- two\n;\nEND;\n", {"5=AB"}),
              "[ 0 .. 4 ] : 01 -- one\n  02 -- two\n;\n5 : AB;\nEND;\n");
}

TEST(MifEdit, RemovesBracketsThatHoldALineEnd) {
    EXPECT_EQ(after("[0 -- low..\n..3] : 01;\nEND;\n", {"1=AB"}),
              "0 -- low..\n : 01;\n1 : AB;\n[2..3] : 01;\nEND;\n");
}

TEST(MifEdit, KeepsBracketsThatHoldAComment) {
    EXPECT_EQ(after("[0 % .. %\n..3] : 01;\nEND;\n", {"1=AB"}),
              "[0 % .. %\n..1] : 01 AB;\n[2..3] : 01;\nEND;\n");
}

TEST(MifEdit, SplitRangeStaysBeforeTheStatementsThatFollowOnItsLine) {
    EXPECT_EQ(after("[0..7] : 00; [4..7] : 01; -- c\nEND;\n", {"2=AB"}),
              "[0..1] : 00;\n2 : AB;\n[3..7] : 00; [4..7] : 01; -- c\nEND;\n");
}

TEST(MifEdit, SplitRangeStaysBeforeACommentOfSeveralLines) {
    EXPECT_EQ(after("[0..1] : 00; % a\nb %\nEND;\n", {"1=AB"}), "0 : 00;\n1 : AB; % a\nb %\nEND;\n");
    EXPECT_EQ(after("[0..1] : 00; % a %\nEND;\n", {"1=AB"}), "0 : 00; % a %\n1 : AB;\nEND;\n");
    EXPECT_EQ(after("[0..1] : 00; % a % % b\n c %\nEND;\n", {"1=AB"}),
              "0 : 00;\n1 : AB; % a % % b\n c %\nEND;\n");
}

TEST(MifEdit, SplitRangeWithoutSemicolonGetsOne) {
    EXPECT_EQ(after("[0..1] : 00 -- c\n2 : 00;\nEND;\n", {"1=AB"}), "0 : 00;\n1 : AB; -- c\n2 : 00;\nEND;\n");
}

TEST(MifEdit, SplitsARangeWithoutBrackets) {
    EXPECT_EQ(after("0..3 : 00;\nEND;\n", {"3=AB"}), "0..2 : 00;\n3 : AB;\nEND;\n");
    EXPECT_EQ(after("0..3 : 00;\nEND;\n", {"1=AB"}), "0 : 00;\n1 : AB;\n[2..3] : 00;\nEND;\n");
}

TEST(MifEdit, AddressWithAStatementOfItsOwnGetsNoSecond) {
    EXPECT_EQ(after("[3..F] : 00;\n3 : 05;\nEND;\n", {"4=1"}),
              "[3..4] : 00 01;\n[5..F] : 00;\n3 : 05;\nEND;\n");
    EXPECT_EQ(after("F : 05;\n[0..F] : 00;\nEND;\n", {"F=1"}),
              "F : 05;\n[0..D] : 00;\n[E..F] : 00 01;\nEND;\n");
}

TEST(MifEdit, FillOverARangeTakesItsPlace) {
    EXPECT_EQ(after("[0..3] : 00;\nEND;\n", {"0-3=AB"}), "[0..3] : AB;\nEND;\n");
    EXPECT_EQ(after("[0..3] : 00 -- c\n 01;\nEND;\n", {"0-3=AB"}), "[0..3] : AB -- c\n ;\nEND;\n");
    EXPECT_EQ(after("[0..3] : 00 01;\nEND;\n", {"0-3=AB"}), "[0..3] : AB;\nEND;\n");
    EXPECT_EQ(after("[0..7] : 00 01;\nEND;\n", {"0-7=A,B,C"}), "[0..7] : 0A 0B 0C;\nEND;\n");
}

TEST(MifEdit, FillAroundALaterStatementStaysOneRange) {
    EXPECT_EQ(after("[0..7] : 00;\n4 : 04;\nEND;\n", {"0-7=AB"}), "[0..7] : AB;\n4 : AB;\nEND;\n");
}

// --- words that no statement sets ---

TEST(MifEdit, UnsetWordsGetLinesBeforeEnd) {
    EXPECT_EQ(after("\t00 :\t00;\n-- end\nEND;\n", {"3=AB", "5-7=1", "9-C=1,2"}),
              "\t00 :\t00;\n-- end\n\t03 :\tAB;\n\t[05..07] :\t01;\n\t[09..0C] :\t01 02;\nEND;\n");
}

TEST(MifEdit, FileWithoutStatementsGetsAllDigits) {
    EXPECT_EQ(after("END;\n", {"3=B"}), "\t3  :   0B;\nEND;\n");
}

TEST(MifEdit, EndThatSharesItsLineGetsItsOwn) {
    EXPECT_EQ(after("0 : 00; END;\n", {"3=AB"}), "0 : 00; \n3 : AB;\nEND;\n");
    EXPECT_EQ(after("0 :\n00; END;\n", {"3=AB"}), "0 :\n00; \n3 : AB;\nEND;\n");
}

TEST(MifEdit, FileWithoutEndGetsItsLinesAtTheEnd) {
    EXPECT_EQ(after("0 : 00;\n", {"3=AB"}), "0 : 00;\n3 : AB;\n");
    EXPECT_EQ(after("0 : 00;", {"3=AB"}), "0 : 00;\n3 : AB;\n");
    EXPECT_EQ(after("0 : 00; -- c", {"3=AB"}), "0 : 00; -- c\n3 : AB;\n");
}

TEST(MifEdit, NewLinesEndAsTheOthers) {
    EXPECT_EQ(after("0 : 00;\r\n[1..2] : 00;\r\nEND;\r\n", {"1=1", "3=3"}),
              "0 : 00;\r\n1 : 01;\r\n2 : 00;\r\n3 : 03;\r\nEND;\r\n");
}

// --- refused edits ---

TEST(MifEdit, AddressBeyondTheMemoryIsRefused) {
    const std::string text = header + "0 : 00;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"0=1", "10=1"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::beyond_depth);
    EXPECT_EQ(found.diagnostics[0].hint, "needs DEPTH 17 or more");
}

TEST(MifEdit, DontCareBitsThatTheRadixCannotShowAreRefused) {
    const std::string text = "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=HEX;\nDATA_RADIX=DEC;\nCONTENT BEGIN\n"
                             "0 : 0;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"0=1X", "1=2X"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_dont_care);
    EXPECT_EQ(found.diagnostics[0].message,
              "word 1X at address 0 has don't-care bits, which DEC cannot show");
}

TEST(MifEdit, LineThatWouldBecomeTooLongIsRefused) {
    const std::string text = header + "1 : 0; --" + std::string(502, 'c') + "\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"1=20"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_edit_length);
    EXPECT_EQ(after("1 : 0; --" + std::string(502, 'c') + "\nEND;\n", {"1=2"}),
              "1 : 2; --" + std::string(502, 'c') + "\nEND;\n");
}

TEST(MifEdit, LineThatIsTooLongAlreadyIsEdited) {
    const std::string comment = " --" + std::string(600, 'c');
    EXPECT_EQ(after("1 : 0;" + comment + "\nEND;\n", {"1=20"}), "1 : 20;" + comment + "\nEND;\n");
}

TEST(MifEdit, StatementOfWrongFormWithOtherAddressesIsRefused) {
    const std::string text = header + "[0..3] : 00\n 1..2;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"1=20"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_edit_statement);
}

TEST(MifEdit, RangeWithoutAValueIsRefused) {
    const std::string text = header + "[0..3] : ;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"1=20"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_edit_statement);
}

TEST(MifEdit, RangeOfWrongFormIsRefusedThoughItsFirstWordHasAStatement) {
    const std::string text = header + "[0..3] : 00\n 1..2;\n0 : 5;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"1=20"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_edit_statement);
}

TEST(MifEdit, StatementOfWrongFormOverSeveralLinesIsRefused) {
    const std::string text = header + "0\n : ;\nEND;\n";
    const edit_result found = edit_mif(text, {}, mif_model(text).result(), all_assigned({"0=20"}));
    EXPECT_TRUE(found.edits.empty());
    ASSERT_EQ(found.diagnostics.size(), 1U);
    EXPECT_EQ(found.diagnostics[0].id, diagnostic_id::mif_edit_statement);
}

TEST(MifEdit, WithoutAMemoryThereIsNothingToEdit) {
    read_result unread;
    unread.diagnostics.emplace_back();
    const edit_result found = edit_mif("", {}, unread, all_assigned({"0=1"}));
    EXPECT_TRUE(found.edits.empty());
    EXPECT_EQ(found.diagnostics.size(), 1U);
}

// --- random files ---

class random_mif {
public:
    explicit random_mif(std::uint32_t seed) : random(seed) {
        address_radix = static_cast<radix>(below(5));
        data_radix = static_cast<radix>(below(5));
        line_end = one_in(3) ? "\r\n" : "\n";
        lower = one_in(2);
        text = "WIDTH=8;" + line_end + "DEPTH=48;" + line_end +
               "ADDRESS_RADIX=" + std::string(title_of(address_radix)) + ";" + line_end +
               "DATA_RADIX=" + std::string(title_of(data_radix)) + ";" + line_end + "CONTENT BEGIN";
        text += one_in(8) ? std::string(" ") : line_end;
        for (std::uint32_t count = below(12); count > 0; --count) {
            add_statement();
        }
        if (!one_in(8)) {
            text += one_in(4) ? " end" : "END;";
            text += one_in(4) ? "" : line_end;
        }
    }

    std::vector<assignment> assignments() {
        std::vector<assignment> made;
        for (std::uint32_t count = 1 + below(4); count > 0; --count) {
            const std::uint32_t first = below(depth);
            made.push_back({{first, one_in(2) ? first : first + below(depth - first)}, {}});
            for (std::uint32_t values = one_in(2) ? 1 : 1 + below(5); values > 0; --values) {
                made.back().words.push_back(word::of(one_in(2) ? below(2) : below(256), 8));
            }
        }
        return made;
    }

    std::string text;

private:
    static constexpr std::uint32_t depth = 48;

    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(random() % limit); }
    bool one_in(std::uint32_t count) { return below(count) == 0; }
    std::string one_of(const std::vector<std::string>& choices) {
        return choices[below(static_cast<std::uint32_t>(choices.size()))];
    }

    std::string number(std::uint32_t value, radix shown_in, std::uint32_t width) {
        std::string digits = *word::of(value, width).to_text(shown_in);
        const std::size_t sign = digits.starts_with('-') ? 1 : 0;
        const std::size_t zeros = std::min(digits.find_first_not_of('0', sign), digits.size() - 1) - sign;
        digits.erase(sign, below(static_cast<std::uint32_t>(zeros) + 1));
        if (lower) {
            std::ranges::transform(digits, digits.begin(), [](char c) {
                return c >= 'A' && c <= 'F' ? static_cast<char>(c + 32) : c;
            });
        }
        return digits;
    }
    /// A number that does not begin with "-" in any radix.
    std::string address(std::uint32_t value) { return number(value, address_radix, 12); }
    std::string value() { return number(one_in(2) ? below(2) : below(256), data_radix, 8); }
    std::string blank() { return one_of({"", " ", "\t", "  "}); }
    /// Text that is allowed between two parts of a statement.
    std::string gap() {
        return one_in(12) ? one_of({" -- c : 1;" + line_end, " % c %" + line_end + " ", line_end + "\t"})
                          : blank();
    }
    std::string values(std::uint32_t count) {
        std::string result = value();
        for (; count > 1; --count) {
            result += one_in(8) ? " -- 0 : 1;" + line_end + "  " : one_of({" ", "  ", ", ", "\t"});
            result += value();
        }
        return result;
    }
    std::string statement(std::uint32_t first) {
        const std::uint32_t last = first + below(std::min(depth - first, 20U));
        if (one_in(2) && last > first) {
            const std::uint32_t most = last - first + 1;
            const bool has_brackets = needs_brackets || !one_in(10);
            return (has_brackets ? "[" + gap() : "") + address(first) + (has_brackets ? gap() : "") + ".." +
                   (has_brackets ? gap() : "") + address(last) + (has_brackets ? gap() + "]" : "") + gap() +
                   ":" + gap() + values(1 + below(std::min(most, 5U)));
        }
        const std::uint32_t count = one_in(3) ? 1 + below(std::min(depth - first, 6U)) : 1;
        if (count == 1 && !single.insert(first).second) {
            return "";
        }
        return (one_in(10) && count == 1 ? "[" + address(first) + "]" : address(first)) + gap() + ":" +
               gap() + values(count);
    }
    void add_statement() {
        const std::string made = statement(below(depth));
        if (made.empty()) {
            return;
        }
        text += one_of({"", "\t", "  ", "-- c" + line_end, "% c" + line_end + " c %" + line_end, "% c % "});
        text += made;
        needs_brackets = one_in(12);
        if (needs_brackets) {
            text += line_end; // without ";", so that "0..1" on the next line becomes values
            return;
        }
        text += blank() + ";";
        text += one_of({line_end, line_end, line_end, " -- c" + line_end, " % c %" + line_end, " ",
                        " % c" + line_end + "c %" + line_end});
    }

    std::mt19937 random;
    radix address_radix;
    radix data_radix;
    std::string line_end;
    bool lower = false;
    bool needs_brackets = false;
    std::set<std::uint32_t> single;
};

/// True if @p edit is in the lines of a statement that sets one of the addresses of @p made, in the line of
/// END, or at the end of the file.
bool is_where_words_stand(const text_edit& edit, const mif_model& file, const std::vector<assignment>& made) {
    const auto is_within = [&](std::uint64_t begin, std::uint64_t end) {
        return start_of_line(file.contents, begin) <= edit.offset &&
               edit.offset + edit.length <= end_of_line(file.contents, end);
    };
    const std::uint64_t end = file.end_keyword ? file.end_keyword->offset : file.contents.size();
    const bool is_before_end = edit.length == 0 && is_within(end, end);
    return is_before_end || std::ranges::any_of(made, [&](const assignment& each) {
               const auto from = file.setters.lower_bound(each.addresses.first);
               const auto to = file.setters.upper_bound(each.addresses.last);
               return std::any_of(from, to, [&](const auto& setter) {
                   return is_within(setter.second.offset, setter.second.end());
               });
           });
}

std::uint64_t count_of(const read_result& found, diagnostic_class level) {
    return static_cast<std::uint64_t>(std::ranges::count_if(
        found.diagnostics, [level](const diagnostic& each) { return about(each.id).level == level; }));
}

std::string listed(const read_result& found) {
    std::string text;
    for (const diagnostic& each : found.diagnostics) {
        text += std::to_string(each.where.line) + ": " + each.message + "\n";
    }
    return text;
}

TEST(MifEdit, RandomFilesThatAreReadStayReadable) {
    std::size_t edited = 0;
    std::size_t clean = 0;
    const auto files = static_cast<std::uint32_t>(rounds(4000));
    for (std::uint32_t seed = 10000; seed < 10000 + files; ++seed) {
        SCOPED_TRACE(seed);
        random_mif file(seed);
        const std::vector<assignment> made = file.assignments();
        const read_result before = read_mif(file.text, {});
        if (count_of(before, diagnostic_class::broken) != 0) {
            continue;
        }
        ++edited;
        const edit_result found = edit_mif(file.text, {}, before, made);
        EXPECT_TRUE(found.diagnostics.empty());
        const std::string text = edited_text(file.text, found.edits);
        const read_result after = read_mif(text, {});
        memory_image expected = *before.image;
        for (const assignment& each : made) {
            expected.fill(each.addresses, each.words);
        }
        EXPECT_TRUE(after.image && *after.image == expected) << file.text << "\nbecame\n"
                                                             << text << listed(after);
        if (count_of(before, diagnostic_class::consumer) == 0) {
            ++clean;
            EXPECT_EQ(count_of(after, diagnostic_class::consumer), 0U) << file.text << "\nbecame\n"
                                                                       << text << listed(after);
        }
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(edited, files / 4);
    EXPECT_GT(clean, files / 14);
}

TEST(MifEdit, RandomFilesHoldTheNewWordsAndKeepOtherLines) {
    const auto files = static_cast<std::uint32_t>(rounds(4000));
    for (std::uint32_t seed = 0; seed < files; ++seed) {
        SCOPED_TRACE(seed);
        random_mif file(seed);
        const std::vector<assignment> made = file.assignments();
        after_edit(file.text, made);
        const mif_model before(file.text);
        for (const text_edit& edit : edit_mif(file.text, {}, before.result(), made).edits) {
            EXPECT_TRUE(is_where_words_stand(edit, before, made)) << file.text << "\nat " << edit.offset;
        }
        if (HasFailure()) {
            return;
        }
    }
}

// --- lines of values ---

TEST(MifLineStyle, ValuesBeyondTheLimitGoOnInANewLine) {
    mif_line_style style;
    style.between = " ";
    style.indent = "";
    std::string text = "0 : 11";
    append_values(text, {"11", "22", "33", "44"}, 1, style, "\r\n", text.size(), 9);
    EXPECT_EQ(text, "0 : 11 22\r\n 33 44") << "a blank keeps them apart without an indent";
    style.indent = "  ";
    text = "  0 : 11";
    append_values(text, {"11", "22"}, 1, style, "\n", text.size(), 9);
    EXPECT_EQ(text, "  0 : 11\n  22");
}

} // namespace
