#include "kvrimage/image/address_range.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

TEST(AddressRange, IsEqualWhereBothEndsAre) {
    EXPECT_EQ((address_range{1, 2}), (address_range{1, 2}));
    EXPECT_NE((address_range{1, 2}), (address_range{0, 2}));
    EXPECT_NE((address_range{1, 2}), (address_range{1, 3}));
}

} // namespace
