#include "kvr/keywords/folded_text.h"
#include "kvr/keywords/keyword_registry.h"
#include "kvr/util/letter_case.h"
#include "tests/keywords/keyword_lists.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {

using kvr::keyword_map;
using kvr::test::keyword_lists;
using strings = std::vector<std::string>;

const keyword_lists& built_in() {
    static const keyword_lists lists(KVR_KEYWORD_LISTS);
    return lists;
}

/// The ordered map that a registry represents, filled entry by entry.
struct plain_registry {
    plain_registry() { add(built_in().all()); }

    void add(const std::string& name) { names[name] = name; }
    void add(const strings& list) {
        for (const std::string& name : list) {
            add(name);
        }
    }
    [[nodiscard]] bool holds(const std::string& name) const { return names.count(name) != 0; }

    KVR_STRING_MAP names;
};

/// @p name with the case of every letter changed.
std::string case_swapped(std::string name) {
    for (char& character : name) {
        const std::string letter(1, character);
        const std::string lower = kvr::to_lower_case(letter);
        character = (lower == letter ? kvr::to_upper_case(letter) : lower)[0];
    }
    return name;
}

/// @p name with letters of both cases.
std::string mixed_case(const std::string& name) {
    return kvr::to_lower_case(name.substr(0, 1)) + kvr::to_upper_case(name.substr(1));
}

/// A name in every registry. With another letter case, it is a different text.
std::string fixed_name() {
    return built_in().all().at(0);
}

/// The value of @p name; "(none)" if it is not a keyword.
std::string value_of(const KVR_UTIL_KEYWORD_REGR& registry, const std::string& name) {
    const KVR_STRING_MAP map = keyword_map(registry);
    const auto found = map.find(name);
    return found == map.end() ? "(none)" : found->second;
}

std::string key_of(const KVR_UTIL_KEYWORD_REGR& registry, const std::string& name) {
    const KVR_STRING_MAP map = keyword_map(registry);
    const auto found = map.find(name);
    return found == map.end() ? "(none)" : found->first;
}

TEST(KeywordRegistry, EveryListedNameIsAKeywordInUpperLowerAndMixedCase) {
    KVR_UTIL_KEYWORD_REGR registry;
    for (const std::string& name : built_in().all()) {
        EXPECT_TRUE(registry.is_keyword(name.c_str())) << name;
        EXPECT_TRUE(registry.is_keyword(kvr::to_upper_case(name).c_str())) << name;
        EXPECT_TRUE(registry.is_keyword(kvr::to_lower_case(name).c_str())) << name;
        EXPECT_TRUE(registry.is_keyword(mixed_case(name).c_str())) << name;
    }
}

TEST(KeywordRegistry, APrefixOfAKeywordIsNoKeyword) {
    KVR_UTIL_KEYWORD_REGR registry;
    const plain_registry plain;
    std::size_t prefixes = 0;
    for (const std::string& name : built_in().all()) {
        for (std::size_t size = 0; size < name.size(); ++size) {
            const std::string prefix = name.substr(0, size);
            const bool is_another_keyword = plain.holds(prefix);
            prefixes += is_another_keyword ? 0U : 1U;
            EXPECT_EQ(registry.is_keyword(prefix.c_str()), is_another_keyword) << prefix;
        }
    }
    EXPECT_GE(prefixes, built_in().all().size());
}

TEST(KeywordRegistry, AnExtensionOfAKeywordIsNoKeyword) {
    KVR_UTIL_KEYWORD_REGR registry;
    const plain_registry plain;
    for (const std::string& name : built_in().all()) {
        EXPECT_FALSE(registry.is_keyword((name + "$$").c_str())) << name;
        EXPECT_FALSE(registry.is_keyword(("$$" + name).c_str())) << name;
        EXPECT_EQ(registry.is_keyword((name + "2").c_str()), plain.holds(name + "2")) << name;
    }
}

