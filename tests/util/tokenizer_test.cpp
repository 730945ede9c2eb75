#include "kvr/util/tokenizer.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace {

struct cut {
    std::string token;
    std::string rest;

    bool operator==(const cut& other) const { return token == other.token && rest == other.rest; }
};

void PrintTo(const cut& value, std::ostream* out) {
    *out << "token \"" << value.token << "\", rest \"" << value.rest << '"';
}

cut cut_at_any(std::string rest, const std::string& delimiters) {
    std::string token = kvr_get_token(rest, delimiters, false);
    return {token, rest};
}

cut cut_at_whole(std::string rest, const std::string& delimiter) {
    std::string token = kvr_get_token(rest, delimiter, true);
    return {token, rest};
}

TEST(Tokenizer, WalksThroughAListAndThenGivesEmptyTokens) {
    std::string rest = "a,b";
    EXPECT_EQ(kvr_get_token(rest, ",;", false), "a");
    EXPECT_EQ(rest, "b");
    EXPECT_EQ(kvr_get_token(rest, ",;", false), "b");
    EXPECT_EQ(rest, "");
    EXPECT_EQ(kvr_get_token(rest, ",;", false), "");
    EXPECT_EQ(rest, "");
}

TEST(Tokenizer, LeadingDelimiterGivesAnEmptyToken) {
    EXPECT_EQ(cut_at_any(",a", ","), (cut{"", "a"}));
}

TEST(Tokenizer, AdjacentDelimitersEncloseAnEmptyToken) {
    std::string rest = "a,;b";
    EXPECT_EQ(kvr_get_token(rest, ",;", false), "a");
    EXPECT_EQ(kvr_get_token(rest, ",;", false), "");
    EXPECT_EQ(rest, "b");
}

TEST(Tokenizer, DelimiterAtTheEndLeavesAnEmptyRest) {
    EXPECT_EQ(cut_at_any("a,", ","), (cut{"a", ""}));
}

TEST(Tokenizer, FirstOfSeveralDelimitersInTheTextCounts) {
    EXPECT_EQ(cut_at_any("a;b,c", ",;"), (cut{"a", "b,c"}));
}

TEST(Tokenizer, EmptyDelimitersAreNotFound) {
    EXPECT_EQ(cut_at_any("a,b", ""), (cut{"a,b", ""}));
}

TEST(Tokenizer, DelimitersCompareByCaseAndByByte) {
    EXPECT_EQ(cut_at_any("aXbxc", "x"), (cut{"aXb", "c"}));
    EXPECT_EQ(cut_at_any("a\xE9"
                         "b",
                         "\xE9"),
              (cut{"a", "b"}));
    EXPECT_EQ(cut_at_any(std::string("a\0b", 3), std::string(1, '\0')), (cut{"a", "b"}));
}

TEST(Tokenizer, NothingIsTrimmed) {
    EXPECT_EQ(cut_at_any(" a , b", ","), (cut{" a ", " b"}));
}

TEST(Tokenizer, WholeDelimiterIsOneDelimiter) {
    EXPECT_EQ(cut_at_whole("one::two::three", "::"), (cut{"one", "two::three"}));
}

TEST(Tokenizer, WholeDelimiterAbsentGivesTheWholeRest) {
    EXPECT_EQ(cut_at_whole("a,b,c", ",x"), (cut{"a,b,c", ""}));
}

TEST(Tokenizer, WholeDelimiterCutShortByTheEndIsNotFound) {
    EXPECT_EQ(cut_at_whole("abc->", "->>"), (cut{"abc->", ""}));
    EXPECT_EQ(cut_at_whole("-", "->"), (cut{"-", ""}));
}

TEST(Tokenizer, WholeDelimiterComparesByCase) {
    EXPECT_EQ(cut_at_whole("aENDbendc", "end"), (cut{"aENDb", "c"}));
}

TEST(Tokenizer, WholeDelimiterOfOneCharacterIsThatCharacter) {
    EXPECT_EQ(cut_at_whole("a,b,c", ","), (cut{"a", "b,c"}));
    EXPECT_EQ(cut_at_whole(",a", ","), (cut{"", "a"}));
    EXPECT_EQ(cut_at_whole("ab", ","), (cut{"ab", ""}));
}

TEST(Tokenizer, OnePieceThatBeginsTheWholeDelimiterIsKept) {
    EXPECT_EQ(cut_at_whole("xaaby", "ab"), (cut{"xa", "y"}));
}

TEST(Tokenizer, OnlyTheLastPieceThatBeginsTheWholeDelimiterIsKept) {
    EXPECT_EQ(cut_at_whole("a,b,c,xd", ",x"), (cut{"b,c", "d"}));
    EXPECT_EQ(cut_at_whole(",,,,x", ",x"), (cut{",", ""}));
}

