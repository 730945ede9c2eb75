#include "kvrimage/operations/statistics/needed_width.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

namespace {

using namespace kvrimage;

/// "unsigned/signed" for a memory with @p words and two more words that are not set.
template <class... Words>
std::string widths_of(const Words&... words) {
    const std::array<word, sizeof...(words)> all = {word_of_digits(words)...};
    memory_image image(all.front().width(), all.size() + 2);
    image.fill({1, all.size()}, all);
    const needed_width found = needed_width_of(image);
    return std::to_string(found.as_unsigned) + '/' + std::to_string(found.as_signed);
}

TEST(NeededWidthOf, AMemoryWithoutWordsIsOneBit) {
    EXPECT_EQ(needed_width_of(memory_image(8, 4)), (needed_width{1, 1}));
}

TEST(NeededWidthOf, SmallValues) {
    EXPECT_EQ(widths_of("00000000"), "1/1");
    EXPECT_EQ(widths_of("00000001"), "1/2");
    EXPECT_EQ(widths_of("00010000"), "5/6");
    EXPECT_EQ(widths_of("11111111"), "8/1");
    EXPECT_EQ(widths_of("11111110"), "8/2");
    EXPECT_EQ(widths_of("11101111"), "8/6");
    EXPECT_EQ(widths_of("11110000"), "8/5");
    EXPECT_EQ(widths_of("10000000"), "8/8");
    EXPECT_EQ(widths_of("01111111"), "7/8");
}

TEST(NeededWidthOf, WidthsThatAreNoWholeDigits) {
    EXPECT_EQ(widths_of("0"), "1/1");
    EXPECT_EQ(widths_of("1"), "1/1");
    EXPECT_EQ(widths_of("11111"), "5/1");
    EXPECT_EQ(widths_of("01111"), "4/5");
    EXPECT_EQ(widths_of("101111"), "6/6");
    EXPECT_EQ(widths_of("110111"), "6/5");
    EXPECT_EQ(widths_of("111110000"), "9/5");
}

TEST(NeededWidthOf, TheWidestOfAllWordsCounts) {
    EXPECT_EQ(widths_of("00000011", "11111011", "00000000"), "8/4");
    EXPECT_EQ(widths_of("00110000", "00000011"), "6/7");
}

TEST(NeededWidthOf, DontCareBitsMayBeEither) {
    EXPECT_EQ(widths_of("X"), "1/1");
    EXPECT_EQ(widths_of("XXXXXXXX"), "8/8");
    EXPECT_EQ(widths_of("X0000000"), "8/8");
    EXPECT_EQ(widths_of("00X00000"), "6/7");
    EXPECT_EQ(widths_of("0000XXXX"), "4/5");
    EXPECT_EQ(widths_of("1111XXXX"), "8/5");
    EXPECT_EQ(widths_of("111X0000"), "8/6");
    EXPECT_EQ(widths_of("11111X"), "6/2");
    EXPECT_EQ(widths_of("XXXXX"), "5/5");
}

TEST(NeededWidthOf, FillsOfBillionsAreTakenAtOnce) {
    memory_image image(100, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{word::of(5, 100), word::of(9, 100)});
    EXPECT_EQ(needed_width_of(image), (needed_width{4, 5}));
}

TEST(NeededWidthOf, WordsSideBySide) {
    memory_image image(12, 500);
    for (std::uint64_t address = 0; address < 500; ++address) {
        image.set(address, word::of_signed(static_cast<std::int64_t>(address) - 257, 12));
    }
    EXPECT_EQ(needed_width_of(image), (needed_width{12, 10}));
}

/// True if the value of @p bits fits @p width bits for any value of its don't-care bits.
bool fits_unsigned(const std::string& bits, std::size_t width) {
    return bits.substr(0, bits.size() - width).find_first_not_of('0') == std::string::npos;
}

bool fits_signed(const std::string& bits, std::size_t width) {
    const std::string high = bits.substr(0, bits.size() - width + 1); // with the new sign
    return high.size() == 1 || high == std::string(high.size(), '0') || high == std::string(high.size(), '1');
}

TEST(NeededWidthOf, RandomMemoriesNeedTheFirstWidthThatHoldsAll) {
    memory_maker maker(24);
    for (int round = 0; round < rounds(300); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(70));
        const std::size_t same = maker.below(width);
        memory_image image(width, 4);
        needed_width expected = {1, 1};
        for (std::uint64_t address = 0; address < 3; ++address) {
            std::string bits = maker.bits(width, round % 3 == 0 ? 9 : 0);
            bits.replace(0, same, same, maker.below(2) == 0 ? '0' : '1');
            image.set(address, word_of_digits(bits));
            const auto first_that = [&bits, width](bool (*fits)(const std::string&, std::size_t)) {
                std::uint32_t needed = 1;
                while (needed < width && !fits(bits, needed)) {
                    ++needed;
                }
                return needed;
            };
            expected.as_unsigned = std::max(expected.as_unsigned, first_that(fits_unsigned));
            expected.as_signed = std::max(expected.as_signed, first_that(fits_signed));
        }
        ASSERT_EQ(needed_width_of(image), expected) << round;
    }
}

} // namespace
