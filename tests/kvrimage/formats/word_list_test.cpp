#include "kvrimage/formats/word_list.h"
#include "kvrimage/image/image_words.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

struct list_reading {
    read_result result;
    std::vector<std::string> messages;
};

/// A word of a list; the contents contain its digits, too, in the same order.
struct list_word {
    std::uint64_t address;
    std::string digits;
};

list_reading read_list(const std::vector<list_word>& words, radix digits_radix,
                       const read_options& options = {}, const stated_sizes& stated = {}) {
    std::string contents;
    for (const list_word& each : words) {
        contents += each.digits + "\n";
    }
    diagnostic_list diagnostics;
    list_reading made;
    word_list list(contents, options, digits_radix, stated);
    std::uint64_t offset = 0;
    for (const list_word& each : words) {
        list.add(each.address, each.digits, {offset, each.digits.size()});
        offset += each.digits.size() + 1;
    }
    list.finish(diagnostics, made.result);
    for (const diagnostic& each : diagnostics.finish(contents)) {
        made.messages.push_back(each.message);
    }
    return made;
}

std::vector<std::string> texts_of(const memory_image& image) {
    std::vector<std::string> texts;
    for (std::uint64_t offset = 0; offset < image.depth(); ++offset) {
        texts.emplace_back(image.words()[offset]);
    }
    return texts;
}

TEST(WordList, TakesTheWidthOfTheLongestWord) {
    const list_reading hex = read_list({{0, "1"}, {2, "00f"}}, radix::hex);
    EXPECT_EQ(hex.result.image->width(), 12U);
    EXPECT_EQ(hex.result.facts.width_source, "the longest word");
    EXPECT_THAT(texts_of(*hex.result.image), ElementsAre("001", "", "00F"));
    EXPECT_EQ(read_list({{0, "101"}}, radix::bin).result.image->width(), 3U);
    EXPECT_EQ(read_list({{0, "17"}}, radix::oct).result.image->width(), 6U);
    EXPECT_EQ(read_list({{0, "0"}, {1, "256"}}, radix::uns).result.image->width(), 9U);
    EXPECT_EQ(read_list({{0, "-129"}, {1, "1"}}, radix::dec).result.image->width(), 9U);
    EXPECT_EQ(read_list({{0, "0"}}, radix::uns).result.image->width(), 1U);
}

TEST(WordList, TakesTheWidthThatIsStatedAndThatOfTheOptionsBeforeIt) {
    EXPECT_EQ(read_list({{0, "1"}}, radix::hex, {}, {.width = 8, .depth = 4}).result.image->width(), 8U);
    const list_reading given =
        read_list({{0, "1"}}, radix::hex, {.width = 9, .depth = 2}, {.width = 8, .depth = 4});
    EXPECT_EQ(given.result.image->width(), 9U);
    EXPECT_EQ(given.result.image->depth(), 2U);
    EXPECT_EQ(given.result.facts.width_source, "");
}

TEST(WordList, AWordThatIsTooWideIsBroken) {
    EXPECT_THAT(read_list({{0, "FF"}, {1, "1FF"}, {2, "FFF"}}, radix::hex, {.width = 8}).messages,
                ElementsAre("value 1FF needs 9 bits, the words have 8"));
    EXPECT_THAT(read_list({{0, "0001"}}, radix::hex, {.width = 8}).messages, IsEmpty());
    EXPECT_THAT(read_list({{0, "255"}, {1, "256"}}, radix::uns, {.width = 8}).messages,
                ElementsAre("value 256 needs 9 bits, the words have 8"));
}

TEST(WordList, WordsThatCannotBeReadAreLeftOutWhenTheReaderKeepsGoing) {
    const list_reading made = read_list({{0, "1"}, {1, "1FF"}}, radix::hex, {.width = 8, .keep_going = true});
    EXPECT_THAT(texts_of(*made.result.image), ElementsAre("01", ""));
    ASSERT_EQ(made.result.unreadable.size(), 1U);
    EXPECT_EQ(made.result.unreadable[0].first, 1U);
    EXPECT_FALSE(read_list({{0, "1"}, {1, "1FF"}}, radix::hex, {.width = 8}).result.image);
}

TEST(WordList, AWordThatIsSetTwiceToTheSameIsNoFault) {
    EXPECT_THAT(read_list({{0, "1"}, {0, "1"}}, radix::hex).messages, IsEmpty());
    const list_reading made = read_list({{0, "1"}, {1, "2"}, {0, "3"}}, radix::hex);
    EXPECT_THAT(made.messages, ElementsAre("address 0 is set twice, with different words"));
    EXPECT_THAT(texts_of(*made.result.image), ElementsAre("3", "2"));
}

TEST(WordList, AddressesBeyondTheDepthAreBroken) {
    EXPECT_THAT(read_list({{3, "1"}, {4, "1"}, {9, "1"}}, radix::hex, {.depth = 4}).messages,
                ElementsAre("address 4 is beyond the depth 4 (0 to 3)"));
    EXPECT_THAT(read_list({{0x100000000, "1"}, {0, "1"}}, radix::hex).messages,
                ElementsAre("address 100000000 is beyond the largest, FFFFFFFF"));
}

