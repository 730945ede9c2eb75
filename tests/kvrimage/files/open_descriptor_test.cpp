#include "kvrimage/files/open_descriptor.h"
#include "tests/kvrimage/files/free_standard_input.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using namespace kvrimage;

TEST(OpenDescriptor, IsClosedByItsOwner) {
    int number = -1;
    {
        const open_descriptor owner(dup(STDOUT_FILENO));
        number = owner.get();
        EXPECT_TRUE(is_open_descriptor(number));
    }
    EXPECT_FALSE(is_open_descriptor(number));
}

TEST(OpenDescriptor, MayBeZero) {
    const free_standard_input none;
    {
        const open_descriptor owner(dup(STDOUT_FILENO));
        EXPECT_EQ(owner.get(), 0);
    }
    EXPECT_FALSE(is_open_descriptor(0));
}

TEST(OpenDescriptor, HasOneOwner) {
    open_descriptor none;
    EXPECT_EQ(none.get(), -1);
    open_descriptor owner(dup(STDOUT_FILENO));
    const int number = owner.get();
    open_descriptor next(std::move(owner));
    EXPECT_EQ(next.get(), number);
    none = std::move(next);
    EXPECT_EQ(none.release(), number);
    EXPECT_EQ(none.get(), -1);
    EXPECT_EQ(close(number), 0);
}

} // namespace
