#include "kvr/numeric/bit_count.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <stdexcept>

namespace {

TEST(BitCount, ThatIsTooLargeIsRefused) {
    constexpr std::size_t most = std::numeric_limits<std::size_t>::max() / 4;
    EXPECT_EQ(kvr::bit_count(7, 3), 21U);
    EXPECT_EQ(kvr::bit_count(most, 4), 4 * most);
    EXPECT_THROW(kvr::bit_count(most + 1, 4), std::length_error);
    EXPECT_THROW(kvr::bit_count(most + 1, 1), std::length_error);
}

} // namespace
