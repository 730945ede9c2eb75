#include "kvrimage/formats/rif/rif_format.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "kvrimage/image/image_words.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

read_options with_width(std::uint32_t width) {
    read_options options;
    options.width = width;
    return options;
}

read_options going_on() {
    read_options options;
    options.keep_going = true;
    return options;
}

/// "8 bits, 3 words: 00 - 0F"; "none" without an image.
std::string shown(const read_result& result) {
    if (!result.image) {
        return "none";
    }
    std::string text =
        std::to_string(result.image->width()) + " bits, " + std::to_string(result.image->depth()) + " words:";
    for (std::uint64_t address = 0; address < result.image->depth(); ++address) {
        const std::string_view word = result.image->words()[address];
        text.append(" ").append(word.empty() ? "-" : word);
    }
    return text;
}

std::vector<std::string> found_in(std::string_view text, const read_options& options) {
    return kvrimage::shown(read_rif(text, options).diagnostics);
}

TEST(RifReader, ReadsWordsAndAddresses) {
    EXPECT_EQ(shown(read_rif("@1\nAb 00\n@4\n1x\n", {})), "8 bits, 5 words: - AB 00 - 1X");
}

TEST(RifReader, TakesTheWidthFromTheLongestWord) {
    const read_result result = read_rif("1 02A", {});
    EXPECT_EQ(shown(result), "12 bits, 2 words: 001 02A");
    EXPECT_EQ(result.facts.width_source, "the longest word");
}

TEST(RifReader, TakesManyWordsThatAreShorterThanTheLongest) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    constexpr std::uint64_t count = 2400000;
    std::string text = "12345678";
    for (std::uint64_t word = 1; word < count; ++word) {
        text += " 1";
    }
    const read_result result = read_rif(text, {});
    ASSERT_TRUE(result.image);
    EXPECT_EQ(result.image->depth(), count);
    EXPECT_EQ(result.image->words()[count - 1], "00000001");
}

TEST(RifReader, TakesTheWidthThatIsGiven) {
    const read_result result = read_rif("1FF 001FF 0XF ff", with_width(9));
    EXPECT_EQ(shown(result), "9 bits, 4 words: 1FF 1FF 0XF 0FF");
    EXPECT_EQ(result.facts.width_source, "");
}

TEST(RifReader, SaysWhatTheFileSaysOfItself) {
    const read_result result = read_rif("1\n", {});
    EXPECT_EQ(result.facts.as, &rif_format);
    EXPECT_EQ(result.facts.address_radix, std::nullopt);
    EXPECT_EQ(result.facts.data_radix, std::nullopt);
    EXPECT_FALSE(result.facts.has_comments);
    EXPECT_TRUE(read_rif("1 # one\n", {}).facts.has_comments);
}

TEST(RifReader, TakesTheDepthThatIsGiven) {
    read_options options;
    options.depth = 4;
    EXPECT_EQ(shown(read_rif("1 2", options)), "4 bits, 4 words: 1 2 - -");
}

TEST(RifReader, NamesAddressesBeyondTheDepthOnce) {
    read_options options;
    options.depth = 2;
    const read_result result = read_rif("1 2 3 4\n@10\n5", options);
    EXPECT_EQ(shown(result), "none");
    EXPECT_THAT(kvrimage::shown(result.diagnostics), ElementsAre("beyond-depth 1:5+1 x3"));
    EXPECT_EQ(result.diagnostics.front().message, "address 2 is beyond the depth 2 (0 to 1)");
    EXPECT_EQ(result.diagnostics.front().hint, "needs --depth 17 or more");
}

TEST(RifReader, NamesWordsThatAreTooWideOnce) {
    const read_result result = read_rif("1F 20 1\n7f 3f", with_width(5));
    EXPECT_THAT(kvrimage::shown(result.diagnostics), ElementsAre("too-wide 1:4+2 x3"));
    EXPECT_EQ(result.diagnostics.front().message, "value 20 needs 6 bits, the words have 5");
    EXPECT_EQ(result.diagnostics.front().hint, "needs --width 7");
}

TEST(RifReader, NamesAWordBeyondTheWidestWidth) {
    const std::string zeros(262144, '0');
    EXPECT_THAT(found_in("1" + zeros, {}), ElementsAre("too-wide 1:1+262145"));
    EXPECT_THAT(found_in("0" + zeros, {}), IsEmpty());
}

