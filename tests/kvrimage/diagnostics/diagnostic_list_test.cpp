#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_list.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using namespace kvrimage;

diagnostic broken_at(std::uint64_t offset, std::uint64_t length = 1) {
    return diagnose::too_wide(span{offset, length}, "1FF", 9, 8, "WIDTH", 9);
}

diagnostic suspect() {
    return diagnose::no_words(places());
}

diagnostic with_fix(diagnostic found) {
    found.fix = {{0, 1, "x"}};
    return found;
}

TEST(DiagnosticList, KeepsALimitOfEachClassAndCountsAll) {
    diagnostic_list list(2);
    for (std::uint64_t offset = 1; offset <= 5; ++offset) {
        EXPECT_EQ(list.has_room(diagnostic_class::broken), offset <= 2);
        list.add(broken_at(offset));
    }
    list.add(suspect());
    EXPECT_TRUE(list.has_room(diagnostic_class::suspect));
    EXPECT_EQ(list.count(diagnostic_class::broken), 5U);
    EXPECT_EQ(list.count(diagnostic_class::suspect), 1U);
    EXPECT_EQ(list.count(diagnostic_class::consumer), 0U);
    EXPECT_EQ(list.left_out(), 3U);
    EXPECT_EQ(list.finish("").size(), 3U);
    EXPECT_EQ(list.left_out(), 3U);
    EXPECT_TRUE(list.finish("").empty());
}

TEST(DiagnosticList, LeavesOutWhatIsBeyondTheLimitOfEachClass) {
    diagnostic_list list(1);
    for (std::uint64_t offset = 0; offset < 3; ++offset) {
        list.add(broken_at(offset));
        list.add(suspect());
    }
    EXPECT_EQ(list.left_out(), 4U);
}

/// Repairs a file with an edit that inserts @p inserted.
std::string repair_in(const std::string& contents, const std::string& inserted) {
    diagnostic found = broken_at(0);
    found.fix = {{0, 0, inserted}};
    diagnostic_list list;
    list.add(found);
    return list.finish(contents)[0].fix[0].replacement;
}

TEST(DiagnosticList, RepairsEndLinesAsTheFileDoes) {
    EXPECT_EQ(repair_in("a\r\nb\n", "\nx\r\ny\n"), "\r\nx\r\ny\r\n");
    EXPECT_EQ(repair_in("\r\nb\n", "\n\nx\r\n\n"), "\r\n\r\nx\r\n\r\n");
    EXPECT_EQ(repair_in("a\nb\r\n", "x\n"), "x\n");
    EXPECT_EQ(repair_in("\na\r\n", "x\n"), "x\n");
    EXPECT_EQ(repair_in("a\rb", "x\n"), "x\n");
}

TEST(DiagnosticList, KnowsWhetherTheFileIsBroken) {
    diagnostic_list list(0);
    list.add(suspect());
    EXPECT_FALSE(list.has_broken());
    list.add(broken_at(1));
    EXPECT_TRUE(list.has_broken());
}

TEST(DiagnosticList, KeepsEveryRepairWhereThatIsWanted) {
    diagnostic_list list(1, true);
    for (std::uint64_t offset = 1; offset <= 3; ++offset) {
        list.add(broken_at(offset));
        list.add(with_fix(broken_at(offset + 10)));
        EXPECT_TRUE(list.has_room(diagnostic_class::broken));
    }
    EXPECT_EQ(list.left_out(), 2U);
    const auto kept = list.finish(std::string(20, '\n'));
    ASSERT_EQ(kept.size(), 4U);
    EXPECT_EQ(kept[0].where.offset, 1U);
    for (std::size_t i = 1; i < kept.size(); ++i) {
        EXPECT_EQ(kept[i].where.offset, 10 + i);
    }
}

TEST(DiagnosticList, LeavesRepairsOutLikeOthersOtherwise) {
    diagnostic_list list(1);
    list.add(broken_at(1));
    list.add(with_fix(broken_at(2)));
    EXPECT_EQ(list.finish("abc").size(), 1U);
}

TEST(DiagnosticList, IsInTheOrderOfTheFileAndEndsWithTheWholeFile) {
    diagnostic_list list;
    list.add(suspect());
    list.add(broken_at(5));
    list.add(broken_at(0));
    list.add(broken_at(3, 2));
    list.add(broken_at(3, 1));
    const auto found = list.finish("0123456789");
    ASSERT_EQ(found.size(), 5U);
    EXPECT_EQ(found[0].where, (place{1, 1, 0, 1}));
    EXPECT_EQ(found[1].where, (place{1, 4, 3, 1}));
    EXPECT_EQ(found[2].where, (place{1, 4, 3, 2}));
    EXPECT_EQ(found[3].where, (place{1, 6, 5, 1}));
    EXPECT_EQ(found[4].where, place{});
}

TEST(DiagnosticList, HasTheLinesOfFurtherPlaces) {
    diagnostic_list list;
    places where;
    where.add({4, 1});
    where.add({2, 1}); // places with the same cause may be in any order
    where.add({8, 1});
    list.add(diagnose::too_wide(where, "1FF", 9, 8, "WIDTH", 9));
    const auto found = list.finish("0\n2\n4\n6\n8");
    ASSERT_EQ(found[0].more.size(), 2U);
    EXPECT_EQ(found[0].where, (place{3, 1, 4, 1}));
    EXPECT_EQ(found[0].more[0], (place{2, 1, 2, 1}));
    EXPECT_EQ(found[0].more[1], (place{5, 1, 8, 1}));
}

TEST(DiagnosticList, HasLinesAndColumnsLikeACountOfTheText) {
    std::mt19937 random(11);
    for (int round = 0; round < 200; ++round) {
        std::string text;
        for (std::size_t size = random() % 60; size != 0; --size) {
            text += random() % 4 == 0 ? '\n' : 'x';
        }
        diagnostic_list list;
        for (int i = 0; i < 10; ++i) {
            list.add(broken_at(random() % (text.size() + 3)));
        }
        for (const diagnostic& found : list.finish(text)) {
            const std::string before = text.substr(0, found.where.offset);
            const auto line = static_cast<std::uint64_t>(std::count(before.begin(), before.end(), '\n')) + 1;
            ASSERT_EQ(found.where.line, line);
            ASSERT_EQ(found.where.column, before.size() - (before.rfind('\n') + 1) + 1);
        }
    }
}

TEST(DiagnosticList, SortsWhatWasCompletedBefore) {
    std::vector<diagnostic> found = {suspect(), broken_at(7), broken_at(2)};
    sort_by_place(found);
    EXPECT_EQ(found[0].where.offset, 2U);
    EXPECT_EQ(found[1].where.offset, 7U);
    EXPECT_EQ(found[2].where, place{});
}

} // namespace
