#include "kvr/keywords/keyword_index.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::array small_names{"and"sv, "Or"sv, "AND"sv, "nor"sv, "oR"sv, "And"sv};
constexpr kvr::keyword_index small_index(small_names);

constexpr std::array<std::string_view, 0> no_names{};
constexpr kvr::keyword_index empty_index(no_names);

constexpr std::size_t many_names = 2584;

/// "register_0000" to "register_2583".
constexpr std::array<std::array<char, 13>, many_names> numbered_texts = [] {
    std::array<std::array<char, 13>, many_names> texts{};
    for (std::size_t number = 0; number < many_names; ++number) {
        const auto digit = [number](std::size_t power) {
            return static_cast<char>('0' + number / power % 10);
        };
        texts[number] = {'r', 'e', 'g',         'i',        's',       't',     'e',
                         'r', '_', digit(1000), digit(100), digit(10), digit(1)};
    }
    return texts;
}();

/// The ends of these texts, with increasing length: "_0000" to "register_2583".
constexpr std::array<std::string_view, many_names> numbered_names = [] {
    std::array<std::string_view, many_names> names;
    for (std::size_t number = 0; number < many_names; ++number) {
        const std::size_t size = 5 + 9 * number / many_names;
        names[number] = std::string_view(numbered_texts[number].data() + (13 - size), size);
    }
    return names;
}();

constexpr kvr::keyword_index numbered_index(numbered_names);

TEST(KeywordIndex, FindsTheFirstSpelling) {
    EXPECT_EQ(small_index.find("aNd"), 0U);
    EXPECT_EQ(small_index.find("OR"), 1U);
    EXPECT_EQ(small_index.find("nor"), 3U);
}

TEST(KeywordIndex, AnswersTheCountForOtherNames) {
    EXPECT_EQ(small_index.find(""), 6U);
    EXPECT_EQ(small_index.find("an"), 6U);
    EXPECT_EQ(small_index.find("xor"), 6U);
    EXPECT_EQ(small_index.find("and "), 6U);
}

TEST(KeywordIndex, KnowsTheLastSpelling) {
    EXPECT_EQ(small_index.last_spelling(0), "And");
    EXPECT_EQ(small_index.last_spelling(1), "oR");
    EXPECT_EQ(small_index.last_spelling(3), "nor");
}

TEST(KeywordIndex, CountsNamesThatDifferInLetterCaseOnce) {
    EXPECT_EQ(small_index.size(), 3U);
}

TEST(KeywordIndex, OfNoNamesFindsNothing) {
    EXPECT_EQ(empty_index.size(), 0U);
    EXPECT_EQ(empty_index.find(""), 0U);
    EXPECT_EQ(empty_index.find("and"), 0U);
}

TEST(KeywordIndex, CountsThousandsOfNames) {
    EXPECT_EQ(numbered_index.size(), many_names);
}

constexpr std::array primitive_names{"LOGIC_CELL"sv, "AND2"sv, "AND3"sv, "AND4"sv,
                                     "AND5"sv,       "OR"sv,   "OR2"sv,  "OR3"sv};
constexpr kvr::keyword_index primitive_index(primitive_names);

TEST(KeywordIndex, HasTheSameFreeSlotsInTheProgramAsInTheCompiler) {
    static_assert(primitive_index.size() == primitive_names.size());
    // The volatile pointer prevents the compiler from computing the result itself.
    const kvr::keyword_index<primitive_names.size()>* volatile index = &primitive_index;
    EXPECT_EQ(index->size(), primitive_names.size());
}

TEST(KeywordIndex, FindsEachOfThousandsOfNames) {
    for (std::size_t number = 0; number < many_names; ++number) {
        EXPECT_EQ(numbered_index.find(numbered_names[number]), number);
    }
    EXPECT_EQ(numbered_index.find("REGISTER_2583"), 2583U);
    EXPECT_EQ(numbered_index.find("REGISTER_2584"), many_names);
}

} // namespace
