#include "kvr/memory/store/word_page.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::page_words;
using kvr::pattern_ref;
using kvr::word_page;
using kvr::word_pattern;

constexpr std::uint32_t page_first = 3 * page_words;

using text_maker = std::string (*)(std::uint32_t);

std::string two_digits(std::uint32_t index) {
    return std::string("0123456789ABCDEF").substr(index % 15, 2);
}
std::string one_to_three_digits(std::uint32_t index) {
    return std::string("0123456789ABCDEF").substr(index % 11, 1 + index % 3);
}
std::string none_to_forty_digits(std::uint32_t index) {
    return std::string("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789AB").substr(index % 7, index % 41);
}

/// A page of words "0", its expected contents, and its allocated memory, which depends on the form in which
/// it stores its words.
class WordPage : public testing::Test {
protected:
    void set(std::uint32_t index, const std::string& text) {
        model[index] = text;
        const std::size_t before = allocation_meter::live();
        if (!page.copy_in(index, text)) {
            page.set(index, text);
        }
        bytes += allocation_meter::live() - before;
    }

    void set_from(std::uint32_t first, std::uint32_t last, text_maker text_of) {
        for (std::uint32_t index = first; index <= last; ++index) {
            set(index, text_of(index));
        }
    }

    void assign(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values) {
        for (std::uint32_t index = first; index <= last; ++index) {
            model[index] = values[(index - first) % values.size()];
        }
        const std::vector<std::string_view> views(values.begin(), values.end());
        const std::size_t before = allocation_meter::live();
        page.assign(first, last, word_pattern::repeating(page_first + first, views.data(), views.size()));
        bytes += allocation_meter::live() - before;
    }

    void expect_words() const {
        for (std::uint32_t index = 0; index < page_words; ++index) {
            ASSERT_EQ(page[index], model[index]) << index;
            std::uint32_t other = index;
            while (other < page_words && model[other] == model[index]) {
                ++other;
            }
            ASSERT_EQ(page.find_other(index, page_words - 1, model[index]), other) << index;
        }
    }

    /// The text of the uniform pattern that is equivalent to the page.
    [[nodiscard]] std::string whole() const {
        const pattern_ref pattern = page.whole();
        return pattern ? std::string(pattern->text_at(page_first)) : "none";
    }

    allocation_meter meter;
    word_page page{page_first, word_pattern::uniform("0")};
    std::vector<std::string> model = std::vector<std::string>(page_words, "0");
    std::size_t bytes = 0; ///< allocated by changes of the page, minus the freed bytes
};

/// The bytes that an allocator may add to a block: it rounds large blocks up to its pages.
constexpr std::size_t allocator_slack(std::size_t block) {
    constexpr std::size_t large_block = 128 * 1024;
    return block < large_block ? 64 : 64 + 4096;
}
constexpr std::size_t packed_without_lengths(std::size_t longest) {
    constexpr std::size_t user_counts = 16; // of characters that pages may share
    return page_words * longest + user_counts + allocator_slack(page_words * longest);
}
constexpr std::size_t packed_with_lengths(std::size_t longest) {
    return page_words + allocator_slack(page_words) + packed_without_lengths(longest);
}

TEST_F(WordPage, FollowsItsPatternAtFirst) {
    expect_words();
    EXPECT_EQ(whole(), "0");
}

TEST_F(WordPage, OneWordCostsTwoSmallBlocks) {
    set(5, "AB");
    expect_words();
    EXPECT_LE(bytes, 160U);
    EXPECT_EQ(whole(), "none");
}

TEST_F(WordPage, WordSetBackToThePatternCostsNothing) {
    set(5, "AB");
    set(5, "0");
    expect_words();
    EXPECT_EQ(whole(), "0");
}

TEST_F(WordPage, EqualWordsInAnyDirectionAreOnePiece) {
    for (std::uint32_t index = 500; index < 900; ++index) {
        set(index, "1");
    }
    for (std::uint32_t index = 500; index-- > 100;) {
        set(index, "1");
    }
    expect_words();
    EXPECT_LE(bytes, 400U);
}

TEST_F(WordPage, EqualWordsOverThePageAreItsPattern) {
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, "1");
    }
    expect_words();
    EXPECT_EQ(whole(), "1");
}

TEST_F(WordPage, RangeCostsAPieceHoweverLongItIs) {
    assign(3, 1000, {"1", "22", ""});
    expect_words();
    EXPECT_LE(bytes, 300U);
}

TEST_F(WordPage, RangeIsCutByWordsAndRanges) {
    assign(100, 900, {"1", "2"});
    set(500, "x");
    set(100, "x");
    set(900, "x");
    assign(300, 310, {"3"});
    assign(850, 1000, {"4", "5"});
    assign(50, 110, {"6"});
    expect_words();
    assign(0, 1023, {"0"});
    expect_words();
    EXPECT_EQ(whole(), "0");
}

