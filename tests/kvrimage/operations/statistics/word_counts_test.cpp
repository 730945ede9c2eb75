#include "kvrimage/operations/statistics/word_counts.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

/// @p count different texts that are too long to be numbers.
std::vector<std::string> long_words(std::size_t count) {
    std::vector<std::string> texts;
    texts.reserve(count);
    for (std::size_t index = 0; index < count; ++index) {
        texts.push_back("00000000000" + std::to_string(1000000 + index));
    }
    return texts;
}

TEST(WordCounts, CountsMoreTextsThanItGathersAtOnce) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    constexpr std::size_t gathered = std::size_t{1} << 18U;
    constexpr std::size_t few = 3;
    const std::vector<std::string> texts = long_words(gathered);
    word_counts counts;
    // First a few repeated words, then different ones.
    std::uint32_t turn = 0;
    for (; turn < gathered + few; ++turn) {
        counts.add(texts[turn % few], 1);
    }
    for (const std::string& each : texts) {
        counts.add(each, 2);
    }
    std::map<std::string_view, distinct_word> found;
    counts.for_each([&found](const distinct_word& one) { found.emplace(one.text, one); });
    ASSERT_EQ(found.size(), gathered);
    EXPECT_EQ(found.at(texts[0]).count, (gathered + few + 2) / 3 + 2);
    EXPECT_EQ(found.at(texts[0]).last_turn, turn);
    EXPECT_EQ(found.at(texts[few]).count, 2U);
    EXPECT_EQ(found.at(texts.back()).last_turn, turn + gathered - 1);
}

} // namespace
