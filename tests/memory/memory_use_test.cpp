#include "kvr/memory/store/address_set.h"
#include "kvr/memory/store/comment_store.h"
#include "kvr/memory/store/word_store.h"
#include "tests/allocation.h"
#include "tests/memory/memory_sizes.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::word_store;
using kvr_test::kibibyte;
using kvr_test::mebibyte;
using kvr_test::with_debug_mode;

TEST(MemoryUse, LargestStoreOfUnsetWordsIsSmall) {
    const allocation_meter meter;
    word_store words;
    words.resize(4294967295, "0");
    EXPECT_LT(allocation_meter::peak(), 64 * kibibyte);
    EXPECT_EQ(words.run_at(0).last, 4294967294U);
}

TEST(MemoryUse, RangesOverBillionsOfWordsAndAFewEditsAreSmall) {
    for (const std::vector<std::string_view>& values :
         {std::vector<std::string_view>{"7"}, std::vector<std::string_view>{"1", "2", "3"}}) {
        const allocation_meter meter;
        word_store words;
        words.resize(2147483647, "0");
        words.fill(0, 2147483646, values);
        words.set(1, "A");
        words.set(1073741824, "B");
        words.fill(2147483000, 2147483646, {"C"});
        EXPECT_EQ(words[1073741824], "B");
        EXPECT_EQ(words[1073741823], values[1073741823 % values.size()]);
        EXPECT_EQ(words[1073741825], values[1073741825 % values.size()]);
        EXPECT_LT(allocation_meter::peak(), 64 * kibibyte);
    }
}

TEST(MemoryUse, RangeUpToTheLastWordIsASingleNode) {
    const allocation_meter meter;
    word_store words;
    words.resize(2147483647, "0");
    const std::size_t before = allocation_meter::live();
    words.fill(0, 2147483646, {"1", "2", "3"});
    EXPECT_LE(allocation_meter::live(), before + 128);
}

TEST(MemoryUse, AdjacentRangesOfEqualWordsBecomeASingleNode) {
    const allocation_meter meter;
    word_store words;
    words.resize(2147483647, "0");
    const std::size_t before = allocation_meter::live();
    words.fill(0, 1000000000, {"1"});
    words.fill(1000000001, 2147483646, {"1"});
    EXPECT_LE(allocation_meter::live(), before + 256);
    EXPECT_EQ(words.run_at(0).last, 2147483646U);
}

constexpr std::uint32_t mebi_words = 1U << 20;

enum class order { ascending, descending, shuffled };

std::vector<std::uint32_t> addresses_in(order wanted) {
    std::vector<std::uint32_t> addresses(mebi_words);
    for (std::uint32_t i = 0; i < mebi_words; ++i) {
        addresses[i] = wanted == order::descending ? mebi_words - 1 - i : i;
    }
    if (wanted == order::shuffled) {
        std::shuffle(addresses.begin(), addresses.end(), std::mt19937(1));
    }
    return addresses;
}

class MemoryUseInOrder : public testing::TestWithParam<order> {};

TEST_P(MemoryUseInOrder, WordsOfOneLengthCostTheirCharacters) {
    const std::vector<std::uint32_t> addresses = addresses_in(GetParam());
    for (const std::size_t length : {2U, 8U, 32U}) {
        const std::string digits = "0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF";
        const allocation_meter meter;
        word_store words;
        words.resize(mebi_words, "0");
        for (const std::uint32_t address : addresses) {
            words.set(address, std::string_view(digits).substr(address % 13, length));
        }
        EXPECT_LE(allocation_meter::live(), mebi_words * length + mebi_words / 5) << length;
        EXPECT_LE(allocation_meter::peak(), mebi_words * (length + 1) + mebi_words / 2) << length;
        EXPECT_EQ(words[13], std::string_view(digits).substr(0, length));
    }
}