TEST_F(WordPage, PiecesOfOneLengthBecomePacked) {
    set_from(0, 99, two_digits);
    expect_words();
    EXPECT_GE(bytes, 3U * page_words);
    EXPECT_LE(bytes, packed_with_lengths(2));
}

TEST_F(WordPage, PackedWordsCostTheirCharactersOnceAllAreSet) {
    set_from(0, page_words - 1, two_digits);
    expect_words();
    EXPECT_LE(bytes, packed_without_lengths(2));
}

TEST_F(WordPage, RangesOfOneLengthBecomePacked) {
    for (std::uint32_t index = 0; index + 8 < page_words; index += 9) {
        assign(index, index + 7, {two_digits(index), "--"});
    }
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(2));
}

TEST_F(WordPage, RangesOverTheWholePageArePackedWithoutLengths) {
    for (std::uint32_t index = 0; index < page_words; index += 64) {
        assign(index, index + 63, {two_digits(index / 64), two_digits(index / 64 + 1)});
    }
    expect_words();
    EXPECT_LE(bytes, packed_without_lengths(2));
}

TEST_F(WordPage, PiecesOverTheWholePageArePackedWithoutLengths) {
    for (std::uint32_t index = 0; index < 1020; index += 85) {
        assign(index, index + 84, {two_digits(index / 85)});
    }
    assign(1020, page_words - 1, {two_digits(11)});
    set(500, "yy");
    expect_words();
    EXPECT_LE(bytes, packed_without_lengths(2));
}

TEST_F(WordPage, FewTextsOfOneLengthOverManyPiecesAreNotPacked) {
    assign(10, 1000, {std::string(200, 'x')});
    for (std::uint32_t index = 20; index < 160; index += 20) {
        set(index, std::string(200, static_cast<char>('a' + index / 20)));
    }
    expect_words();
    EXPECT_LE(bytes, 8000U);
}

TEST_F(WordPage, PiecesOfManyLengthsBecomeAList) {
    set_from(0, 59, one_to_three_digits);
    expect_words();
    EXPECT_LE(bytes, 3500U);
}

TEST_F(WordPage, ListOfShortTextsBecomesPackedWhenItIsLong) {
    set_from(0, 200, one_to_three_digits);
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(3));
    set_from(201, page_words - 1, one_to_three_digits);
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(3));
}

TEST_F(WordPage, ListOfTextsOfOneLengthBecomesPackedWhenItIsLong) {
    assign(0, 900, {"twenty characters..."});
    for (std::uint32_t index = 0; index < 200; ++index) {
        set(index * 5, std::to_string(10000000 + index) + "0123456789AB");
    }
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(20));
}

TEST_F(WordPage, ListOfLongTextsOfManyLengthsStaysAList) {
    set_from(0, page_words - 1, none_to_forty_digits);
    expect_words();
    EXPECT_LE(bytes, 2U * page_words + 12U * page_words + 25U * page_words);
}

TEST_F(WordPage, ListSharesTheTextsOfARange) {
    set_from(0, 59, none_to_forty_digits);
    const std::size_t before = bytes;
    assign(100, 1000, {std::string(300, 'x'), std::string(200, 'y'), "z"});
    expect_words();
    EXPECT_LE(bytes - before, 1200U);
}

TEST_F(WordPage, ListForgetsTextsThatWereReplaced) {
    set_from(0, page_words - 1, none_to_forty_digits);
    const std::size_t before = bytes;
    for (std::uint32_t round = 1; round < 30; ++round) {
        for (std::uint32_t index = 0; index < page_words; ++index) {
            set(index, none_to_forty_digits(index + round));
        }
    }
    expect_words();
    EXPECT_LE(bytes, 3 * before);
}

TEST_F(WordPage, LongTextsThatWereReplacedAreGivenBack) {
    set_from(0, 59, none_to_forty_digits);
    for (int round = 0; round < 20; ++round) {
        set(7, std::string(1000000, static_cast<char>('a' + round)));
    }
    expect_words();
    EXPECT_LE(bytes, 3100000U);
}

TEST_F(WordPage, ListWithAVeryLongTextForgetsShortOnesBeforeItsNumbersRunOut) {
    set_from(0, 59, none_to_forty_digits);
    set(7, std::string(1000000, 'x'));
    for (std::uint32_t round = 0; round < 80000; ++round) {
        set(8 + round % 1000, std::to_string(round));
    }
    expect_words();
    EXPECT_LE(bytes, 2100000U);
}

TEST_F(WordPage, PackedWordsTakeShorterTextsInTheirPlaces) {
    set_from(0, page_words - 1, two_digits);
    set(7, "x");
    set(8, "");
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(2));
    set(7, "yy");
    set(8, "zz");
    expect_words();
    EXPECT_LE(bytes, packed_without_lengths(2));
}

