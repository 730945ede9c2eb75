#include "kvrimage/formats/dont_care_words.h"
#include "kvrimage/image/memory_image.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace kvrimage;

word hex_word(std::string_view text) {
    return word::parse(text, radix::hex, 8).value.value();
}

TEST(DontCareWords, AreFoundAmongSingleWords) {
    memory_image image(8, 100);
    for (std::uint64_t address = 0; address < 100; ++address) {
        image.set(address, word::of(address, 8));
    }
    EXPECT_FALSE(find_dont_care_word(image.words()));
    image.set(70, hex_word("4X"));
    image.set(90, hex_word("XX"));
    ASSERT_TRUE(find_dont_care_word(image.words()));
    EXPECT_EQ(find_dont_care_word(image.words())->first, 70U);
    EXPECT_EQ(find_dont_care_word(image.words())->text, "4X");
}

TEST(DontCareWords, AreFoundInCyclesAndRuns) {
    memory_image image(8, 1000000);
    image.fill({0, 399999}, std::vector{hex_word("01"), hex_word("02"), hex_word("03")});
    EXPECT_FALSE(find_dont_care_word(image.words()));
    image.fill({700000, 799999}, std::vector{hex_word("XX")});
    EXPECT_EQ(find_dont_care_word(image.words()).value().first, 700000U);
    image.fill({500000, 599999}, std::vector{hex_word("01"), hex_word("0X"), hex_word("XX")});
    EXPECT_EQ(find_dont_care_word(image.words()).value().first, 500001U);
}

} // namespace