TEST(WordList, AddressesThatBeginHighNeedABase) {
    EXPECT_THAT(read_list({{0x80000000, "1"}}, radix::hex).messages,
                ElementsAre("the addresses begin at 80000000"));
    const list_reading made = read_list({{0x80000001, "1"}}, radix::hex, {.base = 0x80000000});
    EXPECT_THAT(made.messages, IsEmpty());
    EXPECT_THAT(texts_of(*made.result.image), ElementsAre("", "1"));
    EXPECT_THAT(read_list({{0x7F, "1"}, {0x80, "1"}}, radix::hex, {.base = 0x80}).messages,
                ElementsAre("address 7F is below the base 80"));
}

TEST(WordList, WithoutWordsIsAMemoryWhereItsSizeIsKnown) {
    EXPECT_TRUE(read_list({}, radix::hex, {.width = 8, .depth = 4}).result.image);
    EXPECT_THAT(read_list({}, radix::hex, {.width = 8, .depth = 4}).messages,
                ElementsAre("the file sets no word"));
    EXPECT_FALSE(read_list({}, radix::hex, {.width = 8}).result.image);
    EXPECT_THAT(read_list({}, radix::hex).messages, ElementsAre("the file holds no word"));
}

TEST(WordList, AFewLongWordsMayNotMakeTheOthersLong) {
    std::vector<list_word> words(1000, {0, "1"});
    for (std::size_t index = 0; index < words.size(); ++index) {
        words[index] = {index, std::string(1, "0123456789ABCDEF"[index % 16])};
    }
    words.push_back({1000, std::string(100000, '1')});
    EXPECT_THAT(read_list(words, radix::hex).messages,
                ElementsAre("1001 words of 400000 bits take 95 MiB, but the file has 102001 bytes"));
    EXPECT_THAT(read_list({{0, std::string(262145, '0')}}, radix::hex).messages, IsEmpty());
}

TEST(WordList, LongWordsOfALongFileAreInProportion) {
    const std::string contents(std::size_t{20} << 20U, '1');
    const read_options options;
    diagnostic_list diagnostics;
    read_result result;
    word_list list(contents, options, radix::hex);
    constexpr std::uint64_t longest = widest_word / 4;
    for (std::uint64_t address = 0; address < 66; ++address) {
        list.add(address, std::string_view(contents).substr(0, longest), {address * longest, longest});
    }
    list.finish(diagnostics, result);
    EXPECT_TRUE(diagnostics.finish(contents).empty());
    EXPECT_EQ(result.image->depth(), 66U);
}

TEST(WordList, TakesWordsWithBlanksBetweenAtOnceWhereNothingCanBeWrong) {
    const std::string contents = "A1 b2 C3" + std::string(16, ' ');
    const auto some = [&contents](std::size_t count, std::size_t length) {
        return spaced_words{contents.data(), length, count, true};
    };
    const read_options options = {.width = 8, .depth = 8, .base = 4};
    diagnostic_list diagnostics;
    read_result result;
    word_list list(contents, options, radix::hex);
    EXPECT_TRUE(list.add_spaced(5, some(3, 2)));
    EXPECT_FALSE(list.add_spaced(3, some(1, 2)));  // below the base
    EXPECT_FALSE(list.add_spaced(7, some(2, 2)));  // already set
    EXPECT_FALSE(list.add_spaced(10, some(3, 2))); // beyond the depth
    EXPECT_FALSE(list.add_spaced(13, some(1, 2)));
    EXPECT_FALSE(list.add_spaced(8, some(1, 3))); // may be too wide
    EXPECT_TRUE(list.add_spaced(11, some(1, 2)));
    list.finish(diagnostics, result);
    EXPECT_TRUE(diagnostics.finish(contents).empty());
    EXPECT_THAT(texts_of(*result.image), ElementsAre("", "A1", "B2", "C3", "", "", "", "A1"));
}

TEST(WordList, HasNoImageOutOfProportionAlsoWhenTheReaderKeepsGoing) {
    std::vector<list_word> words;
    for (std::uint64_t address = 0; address < 1000; ++address) {
        words.push_back({address, std::string(1, "01"[address % 2])});
    }
    words.push_back({1000, std::string(100000, '1')});
    EXPECT_FALSE(read_list(words, radix::hex, {.keep_going = true}).result.image);
}

TEST(WordList, HasTheWidthOfADigitWhereNoWordCanBeRead) {
    const std::string contents = "?";
    const read_options options = {.keep_going = true};
    for (const auto& [digits_radix, width] :
         {std::pair(radix::hex, 4U), std::pair(radix::oct, 3U), std::pair(radix::dec, 1U)}) {
        diagnostic_list diagnostics;
        read_result result;
        word_list list(contents, options, digits_radix);
        list.add_unreadable(0, {0, 1});
        list.finish(diagnostics, result);
        EXPECT_EQ(result.image->width(), width);
    }
}

