#include "kvrimage/image/image_words.h"
#include "kvrimage/image/memory_image.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>
#include <utility>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::uint64_t highest_of_all = std::numeric_limits<std::uint64_t>::max();
constexpr std::uint64_t half_border = std::uint64_t{1} << 31U; ///< between the two halves of the offsets

word byte_word(std::uint64_t value) {
    return word::of(value, 8);
}

struct shown_run {
    std::uint64_t first;
    std::uint64_t last;
    std::optional<std::uint64_t> value;
    friend bool operator==(const shown_run&, const shown_run&) = default;
};

std::vector<shown_run> shown_runs(const run_range& runs) {
    std::vector<shown_run> all;
    for (const run& one : runs) {
        all.push_back(
            {one.addresses.first, one.addresses.last, one.value ? one.value->to_unsigned() : std::nullopt});
    }
    return all;
}

TEST(MemoryImage, HasTheSizeAskedForAndNoWord) {
    const memory_image image(8, 16, 0x100);
    EXPECT_EQ(image.width(), 8U);
    EXPECT_EQ(image.depth(), 16U);
    EXPECT_EQ(image.base(), 0x100U);
    EXPECT_EQ(image.last_address(), 0x10FU);
    EXPECT_EQ(image[0x100], std::nullopt);
    EXPECT_EQ(image.bounds(), std::nullopt);
    EXPECT_EQ(image.count_set(), 0U);
}

TEST(MemoryImage, RefusesSizesThatNoMemoryHas) {
    EXPECT_THROW(memory_image(0, 1), std::invalid_argument);
    EXPECT_THROW(memory_image(widest_word + 1, 1), std::invalid_argument);
    EXPECT_THROW(memory_image(8, 0), std::invalid_argument);
    EXPECT_THROW(memory_image(8, deepest_memory + 1), std::invalid_argument);
    EXPECT_THROW(memory_image(8, 2, highest_of_all), std::invalid_argument);
    EXPECT_THROW(memory_image(8, std::make_unique<image_words>(0)), std::invalid_argument);
    EXPECT_EQ(memory_image(8, 1, highest_of_all).last_address(), highest_of_all);
    EXPECT_EQ(memory_image(widest_word, deepest_memory).depth(), deepest_memory);
}

TEST(MemoryImage, RefusesAddressesBeyondIt) {
    memory_image image(8, 4, 10);
    std::array<std::uint64_t, 4> out{};
    for (const std::uint64_t address : {std::uint64_t{9}, std::uint64_t{14}, highest_of_all}) {
        EXPECT_THROW((void)image[address], std::out_of_range);
        EXPECT_THROW(image.set(address, byte_word(1)), std::out_of_range);
        EXPECT_THROW(image.copy_to(address, out), std::out_of_range);
    }
    for (const address_range range : {address_range{9, 10}, address_range{13, 14}}) {
        EXPECT_THROW(image.fill(range, std::array{byte_word(1)}), std::out_of_range);
        EXPECT_THROW(image.unset(range), std::out_of_range);
        EXPECT_THROW((void)image.runs(range), std::out_of_range);
    }
    EXPECT_THROW(image.copy_to(11, out), std::out_of_range);
    EXPECT_EQ(image.count_set(), 0U);
}

TEST(MemoryImage, RefusesRangesThatEndBeforeTheyBegin) {
    memory_image image(8, 4);
    EXPECT_THROW(image.fill({2, 1}, std::array{byte_word(1)}), std::invalid_argument);
    EXPECT_THROW(image.unset({2, 1}), std::invalid_argument);
    EXPECT_THROW((void)image.runs({2, 1}), std::invalid_argument);
}

TEST(MemoryImage, RefusesWordsOfAnotherWidth) {
    memory_image image(8, 4);
    EXPECT_THROW(image.set(0, word(9)), std::invalid_argument);
    EXPECT_THROW(image.fill({0, 0}, std::array{byte_word(1), word(7)}), std::invalid_argument);
    EXPECT_THROW(image.fill({0, 3}, std::span<const word>()), std::invalid_argument);
    EXPECT_EQ(image.count_set(), 0U);
}

TEST(MemoryImage, HoldsWordsOfEachForm) {
    for (const std::uint32_t width : {1U, 5U, 16U, 61U, 64U, 65U, 200U}) {
        memory_image image(width, 4);
        const std::array texts = {std::string(width, '1'), std::string(width, 'X'),
                                  "X" + std::string(width - 1, '0')};
        for (std::uint64_t address = 0; address < texts.size(); ++address) {
            const word value = *word::parse(texts[address], radix::bin, width).value;
            image.set(address, value);
            EXPECT_EQ(image[address], value);
        }
        EXPECT_EQ(image[3], std::nullopt);
        EXPECT_EQ(image.count_set(), 3U);
    }
}