TEST(KeywordRegistry, AKeywordWithALeadingOrTrailingBlankIsNoKeyword) {
    KVR_UTIL_KEYWORD_REGR registry;
    for (const std::string& name : built_in().all()) {
        EXPECT_FALSE(registry.is_keyword((name + " ").c_str())) << name;
        EXPECT_FALSE(registry.is_keyword((" " + name).c_str())) << name;
    }
}

TEST(KeywordRegistry, TheEmptyStringIsNoKeywordUnlessAdded) {
    KVR_UTIL_KEYWORD_REGR registry;
    EXPECT_FALSE(registry.is_keyword(""));
    registry.add_keyword("");
    EXPECT_TRUE(registry.is_keyword(""));
}

TEST(KeywordRegistry, AddingFooThenFOOLeavesOneEntry) {
    KVR_UTIL_KEYWORD_REGR registry;
    const std::size_t before = keyword_map(registry).size();
    registry.add_keyword("Foo");
    registry.add_keyword("FOO");
    EXPECT_TRUE(registry.is_keyword("foo"));
    EXPECT_EQ(keyword_map(registry).size(), before + 1);
    EXPECT_EQ(key_of(registry, "foo"), "Foo");
    EXPECT_EQ(value_of(registry, "foo"), "FOO");
}

TEST(KeywordRegistry, ACopyKeepsAllEntries) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("my_name");
    KVR_UTIL_KEYWORD_REGR copy(registry);
    EXPECT_TRUE(copy.is_keyword("MY_NAME"));
    EXPECT_EQ(keyword_map(copy), keyword_map(registry));
}

TEST(KeywordRegistry, WhatIsAddedToACopyDoesNotAppearInItsOriginal) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("my_name");
    KVR_UTIL_KEYWORD_REGR copy(registry);
    copy.add_keyword("only_in_the_copy");
    EXPECT_TRUE(copy.is_keyword("only_in_the_copy"));
    EXPECT_FALSE(registry.is_keyword("only_in_the_copy"));
}

TEST(KeywordRegistry, WhatIsAddedToTheOriginalDoesNotAppearInItsCopy) {
    KVR_UTIL_KEYWORD_REGR registry;
    KVR_UTIL_KEYWORD_REGR copy(registry);
    registry.add_keyword("only_in_the_original");
    EXPECT_FALSE(copy.is_keyword("only_in_the_original"));
}

TEST(KeywordRegistry, AssigningARegistryToItselfLeavesItUnchanged) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("my_name");
    const KVR_STRING_MAP before = keyword_map(registry);
    const KVR_UTIL_KEYWORD_REGR& itself = registry;
    registry = itself;
    EXPECT_EQ(keyword_map(registry), before);
}

TEST(KeywordRegistry, AssignmentDropsWhatTheOtherRegistryDoesNotHave) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("old_name");
    KVR_UTIL_KEYWORD_REGR other;
    other.add_keyword("new_name");
    EXPECT_EQ(&(registry = other), &registry);
    EXPECT_FALSE(registry.is_keyword("old_name"));
    EXPECT_TRUE(registry.is_keyword("new_name"));
    registry.add_keyword("later_name");
    EXPECT_FALSE(other.is_keyword("later_name"));
}

TEST(KeywordRegistry, AssignmentOfAFreshRegistryDropsAllThatWasAdded) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("old_name");
    registry = KVR_UTIL_KEYWORD_REGR();
    EXPECT_EQ(keyword_map(registry), plain_registry().names);
}

TEST(KeywordRegistry, BytesAbove127AreNotFolded) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("gr\xC4\xC0n");
    EXPECT_TRUE(registry.is_keyword("GR\xC4\xC0N"));
    EXPECT_FALSE(registry.is_keyword("gr\xE4\xE0n"));
    EXPECT_FALSE(registry.is_keyword("gr\xC4\xE0n"));
}