TEST_F(WordPage, PackedWordsMakeRoomForSlightlyLongerTexts) {
    set_from(0, page_words - 1, two_digits);
    set(7, "sixteen chars...");
    set(8, "x");
    expect_words();
    EXPECT_LE(bytes, packed_with_lengths(16));
}

TEST_F(WordPage, PackedWordsBecomeAListForALongText) {
    set_from(0, page_words - 1, two_digits);
    set(7, std::string(5000, 'x'));
    expect_words();
    EXPECT_LE(bytes, 2U * page_words + 12U * page_words + 3U * page_words + 10000U);
    set(8, "yy");
    expect_words();
}

TEST_F(WordPage, WidePackedWordsBecomeAListForATextThatIsShorterByMoreThanAByteCanSay) {
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, std::string(256, static_cast<char>('a' + index % 20)));
    }
    EXPECT_LE(bytes, packed_without_lengths(256));
    set(7, "ab");
    EXPECT_LE(bytes, packed_with_lengths(256));
    set(8, "a");
    expect_words();
    EXPECT_GE(bytes, packed_with_lengths(256));
}

TEST_F(WordPage, PartlyPackedPageKeepsFollowingItsPatternElsewhere) {
    set_from(100, 199, two_digits);
    assign(300, 350, {"xy", "zz"});
    set(400, "0");
    expect_words();
}

TEST_F(WordPage, PackedWordsThatAllBecomeEqualAreAPattern) {
    set_from(0, page_words - 1, two_digits);
    EXPECT_EQ(whole(), "none");
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, "FF");
    }
    EXPECT_EQ(whole(), "FF");
}

TEST_F(WordPage, WordsOfManyLengthsThatAllBecomeEqualAreAPattern) {
    for (const text_maker text_of : {&one_to_three_digits, &none_to_forty_digits}) {
        set_from(0, page_words - 1, text_of);
        EXPECT_EQ(whole(), "none");
        for (std::uint32_t index = 0; index < page_words; ++index) {
            set(index, "A");
        }
        EXPECT_EQ(whole(), "A");
    }
}

TEST_F(WordPage, SettingTheLastMissingWordSuggestsToLookForAPattern) {
    for (std::uint32_t index = 0; index < page_words; index += 2) {
        set(index, "AA");
    }
    for (std::uint32_t index = 1; index < page_words - 2; index += 2) {
        set(index, index == 501 ? "BB" : "AA");
    }
    EXPECT_FALSE(page.copy_in(page_words - 1, "AA"));
    EXPECT_TRUE(page.set(page_words - 1, "AA"));
    EXPECT_EQ(page[501], "BB");
    EXPECT_TRUE(page.copy_in(501, "AA"));
    EXPECT_TRUE(page.set(0, "AA"));
    EXPECT_EQ(page[501], "AA");
}

TEST_F(WordPage, EmptyTextsArePackedToo) {
    for (std::uint32_t index = 0; index < page_words; index += 2) {
        set(index, "");
    }
    expect_words();
    set(1, "now longer");
    expect_words();
}

TEST_F(WordPage, AShorterTextAfterALongerOneInARangeKeepsItsLength) {
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, two_digits(index));
    }
    assign(0x100, 0x17F, {"10", "0"});
    expect_words();
    assign(0x200, 0x200, {"1"});
    assign(0x1FE, 0x205, {"7", "AA", "B"});
    expect_words();
}

TEST_F(WordPage, AShorterTextBeforeALongerOneInARangeKeepsItsLength) {
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, two_digits(index));
    }
    assign(0, page_words - 1, {"0", "10", "20"});
    expect_words();
}

TEST_F(WordPage, ARangeOverTheOnlyShorterWordKeepsItsLengths) {
    for (std::uint32_t index = 0; index < page_words; ++index) {
        set(index, index == 77 ? "7" : two_digits(index));
    }
    assign(77, 84, {"12", "3"});
    expect_words();
}

TEST_F(WordPage, AShorterTextThatPacksPiecesOverTheWholePageKeepsItsLength) {
    assign(0x0B, 0x0D, {"AA"});
    assign(0x0E, page_words - 1, {"BB"});
    for (std::uint32_t index = 0; index <= 0x0A; ++index) {
        set(index, std::to_string(10 + index));
    }
    set(0x0C, "77");
    assign(4, 7, {"12", "3"});
    expect_words();
}

TEST_F(WordPage, AShorterTextThatPacksAListOverTheWholePageKeepsItsLength) {
    assign(0, page_words - 2, {"AA"});
    set(page_words - 1, "BB");
    for (std::uint32_t word = 0; word < 89; ++word) {
        set(2 * word + 1, std::to_string(10 + word));
    }
    set(0, "C");
    expect_words();
}

} // namespace