TEST_P(MemoryUseInOrder, EqualWordsSetOneByOneCostNothing) {
    const std::vector<std::uint32_t> addresses = addresses_in(GetParam());
    const allocation_meter meter;
    word_store words;
    words.resize(mebi_words, "0");
    for (const std::uint32_t address : addresses) {
        words.set(address, "AB");
    }
    EXPECT_LE(allocation_meter::live(), with_debug_mode(4 * kibibyte));
    EXPECT_EQ(words.run_at(0).last, mebi_words - 1);
}

std::string name_of(const testing::TestParamInfo<order>& tested) {
    constexpr std::array<const char*, 3> names = {"Ascending", "Descending", "Shuffled"};
    return names.at(static_cast<std::size_t>(tested.param));
}

INSTANTIATE_TEST_SUITE_P(Orders, MemoryUseInOrder,
                         testing::Values(order::ascending, order::descending, order::shuffled), name_of);

TEST(MemoryUse, WordsThatAreOverwrittenByEqualOnesCostNothing) {
    const allocation_meter meter;
    word_store words;
    words.resize(mebi_words, "0");
    for (std::uint32_t address = 0; address < mebi_words; ++address) {
        words.set(address, address % 2 == 0 ? "AB" : "CD");
    }
    for (std::uint32_t address = 0; address < mebi_words; ++address) {
        words.set(address, "AB");
    }
    EXPECT_LE(allocation_meter::live(), with_debug_mode(4 * kibibyte));
}

TEST(MemoryUse, ValuesThatDoNotRepeatCostTheirCharacters) {
    std::string digits;
    for (std::uint32_t i = 0; i < 8192; ++i) {
        digits += std::to_string(1000 + i % 9000);
    }
    std::vector<std::string_view> values;
    for (std::size_t i = 0; i < 8192; ++i) {
        values.push_back(std::string_view(digits).substr(4 * i, 4));
    }
    const allocation_meter meter;
    word_store words;
    words.resize(8192, "0");
    words.fill(0, 8191, values);
    EXPECT_LE(allocation_meter::live(), 8192 * std::size_t{4} + 4 * kibibyte);
}

TEST(MemoryUse, NumbersOfManyLengthsCostTheLongestAndOneByte) {
    const allocation_meter meter;
    word_store words;
    words.resize(mebi_words, "0");
    std::minstd_rand random(1);
    for (std::uint32_t address = 0; address < mebi_words; ++address) {
        words.set(address, std::to_string(random() % 65536));
    }
    EXPECT_LE(allocation_meter::live(), mebi_words * 6 + mebi_words / 5);
}

TEST(MemoryUse, WordsTooLongToPackCostTwelveBytesMoreAndAQuarterOfTheText) {
    constexpr std::size_t length = 300;
    constexpr std::uint32_t count = mebi_words / 16;
    const allocation_meter meter;
    word_store words;
    words.resize(count, "0");
    std::string text(length, 'x');
    for (std::uint32_t address = 0; address < count; ++address) {
        text[address % length] = static_cast<char>('0' + address % 7);
        words.set(address, text);
    }
    EXPECT_LE(allocation_meter::live(), count * (12 + length + length / 4));
}

TEST(MemoryUse, OneWordInEachPageCostsLittle) {
    constexpr std::uint32_t pages = 200000;
    const allocation_meter meter;
    word_store words;
    words.resize(4294967295, "0");
    for (std::uint32_t i = 0; i < pages; ++i) {
        words.set(i * 1024 + i % 1024, "AB");
    }
    EXPECT_LE(allocation_meter::live(), with_debug_mode(pages * std::size_t{230}));
}

TEST(MemoryUse, OneRangeInEachPageCostsLittle) {
    constexpr std::uint32_t pages = 20000;
    const allocation_meter meter;
    word_store words;
    words.resize(4294967295, "0");
    const std::string text(200, 'x');
    for (std::uint32_t i = 0; i < pages; ++i) {
        words.fill(i * 1024 + 10, i * 1024 + 900, {text, "1", "2"});
    }
    EXPECT_LE(allocation_meter::live(), with_debug_mode(pages * (std::size_t{300} + text.size())));
}