TEST(KeywordRegistry, BytesAbove127TakePartInTheOrderAsUnsignedBytes) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("\xFF");
    registry.add_keyword("\x80");
    registry.add_keyword("~~");
    const KVR_STRING_MAP map = keyword_map(registry);
    strings last_three;
    for (auto entry = map.rbegin(); last_three.size() < 3; ++entry) {
        last_three.push_back(entry->first);
    }
    EXPECT_EQ(last_three, (strings{"\xFF", "\x80", "~~"}));
}

TEST(KeywordRegistry, StandsForTheOrderedMapOfItsLists) {
    EXPECT_EQ(keyword_map(KVR_UTIL_KEYWORD_REGR()), plain_registry().names);
}

TEST(KeywordRegistry, HoldsOfTheShippedLists2463Keys) {
    if (std::string(KVR_KEYWORD_LISTS) != KVR_SHIPPED_KEYWORD_LISTS) {
        GTEST_SKIP() << "built with the lists of " KVR_KEYWORD_LISTS;
    }
    EXPECT_EQ(keyword_map(KVR_UTIL_KEYWORD_REGR()).size(), 2463U);
}

TEST(KeywordRegistry, ANullPointerIsNoKeyword) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("");
    EXPECT_FALSE(registry.is_keyword(nullptr));
}

TEST(KeywordRegistry, ANameOfAMegabyteIsAKeywordOnceAdded) {
    KVR_UTIL_KEYWORD_REGR registry;
    const std::string name(1 << 20, 'x');
    EXPECT_FALSE(registry.is_keyword(name.c_str()));
    registry.add_keyword(name);
    EXPECT_TRUE(registry.is_keyword(std::string(1 << 20, 'X').c_str()));
    EXPECT_FALSE(registry.is_keyword(std::string((1 << 20) - 1, 'x').c_str()));
}

TEST(KeywordRegistry, AnAddedNameEndsAtItsFirstNul) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword(std::string("one\0two", 7));
    EXPECT_TRUE(registry.is_keyword("ONE"));
    registry.add_keyword(std::string("One\0three", 9));
    EXPECT_EQ(key_of(registry, "one"), std::string("one\0two", 7));
    EXPECT_EQ(value_of(registry, "one"), std::string("One\0three", 9));
}

TEST(KeywordRegistry, AFixedNameKeepsItsKeyAndTakesTheAddedSpellingAsValue) {
    KVR_UTIL_KEYWORD_REGR registry;
    const std::string name = fixed_name();
    const std::size_t before = keyword_map(registry).size();
    registry.add_keyword(case_swapped(name));
    EXPECT_EQ(keyword_map(registry).size(), before);
    EXPECT_EQ(key_of(registry, name), name);
    EXPECT_EQ(value_of(registry, name), case_swapped(name));
}

TEST(KeywordRegistry, AFixedNameFollowedByANulIsANewValueOfThatName) {
    KVR_UTIL_KEYWORD_REGR registry;
    const std::string name = fixed_name();
    registry.add_keyword(name + std::string("\0tail", 5));
    EXPECT_EQ(key_of(registry, name), name);
    EXPECT_EQ(value_of(registry, name), name + std::string("\0tail", 5));
}

TEST(KeywordRegistry, AddingTheListSpellingAgainRestoresTheValue) {
    KVR_UTIL_KEYWORD_REGR registry;
    const std::string name = fixed_name();
    registry.add_keyword(case_swapped(name));
    registry.add_keyword(name);
    EXPECT_EQ(value_of(registry, name), name);
}

TEST(KeywordRegistry, AddingTheListsAgainChangesNothing) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_plexfunction_names();
    registry.add_velkora_primitives();
    registry.add_wysiwyg_names();
    plain_registry plain;
    plain.add(built_in().all());
    EXPECT_EQ(keyword_map(registry), plain.names);
}

