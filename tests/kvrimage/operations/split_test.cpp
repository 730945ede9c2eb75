#include "kvrimage/image/image_words.h"
#include "kvrimage/operations/split.h"
#include "tests/kvrimage/operations/plain_memory.h"
#include "tests/kvrimage/operations/plain_operations.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;

memory_image memory_of_numbers(std::uint32_t width, const std::vector<std::uint64_t>& values) {
    memory_image image(width, values.size());
    for (std::size_t address = 0; address < values.size(); ++address) {
        image.set(address, word::of(values[address], width));
    }
    return image;
}

std::string refusal_by(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "none";
}

std::string refusal_to_join(memory_image (*join)(std::span<const memory_image>),
                            const std::vector<memory_image>& parts) {
    return refusal_by([&] { static_cast<void>(join(parts)); });
}

TEST(SplitLanes, GivesTheLowestBitsFirst) {
    const auto lanes = split_lanes(memory_of_numbers(16, {0x1122, 0x3344}), 8);
    ASSERT_EQ(lanes.size(), 2U);
    EXPECT_EQ(lanes[0], memory_of_numbers(8, {0x22, 0x44}));
    EXPECT_EQ(lanes[1], memory_of_numbers(8, {0x11, 0x33}));
}

TEST(SplitLanes, KeepsDigitsThatAreDontCare) {
    memory_image image(16, 64);
    memory_image low(8, 64);
    memory_image high(8, 64);
    for (std::uint64_t address = 0; address < 64; ++address) {
        image.set(address, word_of_digits("00010010XXXX0100"));
        low.set(address, word_of_digits("XXXX0100"));
        high.set(address, word::of(0x12, 8));
    }
    image.set(5, word::of(0, 16));
    low.set(5, word(8));
    high.set(5, word(8));
    EXPECT_EQ(split_lanes(image, 8), (std::vector{low, high}));
    EXPECT_EQ(join_lanes(std::array{low, high}), image);
}

TEST(SplitLanes, KeepsDontCareDigitsOfWordsInARow) {
    for (const std::size_t digits : {4U, 32U}) {
        std::vector<std::string> texts = page_of_words(digits);
        texts[5].back() = 'X';
        const auto width = static_cast<std::uint32_t>(4 * digits);
        memory_image image(width, texts.size());
        memory_image low(width / 2, texts.size());
        memory_image high(width / 2, texts.size());
        set_in_row(image, 0, texts);
        ASSERT_EQ(image.words().row_at(0).count, texts.size());
        for (std::size_t address = 0; address < texts.size(); ++address) {
            low.words().set(address, texts[address].substr(digits / 2));
            high.words().set(address, texts[address].substr(0, digits / 2));
        }
        EXPECT_EQ(split_lanes(image, width / 2), (std::vector{low, high}));
    }
}

TEST(SplitLanes, RefusesAWidthThatDoesNotDivide) {
    EXPECT_EQ(refusal_by([] { static_cast<void>(split_lanes(memory_image(16, 1), 5)); }),
              "words of 16 bits cannot be split into lanes of 5 bits");
    EXPECT_EQ(refusal_by([] { static_cast<void>(split_lanes(memory_image(16, 1), 0)); }),
              "words of 16 bits cannot be split into lanes of 0 bits");
}

TEST(SplitBanks, TakesTurns) {
    const auto banks = split_banks(memory_of_numbers(8, {0, 1, 2, 3, 4, 5}), 3);
    ASSERT_EQ(banks.size(), 3U);
    EXPECT_EQ(banks[0], memory_of_numbers(8, {0, 3}));
    EXPECT_EQ(banks[1], memory_of_numbers(8, {1, 4}));
    EXPECT_EQ(banks[2], memory_of_numbers(8, {2, 5}));
}

TEST(SplitBanks, RefusesADepthThatDoesNotDivide) {
    EXPECT_EQ(refusal_by([] { static_cast<void>(split_banks(memory_image(8, 14), 4)); }),
              "14 words are not 4 banks of one length: 2 left over");
    EXPECT_EQ(refusal_by([] { static_cast<void>(split_banks(memory_image(8, 14), 0)); }), "0 banks");
}

TEST(SplitBlocks, GivesNeighbours) {
    const auto blocks = split_blocks(memory_of_numbers(8, {0, 1, 2, 3, 4, 5}), 3);
    ASSERT_EQ(blocks.size(), 3U);
    EXPECT_EQ(blocks[0], memory_of_numbers(8, {0, 1}));
    EXPECT_EQ(blocks[2], memory_of_numbers(8, {4, 5}));
}

