#include "kvr/keywords/keyword_registry.h"

#include <gtest/gtest.h>

// A registry of the lists in other_lists/. They have other sizes: one is empty, one has CR LF and no last
// line end, one name is in two lists, and some names are repeated with another letter case.

namespace {

TEST(KeywordRegistryOfOtherLists, HoldsTheirNamesAndNoOthers) {
    KVR_UTIL_KEYWORD_REGR registry;
    EXPECT_TRUE(registry.is_keyword("Adder"));
    EXPECT_TRUE(registry.is_keyword("shifter"));
    EXPECT_TRUE(registry.is_keyword("gate$1"));
    EXPECT_FALSE(registry.is_keyword("plex_adder"));
    EXPECT_FALSE(registry.is_keyword("AND2"));
    EXPECT_FALSE(registry.is_keyword(""));
}

TEST(KeywordRegistryOfOtherLists, KeepsTheFirstSpellingAsKeyAndTheLastAsValue) {
    const KVR_STRING_MAP expected{{"adder", "ADDER"}, {"GATE$1", "GATE$1"}, {"shifter", "SHIFTER"}};
    const KVR_STRING_MAP map = kvr::keyword_map(KVR_UTIL_KEYWORD_REGR());
    EXPECT_EQ(map, expected);
}

TEST(KeywordRegistryOfOtherLists, AddingAListAgainGivesANameOfTwoListsItsSpelling) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_plexfunction_names();
    EXPECT_EQ(kvr::keyword_map(registry).at("adder"), "adder");
    registry.add_wysiwyg_names();
    EXPECT_EQ(kvr::keyword_map(registry).at("adder"), "adder");
    registry.add_velkora_primitives();
    EXPECT_EQ(kvr::keyword_map(registry).at("adder"), "ADDER");
}

} // namespace