/// Overwrites every value, calls @p add and compares with a map to which @p list was added again.
void expect_list_added_again(void (KVR_UTIL_KEYWORD_REGR::*add)(), const strings& list) {
    KVR_UTIL_KEYWORD_REGR registry;
    plain_registry plain;
    for (const strings* each : {&built_in().plexfunctions, &built_in().primitives, &built_in().wysiwygs}) {
        for (const std::string& name : *each) {
            registry.add_keyword(case_swapped(name));
            plain.add(case_swapped(name));
        }
    }
    (registry.*add)();
    plain.add(list);
    EXPECT_EQ(keyword_map(registry), plain.names);
}

TEST(KeywordRegistry, AddingThePlexfunctionsAgainRestoresTheirValuesOnly) {
    expect_list_added_again(&KVR_UTIL_KEYWORD_REGR::add_plexfunction_names, built_in().plexfunctions);
}

TEST(KeywordRegistry, AddingThePrimitivesAgainRestoresTheirValuesOnly) {
    expect_list_added_again(&KVR_UTIL_KEYWORD_REGR::add_velkora_primitives, built_in().primitives);
}

TEST(KeywordRegistry, AddingTheWysiwygNamesAgainRestoresTheirValuesOnly) {
    expect_list_added_again(&KVR_UTIL_KEYWORD_REGR::add_wysiwyg_names, built_in().wysiwygs);
}

/// Names that often collide: short names of few letters in both cases, with NULs and high bytes, and fixed
/// names with another letter case.
class name_source {
public:
    std::string next() { return below(3) == 0 ? listed_name() : short_name(); }
    std::size_t below(std::size_t limit) { return random() % limit; }

private:
    std::string listed_name() {
        const std::string& name = listed[below(listed.size())];
        return below(2) == 0 ? name : case_swapped(name);
    }
    std::string short_name() {
        const std::string letters("aAbB\0\xC1\xE1_", 8);
        std::string name;
        for (std::size_t left = below(5); left > 0; --left) {
            name += letters[below(letters.size())];
        }
        return name;
    }

    std::mt19937 random{20240};
    strings listed = built_in().all();
};

TEST(KeywordRegistry, BehavesAsThePlainMapUnderRandomUse) {
    constexpr std::size_t registries = 4;
    std::vector<KVR_UTIL_KEYWORD_REGR> actual(registries);
    std::vector<plain_registry> expected(registries);
    name_source names;
    for (int step = 0; step < 4000; ++step) {
        const std::size_t one = names.below(registries);
        const std::size_t other = names.below(registries);
        const std::size_t action = names.below(100);
        if (action < 2) {
            actual[one] = actual[other];
            expected[one] = expected[other];
        } else if (action < 4) {
            const KVR_UTIL_KEYWORD_REGR copy(actual[other]);
            actual[one] = copy;
            expected[one] = expected[other];
        } else if (action < 5) {
            actual[one].add_velkora_primitives();
            expected[one].add(built_in().primitives);
        } else if (action < 50) {
            const std::string name = names.next();
            actual[one].add_keyword(name);
            expected[one].add(name);
        } else {
            const std::string name = names.next();
            EXPECT_EQ(actual[one].is_keyword(name.c_str()), expected[one].holds(name)) << name;
        }
        if (step % 50 == 0) {
            ASSERT_EQ(keyword_map(actual[one]), expected[one].names) << "step " << step;
        }
    }
}

TEST(KeywordRegistry, ATextWithTheHashOfAKeywordIsNoKeyword) {
    // Found by inverting the hash. These bits are the start of the search in the index and the stored part of
    // the hash.
    constexpr std::uint64_t hash_bits_used = 0xFFF80000FFFFFFFF;
    ASSERT_EQ(kvr::folded_hash("vk3_pll") & hash_bits_used, kvr::folded_hash("o6_luqzu") & hash_bits_used);
    KVR_UTIL_KEYWORD_REGR registry;
    EXPECT_TRUE(registry.is_keyword("vk3_pll"));
    EXPECT_FALSE(registry.is_keyword("o6_luqzu"));
}

} // namespace