TEST(SplitBlocks, RefusesADepthThatDoesNotDivide) {
    EXPECT_EQ(refusal_by([] { static_cast<void>(split_blocks(memory_image(8, 14), 5)); }),
              "14 words are not 5 blocks of one length: 4 left over");
}

TEST(JoinBanks, GoesOnInTheUpperHalf) {
    constexpr std::uint64_t quarter = std::uint64_t{1} << 30U;
    memory_image even(8, quarter + 2);
    memory_image odd(8, quarter + 2);
    for (std::uint64_t address = quarter - 2; address < quarter + 2; ++address) {
        even.set(address, word::of(address & 0xFU, 8));
        odd.set(address, word::of(0x10 + (address & 0xFU), 8));
    }
    const memory_image joined = join_banks(std::array{even, odd});
    for (std::uint64_t address = quarter - 2; address < quarter + 2; ++address) {
        EXPECT_EQ(joined[2 * address], even[address]);
        EXPECT_EQ(joined[2 * address + 1], odd[address]);
    }
    EXPECT_EQ(joined[2 * quarter - 5], std::nullopt);
}

TEST(JoinBanks, WordsOfOneOffsetMayGoToBothHalves) {
    constexpr std::uint64_t at =
        (std::uint64_t{1} << 31U) / 3; // the last of its words is the first of the upper half
    std::vector<memory_image> banks(3, memory_image(8, at + 10));
    for (std::uint64_t bank = 0; bank < banks.size(); ++bank) {
        for (std::uint64_t offset = at - 5; offset < at + 5; ++offset) {
            banks[bank].set(offset, word::of((17 * offset + 101 * bank) & 0xFFU, 8));
        }
    }
    const memory_image joined = join_banks(banks);
    EXPECT_EQ(joined.count_set(), 30U);
    for (std::uint64_t bank = 0; bank < banks.size(); ++bank) {
        for (std::uint64_t offset = at - 5; offset < at + 5; ++offset) {
            EXPECT_EQ(joined[3 * offset + bank], banks[bank][offset]);
        }
    }
}

TEST(Join, RefusesPartsThatAreNone) {
    for (auto* const join : {join_lanes, join_banks, join_blocks}) {
        EXPECT_EQ(refusal_to_join(join, {}), "nothing to join");
    }
}

TEST(Join, RefusesPartsThatDiffer) {
    const memory_image first(8, 16);
    EXPECT_EQ(refusal_to_join(join_lanes, {first, first, memory_image(9, 16)}),
              "lane 2 has words of 9 bits, lane 0 of 8");
    EXPECT_EQ(refusal_to_join(join_banks, {first, memory_image(8, 17)}),
              "bank 1 has 17 words, bank 0 has 16");
    EXPECT_EQ(refusal_to_join(join_blocks, {first, memory_image(8, 16, 5)}),
              "block 1 begins at address 0x5, block 0 at 0x0");
}

TEST(Join, RefusesWhatIsTooLarge) {
    EXPECT_EQ(refusal_to_join(join_banks, {memory_image(8, deepest_memory), memory_image(8, deepest_memory)}),
              "2 banks of 4294967296 words are more than 2^32");
    EXPECT_EQ(
        refusal_to_join(join_blocks, {memory_image(8, deepest_memory), memory_image(8, deepest_memory)}),
        "2 blocks of 4294967296 words are more than 2^32");
    EXPECT_EQ(refusal_to_join(join_lanes, {memory_image(widest_word, 1), memory_image(widest_word, 1)}),
              "2 lanes of 1048576 bits are wider than 1048576");
}

TEST(JoinLanes, RefusesWordsThatSomeLanesLack) {
    memory_image low(8, 8, 0x10);
    memory_image high(8, 8, 0x10);
    low.set(0x11, word(8));
    EXPECT_EQ(refusal_to_join(join_lanes, {low, high}),
              "a word is set in some lanes only; the first one, at address 0x11, not in lane 1");
    high.fill({0x14, 0x16}, std::array{word(8)});
    EXPECT_EQ(refusal_to_join(join_lanes, {low, high}),
              "4 words are set in some lanes only; the first one, at address 0x11, not in lane 1");
}

TEST(JoinBanks, KeepsWordsThatOnlyOneBankHas) {
    memory_image image(8, 6);
    image.set(3, word::of(9, 8));
    EXPECT_EQ(join_banks(split_banks(image, 2)), image);
}

memory_image pattern_over_all(std::uint32_t width) {
    memory_image image(width, deepest_memory);
    image.fill({0, deepest_memory - 1},
               std::array{word::of(0x12, width), word::of(0x34, width), word::of(0x56, width)});
    return image;
}

