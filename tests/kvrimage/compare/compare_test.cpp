#include "kvrimage/compare/compare.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

constexpr std::uint64_t highest_compared = std::numeric_limits<std::uint64_t>::max();

word compared_word(std::uint64_t value, std::uint32_t width = 8) {
    return word::of(value, width);
}

std::string side_text(const std::optional<word>& side) {
    return side ? side->to_text(radix::bin).value() : "-";
}

/// "first-last:left/right " for each difference; words as their bits, "-" for none.
std::string differences(const memory_image& left, const memory_image& right) {
    std::string all;
    for_each_difference(left, right, [&all](const difference& one) {
        all += std::to_string(one.addresses.first) + '-' + std::to_string(one.addresses.last) + ':' +
               side_text(one.left) + '/' + side_text(one.right) + ' ';
    });
    return all;
}

TEST(ForEachDifference, FindsNoneInMemoriesWithoutWords) {
    EXPECT_EQ(differences(memory_image(8, 4), memory_image(8, 400, 1000)), "");
    EXPECT_EQ(differences(memory_image(8, 4),
                          memory_image(9, deepest_memory, highest_compared - deepest_memory + 1)),
              "");
}

TEST(ForEachDifference, JoinsNeighboursWithTheSameTwoWords) {
    memory_image left(2, 16);
    memory_image right(2, 16);
    left.fill({2, 9}, std::array{compared_word(1, 2)});
    right.fill({4, 5}, std::array{compared_word(1, 2)});
    right.fill({6, 12}, std::array{compared_word(2, 2)});
    EXPECT_EQ(differences(left, right), "2-3:01/- 6-9:01/10 10-12:-/10 ");
}

TEST(ForEachDifference, TheSameTextIsAnotherWordInAnotherRadix) {
    constexpr std::uint64_t depth = 2048;
    memory_image left(6, depth);
    memory_image right(24, depth);
    for (std::uint64_t address = 0; address < depth; ++address) {
        const std::string_view text = address % 3 == 0 ? "10X001" : "0X1001";
        left.set(address, *word::parse(text, radix::bin, 6).value);
        right.set(address, *word::parse(text, radix::hex, 24).value);
    }
    std::uint64_t differing = 0;
    for_each_difference(left, right, [&differing](const difference& one) {
        differing += one.addresses.last - one.addresses.first + 1;
    });
    EXPECT_EQ(differing, depth);
    EXPECT_EQ(differences(right, right), "");
}

TEST(ForEachDifference, ZeroIsNotUnset) {
    memory_image left(2, 4);
    left.set(0, compared_word(0, 2));
    EXPECT_EQ(differences(left, memory_image(2, 4)), "0-0:00/- ");
}

TEST(ForEachDifference, ComparesAtTheSameAddresses) {
    memory_image left(2, 4, 10);
    memory_image right(2, 4, 12);
    left.fill({10, 13}, std::array{compared_word(1, 2)});
    right.fill({12, 15}, std::array{compared_word(1, 2)});
    EXPECT_EQ(differences(left, right), "10-11:01/- 14-15:-/01 ");
    EXPECT_EQ(differences(right, left), "10-11:-/01 14-15:01/- ");
}

TEST(ForEachDifference, WordsNotSetAndAddressesBeyondAMemoryAreOneStretch) {
    memory_image left(2, 20);
    left.fill({0, 19}, std::array{compared_word(1, 2)});
    EXPECT_EQ(differences(left, memory_image(2, 8, 4)), "0-19:01/- ");
}

TEST(ForEachDifference, TakesMemoriesFarApartUpToTheHighestAddress) {
    memory_image left(2, 4);
    memory_image right(2, 4, highest_compared - 3);
    left.set(3, compared_word(1, 2));
    right.set(highest_compared, compared_word(2, 2));
    EXPECT_EQ(differences(left, right), "3-3:01/- " + std::to_string(highest_compared) + "-" +
                                            std::to_string(highest_compared) + ":-/10 ");
}

TEST(ForEachDifference, WordsOfDifferentWidthsAreTheSameWhenTheirValuesAre) {
    memory_image left(4, 4);
    memory_image right(12, 4);
    left.fill({0, 3}, std::array{compared_word(5, 4)});
    right.fill({0, 1}, std::array{compared_word(5, 12)});
    right.fill({2, 3}, std::array{compared_word(0x15, 12)});
    EXPECT_EQ(differences(left, right), "2-3:0101/000000010101 ");
}

