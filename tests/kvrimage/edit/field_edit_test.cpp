#include "kvrimage/edit/field_edit.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/rounds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using kvrimage::address_range;
using kvrimage::assignment;
using kvrimage::assignments_of;
using kvrimage::field_assignments;
using kvrimage::field_change;
using kvrimage::memory_image;
using kvrimage::word;
using testing::IsEmpty;
using testing::SizeIs;

std::vector<word> words_of_digits(const std::vector<std::string>& digits) {
    std::vector<word> words;
    for (const std::string& each : digits) {
        words.push_back(word_of_digits(each));
    }
    return words;
}

std::vector<std::string> digits_in(const assignment& made) {
    std::vector<std::string> digits;
    for (const word& each : made.words) {
        digits.push_back(each.to_text(kvrimage::radix::bin).value());
    }
    return digits;
}

TEST(FieldEdit, OfARunIsOneWordHoweverLongItIs) {
    memory_image image(4, std::uint64_t{1} << 32U);
    image.fill_unset(word_of_digits("0000"));
    const field_assignments made =
        assignments_of(image, {{5, image.last_address()}, {3, 3}, words_of_digits({"1"})});
    ASSERT_THAT(made.assignments, SizeIs(1));
    EXPECT_EQ(made.assignments[0].addresses.first, 5U);
    EXPECT_EQ(made.assignments[0].addresses.last, image.last_address());
    EXPECT_THAT(digits_in(made.assignments[0]), testing::ElementsAre("1000"));
}

TEST(FieldEdit, OfRepeatingWordsRepeatsAfterBothPeriods) {
    memory_image image(4, std::uint64_t{1} << 30U);
    image.fill({0, image.last_address()}, words_of_digits({"0000", "0001", "0010"}));
    const field_assignments made =
        assignments_of(image, {{0, image.last_address()}, {3, 3}, words_of_digits({"0", "1"})});
    ASSERT_THAT(made.assignments, SizeIs(1));
    EXPECT_THAT(digits_in(made.assignments[0]),
                testing::ElementsAre("0000", "1001", "0010", "1000", "0001", "1010"));
}

TEST(FieldEdit, OfRepeatingWordsIsNoLongerThanTheirCommonPeriod) {
    memory_image image(4, std::uint64_t{1} << 30U);
    image.fill({0, image.last_address()}, words_of_digits({"0000", "0001", "0010", "0011"}));
    for (const std::uint64_t last : {std::uint64_t{3}, std::uint64_t{4}, image.last_address()}) {
        const field_assignments made =
            assignments_of(image, {{0, last}, {3, 3}, words_of_digits({"0", "1"})});
        ASSERT_THAT(made.assignments, SizeIs(1));
        EXPECT_EQ(made.assignments[0].addresses.last, last);
        EXPECT_THAT(digits_in(made.assignments[0]), testing::ElementsAre("0000", "1001", "0010", "1011"));
    }
}

TEST(FieldEdit, OfSingleWordsIsOneAssignment) {
    memory_image image(4, 8);
    for (std::uint64_t address = 0; address < 8; ++address) {
        image.set(address, word::of(address, 4));
    }
    const field_assignments made = assignments_of(image, {{2, 4}, {2, 2}, words_of_digits({"0"})});
    ASSERT_THAT(made.assignments, SizeIs(1));
    EXPECT_THAT(digits_in(made.assignments[0]), testing::ElementsAre("0010", "0011", "0000"));
}

TEST(FieldEdit, OfAWordThatIsNotSetNamesTheFirstOne) {
    memory_image image(4, 8);
    image.fill({0, 2}, words_of_digits({"0000"}));
    const field_assignments made = assignments_of(image, {{1, 7}, {0, 0}, words_of_digits({"1"})});
    EXPECT_EQ(made.not_set, 3U);
    EXPECT_THAT(made.assignments, IsEmpty());
    EXPECT_FALSE(made.are_too_many);
}

TEST(FieldEdit, OfTooManyWordsIsRefused) {
    memory_image image(4, std::uint64_t{1} << 32U);
    image.fill_unset(word_of_digits("0000"));
    std::vector<std::string> values(5000, "0");
    std::vector<std::string> period(4999, "0000");
    period.back() = "1111";
    image.fill({0, image.last_address()}, words_of_digits(period));
    const field_assignments made =
        assignments_of(image, {{0, image.last_address()}, {0, 0}, words_of_digits(values)});
    EXPECT_TRUE(made.are_too_many);
    EXPECT_THAT(made.assignments, IsEmpty());
    EXPECT_FALSE(made.not_set);
    // As many as the limit are not refused. A wrong width is found later, with the first word.
    const field_change wrong = {{0, kvrimage::most_words_with_fields - 1}, {1, 0}, words_of_digits(values)};
    EXPECT_THROW(static_cast<void>(assignments_of(image, wrong)), std::invalid_argument);
    const field_change too_long = {{0, kvrimage::most_words_with_fields}, {1, 0}, wrong.values};
    EXPECT_TRUE(assignments_of(image, too_long).are_too_many);
}

TEST(FieldEdit, NeedsAValue) {
    const memory_image image(4, 8);
    EXPECT_THROW(static_cast<void>(assignments_of(image, {{0, 0}, {0, 0}, {}})), std::invalid_argument);
}

TEST(FieldEdit, BeyondTheMemoryThrows) {
    memory_image image(4, 8);
    image.fill_unset(word_of_digits("0000"));
    EXPECT_THROW(static_cast<void>(assignments_of(image, {{0, 8}, {0, 0}, words_of_digits({"1"})})),
                 std::out_of_range);
}

TEST(FieldEdit, AgreesWithWordsThatAreChangedOneByOne) {
    memory_maker maker(20260103);
    int changes = 0;
    for (int round = 0; round < rounds(1500); ++round) {
        const auto width = static_cast<std::uint32_t>(1 + maker.below(40));
        const std::uint64_t depth = 1 + maker.below(300);
        memory_image image = maker.memory(width, depth, round % 3 == 0 ? 9 : 0, round % 2 == 0 ? 0 : 1000);
        const auto low = static_cast<std::uint32_t>(maker.below(width));
        const auto high = static_cast<std::uint32_t>(low + maker.below(width - low));
        const std::uint64_t first = image.base() + maker.below(depth);
        const std::uint64_t last = first + maker.below(1 + image.last_address() - first);
        std::vector<std::string> values;
        for (std::uint64_t count = 1 + maker.below(4); count != 0; --count) {
            values.push_back(maker.bits(high - low + 1, 6));
        }
        plain_words expected = plain_words_of(image);
        std::optional<std::uint64_t> gap;
        for (std::uint64_t address = first; address <= last && !gap; ++address) {
            auto& digits = expected[address - image.base()];
            if (!digits) {
                gap = address;
                break;
            }
            digits->replace(width - 1 - high, high - low + 1, values[(address - first) % values.size()]);
        }
        const field_assignments made =
            assignments_of(image, {{first, last}, {high, low}, words_of_digits(values)});
        ASSERT_EQ(made.not_set, gap);
        if (gap) {
            ASSERT_THAT(made.assignments, IsEmpty());
            continue;
        }
        ++changes;
        for (const assignment& each : made.assignments) {
            image.fill(each.addresses, each.words);
        }
        ASSERT_EQ(plain_words_of(image), expected);
    }
    EXPECT_GT(changes, rounds(1500) / 10);
}

} // namespace
