#include "kvr/util/environment.h"
#include "tests/util/environment_variable.h"

#include <gtest/gtest.h>

#include <string>
#include <unistd.h>

namespace {

using kvr_test::environment_variable;

TEST(Environment, ValueOfASetVariable) {
    const environment_variable variable("KVR_TEST_VARIABLE", "some value \xE9");
    EXPECT_EQ(kvr_get_env_var_value("KVR_TEST_VARIABLE"), "some value \xE9");
}

TEST(Environment, UnsetAndEmptyVariablesAreEmpty) {
    const environment_variable variable("KVR_TEST_VARIABLE", std::nullopt);
    EXPECT_EQ(kvr_get_env_var_value("KVR_TEST_VARIABLE"), "");
    const environment_variable empty("KVR_TEST_VARIABLE", "");
    EXPECT_EQ(kvr_get_env_var_value("KVR_TEST_VARIABLE"), "");
}

TEST(Environment, NamesThatNoVariableHasAreEmpty) {
    EXPECT_EQ(kvr_get_env_var_value(nullptr), "");
    EXPECT_EQ(kvr_get_env_var_value(""), "");
    EXPECT_EQ(kvr_get_env_var_value("A=B"), "");
}

TEST(EnvironmentList, ElementIsFoundInAnyLetterCase) {
    EXPECT_TRUE(kvr_env_var_has_value("x;Y;z", "y"));
    EXPECT_TRUE(kvr_env_var_has_value("x;Y;z", "X"));
    EXPECT_TRUE(kvr_env_var_has_value("x;Y;z", "Z"));
}

TEST(EnvironmentList, PartOfAnElementIsNotFound) {
    EXPECT_FALSE(kvr_env_var_has_value("abc;def", "ab"));
    EXPECT_FALSE(kvr_env_var_has_value("abc;def", "abc;def"));
    EXPECT_FALSE(kvr_env_var_has_value("abc; def", "def"));
}

TEST(EnvironmentList, EmptyElementEndsTheSearch) {
    EXPECT_FALSE(kvr_env_var_has_value("x;;y", "y"));
    EXPECT_FALSE(kvr_env_var_has_value(";y", "y"));
    EXPECT_TRUE(kvr_env_var_has_value("x;;y", "x"));
}

TEST(EnvironmentList, EmptyListHoldsNothing) {
    EXPECT_FALSE(kvr_env_var_has_value("", "x"));
    EXPECT_FALSE(kvr_env_var_has_value("", ""));
}

TEST(EnvironmentList, EmptyTextIsFoundWhereTheSearchEnds) {
    EXPECT_TRUE(kvr_env_var_has_value("x;;y", ""));
    EXPECT_TRUE(kvr_env_var_has_value("x", ""));
    EXPECT_TRUE(kvr_env_var_has_value("x;", ""));
}

TEST(EnvironmentList, LongListIsSearchedToItsEnd) {
    std::string list;
    for (int i = 0; i < 1000000; ++i) {
        list += "a;";
    }
    EXPECT_TRUE(kvr_env_var_has_value(list + "b", "B"));
    EXPECT_FALSE(kvr_env_var_has_value(list, "b"));
}

TEST(Process, IdIsTheSystems) {
    EXPECT_EQ(kvr_get_process_id(), getpid());
}

} // namespace