TEST(MemoryUse, OneWordInEachBranchStaysInProportionToAFileThatSetsIt) {
    constexpr std::uint32_t branches = 131071;
    const allocation_meter meter;
    word_store words;
    words.resize(4294967295, "0");
    for (std::uint32_t i = 0; i < branches; ++i) {
        words.set(i * 32768, "1");
    }
    EXPECT_LE(allocation_meter::live(), branches * std::size_t{800});
}

TEST(MemoryUse, FewestTextsThatMakeAPageGiveUpItsPiecesStayInProportion) {
    // 13 texts: a line of a file with its address takes some 40 characters.
    constexpr std::uint32_t pages = 2000;
    const allocation_meter meter;
    for (const bool one_length : {true, false}) {
        const std::size_t before = allocation_meter::live();
        word_store words;
        words.resize(pages * 1024, "0");
        for (std::uint32_t i = 0; i < pages; ++i) {
            for (std::uint32_t k = 0; k < 13; ++k) {
                words.set(i * 1024 + k, k % 2 == 0 ? "1" : one_length || k < 11 ? "2" : "22");
            }
        }
        EXPECT_LE(allocation_meter::live() - before, pages * 40 * std::size_t{90}) << one_length;
    }
}

TEST(MemoryUse, DroppedWordsAreGivenBack) {
    const allocation_meter meter;
    word_store words;
    words.resize(mebi_words, "0");
    for (std::uint32_t address = 0; address < mebi_words; ++address) {
        words.set(address, address % 2 == 0 ? "ABCDEFGH" : "12345678");
    }
    words.resize(1000, "0");
    EXPECT_LE(allocation_meter::live(), 16 * kibibyte);
    EXPECT_EQ(words[998], "ABCDEFGH");
}

TEST(MemoryUse, PrependedCommentsCostTheirCharactersAndLittleMore) {
    constexpr std::size_t count = 1000000;
    const allocation_meter meter;
    kvr::comment_store comments;
    std::size_t characters = 0;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string text = "comment " + std::to_string(i) + std::string(i % 90, '-');
        characters += text.size();
        comments.push_front(text);
    }
    EXPECT_LE(allocation_meter::live(), characters + count * 10);
    EXPECT_EQ(comments.size(), count);
}

TEST(MemoryUse, CommentsAmidEmptyOnesCostTheirCharactersAndLittleMore) {
    constexpr std::size_t count = 200000;
    const allocation_meter meter;
    kvr::comment_store comments;
    comments.append_empty_up_to(2147483648);
    EXPECT_LE(allocation_meter::peak(), 2 * kibibyte);
    for (std::size_t i = 0; i < count; ++i) {
        comments.insert(i * 10000, "sixteen letters.");
    }
    EXPECT_LE(allocation_meter::live(), count * (16 + 18));
    EXPECT_EQ(comments[10000], "sixteen letters.");
    EXPECT_EQ(comments.size(), 2147483648 + count);
}

TEST(MemoryUse, AddressSetOverTheWholeRangeIsSmall) {
    const allocation_meter meter;
    kvr::address_set addresses;
    for (std::uint32_t i = 0; i < 1024; ++i) {
        addresses.insert(i * 4194304 + 4194303);
    }
    EXPECT_LE(allocation_meter::live(), 9 * mebibyte);
}

TEST(MemoryUse, AddressSetOfNeighborsCostsOneBitEach) {
    const allocation_meter meter;
    kvr::address_set addresses;
    for (std::uint32_t address = 0; address < 8 * mebi_words; ++address) {
        addresses.insert(address);
    }
    EXPECT_LE(allocation_meter::live(), mebibyte + mebibyte / 16);
}

} // namespace
