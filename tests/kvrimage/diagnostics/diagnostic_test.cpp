#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(NamedText, QuotesAFileAsItIs) {
    EXPECT_EQ(named_text(std::string_view("a\0\xFF", 3)).text(), std::string("a\0\xFF", 3));
    EXPECT_EQ(named_text("4K").text(), "4K");
    EXPECT_EQ(named_text(std::string("x")).text(), "x");
    EXPECT_EQ(named_text(std::uint64_t{1} << 63U).text(), "9223372036854775808");
    EXPECT_EQ(named_text(-1).text(), "-1");
}

TEST(NamedText, IsCutAfterItsLimit) {
    const std::string longest(named_text::longest, 'x');
    EXPECT_EQ(named_text(longest).text(), longest);
    EXPECT_EQ(named_text(longest + "y").text(), longest + "...");
}

TEST(NamedText, IsNotCutWithinACharacter) {
    const std::string three_less(named_text::longest - 3, 'x');
    EXPECT_EQ(named_text(three_less + "\xF0\x9F\x98\x80").text(), three_less + "...");
    EXPECT_EQ(named_text(three_less + "\xE6\xBC\xA2z").text(), three_less + "\xE6\xBC\xA2...");
}

TEST(NamedText, KeepsMostOfWhatIsNoUtf8) {
    EXPECT_EQ(named_text(std::string(1000, '\x80')).text(),
              std::string(named_text::longest - 3, '\x80') + "...");
}

TEST(Place, IsAnotherWhenOneOfItsNumbersIs) {
    const place one{1, 2, 3, 4};
    EXPECT_TRUE((one == place{1, 2, 3, 4}));
    EXPECT_FALSE((one == place{9, 2, 3, 4}));
    EXPECT_FALSE((one == place{1, 9, 3, 4}));
    EXPECT_FALSE((one == place{1, 2, 9, 4}));
    EXPECT_FALSE((one == place{1, 2, 3, 9}));
}

TEST(Diagnose, FillsInTheNames) {
    const diagnostic made = diagnose::too_wide(span{4, 3}, "1FF", 9, 8, "WIDTH", 9);
    EXPECT_EQ(made.message, "value 1FF needs 9 bits, the words have 8");
    EXPECT_EQ(made.hint, "needs WIDTH 9");
    EXPECT_EQ(made.where, (place{0, 0, 4, 3}));
    EXPECT_EQ(made.count, 1U);
    EXPECT_TRUE(made.more.empty());
    EXPECT_EQ(about(made.id).code, "too-wide");
    EXPECT_EQ(about(made.id).level, diagnostic_class::broken);
    EXPECT_EQ(made.consumer, "");
}

TEST(Diagnose, KeepsTheFirstTenPlacesAndCountsAll) {
    places where;
    for (std::uint64_t offset = 0; offset < 50; ++offset) {
        where.add({offset * 10, 1});
    }
    const diagnostic made = diagnose::too_wide(where, "1FF", 9, 8, "WIDTH", 9);
    EXPECT_EQ(made.where.offset, 0U);
    ASSERT_EQ(made.more.size(), 9U);
    EXPECT_EQ(made.more.back().offset, 90U);
    EXPECT_EQ(made.count, 50U);
}

TEST(Diagnose, WithoutAPlaceIsForTheWholeFile) {
    const diagnostic made = diagnose::no_words(places());
    EXPECT_EQ(made.where, place{});
    EXPECT_EQ(made.count, 1U);
}

} // namespace