TEST(WordList, LooksAtDigitsThatNobodyHasLookedAt) {
    const std::string contents = "1F 2G 3 -4";
    const read_options options = {.keep_going = true};
    diagnostic_list diagnostics;
    read_result result;
    word_list list(contents, options, radix::hex);
    list.add_unchecked({0, 0}, {0, 2}, {0, 2});
    list.add_unchecked({1, 2}, {3, 2}, {3, 2});
    list.add_unchecked({3, 3}, {6, 1}, {6, 1});
    list.add_unchecked({4, 4}, {8, 2}, {8, 2});
    list.finish(diagnostics, result);
    const std::vector<diagnostic> found = diagnostics.finish(contents);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].message, "'G' in 2G is not a valid hexadecimal digit");
    EXPECT_EQ(found[0].count, 2U);
    EXPECT_THAT(texts_of(*result.image), ElementsAre("1F", "", "", "03", ""));
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{1, 2}, address_range{4, 4}));
}

TEST(WordList, NamesTheLineOfTheFirstWordWhereItsFormatFindsThat) {
    const std::string contents = "1 1";
    const read_options options;
    diagnostic_list diagnostics;
    read_result result;
    word_list list(contents, options, radix::hex, {},
                   {.first_line = [](std::uint64_t address) { return address + 70; }});
    list.add(7, "1", {0, 1});
    list.add(7, "1", {2, 1});
    list.finish(diagnostics, result);
    const std::vector<diagnostic> found = diagnostics.finish(contents);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].message, "address 7 is set twice, first in line 77");
}

TEST(WordList, TakesHighAddressesWithoutABaseWhereItsFormatDoes) {
    const std::string contents = "1";
    const read_options options;
    diagnostic_list diagnostics;
    read_result result;
    word_list list(contents, options, radix::hex, {}, {.may_begin_high = true});
    list.add(0xFFFFFFFF, "1", {0, 1});
    list.finish(diagnostics, result);
    EXPECT_TRUE(diagnostics.finish(contents).empty());
    EXPECT_EQ(result.image->depth(), std::uint64_t{1} << 32U);
}

TEST(WordList, ARangeCostsOneWord) {
    const std::string contents = "A5";
    diagnostic_list diagnostics;
    read_result result;
    const read_options options;
    word_list list(contents, options, radix::hex);
    list.add(address_range{1, 0xFFFFFFFF}, contents, {0, 2});
    list.add(address_range{3, 4}, contents, {0, 2});
    list.finish(diagnostics, result);
    EXPECT_TRUE(diagnostics.finish(contents).empty());
    EXPECT_EQ(result.image->depth(), std::uint64_t{1} << 32U);
    EXPECT_EQ(result.image->words()[0xFFFFFFFF], "A5");
    EXPECT_EQ(result.image->words()[0], "");
}

/// Words in any order, with repetitions, compared with a plain map.
TEST(WordList, IsWhatAMapOfItsWordsIs) {
    std::mt19937 numbers(5);
    for (int round = 0; round < 200; ++round) {
        const auto width = static_cast<std::uint32_t>(1 + numbers() % 70);
        std::vector<list_word> words;
        std::map<std::uint64_t, word> model;
        for (unsigned index = 0; index < 40; ++index) {
            word value(width);
            std::string digits;
            for (std::uint32_t bit = 0; bit < width; ++bit) {
                digits += "01X"[numbers() % (round % 2 == 0 ? 2 : 3)];
            }
            value = *word::parse(digits, radix::bin, width).value;
            const std::uint64_t address = numbers() % 64;
            words.push_back({address, digits});
            model.insert_or_assign(address, value);
        }
        const list_reading made = read_list(words, radix::bin);
        ASSERT_EQ(made.result.image->width(), width);
        for (std::uint64_t address = 0; address < made.result.image->depth(); ++address) {
            const auto expected = model.find(address);
            ASSERT_EQ((*made.result.image)[address],
                      expected != model.end() ? std::optional(expected->second) : std::nullopt);
        }
    }
}

TEST(WordList, MayBeLargeWhereItsFileIs) {
    std::vector<list_word> words;
    for (std::uint64_t address = 0; address < 1030; ++address) {
        words.push_back({address, std::string(65536 / 4, '1')});
    }
    const list_reading made = read_list(words, radix::hex);
    EXPECT_THAT(made.messages, IsEmpty());
    ASSERT_TRUE(made.result.image);
    EXPECT_EQ(made.result.image->depth(), 1030U);
}

TEST(WordList, MayBeLargeWhereTheFileIs) {
    constexpr std::size_t digits = widest_word / 4;
    std::vector<list_word> words;
    for (std::uint64_t address = 0; address < 65; ++address) { // more than 16 MiB
        words.push_back({address, std::string(digits, 'A')});
    }
    const list_reading large = read_list(words, radix::hex);
    EXPECT_THAT(large.messages, IsEmpty());
    EXPECT_EQ(large.result.image->words()[64], words[64].digits);
}

} // namespace