TEST(ForEachDifference, EqualTextsOfDifferentWidthsMayBeDifferentWords) {
    memory_image left(6, 2);
    memory_image right(8, 2);
    left.set(0, *word::parse("X0", radix::hex, 6).value);
    right.set(0, *word::parse("X0", radix::hex, 8).value);
    left.set(1, *word::parse("XX0000", radix::bin, 6).value);
    right.set(1, *word::parse("00XX0000", radix::bin, 8).value);
    EXPECT_EQ(differences(left, right), "0-0:XX0000/XXXX0000 ");
}

TEST(ForEachDifference, RowsWithOneDifferentWordDifferInIt) {
    memory_image left(32, 5000);
    memory_image right(32, 5000, 0);
    for (std::uint64_t address = 0; address < 5000; ++address) {
        left.set(address, compared_word(address, 32));
        right.set(address, compared_word(address == 3333 ? 1 : address, 32));
    }
    std::vector<std::uint64_t> found;
    for_each_difference(left, right, [&found](const difference& one) {
        EXPECT_EQ(one.addresses.first, one.addresses.last);
        found.push_back(one.addresses.first);
    });
    EXPECT_EQ(found, std::vector<std::uint64_t>{3333});
}

TEST(ForEachDifference, FillsOfBillionsCostNothing) {
    memory_image left(8, deepest_memory, 2);
    memory_image right(16, deepest_memory, 0);
    left.fill({2, deepest_memory - 1}, std::array{compared_word(1), compared_word(2)});
    right.fill({0, deepest_memory - 1}, std::array{compared_word(1, 16), compared_word(2, 16)});
    right.set(77777, compared_word(3, 16));
    EXPECT_EQ(differences(left, right),
              "0-0:-/0000000000000001 1-1:-/0000000000000010 77777-77777:00000010/0000000000000011 ");
}

TEST(ForEachDifference, RandomMemoriesDifferWhereTheirWordsDo) {
    std::mt19937 engine(1);
    for (int round = 0; round < 60; ++round) {
        const bool same_width = round % 2 == 0;
        memory_image left(8, 3000, engine() % 1500);
        memory_image right(same_width ? 8 : 11, 3000, engine() % 1500);
        for (memory_image* const image : {&left, &right}) {
            for (int i = 0; i < 40; ++i) {
                const std::uint64_t first = image->base() + engine() % 3000;
                const std::uint64_t last = std::min(first + engine() % 400, image->last_address());
                const std::array pattern = {compared_word(engine() % 2, image->width()),
                                            compared_word(engine() % 2, image->width())};
                image->fill({first, last}, pattern);
            }
        }
        std::vector<bool> differs(4600);
        for_each_difference(left, right, [&](const difference& one) {
            for (std::uint64_t address = one.addresses.first; address <= one.addresses.last; ++address) {
                differs[address] = true;
            }
        });
        const auto value_at = [](const memory_image& image, std::uint64_t address) {
            const bool is_in = address >= image.base() && address <= image.last_address();
            const auto value = is_in ? image[address] : std::nullopt;
            return value ? value->to_unsigned() : std::nullopt;
        };
        for (std::uint64_t address = 0; address < differs.size(); ++address) {
            ASSERT_EQ(differs[address], value_at(left, address) != value_at(right, address)) << address;
        }
    }
}

TEST(ForEachDifference, LargeFillsOfDifferentWordsDifferInEach) {
    memory_image left(8, 200000);
    memory_image right(8, 200000);
    left.fill({0, 199999}, std::array{compared_word(1), compared_word(2)});
    right.fill({0, 199999}, std::array{compared_word(1), compared_word(3)});
    std::uint64_t count = 0;
    for_each_difference(left, right, [&count](const difference& one) {
        EXPECT_EQ(one.addresses.first % 2, 1U);
        EXPECT_EQ(one.left, compared_word(2));
        EXPECT_EQ(one.right, compared_word(3));
        count += one.addresses.last - one.addresses.first + 1;
    });
    EXPECT_EQ(count, 100000U);
}

TEST(ForEachDifference, DontCareBitsOfDifferentWidthsAreComparedBitByBit) {
    memory_image left(4, 3);
    memory_image right(8, 3);
    const auto bits = [](std::string_view text) {
        return *word::parse(text, radix::bin, static_cast<std::uint32_t>(text.size())).value;
    };
    left.set(0, bits("1X01"));
    right.set(0, bits("00001X01"));
    left.set(1, bits("1X01"));
    right.set(1, bits("00001101"));
    left.set(2, bits("0001"));
    right.set(2, bits("0000000X"));
    EXPECT_EQ(differences(left, right), "1-1:1X01/00001101 2-2:0001/0000000X ");
}

} // namespace