TEST(MemoryImage, FillRepeatsThePatternOverTheBorderOfTheHalves) {
    memory_image image(8, deepest_memory);
    image.fill({1, deepest_memory - 2}, std::array{byte_word(1), byte_word(2), byte_word(3)});
    EXPECT_EQ(image[0], std::nullopt);
    for (std::uint64_t address : {std::uint64_t{1}, half_border - 2, half_border - 1, half_border,
                                  half_border + 1, deepest_memory - 2}) {
        EXPECT_EQ(image[address], byte_word(1 + (address - 1) % 3)) << address;
    }
    EXPECT_EQ(image[deepest_memory - 1], std::nullopt);
    EXPECT_EQ(image.count_set(), deepest_memory - 2);
    EXPECT_EQ(image.bounds(), (address_range{1, deepest_memory - 2}));
}

TEST(MemoryImage, FillOfTheUpperHalfOnlyBeginsWithThePattern) {
    memory_image image(8, deepest_memory);
    image.fill({half_border + 1, half_border + 5000}, std::array{byte_word(1), byte_word(2)});
    EXPECT_EQ(image[half_border + 1], byte_word(1));
    EXPECT_EQ(image[half_border + 2], byte_word(2));
    EXPECT_EQ(image.bounds(), (address_range{half_border + 1, half_border + 5000}));
}

TEST(MemoryImage, RunsGoOverTheBorderOfTheHalves) {
    memory_image image(8, deepest_memory, 5);
    EXPECT_EQ(shown_runs(image.runs()), (std::vector<shown_run>{{5, image.last_address(), {}}}));
    image.fill({half_border, half_border + 10}, std::array{byte_word(7)});
    image.set(half_border + 11, byte_word(7));
    EXPECT_EQ(shown_runs(image.runs()),
              (std::vector<shown_run>{{5, half_border - 1, {}},
                                      {half_border, half_border + 11, 7},
                                      {half_border + 12, image.last_address(), {}}}));
    EXPECT_EQ(shown_runs(image.runs({half_border + 2, half_border + 5})),
              (std::vector<shown_run>{{half_border + 2, half_border + 5, 7}}));
    EXPECT_EQ(shown_runs(image.runs({half_border + 11, half_border + 12})),
              (std::vector<shown_run>{{half_border + 11, half_border + 11, 7},
                                      {half_border + 12, half_border + 12, {}}}));
}

TEST(MemoryImage, RunsEndAtTheHighestAddress) {
    memory_image image(8, 4, highest_of_all - 3);
    image.set(highest_of_all, byte_word(9));
    EXPECT_EQ(shown_runs(image.runs()), (std::vector<shown_run>{{highest_of_all - 3, highest_of_all - 1, {}},
                                                                {highest_of_all, highest_of_all, 9}}));
}

TEST(RunIterator, IsAnInputIterator) {
    memory_image image(8, 3);
    image.set(1, byte_word(1));
    run_iterator at = image.runs().begin();
    EXPECT_EQ(at->addresses, (address_range{0, 0}));
    at++;
    EXPECT_EQ((*at).value, byte_word(1));
    EXPECT_FALSE(at == std::default_sentinel);
    EXPECT_TRUE(run_iterator() == std::default_sentinel);
}

TEST(MemoryImage, UnsetTakesWordsAway) {
    memory_image image(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{byte_word(1), byte_word(2)});
    image.unset({1, deepest_memory - 2});
    EXPECT_EQ(image.count_set(), 2U);
    EXPECT_EQ(image.bounds(), (address_range{0, deepest_memory - 1}));
    image.unset({0, deepest_memory - 1});
    EXPECT_EQ(image.bounds(), std::nullopt);
}

TEST(MemoryImage, CopyToGivesNumbers) {
    memory_image image(64, 5000, 100);
    for (std::uint64_t address = 100; address < 2100; ++address) {
        image.set(address, word::of(address << 32U | address, 64));
    }
    image.fill({2200, 2999}, std::array{word::of(7, 64)});
    image.fill({3000, 5000}, std::array{word::of(8, 64), word::of(9, 64)});
    std::vector<std::uint64_t> out(5000);
    image.copy_to(100, out, 42);
    for (std::uint64_t address = 100; address < 5100; ++address) {
        const auto value = image[address];
        ASSERT_EQ(out[address - 100], value ? value->to_unsigned() : 42) << address;
    }
    image.copy_to(2099, std::span(out).first(3), 1);
    EXPECT_EQ(out[0], std::uint64_t{2099} << 32U | 2099);
    EXPECT_EQ(out[1], 1U);
    EXPECT_NO_THROW(image.copy_to(0, {}));
}

