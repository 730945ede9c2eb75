#include "kvrimage/files/byte_buffer.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <new>

namespace {

using namespace kvrimage;

TEST(ByteBuffer, WithoutMemoryIsAsItWas) {
    if (kvr_test::is_sanitized) {
        GTEST_SKIP() << "a sanitizer ends the program";
    }
    constexpr std::uint64_t too_many = std::uint64_t{1} << 60U;
    byte_buffer buffer;
    EXPECT_THROW(buffer.reserve(too_many), std::bad_alloc);
    EXPECT_EQ(buffer.room(), 0U);
    buffer.reserve(4);
    *buffer.end() = 'x';
    buffer.used(1);
    EXPECT_THROW(buffer.reserve(too_many), std::bad_alloc);
    EXPECT_EQ(buffer.text(), "x");
}

TEST(ByteBuffer, OfASizeThatNothingHasIsNotMade) {
    byte_buffer buffer;
    EXPECT_THROW(buffer.reserve(std::numeric_limits<std::uint64_t>::max()), std::bad_alloc);
    EXPECT_THROW(buffer.reserve(std::uint64_t{1} << 63U), std::bad_alloc);
    EXPECT_EQ(buffer.room(), 0U);
}

TEST(ByteBuffer, WithoutRoomNeedsNoMemory) {
    byte_buffer buffer;
    buffer.reserve(0);
    buffer.reserve(0);
    EXPECT_EQ(buffer.room(), 0U);
}

TEST(ByteBuffer, NeverShrinks) {
    byte_buffer buffer;
    for (const std::uint64_t size : {100U, 10U, 100U, 0U}) {
        buffer.reserve(size);
        EXPECT_EQ(buffer.room(), 100U);
    }
}

} // namespace
