#include "kvr/keywords/keyword_registry.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>

namespace {

/// During its lifetime, the first @p successes allocations succeed and all later ones fail.
class failure_after : failing_allocation {
public:
    explicit failure_after(std::size_t successes)
        : failing_allocation(successes + 1, extent::all_from_there) {}
};

const std::string long_name = "a_name_that_is_longer_than_what_a_string_holds_inside_itself";

/// The number of allocations of @p action.
template <class Action>
std::size_t allocations_of(Action action) {
    const std::size_t before = allocation_count();
    action();
    return allocation_count() - before;
}

TEST(KeywordRegistryAllocation, ConstructionAllocatesNothing) {
    EXPECT_EQ(allocations_of([] { const KVR_UTIL_KEYWORD_REGR registry; }), 0U);
}

TEST(KeywordRegistryAllocation, CopyOfAFreshRegistryAllocatesNothing) {
    const KVR_UTIL_KEYWORD_REGR registry;
    // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the test is about the copy
    EXPECT_EQ(allocations_of([&] { const KVR_UTIL_KEYWORD_REGR copy(registry); }), 0U);
}

TEST(KeywordRegistryAllocation, AddingTheLastListAgainAllocatesNothing) {
    KVR_UTIL_KEYWORD_REGR registry;
    EXPECT_EQ(allocations_of([&] { registry.add_wysiwyg_names(); }), 0U);
}

TEST(KeywordRegistryAllocation, LookUpAllocatesNothing) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword(long_name);
    const KVR_STRING_MAP names = kvr::keyword_map(registry);
    std::size_t keywords = 0;
    std::size_t others = 0;
    EXPECT_EQ(allocations_of([&] {
                  for (const auto& [name, value] : names) {
                      keywords += registry.is_keyword(name.c_str()) ? 1U : 0U;
                  }
                  for (const char* rest = long_name.c_str() + 1; *rest != '\0'; ++rest) {
                      others += registry.is_keyword(rest) ? 0U : 1U;
                  }
              }),
              0U);
    EXPECT_EQ(keywords, names.size());
    EXPECT_EQ(others, long_name.size() - 1);
}

/// Adds @p keyword while one allocation after another fails, until it succeeds. After each failure, the
/// registry must be unchanged.
/// @return the number of failures
std::size_t failures_of_adding(KVR_UTIL_KEYWORD_REGR& registry, const std::string& keyword) {
    const KVR_STRING_MAP before = kvr::keyword_map(registry);
    for (std::size_t failures = 0;; ++failures) {
        try {
            const failure_after limit(failures);
            registry.add_keyword(keyword);
            return failures;
        } catch (const std::bad_alloc&) {
            EXPECT_EQ(kvr::keyword_map(registry), before);
        }
    }
}

TEST(KeywordRegistryAllocation, AFailureToAddTheFirstNameLeavesTheRegistryAsItWas) {
    KVR_UTIL_KEYWORD_REGR registry;
    EXPECT_GT(failures_of_adding(registry, long_name), 2U);
    EXPECT_TRUE(registry.is_keyword(long_name.c_str()));
}

TEST(KeywordRegistryAllocation, AFailureToAddAFurtherNameLeavesTheRegistryAsItWas) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("first");
    EXPECT_GT(failures_of_adding(registry, long_name), 2U);
    EXPECT_TRUE(registry.is_keyword(long_name.c_str()));
}

TEST(KeywordRegistryAllocation, AFailureToOverwriteAValueLeavesTheOldOne) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword(long_name);
    std::string other_spelling = long_name;
    other_spelling[0] = 'A';
    EXPECT_GT(failures_of_adding(registry, other_spelling), 0U);
    EXPECT_EQ(kvr::keyword_map(registry).at(long_name), other_spelling);
}

TEST(KeywordRegistryAllocation, AFailedAssignmentLeavesTheRegistryAsItWas) {
    KVR_UTIL_KEYWORD_REGR registry;
    registry.add_keyword("old");
    KVR_UTIL_KEYWORD_REGR other;
    other.add_keyword(long_name);
    const KVR_STRING_MAP before = kvr::keyword_map(registry);
    for (std::size_t successes = 0; successes < 3; ++successes) {
        EXPECT_THROW(
            {
                const failure_after limit(successes);
                registry = other;
            },
            std::bad_alloc);
        EXPECT_EQ(kvr::keyword_map(registry), before);
    }
}

} // namespace
