#include "kvr/util/letter_case.h"
#include "tests/keywords/keyword_lists.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// The lists of the library, read from their text files.

namespace {

using kvr::test::keyword_lists;
using strings = std::vector<std::string>;

const keyword_lists& shipped() {
    static const keyword_lists lists(KVR_SHIPPED_KEYWORD_LISTS);
    return lists;
}

std::set<std::string> distinct(const strings& names) {
    return {names.begin(), names.end()};
}

std::set<std::string> distinct_folded(const strings& names) {
    std::set<std::string> result;
    for (const std::string& name : names) {
        result.insert(kvr::to_lower_case(name));
    }
    return result;
}

std::pair<std::size_t, std::size_t> shortest_and_longest(const strings& names) {
    const auto [shortest, longest] = std::minmax_element(
        names.begin(), names.end(),
        [](const std::string& left, const std::string& right) { return left.size() < right.size(); });
    return {shortest->size(), longest->size()};
}

/// The names with characters other than @p characters.
strings not_made_of(const std::string& characters, const strings& names) {
    strings result;
    for (const std::string& name : names) {
        if (name.find_first_not_of(characters) != std::string::npos) {
            result.push_back(name);
        }
    }
    return result;
}

const std::string lower_case = "abcdefghijklmnopqrstuvwxyz0123456789_";
const std::string upper_case = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";

TEST(KeywordLists, AreOneNameALineAndNothingElse) {
    for (const char* list : {"plexfunction_names", "velkora_primitive_names", "wysiwyg_names"}) {
        std::ifstream file(std::string(KVR_SHIPPED_KEYWORD_LISTS "/") + list + ".txt", std::ios::binary);
        std::ostringstream text;
        text << file.rdbuf();
        std::string names;
        for (const std::string& name : kvr::test::read_list(KVR_SHIPPED_KEYWORD_LISTS, list)) {
            names += name + "\n";
        }
        EXPECT_EQ(text.str(), names) << list;
    }
}

TEST(KeywordLists, PlexfunctionsAre205DistinctNames) {
    EXPECT_EQ(shipped().plexfunctions.size(), 205U);
    EXPECT_EQ(distinct(shipped().plexfunctions).size(), 205U);
}

TEST(KeywordLists, PlexfunctionsAreLowerCaseOf3To40Characters) {
    EXPECT_EQ(not_made_of(lower_case, shipped().plexfunctions), strings());
    EXPECT_EQ(shortest_and_longest(shipped().plexfunctions), std::pair(std::size_t{3}, std::size_t{40}));
}

TEST(KeywordLists, PrimitivesAre87DistinctNames) {
    EXPECT_EQ(shipped().primitives.size(), 87U);
    EXPECT_EQ(distinct(shipped().primitives).size(), 87U);
}

TEST(KeywordLists, PrimitivesAreUpperCaseOf2To19Characters) {
    EXPECT_EQ(not_made_of(upper_case, shipped().primitives), strings());
    EXPECT_EQ(shortest_and_longest(shipped().primitives), std::pair(std::size_t{2}, std::size_t{19}));
}

/// The primitives named @p gate, with or without a number of inputs.
strings gates(const std::string& gate) {
    strings result;
    for (const std::string& name : shipped().primitives) {
        const bool starts = name.compare(0, gate.size(), gate) == 0;
        if (starts && name.find_first_not_of("0123456789", gate.size()) == std::string::npos) {
            result.push_back(name);
        }
    }
    return result;
}

TEST(KeywordLists, GatesHaveTheWidthsOfTheNetlist) {
    using testing::ElementsAre;
    EXPECT_THAT(gates("AND"), ElementsAre("AND", "AND2", "AND3", "AND4", "AND5", "AND6", "AND7", "AND8",
                                          "AND9", "AND10", "AND11", "AND12"));
    EXPECT_THAT(gates("OR"), ElementsAre("OR", "OR2", "OR3", "OR4", "OR5", "OR6", "OR7", "OR8", "OR9", "OR10",
                                         "OR11", "OR12"));
    EXPECT_THAT(gates("NAND"), ElementsAre("NAND", "NAND2", "NAND3", "NAND4", "NAND5", "NAND6", "NAND7",
                                           "NAND8", "NAND9", "NAND12"));
    EXPECT_THAT(gates("NOR"), ElementsAre("NOR", "NOR2", "NOR3", "NOR4", "NOR5", "NOR6", "NOR8", "NOR12"));
    EXPECT_THAT(gates("XOR"), ElementsAre("XOR"));
    EXPECT_THAT(gates("XNOR"), ElementsAre("XNOR"));
    EXPECT_THAT(gates("NOT"), ElementsAre("NOT"));
}

TEST(KeywordLists, FlipFlopsComeWithAndWithoutEnable) {
    EXPECT_THAT(shipped().primitives, testing::IsSupersetOf({"DFF", "DFF_EN", "JKFF", "JKFF_EN", "SRFF",
                                                             "SRFF_EN", "TFF", "TFF_EN"}));
}

TEST(KeywordLists, WysiwygNamesAre2292LinesOf2171Names) {
    EXPECT_EQ(shipped().wysiwygs.size(), 2292U);
    EXPECT_EQ(distinct(shipped().wysiwygs).size(), 2171U);
}

TEST(KeywordLists, ARepeatedWysiwygNameIsRepeatedOnce) {
    std::set<std::string> seen;
    std::set<std::string> repeated;
    for (const std::string& name : shipped().wysiwygs) {
        if (!seen.insert(name).second) {
            repeated.insert(name);
        }
    }
    EXPECT_EQ(repeated.size(), 121U);
}

TEST(KeywordLists, WysiwygNamesAreLowerCaseOf6To52Characters) {
    EXPECT_EQ(not_made_of(lower_case, shipped().wysiwygs), strings());
    EXPECT_EQ(shortest_and_longest(shipped().wysiwygs), std::pair(std::size_t{6}, std::size_t{52}));
}

TEST(KeywordLists, WysiwygNamesAreAtomsOf52Families) {
    std::set<std::string> families;
    for (const std::string& name : shipped().wysiwygs) {
        const std::size_t underscore = name.find('_');
        ASSERT_NE(underscore, std::string::npos) << name;
        EXPECT_GT(underscore, 0U) << name;
        EXPECT_LT(underscore + 1, name.size()) << name;
        families.insert(name.substr(0, underscore));
    }
    EXPECT_EQ(families.size(), 52U);
}

TEST(KeywordLists, NoNameStandsInTwoLists) {
    const std::size_t in_each = distinct_folded(shipped().plexfunctions).size() +
                                distinct_folded(shipped().primitives).size() +
                                distinct_folded(shipped().wysiwygs).size();
    EXPECT_EQ(in_each, 2463U);
    EXPECT_EQ(distinct_folded(shipped().all()).size(), 2463U);
}

} // namespace
