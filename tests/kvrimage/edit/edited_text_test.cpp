#include "kvrimage/edit/edited_text.h"
#include "kvrimage/exchange/string_sink.h"
#include "kvrimage/formats/memory_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

namespace {

using namespace kvrimage;
using testing::ElementsAre;

std::string written(std::string_view contents, std::span<const text_edit> edits) {
    string_sink output;
    write_edited(contents, edits, output);
    return output.text;
}

TEST(EditedText, HasTheReplacementsAndTheRest) {
    const text_edit edits[] = {{0, 1, "AB"}, {3, 0, "-"}, {4, 2, ""}};
    EXPECT_EQ(written("012345", edits), "AB12-3");
    EXPECT_EQ(with_edits("012345", edits), "AB12-3");
}

TEST(EditedText, WithoutEditsIsTheSame) {
    EXPECT_EQ(with_edits("012345", {}), "012345");
    EXPECT_EQ(written("", {}), "");
}

TEST(EditedText, MayGrowAtItsEnd) {
    const text_edit edits[] = {{3, 0, "45"}};
    EXPECT_EQ(with_edits("012", edits), "01245");
}

TEST(EditedText, StaysInItsStringWhereItFits) {
    for (const std::uint64_t replaced : {100U, 6U}) {
        std::string contents(1000, 'x');
        contents.shrink_to_fit();
        const char* const before = contents.data();
        const text_edit edits[] = {{0, 1, "longer"}, {500, replaced, "y"}};
        const std::string edited = with_edits(std::move(contents), edits);
        EXPECT_EQ(edited.data(), before);
        EXPECT_EQ(edited.size(), 1006 - replaced);
    }
}

TEST(EditedText, IsTheSameInPlaceAndPieceByPiece) {
    std::mt19937 random(3);
    for (int round = 0; round < 3000; ++round) {
        std::string contents;
        for (std::size_t size = random() % 80; size != 0; --size) {
            contents += static_cast<char>('a' + random() % 26);
        }
        std::vector<text_edit> edits;
        for (std::size_t at = random() % 10; at <= contents.size(); at += random() % 20) {
            const std::size_t length = std::min<std::size_t>(random() % 8, contents.size() - at);
            edits.push_back({at, length, std::string(random() % 12, 'X')});
            at += length + 1;
        }
        const std::string expected = written(contents, edits);
        std::string roomy = contents;
        roomy.reserve(2000);
        ASSERT_EQ(with_edits(std::move(roomy), edits), expected);
        ASSERT_EQ(with_edits(contents, edits), expected);
    }
}

diagnostic with_fix(std::vector<text_edit> fix) {
    diagnostic found;
    found.fix = std::move(fix);
    return found;
}

TEST(FixesAtOnce, AreInTheOrderOfTheFile) {
    const diagnostic found[] = {with_fix({{5, 1, "a"}}), diagnostic(), with_fix({{0, 1, "b"}, {9, 1, "c"}})};
    std::vector<bool> taken;
    EXPECT_THAT(fixes_at_once(found, taken),
                ElementsAre(text_edit{0, 1, "b"}, text_edit{5, 1, "a"}, text_edit{9, 1, "c"}));
    EXPECT_THAT(taken, ElementsAre(true, false, true));
}

TEST(FixesAtOnce, LeaveTheLaterOfTwoThatTouch) {
    const diagnostic found[] = {with_fix({{4, 4, "a"}}), with_fix({{2, 3, "b"}, {20, 1, "c"}}),
                                with_fix({{7, 1, "d"}}), with_fix({{8, 1, "e"}})};
    std::vector<bool> taken;
    EXPECT_THAT(fixes_at_once(found, taken), ElementsAre(text_edit{4, 4, "a"}, text_edit{8, 1, "e"}));
    EXPECT_THAT(taken, ElementsAre(true, false, false, true));
}

TEST(FixesAtOnce, AreNotLeftForOneThatIsLeft) {
    const diagnostic found[] = {with_fix({{0, 2, "a"}}), with_fix({{1, 1, "b"}, {6, 1, "c"}}),
                                with_fix({{5, 2, "d"}})};
    std::vector<bool> taken;
    EXPECT_THAT(fixes_at_once(found, taken), ElementsAre(text_edit{0, 2, "a"}, text_edit{5, 2, "d"}));
    EXPECT_THAT(taken, ElementsAre(true, false, true));
}

TEST(FixesAtOnce, LeaveTheLaterOfTwoInsertionsAtOnePlace) {
    const diagnostic found[] = {with_fix({{4, 0, "a"}}), with_fix({{4, 0, "b"}})};
    std::vector<bool> taken;
    EXPECT_THAT(fixes_at_once(found, taken), ElementsAre(text_edit{4, 0, "a"}));
}

TEST(FixesAtOnce, MayHaveEditsSideBySide) {
    const diagnostic found[] = {with_fix({{4, 2, "a"}, {6, 0, "b"}}), with_fix({{2, 2, "c"}})};
    std::vector<bool> taken;
    EXPECT_EQ(fixes_at_once(found, taken).size(), 3U);
}

TEST(FixesAtOnce, NeverOverlapAndAlwaysHaveTheFirst) {
    std::mt19937 random(5);
    for (int round = 0; round < 3000; ++round) {
        std::vector<diagnostic> found(random() % 6 + 1);
        for (diagnostic& each : found) {
            for (std::uint64_t at = random() % 30; at < 40; at += random() % 20 + 1) {
                const std::uint64_t length = random() % 5;
                each.fix.push_back({at, length, "x"});
                at += length;
            }
        }
        std::vector<bool> taken;
        const std::vector<text_edit> edits = fixes_at_once(found, taken);
        ASSERT_TRUE(taken.front());
        std::size_t count = 0;
        for (std::size_t i = 0; i < found.size(); ++i) {
            count += taken[i] ? found[i].fix.size() : 0;
        }
        ASSERT_EQ(edits.size(), count);
        for (std::size_t i = 1; i < edits.size(); ++i) {
            ASSERT_GE(edits[i].offset, edits[i - 1].offset + edits[i - 1].length);
        }
    }
}

} // namespace