TEST(Split, TakesFillsOfBillionsAtOnce) {
    const memory_image image = pattern_over_all(16);
    for (const auto& parts : {split_lanes(image, 8), split_banks(image, 4), split_blocks(image, 4)}) {
        std::uint64_t words = 0;
        for (const memory_image& part : parts) {
            words += part.count_set();
        }
        EXPECT_EQ(words, parts[0].depth() * parts.size());
    }
    EXPECT_EQ(split_banks(image, 4)[1][1], word::of(0x56, 16)); // word 5
}

TEST(Join, TakesFillsOfBillionsAtOnce) {
    const memory_image image = pattern_over_all(16);
    EXPECT_EQ(join_lanes(split_lanes(image, 4)), image);
    EXPECT_EQ(join_banks(split_banks(image, 4)), image);
    EXPECT_EQ(join_blocks(split_blocks(image, 4)), image);
}

TEST(Join, GoesOverTheMiddleOfTheAddresses) {
    memory_image image(12, deepest_memory);
    for (std::uint64_t address = deepest_memory / 2 - 5000; address < deepest_memory / 2 + 5000; ++address) {
        image.set(address, word::of(address & 0xFFFU, 12));
    }
    EXPECT_EQ(join_lanes(split_lanes(image, 4)), image);
    EXPECT_EQ(join_banks(split_banks(image, 4)), image);
    EXPECT_EQ(join_blocks(split_blocks(image, 2)), image);
}

void expect_plain_lanes(const memory_image& image, std::uint32_t bits) {
    const auto lanes = split_lanes(image, bits);
    for (std::uint32_t lane = 0; lane < lanes.size(); ++lane) {
        ASSERT_EQ(lanes[lane].base(), image.base());
        ASSERT_EQ(plain_words_of(lanes[lane]), plain_lane(plain_words_of(image), lane, bits));
    }
    ASSERT_EQ(join_lanes(lanes), image);
}

void expect_plain_banks(const memory_image& image, std::uint64_t count) {
    const auto banks = split_banks(image, count);
    const plain_words words = plain_words_of(image);
    for (std::uint64_t bank = 0; bank < count; ++bank) {
        ASSERT_EQ(plain_words_of(banks[bank]), plain_bank(words, bank, count));
    }
    ASSERT_EQ(join_banks(banks), image);
}

void expect_plain_blocks(const memory_image& image, std::uint64_t count) {
    const auto blocks = split_blocks(image, count);
    plain_words joined;
    for (const memory_image& block : blocks) {
        const plain_words words = plain_words_of(block);
        joined.insert(joined.end(), words.begin(), words.end());
    }
    ASSERT_EQ(joined, plain_words_of(image));
    ASSERT_EQ(join_blocks(blocks), image);
}

TEST(Split, OfRandomMemoriesIsThatOfTheirDigits) {
    memory_maker maker(5);
    for (const std::uint32_t bits : {1U, 3U, 4U, 8U, 31U, 64U, 65U, 130U}) {
        for (const std::uint64_t count : {1U, 2U, 3U, 7U, 40U, 1500U}) {
            const auto width = bits * static_cast<std::uint32_t>(1 + maker.below(4));
            const std::uint64_t depth = count * (1 + maker.below(600 / count + 1));
            const memory_image image = maker.memory(width, depth, maker.below(3) == 0 ? 300 : 0, 33);
            SCOPED_TRACE(testing::Message()
                         << width << " bits, " << depth << " words, " << count << " parts");
            expect_plain_lanes(image, bits);
            expect_plain_banks(image, count);
            expect_plain_blocks(image, count);
            ASSERT_FALSE(HasFatalFailure());
        }
    }
}

TEST(Join, OfRandomPartsIsUndoneByTheSplit) {
    memory_maker maker(6);
    for (int turn = 0; turn < 10; ++turn) {
        std::vector<memory_image> parts;
        const auto width = static_cast<std::uint32_t>(1 + maker.below(70));
        const std::uint64_t depth = 1 + maker.below(2000);
        for (std::uint64_t count = 1 + maker.below(5); count != 0; --count) {
            parts.push_back(maker.memory(width, depth, maker.below(2) == 0 ? 300 : 0));
        }
        ASSERT_EQ(split_banks(join_banks(parts), parts.size()), parts);
        ASSERT_EQ(split_blocks(join_blocks(parts), parts.size()), parts);
        for (memory_image& part : parts) {
            part.fill_unset(word(width));
        }
        ASSERT_EQ(split_lanes(join_lanes(parts), width), parts);
    }
}

} // namespace
