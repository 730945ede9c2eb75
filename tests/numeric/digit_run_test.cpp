#include "kvr/numeric/digit_run.h"
#include "kvr/util/letter_case.h"
#include "tests/numeric/mostly_digits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace kvr;

TEST(DigitRun, EndsAtTheFirstCharacterThatIsNoDigit) {
    std::mt19937 random(1);
    for (int i = 0; i < 20000; ++i) {
        const std::string text =
            mostly_digits(random) + mostly_digits(random) + mostly_digits(random) + ";.......";
        const auto end = std::find_if_not(text.begin(), text.end(), is_hexadecimal);
        const digit_run run = digits_from(text.data());
        const auto length = static_cast<std::size_t>(end - text.begin());
        ASSERT_EQ(run.end, text.data() + length) << text;
        ASSERT_EQ(run.has_lower_case, std::any_of(text.begin(), end, is_lower_case)) << text;
        for (std::size_t asked = 0; asked <= 48; ++asked) {
            bool has_lower_case = false;
            ASSERT_EQ(are_digits(text.data(), asked, has_lower_case), asked <= length) << text << asked;
            if (asked <= length) {
                ASSERT_EQ(has_lower_case,
                          std::any_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(asked),
                                      is_lower_case));
            }
        }
    }
}

TEST(DigitRun, IsCopiedInUpperCase) {
    std::array<char, 32> to{};
    copy_digits("0aBcDefFa-1.....", 11, true, to.data());
    EXPECT_EQ(std::string(to.data(), 11), "0ABCDEFFA-1");
    copy_digits("0aBcDefFa-1.....", 11, false, to.data());
    EXPECT_EQ(std::string(to.data(), 11), "0aBcDefFa-1");
}

} // namespace
