#include "kvr/util/string_order.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace std::string_literals;

bool less(const std::string& left, const std::string& right) {
    return LESS_C_STRING()(left, right);
}

bool equivalent(const std::string& left, const std::string& right) {
    return !less(left, right) && !less(right, left);
}

TEST(StringOrder, OrdersByTheFirstDifference) {
    EXPECT_TRUE(less("abc", "abd"));
    EXPECT_FALSE(less("abd", "abc"));
}

TEST(StringOrder, IgnoresLetterCase) {
    EXPECT_TRUE(equivalent("RamBlock", "rAMbLOCK"));
    EXPECT_TRUE(less("ABC", "abd"));
    EXPECT_TRUE(less("abc", "ABD"));
}

TEST(StringOrder, UpperCaseIsFoldedToLowerCase) {
    EXPECT_TRUE(less("_", "A"));
    EXPECT_TRUE(less("[", "Z"));
    EXPECT_TRUE(less("Z", "{"));
}

TEST(StringOrder, ProperPrefixIsLess) {
    EXPECT_TRUE(less("ram", "RAM2"));
    EXPECT_FALSE(less("ram2", "RAM"));
    EXPECT_TRUE(less("", "a"));
}

TEST(StringOrder, NothingIsLessThanItself) {
    EXPECT_FALSE(less("", ""));
    EXPECT_FALSE(less("ram", "ram"));
}

TEST(StringOrder, BytesBeyondAsciiAreUnsignedAndHaveNoCase) {
    EXPECT_TRUE(less("z", "\x80"));
    EXPECT_TRUE(less("\x80", "\xFF"));
    EXPECT_TRUE(less("\xC9", "\xE9"));
}

TEST(StringOrder, NulEndsTheText) {
    EXPECT_TRUE(equivalent("ab\0c"s, "AB\0d"s));
    EXPECT_TRUE(equivalent("ab\0c"s, "ab"));
    EXPECT_TRUE(less("ab\0z"s, "abc"));
}

TEST(StringOrder, MapKeepsTheFirstSpellingOfAKey) {
    KVR_STRING_MAP map;
    map["Foo"] = "first";
    map["FOO"] = "second";
    EXPECT_EQ(map, (KVR_STRING_MAP{{"Foo", "second"}}));
}

} // namespace
