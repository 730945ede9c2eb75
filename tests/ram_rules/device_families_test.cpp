#include "kvr/ram_rules/device_families.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cctype>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::device_families;
using kvr::device_family;
using kvr::family_group;
using kvr::find_device_family;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

std::string in_case(std::string_view text, int (*fold)(int)) {
    std::string folded;
    for (const char character : text) {
        folded += static_cast<char>(fold(static_cast<unsigned char>(character)));
    }
    return folded;
}

std::string in_other_case(std::string_view text) {
    return in_case(text, [](int c) { return std::isupper(c) != 0 ? std::tolower(c) : std::toupper(c); });
}

std::vector<std::string> identifiers_in(family_group group) {
    std::vector<std::string> identifiers;
    for (const device_family& family : device_families()) {
        if (kvr::includes(family.groups, group)) {
            identifiers.emplace_back(family.spellings.front());
        }
    }
    return identifiers;
}

TEST(DeviceFamilies, EachHasItsNumberOfSpellings) {
    const std::map<std::string, std::size_t> expected = {
        {"SERIES_A1", 2},  {"SERIES_A1X", 4}, {"SERIES_A1H", 1}, {"SERIES_A2", 3},   {"SERIES_A2X", 2},
        {"SERIES_A3", 4},  {"SERIES_A4", 20}, {"SERIES_A5", 36}, {"SERIES_B1", 4},   {"SERIES_B2", 4},
        {"SERIES_B3", 5},  {"SERIES_B3L", 7}, {"SERIES_B4E", 4}, {"SERIES_B4X", 17}, {"SERIES_B5", 18},
        {"SERIES_C1", 4},  {"SERIES_C2", 9},  {"SERIES_C2Z", 4}, {"SERIES_C3", 14},  {"SERIES_C3Z", 2},
        {"SERIES_C4", 14}, {"SERIES_D1", 3},  {"SERIES_D2", 3},  {"SERIES_D3", 11},  {"SERIES_E1", 15},
    };
    std::map<std::string, std::size_t> found;
    for (const device_family& family : device_families()) {
        found[std::string(family.spellings.front())] = family.spellings.size();
    }
    EXPECT_EQ(device_families().size(), 25U);
    EXPECT_EQ(found, expected);
}

TEST(DeviceFamilies, IdentifierComesFirstThenWithABlankThenWithoutEither) {
    for (const device_family& family : device_families()) {
        const std::string identifier(family.spellings[0]);
        EXPECT_EQ(identifier.substr(0, 7), "SERIES_");
        if (family.spellings.size() > 1) {
            EXPECT_EQ(family.spellings[1], "SERIES " + identifier.substr(7));
        }
        if (family.spellings.size() > 2) {
            EXPECT_EQ(family.spellings[2], "SERIES" + identifier.substr(7));
        }
    }
}

TEST(DeviceFamilies, NoSpellingIsGivenTwice) {
    std::set<std::string> seen;
    for (const device_family& family : device_families()) {
        for (const std::string_view spelling : family.spellings) {
            EXPECT_TRUE(seen.insert(in_case(spelling, std::tolower)).second) << spelling;
        }
    }
    EXPECT_EQ(seen.size(), 210U);
}

TEST(DeviceFamilies, EverySpellingIsFoundInAnyLetterCase) {
    for (const device_family& family : device_families()) {
        for (const std::string_view spelling : family.spellings) {
            EXPECT_EQ(find_device_family(spelling), &family) << spelling;
            EXPECT_EQ(find_device_family(in_case(spelling, std::tolower)), &family) << spelling;
            EXPECT_EQ(find_device_family(in_case(spelling, std::toupper)), &family) << spelling;
            EXPECT_EQ(find_device_family(in_other_case(spelling)), &family) << spelling;
        }
    }
}

TEST(DeviceFamilies, EveryOtherTextIsUnknown) {
    for (const device_family& family : device_families()) {
        for (const std::string_view spelling : family.spellings) {
            const std::string text(spelling);
            EXPECT_EQ(find_device_family(text + " "), nullptr) << text;
            EXPECT_EQ(find_device_family(" " + text), nullptr) << text;
            EXPECT_EQ(find_device_family(text + '\0'), nullptr) << text;
            EXPECT_EQ(find_device_family(text.substr(0, text.size() - 1) + '\xE9'), nullptr) << text;
        }
    }
    EXPECT_EQ(find_device_family(""), nullptr);
    EXPECT_EQ(find_device_family("SERIES"), nullptr);
    EXPECT_EQ(find_device_family(std::string(1000000, 'S')), nullptr);
}

TEST(DeviceFamilies, OnlyLettersMatchInEitherCase) {
    EXPECT_NE(find_device_family("series_a1"), nullptr);
    EXPECT_EQ(find_device_family("series\x7F"
                                 "a1"),
              nullptr); // "_" and DEL differ by the case bit
    EXPECT_EQ(find_device_family(std::string("SERIES\0A3", 9)), nullptr); // a blank and NUL do so as well
    EXPECT_NE(find_device_family("SERIES A5 (2)"), nullptr);
    EXPECT_EQ(find_device_family("SERIES A5 (\x12)"), nullptr);
}

TEST(DeviceFamilies, EarlyGroup) {
    EXPECT_THAT(identifiers_in(family_group::early),
                UnorderedElementsAre("SERIES_A1", "SERIES_A1X", "SERIES_A1H", "SERIES_B1"));
}

TEST(DeviceFamilies, NewerGroup) {
    EXPECT_THAT(identifiers_in(family_group::newer),
                UnorderedElementsAre("SERIES_A3", "SERIES_A4", "SERIES_A5", "SERIES_B3", "SERIES_B3L",
                                     "SERIES_B4E", "SERIES_B4X", "SERIES_B5", "SERIES_C2", "SERIES_C2Z",
                                     "SERIES_C3", "SERIES_C3Z", "SERIES_C4", "SERIES_D2", "SERIES_D3",
                                     "SERIES_E1"));
}

TEST(DeviceFamilies, BidirRatio8GroupIsFiveOlderFamiliesAndAllNewerOnes) {
    std::vector<std::string> older;
    for (const device_family& family : device_families()) {
        const bool newer = kvr::includes(family.groups, family_group::newer);
        const bool member = kvr::includes(family.groups, family_group::bidir_ratio8);
        EXPECT_TRUE(member || !newer) << family.spellings.front();
        if (member && !newer) {
            older.emplace_back(family.spellings.front());
        }
    }
    EXPECT_THAT(older, ElementsAre("SERIES_A2", "SERIES_A2X", "SERIES_B2", "SERIES_C1", "SERIES_D1"));
}

TEST(DeviceFamilies, UnknownTextIsInNoGroup) {
    EXPECT_EQ(kvr::family_groups("SERIES_Z9"), family_group::none);
    EXPECT_EQ(kvr::family_groups("series b1"), family_group::early);
}

} // namespace