TEST(RifReader, LetsTheLaterWordHoldAndSaysSo) {
    const read_result result = read_rif("\n@0\n1 2 3\n@1\n8 9\n", {});
    EXPECT_EQ(shown(result), "4 bits, 3 words: 1 8 9");
    EXPECT_THAT(kvrimage::shown(result.diagnostics), ElementsAre("overwritten-word 5:1+1 x2"));
    EXPECT_EQ(result.diagnostics.front().message, "address 1 is set twice, first in line 3");
}

TEST(RifReader, TakesAddressesInAnyOrder) {
    const read_result result = read_rif("@3\n3\n@0\n0 1 2\n", {});
    EXPECT_EQ(shown(result), "4 bits, 4 words: 0 1 2 3");
    EXPECT_THAT(result.diagnostics, IsEmpty());
}

TEST(RifReader, HoldsTheLastAddress) {
    const read_result result = read_rif("@ffffffff\n1", {});
    EXPECT_EQ(result.image->depth(), deepest_memory);
    EXPECT_EQ(result.image->words()[0xFFFFFFFF], "1");
}

TEST(RifReader, RefusesAFileWithoutWordsWhoseSizeIsOpen) {
    EXPECT_THAT(found_in("@0\n", {}), ElementsAre("size-unknown 0:0+0"));
    EXPECT_THAT(found_in("", with_width(8)), ElementsAre("size-unknown 0:0+0"));
}

TEST(RifReader, ReadsAFileWithoutWordsOfAGivenSize) {
    read_options options = with_width(8);
    options.depth = 2;
    const read_result result = read_rif("@0\n", options);
    EXPECT_EQ(shown(result), "8 bits, 2 words: - -");
    EXPECT_THAT(kvrimage::shown(result.diagnostics), ElementsAre("no-words 0:0+0"));
}

TEST(RifReader, FindsNoWordMissingWhereAllAreBroken) {
    read_options options;
    options.depth = 1;
    EXPECT_THAT(found_in("@1\n1", options), ElementsAre("beyond-depth 2:1+1"));
}

TEST(RifReader, RefusesAMemoryOutOfProportion) {
    std::string text(20000, '1');
    for (int word = 0; word < 20000; ++word) {
        text += word % 2 == 0 ? " 1" : " 2";
    }
    const read_result result = read_rif(text, {});
    EXPECT_THAT(kvrimage::shown(result.diagnostics), ElementsAre("out-of-proportion 0:0+0"));
    EXPECT_FALSE(result.image.has_value());
}

TEST(RifReader, TakesLongWordsThatAreAllLong) {
    EXPECT_THAT(found_in(std::string(20000, '1') + " 1", {}), IsEmpty());
}

TEST(RifReader, HandsOutNothingOfABrokenFile) {
    EXPECT_EQ(shown(read_rif("1 2G", {})), "none");
}

TEST(RifReader, MarksWhatCannotBeRead) {
    const read_result result = read_rif("1 2G 3U 4\n@G\n9 9\n@5\n5\n", going_on());
    EXPECT_EQ(shown(result), "4 bits, 6 words: 1 - - 4 - 5");
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{1, 2}));
}

TEST(RifReader, MarksWordsThatAreTooWide) {
    read_options options = going_on();
    options.width = 4;
    const read_result result = read_rif("1 22 3\n@0\n1F", options);
    EXPECT_EQ(shown(result), "4 bits, 3 words: - - 3");
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{0, 1}));
}

TEST(RifReader, ReadsAWordThatTakesThePlaceOfABrokenOne) {
    const read_result result = read_rif("1 2G\n@1\n2", going_on());
    EXPECT_EQ(shown(result), "4 bits, 2 words: 1 2");
    EXPECT_THAT(result.unreadable, IsEmpty());
}

TEST(RifReader, HandsOutNoImageWithoutAnyWord) {
    EXPECT_EQ(shown(read_rif(";", going_on())), "none");
}

TEST(RifReader, HandsOutAnImageOfBrokenWordsOnly) {
    const read_result result = read_rif("ZZ", going_on());
    EXPECT_EQ(shown(result), "4 bits, 1 words: -");
    EXPECT_THAT(result.unreadable, ElementsAre(address_range{0, 0}));
}

TEST(RifReader, ReadsLinesThatEndInAnyWay) {
    EXPECT_EQ(shown(read_rif("@0\r\n1\r2\n3", {})), "4 bits, 3 words: 1 2 3");
}

} // namespace