TEST(Tokenizer, EmptyWholeDelimiterIsNotFound) {
    EXPECT_EQ(cut_at_whole("abc", ""), (cut{"abc", ""}));
}

TEST(Tokenizer, EmptyRestGivesAnEmptyToken) {
    EXPECT_EQ(cut_at_any("", ","), (cut{"", ""}));
    EXPECT_EQ(cut_at_whole("", ",x"), (cut{"", ""}));
}

// The search step by step: one piece at a time, with the last piece without a match kept before it.
cut cut_step_by_step(const std::string& rest, const std::string& delimiter) {
    std::string work = rest;
    std::string prefix;
    while (!work.empty()) {
        const std::size_t begin = work.find(delimiter[0]);
        if (begin == std::string::npos) {
            break;
        }
        const std::string piece = work.substr(0, begin);
        work = work.substr(begin + 1);
        std::size_t matched = 0;
        while (matched + 1 < delimiter.size() && matched < work.size() &&
               work[matched] == delimiter[matched + 1]) {
            ++matched;
        }
        if (matched + 1 == delimiter.size()) {
            return {prefix + piece, work.substr(matched)};
        }
        prefix = piece + delimiter[0];
    }
    return {rest, ""};
}

std::vector<std::string> texts_up_to(std::size_t length, const std::string& alphabet) {
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size() && texts[i].size() < length; ++i) {
        for (const char letter : alphabet) {
            texts.push_back(texts[i] + letter);
        }
    }
    return texts;
}

TEST(Tokenizer, WholeDelimiterAgreesWithAStepByStepSearchOfAllShortTexts) {
    const std::vector<std::string> delimiters = texts_up_to(3, "abc");
    for (const std::string& text : texts_up_to(7, "abc")) {
        for (const std::string& delimiter : delimiters) {
            if (!delimiter.empty()) {
                ASSERT_EQ(cut_at_whole(text, delimiter), cut_step_by_step(text, delimiter))
                    << '"' << text << "\" at \"" << delimiter << '"';
            }
        }
    }
}

std::string random_text(std::mt19937& random, std::size_t shortest, std::size_t longest) {
    std::string text(std::uniform_int_distribution<std::size_t>(shortest, longest)(random), ' ');
    for (char& letter : text) {
        letter = "abc"[std::uniform_int_distribution<std::size_t>(0, 2)(random)];
    }
    return text;
}

TEST(Tokenizer, WholeDelimiterAgreesWithAStepByStepSearchOfRandomTexts) {
    std::mt19937 random(20240607);
    for (int round = 0; round < 20000; ++round) {
        const std::string text = random_text(random, 0, 60);
        const std::string delimiter = random_text(random, 1, 5);
        ASSERT_EQ(cut_at_whole(text, delimiter), cut_step_by_step(text, delimiter))
            << '"' << text << "\" at \"" << delimiter << '"';
    }
}

TEST(TokenizerWithDelimiter, ReportsWhichDelimiterWasFound) {
    std::string rest = "key=val";
    std::string found = "before";
    EXPECT_EQ(kvr_get_token_with_delimiter(rest, "=:", found), "key");
    EXPECT_EQ(found, "=");
    EXPECT_EQ(rest, "val");
}

TEST(TokenizerWithDelimiter, ReportsThatNoneWasFound) {
    std::string rest = "key";
    std::string found = "before";
    EXPECT_EQ(kvr_get_token_with_delimiter(rest, "=:", found), "key");
    EXPECT_EQ(found, "");
    EXPECT_EQ(rest, "");
}

TEST(TokenizerWithDelimiter, ConsumesOneDelimiterOnly) {
    std::string rest = "a:=b";
    std::string found;
    EXPECT_EQ(kvr_get_token_with_delimiter(rest, "=:", found), "a");
    EXPECT_EQ(found, ":");
    EXPECT_EQ(rest, "=b");
}

TEST(TokenAtIndex, CountsFromZero) {
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", 0), "a");
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", 1), "b");
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", 2), "c");
}

TEST(TokenAtIndex, IsEmptyOutsideTheList) {
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", 3), "");
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", INT_MAX), "");
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", -1), "");
    EXPECT_EQ(kvr_get_token_at_index("a|b|c", INT_MIN), "");
}

TEST(TokenAtIndex, KeepsEmptyTokens) {
    EXPECT_EQ(kvr_get_token_at_index("|b||d|", 0), "");
    EXPECT_EQ(kvr_get_token_at_index("|b||d|", 1), "b");
    EXPECT_EQ(kvr_get_token_at_index("|b||d|", 2), "");
    EXPECT_EQ(kvr_get_token_at_index("|b||d|", 3), "d");
    EXPECT_EQ(kvr_get_token_at_index("|b||d|", 4), "");
}

TEST(TokenAtIndex, EmptyTextHasEmptyTokens) {
    EXPECT_EQ(kvr_get_token_at_index("", 0), "");
}

} // namespace
