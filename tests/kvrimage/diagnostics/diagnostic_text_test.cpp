#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/diagnostic_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace kvrimage;

diagnostic complete(diagnostic found, std::string_view contents) {
    diagnostic_list list;
    list.add(std::move(found));
    return list.finish(contents).front();
}

diagnostic too_wide_at(const places& where, std::string_view contents) {
    return complete(diagnose::too_wide(where, "1FF", 9, 8, "WIDTH", 9), contents);
}

/// The first diagnostic of the class.
diagnostic of_class(diagnostic_class level) {
    diagnostic found;
    while (about(found.id).level != level) {
        found.id = static_cast<diagnostic_id>(static_cast<int>(found.id) + 1);
    }
    found.message = "m";
    return found;
}

TEST(DiagnosticText, ShowsThePlaceItsLineAndTheHint) {
    constexpr std::string_view contents = "WIDTH=8;\n0 : 1FF;\n";
    EXPECT_EQ(diagnostic_text(too_wide_at(span{13, 3}, contents), "boot.mif", contents),
              "boot.mif:2:5: error: value 1FF needs 9 bits, the words have 8\n"
              "  0 : 1FF;\n"
              "      ^~~\n"
              "  hint: needs WIDTH 9\n");
}

TEST(DiagnosticText, LeavesTheCarriageReturnOut) {
    constexpr std::string_view contents = "0 : 1FF;\r\n1 : 0;\r\n";
    EXPECT_EQ(diagnostic_text(too_wide_at(span{4, 3}, contents), "a", contents),
              "a:1:5: error: value 1FF needs 9 bits, the words have 8\n"
              "  0 : 1FF;\n"
              "      ^~~\n"
              "  hint: needs WIDTH 9\n");
}

TEST(DiagnosticText, ShowsAPlaceAtTheEndOfTheFile) {
    EXPECT_EQ(diagnostic_text(too_wide_at(span{2, 1}, "0\n"), "a", "0\n"),
              "a:2:1: error: value 1FF needs 9 bits, the words have 8\n  \n  ^\n  hint: needs WIDTH 9\n");
}

TEST(DiagnosticText, OfTheWholeFileHasNoLine) {
    EXPECT_EQ(diagnostic_text(diagnose::no_words(places()), "a", "0\n"),
              "a: warning: the file sets no word\n");
}

TEST(DiagnosticText, WithoutContentsHasNoExcerpt) {
    EXPECT_EQ(diagnostic_text(too_wide_at(span{2, 1}, "0\n1\n"), "a", ""),
              "a:2:1: error: value 1FF needs 9 bits, the words have 8\n  hint: needs WIDTH 9\n");
}

TEST(DiagnosticText, WithOtherContentsHasNoExcerpt) {
    EXPECT_EQ(diagnostic_text(too_wide_at(span{20, 1}, std::string(30, '\n')), "a", "0"),
              "a:21:1: error: value 1FF needs 9 bits, the words have 8\n  hint: needs WIDTH 9\n");
}

TEST(DiagnosticText, EscapesWhatTheMessageQuotes) {
    diagnostic found = of_class(diagnostic_class::broken);
    found.message = "bad \x1B[2J";
    found.hint = "no \n";
    EXPECT_EQ(diagnostic_text(found, "a", ""), "a: error: bad \\x1B[2J\n  hint: no \\x0A\n");
}

TEST(DiagnosticText, SaysWhatEachClassMeans) {
    EXPECT_EQ(level_of(of_class(diagnostic_class::broken)), "error");
    EXPECT_EQ(level_of(of_class(diagnostic_class::suspect)), "warning");
    diagnostic found = of_class(diagnostic_class::consumer);
    found.consumer = "kvr";
    EXPECT_EQ(level_of(found), "error for kvr");
    EXPECT_EQ(diagnostic_text(found, "a", ""), "a: error for kvr: m\n");
}

/// The line of a diagnostic with places at the first bytes of the lines @p lines and @p unseen more places.
std::string further_places(std::initializer_list<std::uint64_t> lines, std::uint64_t unseen = 0) {
    const std::string contents(200, '\n');
    places where;
    for (const std::uint64_t line : lines) {
        where.add({line - 1, 1});
    }
    diagnostic found = too_wide_at(where, contents);
    found.count += unseen;
    found.hint = "";
    const std::string text = diagnostic_text(found, "a", "");
    return text.substr(text.find('\n') + 1);
}

TEST(DiagnosticText, ListsTheLinesOfFurtherPlaces) {
    EXPECT_EQ(further_places({7}), "");
    EXPECT_EQ(further_places({7, 8}), "  also in line 8\n");
    EXPECT_EQ(further_places({7, 8, 9}), "  also in lines 8 and 9\n");
    EXPECT_EQ(further_places({7, 8, 9, 11}), "  also in lines 8, 9 and 11\n");
}

TEST(DiagnosticText, ListsEachLineOnce) {
    EXPECT_EQ(further_places({6, 7, 7}), "  also in line 7\n");
    EXPECT_EQ(further_places({7, 8, 8, 9, 9, 9}), "  also in lines 8 and 9\n");
}

TEST(DiagnosticText, CountsThePlacesThatItDoesNotList) {
    EXPECT_EQ(further_places({1, 2, 3, 4, 5, 6, 7}), "  also in lines 2, 3, 4, 5, 6 and 1 more place\n");
    EXPECT_EQ(further_places({1, 2, 3, 4, 5, 6, 6, 7}), "  also in lines 2, 3, 4, 5, 6 and 1 more place\n");
    EXPECT_EQ(further_places({1, 2, 3}, 50), "  also in lines 2, 3 and 50 more places\n");
    EXPECT_EQ(further_places({1, 2}, 49999), "  also in line 2 and 49999 more places\n");
}

TEST(DiagnosticText, DoesNotListTheLineOfTheFirstPlace) {
    EXPECT_EQ(further_places({7, 7}), "  also in 1 more place\n");
    EXPECT_EQ(further_places({7, 8, 7}), "  also in line 8 and 1 more place\n");
}

TEST(DiagnosticText, CountsPlacesThatAreNotKnown) {
    EXPECT_EQ(further_places({1}, 3), "  also in 3 more places\n");
}

TEST(DiagnosticText, IsColouredByItsCaller) {
    const text_painter paint = [](text_part part, std::string_view text) {
        constexpr std::string_view marks = "pewm";
        return std::string(1, marks[static_cast<std::size_t>(part)]) + "<" + std::string(text) + ">";
    };
    EXPECT_EQ(diagnostic_text(too_wide_at(span{2, 2}, "  1FF"), "a", "  1FF", paint),
              "p<a:1:3:> e<error:> value 1FF needs 9 bits, the words have 8\n"
              "    1FF\n"
              "    m<^~>\n"
              "  hint: needs WIDTH 9\n");
    EXPECT_EQ(diagnostic_text(diagnose::no_words(places()), "a", "", paint),
              "p<a:> w<warning:> the file sets no word\n");
}

} // namespace