TEST(MemoryImage, CopyToRefusesWhatIsNoNumber) {
    std::array<std::uint64_t, 1> out{};
    EXPECT_THROW(memory_image(65, 4).copy_to(0, out), std::domain_error);
    EXPECT_THROW(memory_image(65, 4).copy_to(0, {}), std::domain_error);
    for (const std::string_view text : {"XXXX0000", "X0000000"}) {
        memory_image image(8, 4);
        image.set(0, *word::parse(text, radix::bin, 8).value);
        EXPECT_THROW(image.copy_to(0, out), std::domain_error);
        EXPECT_NO_THROW(image.copy_to(1, out));
    }
    memory_image wide(40, 1);
    wide.set(0, *word::parse("0X" + std::string(38, '0'), radix::bin, 40).value);
    EXPECT_THROW(wide.copy_to(0, out), std::domain_error);
}

TEST(MemoryImage, EqualityTakesAllIntoAccount) {
    const memory_image image(8, 16, 1);
    EXPECT_EQ(image, memory_image(8, 16, 1));
    EXPECT_NE(image, memory_image(9, 16, 1));
    EXPECT_NE(image, memory_image(8, 17, 1));
    EXPECT_NE(image, memory_image(8, 16, 2));
    memory_image other = image;
    other.set(16, byte_word(0));
    EXPECT_NE(image, other);
    other.unset({16, 16});
    EXPECT_EQ(image, other);
}

TEST(MemoryImage, FillsOfBillionsAreComparedAtOnce) {
    memory_image image(8, deepest_memory);
    memory_image other(8, deepest_memory);
    image.fill({0, deepest_memory - 1}, std::array{byte_word(1), byte_word(2)});
    other.fill({0, deepest_memory - 1}, std::array{byte_word(1), byte_word(2), byte_word(1), byte_word(2)});
    EXPECT_EQ(image, other);
    other.set(deepest_memory - 1, byte_word(1));
    EXPECT_NE(image, other);
}

TEST(MemoryImage, FillUnsetLeavesWordsThatAreSet) {
    memory_image image(8, 16, 4);
    image.set(5, byte_word(1));
    image.fill({8, 13}, std::array{byte_word(2), byte_word(3)});
    image.fill_unset(byte_word(9));
    EXPECT_EQ(shown_runs(image.runs({4, 9})),
              (std::vector<shown_run>{{4, 4, 9}, {5, 5, 1}, {6, 7, 9}, {8, 8, 2}, {9, 9, 3}}));
    EXPECT_EQ(shown_runs(image.runs({12, 19})),
              (std::vector<shown_run>{{12, 12, 2}, {13, 13, 3}, {14, 19, 9}}));
    EXPECT_EQ(image.count_set(), 16U);
}

TEST(MemoryImage, FillUnsetOfBillionsOfWordsIsOneRun) {
    memory_image image(8, deepest_memory);
    image.fill_unset(byte_word(9));
    EXPECT_EQ(shown_runs(image.runs()), (std::vector<shown_run>{{0, deepest_memory - 1, 9}}));
}

TEST(MemoryImage, FillUnsetRefusesAWordOfAnotherWidth) {
    memory_image image(8, 4);
    EXPECT_THROW(image.fill_unset(word(7)), std::invalid_argument);
    EXPECT_EQ(image.count_set(), 0U);
}

TEST(MemoryImage, NewWordsOfALargerMemoryAreNotSet) {
    memory_image image(8, 4, 10);
    image.fill({10, 13}, std::array{byte_word(1)});
    image.resize(6);
    EXPECT_EQ(image.depth(), 6U);
    EXPECT_EQ(shown_runs(image.runs()), (std::vector<shown_run>{{10, 13, 1}, {14, 15, {}}}));
}

TEST(MemoryImage, ASmallerMemoryKeepsItsLowestWords) {
    memory_image image(8, 4, 10);
    image.set(10, byte_word(1));
    image.set(13, byte_word(2));
    image.resize(2);
    EXPECT_EQ(image.last_address(), 11U);
    EXPECT_EQ(image.count_set(), 1U);
    image.resize(4);
    EXPECT_EQ(image[13], std::nullopt) << "what was cut off does not come back";
}

TEST(MemoryImage, ResizeGoesOverTheBorderOfTheHalves) {
    memory_image image(8, 1);
    image.set(0, byte_word(1));
    image.resize(deepest_memory);
    image.set(deepest_memory - 1, byte_word(2));
    EXPECT_EQ(image.bounds(), (address_range{0, deepest_memory - 1}));
    image.resize(1);
    EXPECT_EQ(image.bounds(), (address_range{0, 0}));
}

TEST(MemoryImage, ResizeRefusesDepthsThatNoMemoryHas) {
    memory_image image(8, 4);
    EXPECT_THROW(image.resize(0), std::invalid_argument);
    EXPECT_THROW(image.resize(deepest_memory + 1), std::invalid_argument);
    EXPECT_EQ(image.depth(), 4U);
}

TEST(MemoryImage, KnowsThatALargeFillRepeats) {
    memory_image image(8, 1000000, 50);
    image.fill({100, 99999}, std::array{byte_word(1), byte_word(2), byte_word(3)});
    const repetition found = image.repetition_at(50000);
    EXPECT_EQ(found.period, 3U);
    EXPECT_GE(found.last, 90000U) << "its last words may be held one by one";
    EXPECT_LE(found.last, 99999U);
}

TEST(MemoryImage, KnowsHowFarARunGoes) {
    memory_image image(8, 1000000, 50);
    image.fill({200000, 299999}, std::array{byte_word(4)});
    for (const auto& [address, last] : {std::pair(50U, 199999U), {250000U, 299999U}, {1000049U, 1000049U}}) {
        EXPECT_EQ(image.repetition_at(address).last, last);
        EXPECT_EQ(image.repetition_at(address).period, 1U);
    }
}

TEST(MemoryImage, RepetitionsBeyondItAreRefused) {
    const memory_image image(8, 4, 10);
    EXPECT_THROW((void)image.repetition_at(9), std::out_of_range);
    EXPECT_THROW((void)image.repetition_at(14), std::out_of_range);
}

TEST(MemoryImage, DiffersFromOneWithDontCareBitsInAllItsWords) {
    memory_image plain(8, 1024);
    memory_image with_dont_care(8, 1024);
    for (std::uint64_t address = 0; address < 1024; ++address) {
        plain.set(address, byte_word(address % 100));
        with_dont_care.set(
            address, word::parse(address % 2 == 0 ? "0000000X" : "X0000000", radix::bin, 8).value.value());
    }
    EXPECT_NE(plain, with_dont_care);
    const memory_image copy = with_dont_care;
    EXPECT_EQ(with_dont_care, copy);
}

TEST(MemoryImage, CopiesWordsThatStandBetweenUnsetOnes) {
    memory_image image(8, 40);
    image.fill({0, 39}, std::array{byte_word(7)});
    for (std::uint64_t address = 0; address < 40; address += 2) {
        image.unset({address, address});
    }
    std::array<std::uint64_t, 4> copied{};
    image.copy_to(36, copied, 99);
    EXPECT_EQ(copied, (std::array<std::uint64_t, 4>{99, 7, 99, 7}));
    EXPECT_EQ(image.count_set(), 20U);
}

TEST(MemoryImage, CopiesAreIndependent) {
    memory_image image(8, 16);
    image.set(3, byte_word(1));
    memory_image copy = image;
    copy.set(3, byte_word(2));
    EXPECT_EQ(image[3], byte_word(1));
    image = copy;
    EXPECT_EQ(image[3], byte_word(2));
    const memory_image& self = image;
    image = self;
    EXPECT_EQ(image, copy);
    const memory_image moved = std::move(image);
    EXPECT_EQ(moved, copy);
    image = moved;
    EXPECT_EQ(image, copy);
}

TEST(MemoryImage, FillUnsetLeavesALargeFill) {
    memory_image image(8, 200000);
    image.fill({10, 150000}, std::array{byte_word(1), byte_word(2)});
    image.fill_unset(byte_word(9));
    EXPECT_EQ(shown_runs(image.runs({0, 11})), (std::vector<shown_run>{{0, 9, 9}, {10, 10, 1}, {11, 11, 2}}));
    EXPECT_EQ(shown_runs(image.runs({149999, 199999})),
              (std::vector<shown_run>{{149999, 149999, 2}, {150000, 150000, 1}, {150001, 199999, 9}}));
}

} // namespace
